// What every kind of node promises, asked of all of them.

#include "engine/query/VelaExpr.h"

#include <gtest/gtest.h>

#include "engine/query/VExprAggregate.h"
#include "engine/query/VExprAndOr.h"
#include "engine/query/VExprCompare.h"
#include "engine/query/VExprCompareLike.h"
#include "engine/query/VExprMath.h"
#include "engine/query/VExprNot.h"
#include "engine/query/VExprScalarFunc.h"
#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

using Operands = std::vector<VelaExprPtr>;

// A class of nodes with operands, and what its classes differ in.
struct NodeClass {
    ExprKind kind;
    size_t operands;
    bool asksValidity;   // of its operands
    size_t needed;       // operands that must not be null
    bool isAggregate;
    VelaExprPtr (*make)(Operands& o);
};

const NodeClass kNodes[] = {
    {ExprKind::kMath, 2, true, 2, false,
     [](Operands& o) -> VelaExprPtr {
         return std::make_unique<VExprMath>(std::move(o[0]), '+', std::move(o[1]));
     }},
    {ExprKind::kCompare, 2, true, 2, false,
     [](Operands& o) -> VelaExprPtr {
         return std::make_unique<VExprCompare>(std::move(o[0]), kOpLess, std::move(o[1]));
     }},
    {ExprKind::kCompareLike, 3, true, 2, false,
     [](Operands& o) -> VelaExprPtr {
         return std::make_unique<VExprCompareLike>(std::move(o[0]), std::move(o[1]),
                                                   std::move(o[2]));
     }},
    {ExprKind::kNot, 1, true, 1, false,
     [](Operands& o) -> VelaExprPtr { return std::make_unique<VExprNot>(std::move(o[0])); }},
    {ExprKind::kAnd, 2, true, 2, false,
     [](Operands& o) -> VelaExprPtr {
         return std::make_unique<VExprAnd>(List(std::move(o[0]), std::move(o[1])));
     }},
    {ExprKind::kOr, 2, true, 2, false,
     [](Operands& o) -> VelaExprPtr {
         return std::make_unique<VExprOr>(List(std::move(o[0]), std::move(o[1])));
     }},
    {ExprKind::kScalarFunc, 3, false, 0, false,
     [](Operands& o) -> VelaExprPtr {
         return std::make_unique<VExprScalarFunc>(kFuncSubstring, std::move(o[0]), std::move(o[1]),
                                                  std::move(o[2]));
     }},
    {ExprKind::kAggregate, 1, true, 1, true,
     [](Operands& o) -> VelaExprPtr {
         return std::make_unique<VExprAggregate>(kFuncSum, std::move(o[0]), false);
     }},
    {ExprKind::kAggregate, 1, true, 0, true,
     [](Operands& o) -> VelaExprPtr {
         return std::make_unique<VExprAggregate>(kFuncCount, std::move(o[0]), true);
     }},
};

// A node of constants, but for the operand at that place.
VelaExprPtr With(const NodeClass& node, size_t place, VelaExprPtr operand)
{
    Operands operands;
    for (size_t i = 0; i < node.operands; i++)
        operands.push_back(i == place ? std::move(operand) : Expr(1));
    return node.make(operands);
}

TEST(VelaExpr, NodesAnswerForEachOfTheirOperands)
{
    for (const NodeClass& node : kNodes) {
        const VelaExprPtr plain = With(node, 99, nullptr);
        SCOPED_TRACE(plain->Description().CString());
        EXPECT_EQ(node.kind, plain->Kind());
        EXPECT_TRUE(plain->Valid());
        EXPECT_EQ(node.isAggregate, plain->HasAggregate());
        for (size_t i = 0; i < node.operands; i++) {
            EXPECT_EQ(!node.asksValidity, With(node, i, Scripted({.valid = false}))->Valid()) << i;
            EXPECT_EQ(i >= node.needed, With(node, i, nullptr)->Valid()) << i;
            EXPECT_EQ(node.isAggregate, With(node, i, nullptr)->HasAggregate()) << i;
            EXPECT_TRUE(With(node, i, Scripted({.aggregate = true}))->HasAggregate()) << i;
            std::vector<bool> tables = {true};
            With(node, i, ExprField(2, 1))->CollectTables(&tables);
            EXPECT_EQ((std::vector<bool>{true, false, true}), tables)
                << "others stay; operand " << i;
        }
    }
}

TEST(VelaExpr, ChooseWildcardTable_OfOperandsThatWantTables)
{
    using Wish = std::pair<long, bool>;   // the operand's table and whether it depends on it alone
    const NodeClass& math = kNodes[0];
    const NodeClass& compare = kNodes[1];
    const NodeClass& like = kNodes[2];
    const NodeClass& negation = kNodes[3];
    const NodeClass& conjunction = kNodes[4];
    const NodeClass& disjunction = kNodes[5];
    const NodeClass& function = kNodes[6];
    const NodeClass& aggregate = kNodes[7];
    const struct {
        std::vector<const NodeClass*> nodes;
        std::vector<Wish> wishes;
        const char* choice;
    } cases[] = {
        // Single is whether there is a table.
        {{&math}, {{-1, true}, {-1, true}}, "-1 not single"},
        {{&math}, {{3, false}, {-1, false}}, "3 single"},
        {{&math}, {{-1, true}, {4, true}}, "4 single"},
        {{&math}, {{3, true}, {4, true}}, "3 single"},
        // Single unless operands name two tables; what they say about themselves doesn't count.
        {{&compare}, {{-1, true}, {-1, true}}, "-1 single"},
        {{&compare}, {{3, false}, {-1, false}}, "3 single"},
        {{&compare}, {{-1, true}, {4, true}}, "4 single"},
        {{&compare}, {{3, true}, {3, true}}, "3 single"},
        {{&compare}, {{3, true}, {4, true}}, "3 not single"},
        {{&like, &function}, {{-1, false}, {-1, false}, {-1, false}}, "-1 single"},
        {{&like, &function}, {{2, false}, {-1, false}, {2, false}}, "2 single"},
        {{&like, &function}, {{-1, false}, {3, false}, {-1, false}}, "3 single"},
        {{&like, &function}, {{-1, false}, {-1, false}, {4, false}}, "4 single"},
        {{&like, &function}, {{2, false}, {3, false}, {-1, false}}, "2 not single"},
        {{&like, &function}, {{-1, false}, {3, false}, {4, false}}, "3 not single"},
        {{&like, &function}, {{2, true}, {-1, true}, {4, true}}, "2 not single"},
        // As the operand says.
        {{&negation, &aggregate}, {{2, false}}, "2 not single"},
        {{&negation, &aggregate}, {{2, true}}, "2 single"},
        {{&negation, &aggregate}, {{-1, true}}, "-1 single"},
        // The first single term that names a table; else the first table.
        {{&conjunction, &disjunction}, {{-1, true}, {-1, true}}, "-1 single"},
        {{&conjunction, &disjunction}, {{-1, false}, {-1, true}}, "-1 not single"},
        {{&conjunction, &disjunction}, {{2, true}, {3, true}}, "2 single"},
        {{&conjunction, &disjunction}, {{-1, true}, {3, true}}, "3 single"},
        {{&conjunction, &disjunction}, {{2, false}, {3, true}}, "3 single"},
        {{&conjunction, &disjunction}, {{-1, false}, {3, true}}, "3 single"},
        {{&conjunction, &disjunction}, {{2, false}, {3, false}}, "2 not single"},
        {{&conjunction, &disjunction}, {{-1, true}, {2, false}}, "2 not single"},
        {{&conjunction, &disjunction}, {{2, false}, {-1, true}}, "2 not single"},
    };
    const uint32_t unbound[] = {kInvalidRowID};
    const VelaRecSet recSet(unbound);
    for (const auto& c : cases) {
        for (const NodeClass* node : c.nodes) {
            Operands operands;
            for (const auto& [table, single] : c.wishes)
                operands.push_back(Scripted({.table = table, .single = single}));
            EXPECT_EQ(c.choice, Choice(*node->make(operands), recSet))
                << testing::PrintToString(c.wishes) << " for kind " << static_cast<int>(node->kind);
        }
    }
    for (const NodeClass& node : kNodes) {   // operands that aren't there want nothing
        Operands operands(3);
        EXPECT_EQ(node.kind == ExprKind::kMath ? "-1 not single" : "-1 single",
                  Choice(*node.make(operands), recSet));
    }
    EXPECT_EQ("-1 single", Choice(*Expr(1), recSet));
}

TEST(VelaExpr, DescriptionsReadAsTheDialect)
{
    const auto compare = [](uint16_t op) {
        return std::make_unique<VExprCompare>(Expr(1), op, Expr(2));
    };
    const auto func = [](VelaFuncCode code, VelaExprPtr arg1 = nullptr, VelaExprPtr arg2 = nullptr,
                         VelaExprPtr arg3 = nullptr) {
        return std::make_unique<VExprScalarFunc>(code, std::move(arg1), std::move(arg2),
                                                 std::move(arg3));
    };
    const auto aggregate = [](VelaFuncCode code, VelaExprPtr operand, bool distinct) {
        return std::make_unique<VExprAggregate>(code, std::move(operand), distinct);
    };
    struct {
        VelaExprPtr expr;
        const char* description;
        VelaDataType type;
    } cases[] = {
        {Expr(2.5), "2.5", kTypeDouble},
        {Expr("it's"), "'it''s'", kTypeString},
        {Expr(Latin1("\xE9")), "'\xC3\xA9'", kTypeString},
        {Expr(Date("1994-07-09")), "DATE '1994-07-09'", kTypeDate},
        {Expr(Timestamp("1994-07-09 12:34:06")), "TIMESTAMP '1994-07-09 12:34:06'", kTypeTimestamp},
        {Expr(VelaValue()), "NULL", kTypeNone},
        {ExprField(1, 20), "B.20", kTypeNone},
        {std::make_unique<VExprMath>(ExprField(2, 1), '+', Expr("it's")), "(C.1+'it''s')",
         kTypeNone},
        {compare(kOpEqual), "(1=2)", kTypeInteger},
        {compare(kOpLessEqual), "(1<=2)", kTypeInteger},
        {std::make_unique<VExprCompareLike>(ExprField(0, 1), Expr("a%"), ExprField(1, 1)),
         "A.1 LIKE 'a%' ESCAPE B.1", kTypeInteger},
        {std::make_unique<VExprCompareLike>(ExprField(0, 1), Expr("a%"), nullptr), "A.1 LIKE 'a%'",
         kTypeInteger},
        {std::make_unique<VExprNot>(ExprField(1, 0)), "NOT (B.0)", kTypeInteger},
        {std::make_unique<VExprAnd>(List(ExprField(0, 1), Expr(1), Expr("x"))),
         "(A.1 AND 1 AND 'x')", kTypeInteger},
        {std::make_unique<VExprOr>(List(Expr(1), Expr("x"))), "(1 OR 'x')", kTypeInteger},
        {std::make_unique<VExprOr>(List()), "FALSE", kTypeInteger},
        {func(kFuncCurrentDate), "CURRENT_DATE", kTypeString},
        {func(kFuncPosition, Expr("ab"), Expr("b")), "POSITION('b' IN 'ab')", kTypeInteger},
        {func(kFuncSubstring, Expr("ab"), Expr(1), Expr(2)), "SUBSTRING('ab' FROM 1 FOR 2)",
         kTypeString},
        {func(kFuncTrim, Expr("ab"), Expr("x")), "TRIM('x' FROM 'ab')", kTypeString},
        {func(kFuncTrim, Expr("ab"), nullptr, Expr("leading")), "TRIM(LEADING FROM 'ab')",
         kTypeString},
        {func(kFuncTrim, Expr("ab"), Expr("x"), Expr("BOTH")), "TRIM(BOTH 'x' FROM 'ab')",
         kTypeString},
        {func(kFuncLastRowID, Expr("t")), "LAST_ROWID('t')", kTypeInteger},
        {aggregate(kFuncSum, ExprField(1, 2), true), "SUM(DISTINCT B.2)", kTypeInteger},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.description, std::string(c.expr->Description().View()));
        EXPECT_EQ(c.type, c.expr->GetType({})) << c.description;
    }
}

TEST(VelaExpr, ANullOrUnknownOperandMakesANodeUnknown)
{
    const VelaValue three = I(3);
    for (const NodeClass& node : kNodes) {
        for (size_t i = 0; i < node.operands && !node.isAggregate; i++) {
            SCOPED_TRACE(With(node, i, nullptr)->Description().CString());
            // AND and OR leave their answer so far. Math and comparisons leave what the left operand left.
            const bool isJunction = node.kind == ExprKind::kAnd || node.kind == ExprKind::kOr;
            const bool leaves = node.kind == ExprKind::kMath || node.kind == ExprKind::kCompare;
            if (isJunction)
                continue;
            EXPECT_EQ(leaves && i == 1 ? "UNKNOWN leaving Integer 1" : "UNKNOWN",
                      Outcome(With(node, i, Scripted({}))));
            EXPECT_EQ(!leaves  ? "UNKNOWN"
                      : i == 0 ? "UNKNOWN leaving Integer 3"
                               : "UNKNOWN leaving Integer 1",
                      Outcome(With(node, i, Scripted({.left = {three}}))));
            if (i < node.needed) {
                EXPECT_EQ("UNKNOWN", Outcome(With(node, i, nullptr)));
            }
        }
    }
}

TEST(VelaExpr, EvaluateInIsolation_HasNoRows)
{
    VelaValue result;
    EXPECT_TRUE(VExprMath(Expr(1), '+', Expr(2)).EvaluateInIsolation(&result, nullptr));
    EXPECT_EQ("Integer 3", Shown(result));
    EXPECT_FALSE(ExprField(0, 0)->EvaluateInIsolation(&result, nullptr));
    EXPECT_EQ("Integer 3", Shown(result)) << "left as it was";
    EXPECT_FALSE(VExprMath(Expr(5), '+', ExprField(0, 0)).EvaluateInIsolation(&result, nullptr));
    EXPECT_EQ("Integer 5", Shown(result)) << "what the left operand left";
}

}   // namespace
}   // namespace vela
