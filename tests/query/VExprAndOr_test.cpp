#include "engine/query/VExprAndOr.h"

#include <gtest/gtest.h>

#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

enum Truth { F, U, T };

// A term of that truth that counts its evaluations. What an UNKNOWN one leaves must not matter.
VelaExprPtr Term(Truth truth, int* evaluations = nullptr)
{
    auto term = std::make_unique<ScriptedExpr>();
    term->flag = truth != U;
    term->left = {I(truth == F ? 0 : 5)};
    term->evaluations = evaluations;
    return term;
}

TEST(VExprAndOr, EveryPairOfTruths)
{
    struct {
        Truth left;
        Truth right;
        const char* conjunction;
        int andEvaluations;
        const char* disjunction;
        int orEvaluations;
    } cases[] = {
        {F, F, "Integer 0", 1, "Integer 0", 2},
        {F, U, "Integer 0", 1, "UNKNOWN leaving Integer 0", 2},
        {F, T, "Integer 0", 1, "Integer 1", 2},
        {U, F, "Integer 0", 2, "UNKNOWN leaving Integer 0", 2},
        {U, U, "UNKNOWN leaving Integer 1", 2, "UNKNOWN leaving Integer 0", 2},
        {U, T, "UNKNOWN leaving Integer 1", 2, "Integer 1", 2},
        {T, F, "Integer 0", 2, "Integer 1", 1},
        {T, U, "UNKNOWN leaving Integer 1", 2, "Integer 1", 1},
        {T, T, "Integer 1", 2, "Integer 1", 1},
    };
    for (const auto& c : cases) {
        int evaluations = 0;
        EXPECT_EQ(c.conjunction,
                  Outcome(VExprAnd(List(Term(c.left, &evaluations), Term(c.right, &evaluations)))))
            << c.left << " AND " << c.right;
        EXPECT_EQ(c.andEvaluations, evaluations) << c.left << " AND " << c.right;
        evaluations = 0;
        EXPECT_EQ(c.disjunction,
                  Outcome(VExprOr(List(Term(c.left, &evaluations), Term(c.right, &evaluations)))))
            << c.left << " OR " << c.right;
        EXPECT_EQ(c.orEvaluations, evaluations) << c.left << " OR " << c.right;
    }
}

TEST(VExprAndOr, MoreAndFewerTerms)
{
    EXPECT_EQ("Integer 1", Outcome(VExprAnd({})));
    EXPECT_EQ("Integer 0", Outcome(VExprOr({})));
    EXPECT_EQ("Integer 1", Outcome(VExprAnd(List(Term(T)))));
    EXPECT_EQ("Integer 1", Outcome(VExprOr(List(Term(T)))));
    EXPECT_EQ("UNKNOWN leaving Integer 1", Outcome(VExprAnd(List(Term(U)))));
    EXPECT_EQ("UNKNOWN leaving Integer 0", Outcome(VExprOr(List(Term(U)))));
    EXPECT_EQ("Integer 0", Outcome(VExprAnd(List(Term(T), Term(U), Term(T), Term(F)))));
    EXPECT_EQ("Integer 1", Outcome(VExprOr(List(Term(F), Term(U), Term(F), Term(T)))));
    EXPECT_EQ("UNKNOWN leaving Integer 1", Outcome(VExprAnd(List(Term(T), nullptr, Term(T)))));
    EXPECT_EQ("UNKNOWN leaving Integer 0", Outcome(VExprOr(List(Term(F), nullptr, Term(F)))));
}

}   // namespace
}   // namespace vela
