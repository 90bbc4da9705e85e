#include "engine/query/VExprNot.h"

#include <gtest/gtest.h>

#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

TEST(VExprNot, TurnsTheIntegerForm)
{
    struct {
        VelaValue operand;
        const char* outcome;
    } cases[] = {
        {VelaValue::Integer(5), "Integer 0"},    {VelaValue::Integer(1), "Integer 0"},
        {VelaValue::Integer(-1), "Integer 0"},   {VelaValue::Integer(0), "Integer 1"},
        {VelaValue::Double(0.5), "Integer 1"},   {VelaValue::Double(1.5), "Integer 0"},
        {Text("7 of 9"), "Integer 0"},           {Text("TRUE"), "Integer 1"},
        {VelaValue::Boolean(true), "Integer 0"}, {VelaValue(), "Integer 1"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.outcome, Outcome(VExprNot(Expr(c.operand)))) << Shown(c.operand);
}

TEST(VExprNot, UnknownStaysUnknownAndLeavesNothing)
{
    EXPECT_EQ("UNKNOWN", Outcome(VExprNot(Unknown())));
    EXPECT_EQ("UNKNOWN", Outcome(VExprNot(UnknownLeaving(VelaValue::Integer(1)))));
    EXPECT_EQ("UNKNOWN", Outcome(VExprNot(nullptr)));
}

TEST(VExprNot, TreeIsInspected)
{
    const uint32_t rows[] = {kInvalidRowID};
    const VelaRecSet recSet(rows);
    EXPECT_EQ("2 not single", Choice(VExprNot(Wants(2, false)), recSet));
    EXPECT_EQ("2 single", Choice(VExprNot(Wants(2, true)), recSet));
    EXPECT_EQ("-1 single", Choice(VExprNot(Wants(-1, true)), recSet));
    EXPECT_EQ("-1 single", Choice(VExprNot(nullptr), recSet));

    const VExprNot negation(ExprField(1, 0));
    EXPECT_EQ(ExprKind::kNot, negation.Kind());
    EXPECT_EQ(ExprKind::kField, negation.Operand()->Kind());
    EXPECT_EQ("NOT (B.0)", negation.Description());
    EXPECT_EQ(kTypeInteger, VExprNot(Expr("text")).GetType({}));
    std::vector<bool> tables;
    negation.CollectTables(&tables);
    EXPECT_EQ((std::vector<bool>{false, true}), tables);
    EXPECT_TRUE(negation.Valid());
    EXPECT_FALSE(VExprNot(nullptr).Valid());
    EXPECT_FALSE(VExprNot(Invalid()).Valid());
    EXPECT_FALSE(negation.HasAggregate());
    EXPECT_TRUE(VExprNot(WithAggregate()).HasAggregate());
}

}   // namespace
}   // namespace vela
