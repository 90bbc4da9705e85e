#include "engine/query/VExprMath.h"

#include <gtest/gtest.h>

#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

std::unique_ptr<VExprMath> Math(const VelaValue& left, char op, const VelaValue& right)
{
    return std::make_unique<VExprMath>(Expr(left), op, Expr(right));
}

// tests/sql/values/operands.sql has every pair of types that a statement can bring about.
TEST(VExprMath, ABinaryCountsAsZeroAndNeedsANumberBeside)
{
    const VelaValue binary = Binary("9");
    const struct {
        VelaValue left, right;
        char op;
        const char* outcome;
    } cases[] = {
        {I(7), binary, '-', "Integer 7"},
        {D(2.5), binary, '+', "Double 2.5"},
        {binary, I(7), '-', "Integer -7"},
        {binary, D(2.5), '+', "Double 2.5"},
        {Text("a"), binary, '+', "String a9"},
        {binary, Text("a"), '+', "UNKNOWN leaving Binary 9"},
        {binary, binary, '+', "UNKNOWN leaving Binary 9"},
        {I(7), binary, '/', "UNKNOWN leaving NULL Integer"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.outcome, Outcome(*Math(c.left, c.op, c.right)));
}

TEST(VExprMath, WithoutAnOperandOrAKnownOperatorThereIsNoType)
{
    for (const VelaValue& value : {I(7), D(2.5)})
        EXPECT_EQ("UNKNOWN leaving " + Shown(value), Outcome(*Math(value, '?', value)));
    EXPECT_EQ(kTypeNone, VExprMath(Expr(1), '+', nullptr).GetType({}));
    EXPECT_EQ(kTypeNone, VExprMath(nullptr, '+', Expr(1)).GetType({}));
}

TEST(VExprMath, JoinedTextsMeetInOneEncoding)
{
    const VelaValue ascii = Text("ab");
    const VelaValue utf8 = UTF8("\xC3\xA9");
    const VelaValue latin1 = Latin1("\xE9");
    const VelaValue utf16 = UTF16(u"\u00E9");
    const VelaValue empty = Text("");
    struct {
        const VelaValue& left;
        const VelaValue& right;
        VelaValue joined;
        const char* why;
    } cases[] = {
        {utf8, utf8, UTF8("\xC3\xA9\xC3\xA9"), "nothing to do"},
        {ascii, utf8, UTF8("ab\xC3\xA9"), "ASCII gives way"},
        {utf8, ascii,
         UTF8("\xC3\xA9"
              "ab"),
         "also on the right"},
        {utf8, latin1, UTF8("\xC3\xA9\xC3\xA9"), "the right one is converted"},
        {latin1, utf8, Latin1("\xE9\xE9"), "to the left"},
        {utf16, ascii,
         UTF16(u"\u00E9"
               u"ab"),
         "two bytes a character"},
        {ascii, utf16, UTF16(u"ab\u00E9"), "ASCII gives way here, too"},
        {empty, utf16, utf16, "an empty text has no say"},
        {utf16, empty, utf16, "on neither side"},
    };
    for (const auto& c : cases) {
        VelaValue result;
        ASSERT_TRUE(Math(c.left, '+', c.right)->Evaluate({}, &result)) << c.why;
        EXPECT_TRUE(c.joined.TextView() == result.TextView()) << c.why;
        EXPECT_EQ(c.joined.StoredText().Encoding(), result.StoredText().Encoding()) << c.why;
    }
}

}   // namespace
}   // namespace vela
