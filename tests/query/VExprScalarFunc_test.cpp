#include "engine/query/VExprScalarFunc.h"

#include <gtest/gtest.h>

#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

VelaExprPtr Func(VelaFuncCode func, VelaExprPtr arg1 = nullptr, VelaExprPtr arg2 = nullptr,
                 VelaExprPtr arg3 = nullptr)
{
    return std::make_unique<VExprScalarFunc>(func, std::move(arg1), std::move(arg2),
                                             std::move(arg3));
}

TEST(VExprScalarFunc, AbsentArgumentsAreNULLs)
{
    EXPECT_EQ("String NULL", Outcome(Func(kFuncUppercase)));
    EXPECT_EQ("NULL None", Outcome(Func(kFuncBitLength)));
    EXPECT_EQ("Integer 0", Outcome(Func(kFuncPosition, Expr("foobar"))));
    EXPECT_EQ("String foobar", Outcome(Func(kFuncSubstring, Expr("foobar"))));
}

TEST(VExprScalarFunc, UnknownArgumentsAndRefusalsLeaveNothing)
{
    const VelaValue one = I(1);
    EXPECT_EQ("UNKNOWN", Outcome(Func(kFuncUppercase, UnknownLeaving(one))));
    EXPECT_EQ("UNKNOWN", Outcome(Func(kFuncSubstring, Expr("a"), UnknownLeaving(one))));
    EXPECT_EQ("UNKNOWN", Outcome(Func(kFuncSubstring, Expr("a"), Expr(1), UnknownLeaving(one))));
    EXPECT_EQ("UNKNOWN", Outcome(Func(kFuncUppercase, Expr("a"), nullptr, Unknown())))
        << "also of an argument that nobody needs";
    EXPECT_EQ("UNKNOWN", Outcome(Func(kFuncCurrentDate))) << "there is no database";
    EXPECT_EQ("UNKNOWN", Outcome(Func(kFuncSum, Expr(1)))) << "not a function of one row";
}

TEST(VExprScalarFunc, FirstUnknownArgumentEndsTheEvaluation)
{
    int evaluations = 0;
    auto second = std::make_unique<ScriptedExpr>();
    second->evaluations = &evaluations;
    EXPECT_EQ("UNKNOWN", Outcome(Func(kFuncPosition, Unknown(), std::move(second))));
    EXPECT_EQ(0, evaluations);
}

}   // namespace
}   // namespace vela
