#include <gtest/gtest.h>

#include "engine/query/VelaTempTable.h"
#include "engine/sql/SQLInfixOpNode.h"
#include "engine/sql/SQLLiteralNode.h"
#include "engine/sql/SQLNotNode.h"
#include "tests/sql/SQLTestTexts.h"

namespace vela {
namespace {

// tests/sql/escape has what statements can say.
TEST(SQLTranslation, StringLiteralValueOfBrokenLiterals)
{
    const struct {
        const char* text;
        char escape;
        const char* value;
    } cases[] = {
        {"'a^'", '^', "a^"},
        {"", 0, ""},
        {"'", 0, ""},
        {"'abc", 0, "abc"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.value, Plain(StringLiteralValue(Sql(c.text), c.escape))) << c.text;
    EXPECT_EQ(kEncodingLatin1,
              StringLiteralValue(string("'\xE9''x'", kEncodingLatin1), '\0').Encoding());
}

TEST(SQLTranslation, ColumnReferencesAreListed)
{
    VelaTempTable one;
    one.AddColumn("a", kTypeInteger);
    one.AddColumn("b", kTypeString);
    VelaTempTable two;
    two.AddColumn("b", kTypeDouble);
    two.AddColumn("c", kTypeDate);
    const SQLNames tableNames = {{"one", kEncodingUTF8}, {"t", kEncodingUTF8}};
    VelaSQLParser parser('\0');
    const SQLSyntaxNodePtr tree = parser.Evaluate(Sql("SELECT t.c AS x, b, NULL, one.*"));
    SimpleVector<VelaExprPtr> expressions;
    SimpleVector<string> names;
    SimpleVector<uint32_t> ids;
    for (const auto& item : static_cast<const SQLSelectNode&>(*tree).mItems)
        EXPECT_TRUE(item->mExpression->ConvertToExprList(tableNames, {&one, &two}, &expressions,
                                                         nullptr, &names, &ids));
    EXPECT_EQ(5u, expressions.size());
    std::string listed;
    for (const string& name : names)
        listed += Plain(name) + " ";
    EXPECT_EQ("c b a b ", listed) << "what is no column is not among them";
    EXPECT_EQ(names.size(), ids.size());
}

// Nodes as the parser makes them.
class Nodes {
public:
    [[nodiscard]] SQLScalarExpNode* Literal(const char* text)
    {
        return mArena.Make<SQLLiteralNode>(SQLText(text, kEncodingUTF8), '\0');
    }
    [[nodiscard]] SQLInfixOpNode* Infix(const char* op,
                                        std::initializer_list<SQLScalarExpNode*> operands)
    {
        auto* node = mArena.Make<SQLInfixOpNode>(SQLText(op, kEncodingUTF8));
        for (SQLScalarExpNode* operand : operands)
            node->AddOperand(&mArena, operand);
        return node;
    }
    BlockArena mArena;
};

TEST(SQLTranslation, MalformedNodesYieldNothingAndLeaveTheStatus)
{
    for (const char* op : {"=", "+", "AND", "or", "%", "||", ""}) {
        for (int operands = 0; operands <= 3; operands++) {
            Nodes nodes;
            SQLInfixOpNode& node = *nodes.Infix(op, {});
            for (int i = 0; i < operands; i++)
                node.AddOperand(&nodes.mArena, nodes.Literal("1"));
            const std::string name = op;
            const bool isJunction = name == "AND" || name == "or";
            const bool isGood =
                isJunction ? operands >= 2 : operands == 2 && (name == "=" || name == "+");
            VelaStatus status;
            EXPECT_EQ(isGood, node.ConvertToVelaExpr({}, {}, &status) != nullptr)
                << op << " with " << operands;
            EXPECT_EQ(kVEStateSuccess, status.State());
        }
    }
    Nodes nodes;
    const SQLInfixOpNode* half = nodes.Infix("=", {nodes.Literal("1"), nullptr});
    EXPECT_EQ(nullptr, half->ConvertToVelaExpr({}, {}, nullptr));
}

// The parser makes none.
TEST(SQLTranslation, NotNodePrintsAndTranslates)
{
    Nodes nodes;
    const auto* node = nodes.mArena.Make<SQLNotNode>(nodes.Literal("5"));
    EXPECT_EQ("NOT (5)", Plain(node->Description()));
    EXPECT_EQ(ExprKind::kNot, node->ConvertToVelaExpr({}, {}, nullptr)->Kind());
    const auto* empty = nodes.mArena.Make<SQLNotNode>(nullptr);
    EXPECT_EQ(nullptr, empty->ConvertToVelaExpr({}, {}, nullptr));
}

}   // namespace
}   // namespace vela
