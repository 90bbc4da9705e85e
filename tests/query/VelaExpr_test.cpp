#include "engine/query/VelaExpr.h"

#include <gtest/gtest.h>

#include "engine/query/VExprMath.h"
#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

TEST(VelaExpr, EvaluateInIsolation_HasNoRows)
{
    VelaValue result;
    EXPECT_TRUE(VExprMath(Expr(1), '+', Expr(2)).EvaluateInIsolation(&result, nullptr));
    EXPECT_EQ("Integer 3", Shown(result));

    result.SetInteger(7);
    EXPECT_FALSE(ExprField(0, 0)->EvaluateInIsolation(&result, nullptr));
    EXPECT_EQ("Integer 7", Shown(result)) << "left as it was";
    EXPECT_FALSE(VExprMath(Expr(5), '+', ExprField(0, 0)).EvaluateInIsolation(&result, nullptr));
    EXPECT_EQ("Integer 5", Shown(result)) << "what the left operand left";
}

TEST(VelaExpr, DefaultsOfANode)
{
    VExprMath sum(Expr(1), '+', Expr(2));
    EXPECT_TRUE(sum.Name().empty());
    sum.SetName("total");
    EXPECT_EQ("total", sum.Name());
    EXPECT_EQ(ExprKind::kOther, ScriptedExpr().Kind());
}

}   // namespace
}   // namespace vela
