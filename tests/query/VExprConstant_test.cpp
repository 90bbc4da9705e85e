#include "engine/query/VExprConstant.h"

#include <gtest/gtest.h>

#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

TEST(VExprConstant, EvaluatesToItsValueAndReadsAsItsLiteral)
{
    struct {
        VelaValue value;
        const char* shown;
        const char* description;
    } cases[] = {
        {VelaValue::Integer(-5), "Integer -5", "-5"},
        {VelaValue::Double(2.5), "Double 2.5", "2.5"},
        {VelaValue::Boolean(true), "Boolean TRUE", "TRUE"},
        {Text("it's"), "String it's", "'it''s'"},
        {Text(""), "String ", "''"},
        {UTF8("caf\xC3\xA9"), "String caf\xC3\xA9", "'caf\xC3\xA9'"},
        {VelaValue::String(string("\xE9", kEncodingLatin1)), "String \xE9", "'\xC3\xA9'"},
        {Date("1994-07-09"), "Date 1994-07-09", "DATE '1994-07-09'"},
        {Time("12:34:06"), "Time 12:34:06", "TIME '12:34:06'"},
        {Timestamp("1994-07-09 12:34:06"), "Timestamp 1994-07-09 12:34:06",
         "TIMESTAMP '1994-07-09 12:34:06'"},
        {VelaValue(), "NULL None", "NULL"},
        {VelaValue::Null(kTypeDate), "NULL Date", "NULL"},
    };
    for (const auto& c : cases) {
        const VExprConstant constant(c.value);
        EXPECT_EQ(c.shown, Outcome(constant));
        EXPECT_EQ(c.description, std::string(constant.Description().View()));
        EXPECT_EQ(c.value.GetType(), constant.GetType({}));
        EXPECT_EQ(c.shown, Shown(constant.Value()));
    }
}

TEST(VExprConstant, RefersToNothing)
{
    const VExprConstant constant(VelaValue::Integer(1));
    EXPECT_EQ("-1 single", Choice(constant, VelaRecSet()));
    std::vector<bool> tables;
    constant.CollectTables(&tables);
    EXPECT_TRUE(tables.empty());
    EXPECT_TRUE(constant.Valid());
    EXPECT_FALSE(constant.HasAggregate());
    EXPECT_EQ(ExprKind::kConstant, constant.Kind());
    EXPECT_TRUE(constant.Name().empty());
}

}   // namespace
}   // namespace vela
