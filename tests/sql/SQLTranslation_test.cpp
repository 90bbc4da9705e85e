#include <gtest/gtest.h>

#include "engine/query/VExprAggregate.h"
#include "engine/query/VExprAndOr.h"
#include "engine/query/VExprCompare.h"
#include "engine/query/VExprCompareLike.h"
#include "engine/query/VExprConstant.h"
#include "engine/query/VExprField.h"
#include "engine/query/VExprMath.h"
#include "engine/query/VExprNot.h"
#include "engine/query/VExprScalarFunc.h"
#include "engine/query/VelaTempTable.h"
#include "engine/sql/SQLInfixOpNode.h"
#include "engine/sql/SQLLiteralNode.h"
#include "engine/sql/SQLNotNode.h"
#include "tests/sql/SQLTestTexts.h"

namespace vela {
namespace {

// Two tables: one (a, b) and two (b, c), the second one called t.
class Tables {
public:
    Tables()
    {
        mOne.AddColumn("a", kTypeInteger);
        mOne.AddColumn("b", kTypeString);
        mTwo.AddColumn("b", kTypeDouble);
        mTwo.AddColumn("c", kTypeDate);
        names = {"one", "t"};
        tables = {&mOne, &mTwo};
    }

    SQLNames names;
    SQLTables tables;

private:
    VelaTempTable mOne;
    VelaTempTable mTwo;
};

// The expressions of a statement's select list; empty when they could not be translated.
SimpleVector<VelaExprPtr> Translate(const std::string& items, VelaStatus* status,
                                    SimpleVector<string>* columnNames = nullptr,
                                    SimpleVector<uint32_t>* columnIDs = nullptr)
{
    const Tables from;
    VelaSQLParser parser('\0');
    const SQLSyntaxNodePtr tree = parser.Evaluate(Sql("SELECT " + items));
    EXPECT_EQ(VelaSQLParser::kNoError, parser.LastError()) << items;
    SimpleVector<VelaExprPtr> list;
    for (const auto& item : static_cast<const SQLSelectNode&>(*tree).mItems) {
        if (!item->mExpression->ConvertToExprList(from.names, from.tables, &list, status,
                                                  columnNames, columnIDs))
            return {};
    }
    return list;
}

VelaExprPtr TranslateOne(const std::string& item, VelaStatus* status = nullptr)
{
    SimpleVector<VelaExprPtr> list = Translate(item, status);
    return list.size() == 1 ? std::move(list[0]) : nullptr;
}

template <class Expr>
const Expr* As(const VelaExpr* expr)
{
    return dynamic_cast<const Expr*>(expr);
}

TEST(SQLTranslation, LiteralsBecomeConstants)
{
    const struct {
        const char* literal;
        VelaDataType type;
        const char* value;
        const char* why;
    } cases[] = {
        {"0", kTypeInteger, "0", "digits"},
        {"999999999", kTypeInteger, "999999999", "nine digits"},
        {"1234567890", kTypeDouble, "1234567890", "ten digits"},
        {"0000000001", kTypeDouble, "1", "ten characters, whatever their value"},
        {"1.5", kTypeDouble, "1.5", "a point"},
        {"1.", kTypeDouble, "1", "a point at the end"},
        {"12abc", kTypeInteger, "12", "leading digits"},
        {"12abc.d", kTypeDouble, "12", "a point anywhere"},
        {"1e5", kTypeInteger, "1", "an exponent alone makes no Double"},
        {"1.0e-5", kTypeDouble, "0.00001", "with a point it counts"},
        {"1e-1234567", kTypeDouble, "0", "ten characters with an exponent"},
        {"true", kTypeBoolean, "TRUE", "any case"},
        {"FALSE", kTypeBoolean, "FALSE", "any case"},
        {"'a''b'", kTypeString, "a'b", "a doubled quote"},
        {"''", kTypeString, "", "the empty text"},
        {"'1994-7-9'", kTypeString, "1994-7-9", "a text stays as it is"},
        {"DATE '1994-7-9'", kTypeDate, "1994-07-09", "canonical"},
        {"date '1994/7/9 8:00'", kTypeDate, "1994-07-09", "canonical"},
        {"Time '8:4'", kTypeTime, "08:04:00", "canonical"},
        {"TIMESTAMP '1994-7-9 8:4'", kTypeTimestamp, "1994-07-09 08:04:00", "canonical"},
    };
    for (const auto& c : cases) {
        const VelaExprPtr expr = TranslateOne(c.literal);
        const VExprConstant* constant = As<VExprConstant>(expr.get());
        ASSERT_NE(nullptr, constant) << c.literal;
        EXPECT_EQ(c.type, constant->Value().GetType()) << c.literal << ": " << c.why;
        EXPECT_EQ(c.value, Plain(constant->Value().GetSaveString())) << c.literal << ": " << c.why;
        EXPECT_FALSE(constant->Value().IsNull()) << c.literal;
    }
    for (const char* word : {"NULL", "null"}) {
        const VelaExprPtr expr = TranslateOne(word);
        ASSERT_NE(nullptr, As<VExprConstant>(expr.get())) << word;
        EXPECT_TRUE(As<VExprConstant>(expr.get())->Value().IsNull()) << word;
        EXPECT_EQ(kTypeNone, As<VExprConstant>(expr.get())->Value().GetType()) << word;
    }
}

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

TEST(SQLTranslation, NamesBecomeFields)
{
    const struct {
        const char* name;
        uint32_t table;
        uint32_t column;
    } cases[] = {
        {"a", 0, 0},     {"b", 0, 1},   {"c", 1, 1},   {"one.a", 0, 0},
        {"ONE.b", 0, 1}, {"t.b", 1, 0}, {"T.c", 1, 1},
    };
    for (const auto& c : cases) {
        const VelaExprPtr expr = TranslateOne(c.name);
        const VExprField* field = As<VExprField>(expr.get());
        ASSERT_NE(nullptr, field) << c.name;
        EXPECT_EQ(c.table, field->Table()) << c.name;
        EXPECT_EQ(c.column, field->ColumnNumber()) << c.name;
    }
}

TEST(SQLTranslation, UnknownNamesSetTheStatus)
{
    const struct {
        const char* item;
        VelaState state;
        const char* message;
    } cases[] = {
        {"x", kVEColumnNotFound, "Error: Column x not found."},
        {"A", kVEColumnNotFound, "Error: Column A not found."},
        {"t.a", kVEColumnNotFound, "Error: Column t.a not found."},
        {"t.B", kVEColumnNotFound, "Error: Column t.B not found."},
        {"t.b.c", kVEColumnNotFound, "Error: Column t.b.c not found."},
        {"t.", kVEColumnNotFound, "Error: Column t. not found."},
        {"two.c", kVETableNotFound, "Error: Table two not found."},
        {"two.*", kVETableNotFound, "Error: Table two not found."},
        {"DEFAULT", kVEColumnNotFound, "Error: Column DEFAULT not found."},
        {"1 + x", kVEColumnNotFound, "Error: Column x not found."},
        {"x + y", kVEColumnNotFound, "Error: Column x not found."},
        {"a AND b AND x", kVEColumnNotFound, "Error: Column x not found."},
        {"-x", kVEColumnNotFound, "Error: Column x not found."},
        {"x LIKE y", kVEColumnNotFound, "Error: Column x not found."},
        {"a LIKE b ESCAPE x", kVEColumnNotFound, "Error: Column x not found."},
        {"SUBSTRING(b FROM a FOR x)", kVEColumnNotFound, "Error: Column x not found."},
        {"SUM(x.y)", kVETableNotFound, "Error: Table x not found."},
        {"-*", kVEColumnNotFound, "Error: Column * not found."},
        {"a = t.*", kVEColumnNotFound, "Error: Column t.* not found."},
    };
    for (const auto& c : cases) {
        VelaStatus status;
        EXPECT_EQ(nullptr, TranslateOne(c.item, &status)) << c.item;
        EXPECT_EQ(c.state, status.State()) << c.item;
        EXPECT_EQ(c.message, Plain(status.Description())) << c.item;
        EXPECT_EQ(nullptr, TranslateOne(c.item, nullptr)) << c.item << ": without a status too";
    }
}

TEST(SQLTranslation, StarsExpandInOrder)
{
    const struct {
        const char* items;
        const char* names;
    } cases[] = {
        {"*", "a b b c"},      {"one.*", "a b"}, {"T.*", "b c"}, {"t.*, *, one.a", "b c a b b c a"},
        {"* AS x", "a b b c"},
    };
    for (const auto& c : cases) {
        VelaStatus status;
        std::string names;
        for (const VelaExprPtr& expr : Translate(c.items, &status))
            names += (names.empty() ? "" : " ") + Plain(expr->Name());
        EXPECT_EQ(c.names, names) << c.items;
    }
}

TEST(SQLTranslation, ItemsAreNamed)
{
    const struct {
        const char* item;
        const char* name;
    } cases[] = {
        {"a", "a"},
        {"one.a", "a"},
        {"a AS x", "x"},
        {"t.c x", "x"},
        {"a+1", "(a+1)"},
        {"a + 1 y", "y"},
        {"count(*)", "COUNT(*)"},
        {"NULL", "NULL"},
        {"null AS n", "n"},
        {"'it''s'", "'it''s'"},
        {"-a", "-(a)"},
        {"t.b LIKE 'x'", "t.b LIKE 'x'"},
    };
    for (const auto& c : cases) {
        const VelaExprPtr expr = TranslateOne(c.item);
        ASSERT_NE(nullptr, expr) << c.item;
        EXPECT_EQ(c.name, Plain(expr->Name())) << c.item;
    }
}

TEST(SQLTranslation, ColumnReferencesAreListed)
{
    SimpleVector<string> names;
    SimpleVector<uint32_t> ids;
    EXPECT_EQ(5u, Translate("t.c AS x, b, NULL, one.*", nullptr, &names, &ids).size());
    std::string listed;
    for (const string& name : names)
        listed += Plain(name) + " ";
    EXPECT_EQ("c b a b ", listed) << "what is no column is not among them";
    EXPECT_EQ(names.size(), ids.size());
}

TEST(SQLTranslation, ComparisonsTakeTheirCodes)
{
    const struct {
        const char* op;
        uint16_t code;
    } cases[] = {{"=", 15677}, {"<>", 8509}, {"<", 60}, {"<=", 15421}, {">", 62}, {">=", 15933}};
    for (const auto& c : cases) {
        const VelaExprPtr expr = TranslateOne(std::string("a ") + c.op + " 5");
        const VExprCompare* compare = As<VExprCompare>(expr.get());
        ASSERT_NE(nullptr, compare) << c.op;
        EXPECT_EQ(c.code, compare->Op()) << c.op;
        EXPECT_NE(nullptr, As<VExprField>(compare->Left())) << c.op;
        EXPECT_NE(nullptr, As<VExprConstant>(compare->Right())) << c.op;
    }
}

TEST(SQLTranslation, OperatorsBecomeTheirNodes)
{
    for (const char op : {'+', '-', '*', '/'}) {
        const VelaExprPtr expr = TranslateOne(std::string("a ") + op + " 5");
        ASSERT_NE(nullptr, As<VExprMath>(expr.get())) << op;
        EXPECT_EQ(op, As<VExprMath>(expr.get())->Op());
        EXPECT_NE(nullptr, As<VExprField>(As<VExprMath>(expr.get())->Left())) << op;
    }
    const VelaExprPtr negation = TranslateOne("-a");
    ASSERT_NE(nullptr, As<VExprMath>(negation.get()));
    EXPECT_EQ('-', As<VExprMath>(negation.get())->Op());
    ASSERT_NE(nullptr, As<VExprConstant>(As<VExprMath>(negation.get())->Left()));
    EXPECT_EQ(0, As<VExprConstant>(As<VExprMath>(negation.get())->Left())->Value().GetInteger());
    const VelaExprPtr conjunction = TranslateOne("a AND b and c");
    ASSERT_NE(nullptr, As<VExprAnd>(conjunction.get()));
    EXPECT_EQ(3u, As<VExprAnd>(conjunction.get())->Terms().size());
    const VelaExprPtr disjunction = TranslateOne("a or b");
    ASSERT_NE(nullptr, As<VExprOr>(disjunction.get()));
    EXPECT_EQ(2u, As<VExprOr>(disjunction.get())->Terms().size());
}

TEST(SQLTranslation, LikeBecomesItsNodeAndNotLikeANotOverIt)
{
    const VelaExprPtr like = TranslateOne("a LIKE b");
    ASSERT_NE(nullptr, As<VExprCompareLike>(like.get()));
    EXPECT_EQ(nullptr, As<VExprCompareLike>(like.get())->Escape());
    const VelaExprPtr notLike = TranslateOne("a NOT LIKE b ESCAPE 'x'");
    ASSERT_NE(nullptr, As<VExprNot>(notLike.get()));
    const auto* inner = As<VExprCompareLike>(As<VExprNot>(notLike.get())->Operand());
    ASSERT_NE(nullptr, inner);
    EXPECT_NE(nullptr, inner->Escape());
}

TEST(SQLTranslation, FunctionsBecomeTheirNodes)
{
    const VelaExprPtr upper = TranslateOne("UPPER(b)");
    EXPECT_NE(nullptr, As<VExprScalarFunc>(upper.get()));
    const struct {
        const char* call;
        VelaFuncCode code;
        bool isDistinct;
        bool hasOperand;
    } cases[] = {
        {"AVG(a)", kFuncAvg, false, true},         {"COUNT(a)", kFuncCount, false, true},
        {"COUNT(*)", kFuncCount, false, false},    {"MAX(ALL a)", kFuncMax, false, true},
        {"MIN(DISTINCT a)", kFuncMin, true, true}, {"SUM(distinct a)", kFuncSum, true, true},
        {"COUNT", kFuncCount, false, false},
    };
    for (const auto& c : cases) {
        const VelaExprPtr expr = TranslateOne(c.call);
        const VExprAggregate* aggregate = As<VExprAggregate>(expr.get());
        ASSERT_NE(nullptr, aggregate) << c.call;
        EXPECT_EQ(c.code, aggregate->Func()) << c.call;
        EXPECT_EQ(c.isDistinct, aggregate->Distinct()) << c.call;
        EXPECT_EQ(c.hasOperand, aggregate->Operand() != nullptr) << c.call;
    }
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
    EXPECT_NE(nullptr, As<VExprNot>(node.ConvertToVelaExpr({}, {}, nullptr).get()));
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
