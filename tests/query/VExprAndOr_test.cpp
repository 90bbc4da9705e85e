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
    term->left = {VelaValue::Integer(truth == F ? 0 : 5)};
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

TEST(VExprAndOr, TermsAreJudgedByTheirIntegerForm)
{
    struct {
        VelaValue term;
        bool truth;
    } cases[] = {
        {VelaValue::Integer(-1), true},
        {VelaValue::Double(0.9), false},
        {VelaValue::Double(-1.5), true},
        {Text("1x"), true},
        {Text("TRUE"), false},
        {VelaValue::Boolean(true), true},
        {Date("1994-07-09"), false},
        {VelaValue::Null(kTypeInteger), false},
        {VelaValue(), false},
    };
    for (const auto& c : cases) {
        const char* expected = c.truth ? "Integer 1" : "Integer 0";
        EXPECT_EQ(expected, Outcome(VExprAnd(List(Expr(c.term))))) << Shown(c.term);
        EXPECT_EQ(expected, Outcome(VExprOr(List(Expr(c.term))))) << Shown(c.term);
    }
}

TEST(VExprAndOr, ChooseWildcardTable_FirstSingleTermIsTaken)
{
    struct {
        std::vector<std::pair<long, bool>> terms;   // their tables and singles
        const char* choice;
    } cases[] = {
        {{}, "-1 single"},
        {{{-1, true}, {-1, true}}, "-1 single"},
        {{{-1, false}, {-1, true}}, "-1 not single"},
        {{{2, true}, {3, true}}, "2 single"},
        {{{-1, true}, {3, true}}, "3 single"},
        {{{2, false}, {3, true}}, "3 single"},
        {{{-1, false}, {3, true}}, "3 single"},
        {{{2, false}, {3, false}}, "2 not single"},
        {{{2, false}, {2, false}}, "2 not single"},
        {{{-1, true}, {2, false}}, "2 not single"},
        {{{2, false}, {-1, true}}, "2 not single"},
        {{{2, false}, {3, false}, {4, true}, {5, true}}, "4 single"},
    };
    const uint32_t rows[] = {kInvalidRowID};
    const VelaRecSet recSet(rows);
    for (const auto& c : cases) {
        SimpleVector<VelaExprPtr> andTerms;
        SimpleVector<VelaExprPtr> orTerms;
        for (const auto& [table, single] : c.terms) {
            andTerms.push_back(Wants(table, single));
            orTerms.push_back(Wants(table, single));
        }
        EXPECT_EQ(c.choice, Choice(VExprAnd(std::move(andTerms)), recSet));
        EXPECT_EQ(c.choice, Choice(VExprOr(std::move(orTerms)), recSet));
    }
}

template <class Node>
void ExpectInspected(ExprKind kind, const char* description, const char* ofNone)
{
    const Node node(List(ExprField(0, 1), Expr(1), ExprField(2, 3)));
    EXPECT_EQ(kind, node.Kind());
    ASSERT_EQ(3u, node.Terms().size());
    EXPECT_EQ(ExprKind::kConstant, node.Terms()[1]->Kind());
    EXPECT_EQ(description, std::string(node.Description().View()));
    EXPECT_EQ(ofNone, std::string(Node({}).Description().View()));
    EXPECT_EQ(kTypeInteger, node.GetType({}));
    std::vector<bool> tables;
    node.CollectTables(&tables);
    EXPECT_EQ((std::vector<bool>{true, false, true}), tables);

    EXPECT_TRUE(node.Valid());
    EXPECT_TRUE(Node({}).Valid());
    EXPECT_FALSE(Node(List(Expr(1), nullptr)).Valid());
    EXPECT_FALSE(Node(List(Expr(1), Invalid())).Valid());
    EXPECT_FALSE(node.HasAggregate());
    EXPECT_TRUE(Node(List(Expr(1), WithAggregate())).HasAggregate());
    EXPECT_FALSE(Node(List(Expr(1), nullptr)).HasAggregate());
}

TEST(VExprAndOr, TreeIsInspected)
{
    ExpectInspected<VExprAnd>(ExprKind::kAnd, "(A.1 AND 1 AND C.3)", "TRUE");
    ExpectInspected<VExprOr>(ExprKind::kOr, "(A.1 OR 1 OR C.3)", "FALSE");
}

}   // namespace
}   // namespace vela
