#include <gtest/gtest.h>

#include "engine/query/VelaTempTable.h"
#include "engine/sql/SQLInfixOpNode.h"
#include "engine/sql/SQLLiteralNode.h"
#include "engine/sql/SQLNotNode.h"
#include "tests/sql/SQLTestTexts.h"

namespace vela {
namespace {

TEST(SQLTranslation, StringLiteralValueUndoesQuotesAndEscapes)
{
    const struct {
        const char* text;
        char escape;
        const char* value;
    } cases[] = {
        {"'abc'", 0, "abc"},
        {"''", 0, ""},
        {"''''", 0, "'"},
        {"'a''b'", 0, "a'b"},
        {"''''''", 0, "''"},
        {"'a^b'", 0, "a^b"},
        {"'a^b'", '^', "ab"},
        {"'a^^b'", '^', "a^b"},
        {"'a^''", '^', "a'"},
        {"'^'''''", '^', "'''"},
        {"'^a^b^c'", '^', "abc"},
        {"'a^'", '^', "a^"},
        {"word", 0, "word"},
        {"a''b", 0, "a'b"},
        {"a!b", '!', "ab"},
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
    VelaSQLParser parser('\0');
    const SQLSyntaxNodePtr tree = parser.Evaluate(Sql("SELECT t.c AS x, b, NULL, one.*"));
    SimpleVector<VelaExprPtr> expressions;
    SimpleVector<string> names;
    SimpleVector<uint32_t> ids;
    for (const auto& item : static_cast<const SQLSelectNode&>(*tree).mItems)
        EXPECT_TRUE(item->mExpression->ConvertToExprList({"one", "t"}, {&one, &two}, &expressions,
                                                         nullptr, &names, &ids));
    EXPECT_EQ(5u, expressions.size());
    std::string listed;
    for (const string& name : names)
        listed += Plain(name) + " ";
    EXPECT_EQ("c b a b ", listed) << "what is no column is not among them";
    EXPECT_EQ(names.size(), ids.size());
}

SQLScalarExpPtr Literal(const char* text)
{
    return std::make_unique<SQLLiteralNode>(Sql(text), '\0');
}

TEST(SQLTranslation, MalformedNodesYieldNothingAndLeaveTheStatus)
{
    for (const char* op : {"=", "+", "AND", "or", "%", "||", ""}) {
        for (int operands = 0; operands <= 3; operands++) {
            SQLInfixOpNode node(Sql(op));
            for (int i = 0; i < operands; i++)
                node.AddOperand(Literal("1"));
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
    SQLInfixOpNode half(Sql("="));
    half.AddOperand(Literal("1"));
    half.AddOperand(nullptr);
    EXPECT_EQ(nullptr, half.ConvertToVelaExpr({}, {}, nullptr));
}

TEST(SQLTranslation, NotNodePrintsAndTranslates)
{
    const SQLNotNode node(Literal("5"));
    EXPECT_EQ("NOT (5)", Plain(node.Description()));
    EXPECT_EQ(ExprKind::kNot, node.ConvertToVelaExpr({}, {}, nullptr)->Kind());
    EXPECT_EQ(nullptr, SQLNotNode(nullptr).ConvertToVelaExpr({}, {}, nullptr));
}

TEST(SQLTranslation, DefaultIsKnownInAnyCase)
{
    for (const char* name : {"DEFAULT", "default", "Default"})
        EXPECT_TRUE(SQLFieldRefNode(Sql(name)).IsKeywordDefault()) << name;
    for (const char* name : {"DEFAULTS", "t.DEFAULT", "NULL", ""})
        EXPECT_FALSE(SQLFieldRefNode(Sql(name)).IsKeywordDefault()) << name;
    EXPECT_FALSE(Literal("'DEFAULT'")->IsKeywordDefault());
}

}   // namespace
}   // namespace vela
