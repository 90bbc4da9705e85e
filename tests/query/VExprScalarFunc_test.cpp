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

TEST(VExprScalarFunc, PassesItsArgumentsInOrder)
{
    EXPECT_EQ("String oba", Outcome(Func(kFuncSubstring, Expr("foobar"), Expr(3), Expr(3))));
    EXPECT_EQ("String obar", Outcome(Func(kFuncSubstring, Expr("foobar"), Expr(3))));
    EXPECT_EQ("Integer 4", Outcome(Func(kFuncPosition, Expr("foobar"), Expr("bar"))));
    EXPECT_EQ("String FOO", Outcome(Func(kFuncUppercase, Expr("foo"))));
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
    const VelaValue one = VelaValue::Integer(1);
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

TEST(VExprScalarFunc, ChooseWildcardTable_SingleUnlessArgumentsNameTwoTables)
{
    const uint32_t rows[] = {kInvalidRowID};
    const VelaRecSet recSet(rows);
    const auto choice = [&recSet](long first, long second, long third) {
        return Choice(
            *Func(kFuncSubstring, Wants(first, false), Wants(second, false), Wants(third, false)),
            recSet);
    };
    EXPECT_EQ("-1 single", choice(-1, -1, -1));
    EXPECT_EQ("2 single", choice(2, -1, 2));
    EXPECT_EQ("3 not single", choice(-1, 3, 4));
    EXPECT_EQ("2 not single", choice(2, 3, -1));
    EXPECT_EQ("4 single", choice(-1, -1, 4));
    EXPECT_EQ("-1 single", Choice(*Func(kFuncCurrentDate), recSet));
    EXPECT_EQ("5 single", Choice(*Func(kFuncTrim, nullptr, nullptr, Wants(5, true)), recSet));
}

TEST(VExprScalarFunc, DescriptionReadsAsTheCall)
{
    struct {
        VelaExprPtr func;
        const char* description;
    } cases[] = {
        {Func(kFuncCurrentDate), "CURRENT_DATE"},
        {Func(kFuncCurrentTimestamp), "CURRENT_TIMESTAMP"},
        {Func(kFuncUppercase, Expr("a")), "UPPER('a')"},
        {Func(kFuncUppercase), "UPPER()"},
        {Func(kFuncPosition, Expr("ab"), Expr("b")), "POSITION('b' IN 'ab')"},
        {Func(kFuncSubstring, Expr("ab"), Expr(1)), "SUBSTRING('ab' FROM 1)"},
        {Func(kFuncSubstring, Expr("ab"), Expr(1), Expr(2)), "SUBSTRING('ab' FROM 1 FOR 2)"},
        {Func(kFuncTrim, Expr("ab")), "TRIM('ab')"},
        {Func(kFuncTrim, Expr("ab"), Expr("x")), "TRIM('x' FROM 'ab')"},
        {Func(kFuncTrim, Expr("ab"), nullptr, Expr("leading")), "TRIM(LEADING FROM 'ab')"},
        {Func(kFuncTrim, Expr("ab"), Expr("x"), Expr("BOTH")), "TRIM(BOTH 'x' FROM 'ab')"},
        {Func(kFuncLastRowID, Expr("t")), "LAST_ROWID('t')"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.description, std::string(c.func->Description().View()));
}

TEST(VExprScalarFunc, TreeIsInspected)
{
    const VExprScalarFunc func(kFuncSubstring, ExprField(0, 1), Expr(1), ExprField(1, 1));
    EXPECT_EQ(ExprKind::kScalarFunc, func.Kind());
    EXPECT_EQ(kFuncSubstring, func.Func());
    EXPECT_EQ(ExprKind::kField, func.Arg1()->Kind());
    EXPECT_EQ(ExprKind::kConstant, func.Arg2()->Kind());
    EXPECT_EQ(ExprKind::kField, func.Arg3()->Kind());
    EXPECT_EQ(kTypeString, func.GetType({}));
    EXPECT_EQ(kTypeInteger, Func(kFuncPosition)->GetType({}));
    std::vector<bool> tables;
    func.CollectTables(&tables);
    EXPECT_EQ((std::vector<bool>{true, true}), tables);

    EXPECT_TRUE(Func(kFuncUppercase, Invalid())->Valid()) << "does not ask its arguments";
    EXPECT_FALSE(func.HasAggregate());
    EXPECT_FALSE(Func(kFuncCurrentDate)->HasAggregate());
    EXPECT_TRUE(Func(kFuncTrim, WithAggregate())->HasAggregate());
    EXPECT_TRUE(Func(kFuncTrim, nullptr, WithAggregate())->HasAggregate());
    EXPECT_TRUE(Func(kFuncTrim, nullptr, nullptr, WithAggregate())->HasAggregate());
}

}   // namespace
}   // namespace vela
