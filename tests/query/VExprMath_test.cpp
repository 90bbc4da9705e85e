#include "engine/query/VExprMath.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

constexpr int32_t kSmallest = std::numeric_limits<int32_t>::min();
constexpr int32_t kLargest = std::numeric_limits<int32_t>::max();

template <class Left, class Right>
std::unique_ptr<VExprMath> Math(Left left, char op, Right right)
{
    return std::make_unique<VExprMath>(Expr(left), op, Expr(right));
}

std::unique_ptr<VExprMath> MathOf(VelaExprPtr left, char op, VelaExprPtr right)
{
    return std::make_unique<VExprMath>(std::move(left), op, std::move(right));
}

TEST(VExprMath, EveryPairOfTypes)
{
    const VelaValue values[] = {
        VelaValue::Integer(7),
        VelaValue::Double(2.5),
        Text("12ab"),
        VelaValue::Boolean(true),
        Date("1994-07-09"),
        Time("12:34:06"),
        Timestamp("1994-07-09 1:2"),
        Binary("9"),
        VelaValue::Null(kTypeNone),
    };
    // Left down, right across, in the order of values. i Integer, d Double, s String, . UNKNOWN.
    const char* const plus[] = {
        "idiiiiiii",   // Integer
        "ddddddddd",   // Double
        "sssssssss",   // String
        "id.......",   // Boolean
        "id.......",   // Date
        "id.......",   // Time
        "id.......",   // Timestamp
        "id.......",   // Binary
        "id.......",   // NULL
    };
    const SimpleVector<VelaTable*> noTables;
    for (const char op : {'+', '-', '*', '/'}) {
        for (size_t l = 0; l < std::size(values); l++) {
            for (size_t r = 0; r < std::size(values); r++) {
                const auto expr = Math(values[l], op, values[r]);
                SCOPED_TRACE(expr->Description().CString());
                char expected = plus[l][r];
                if (expected == 's' && op != '+')
                    expected = '.';
                VelaValue result;
                const bool flag = expr->Evaluate({}, &result);
                const bool divisionByZero = op == '/' && expected == 'i' && r != 0 && r != 2 &&
                                            r != 3;   // integer forms of the others are 0
                EXPECT_EQ(expected != '.' && !divisionByZero, flag);
                const VelaDataType type = expected == 'i'   ? kTypeInteger
                                          : expected == 'd' ? kTypeDouble
                                          : expected == 's' ? kTypeString
                                                            : kTypeNone;
                EXPECT_EQ(type, expr->GetType(noTables));
                if (expected != '.')
                    EXPECT_EQ(type, result.GetType());
                else
                    EXPECT_EQ(Shown(values[l]), Shown(result)) << "what the left operand left";
            }
        }
    }
}

TEST(VExprMath, IntegerArithmeticWrapsAndTruncates)
{
    struct {
        int left;
        char op;
        int right;
        const char* outcome;
    } cases[] = {
        {7, '/', 2, "Integer 3"},
        {-7, '/', 2, "Integer -3"},
        {7, '/', -2, "Integer -3"},
        {-7, '/', -2, "Integer 3"},
        {1, '-', 2, "Integer -1"},
        {0, '-', 5, "Integer -5"},
        {6, '*', -7, "Integer -42"},
        {kLargest, '+', 1, "Integer -2147483648"},
        {kSmallest, '-', 1, "Integer 2147483647"},
        {kSmallest, '+', kSmallest, "Integer 0"},
        {65536, '*', 65536, "Integer 0"},
        {65537, '*', 65537, "Integer 131073"},
        {kLargest, '*', 2, "Integer -2"},
        {kSmallest, '*', -1, "Integer -2147483648"},
        {kSmallest, '/', -1, "Integer -2147483648"},
        {kSmallest, '/', 1, "Integer -2147483648"},
        {kLargest, '/', -1, "Integer -2147483647"},
        {5, '/', 0, "UNKNOWN leaving NULL Integer"},
        {0, '/', 0, "UNKNOWN leaving NULL Integer"},
        {kSmallest, '/', 0, "UNKNOWN leaving NULL Integer"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.outcome, Outcome(*Math(c.left, c.op, c.right))) << c.left << c.op << c.right;
}

TEST(VExprMath, DoubleArithmeticFollowsIEEE)
{
    const auto cases = std::to_array<std::pair<std::unique_ptr<VExprMath>, const char*>>({
        {Math(7.0, '/', 2), "Double 3.5"},
        {Math(7, '/', 2.0), "Double 3.5"},
        {Math(7, '-', 2.5), "Double 4.5"},
        {Math(2.5, '-', 7), "Double -4.5"},
        {Math(0.5, '*', 3), "Double 1.5"},
        {Math(0.25, '+', 0.5), "Double 0.75"},
        {Math(1.0, '/', 0), "Double inf"},
        {Math(-1, '/', 0.0), "Double -inf"},
        {Math(0.0, '/', 0), "Double nan"},
        {Math(kLargest, '+', 1.0), "Double 2147483648"},
        {Math(kLargest, '*', 2.0), "Double 4294967294"},
        {Math(1.5, '+', "2.5 apples"), "Double 4"},
    });
    for (const auto& [expr, outcome] : cases)
        EXPECT_EQ(outcome, Outcome(*expr)) << expr->Description().CString();
}

TEST(VExprMath, OtherTypesTakePartWithTheirNumber)
{
    const auto cases = std::to_array<std::pair<std::unique_ptr<VExprMath>, const char*>>({
        {Math(1, '+', "41 apples"), "Integer 42"},
        {Math(1, '+', "x"), "Integer 1"},
        {Math(VelaValue::Boolean(true), '+', 1), "Integer 2"},
        {Math(1, '-', VelaValue::Boolean(true)), "Integer 0"},
        {Math(3, '*', Date("1994-07-09")), "Integer 0"},
        {Math(VelaValue(), '+', 1), "Integer 1"},
        {Math(VelaValue::Null(kTypeInteger), '+', 1), "Integer 1"},
        {Math(VelaValue::Null(kTypeDouble), '+', 1), "Double 1"},
        {Math(2.5, '+', VelaValue()), "Double 2.5"},
        {Math(5, '/', VelaValue()), "UNKNOWN leaving NULL Integer"},
        {Math(VelaValue(), '+', VelaValue()), "UNKNOWN leaving NULL None"},
        {Math(VelaValue(), '+', "a"), "UNKNOWN leaving NULL None"},
    });
    for (const auto& [expr, outcome] : cases)
        EXPECT_EQ(outcome, Outcome(*expr)) << expr->Description().CString();
}

TEST(VExprMath, StringsAreJoined)
{
    const auto cases = std::to_array<std::pair<std::unique_ptr<VExprMath>, const char*>>({
        {Math("ab", '+', "cd"), "String abcd"},
        {Math("ab", '+', 1), "String ab1"},
        {Math("ab", '+', 2.5), "String ab2.5"},
        {Math("ab", '+', VelaValue::Boolean(false)), "String abFALSE"},
        {Math("on ", '+', Date("1994-07-09")), "String on DATE 1994-07-09"},
        {Math("ab", '+', VelaValue()), "String abNULL"},
        {Math(VelaValue::Null(kTypeString), '+', "ab"), "String NULLab"},
        {Math("", '+', ""), "String "},
        {Math("ab", '-', "cd"), "UNKNOWN leaving String ab"},
        {Math("5", '*', 2), "UNKNOWN leaving String 5"},
    });
    for (const auto& [expr, outcome] : cases)
        EXPECT_EQ(outcome, Outcome(*expr)) << expr->Description().CString();
}

TEST(VExprMath, JoinedTextsMeetInOneEncoding)
{
    const VelaValue ascii = Text("ab");
    const VelaValue utf8 = UTF8("\xC3\xA9");
    const VelaValue latin1 = VelaValue::String(string("\xE9", kEncodingLatin1));
    const VelaValue utf16 = UTF16(u"\u00E9");
    const VelaValue empty = Text("");
    struct {
        const VelaValue& left;
        const VelaValue& right;
        VelaValue joined;
        const char* why;
    } cases[] = {
        {utf8, utf8, UTF8("\xC3\xA9\xC3\xA9"), "nothing to do"},
        {ascii, utf8, UTF8("ab\xC3\xA9"), "ASCII gives way"},
        {utf8, ascii,
         UTF8("\xC3\xA9"
              "ab"),
         "also on the right"},
        {utf8, latin1, UTF8("\xC3\xA9\xC3\xA9"), "the right one is converted"},
        {latin1, utf8, VelaValue::String(string("\xE9\xE9", kEncodingLatin1)), "to the left"},
        {utf16, ascii,
         UTF16(u"\u00E9"
               u"ab"),
         "two bytes a character"},
        {ascii, utf16, UTF16(u"ab\u00E9"), "ASCII gives way here, too"},
        {empty, utf16, utf16, "an empty text has no say"},
        {utf16, empty, utf16, "on neither side"},
    };
    for (const auto& c : cases) {
        VelaValue result;
        ASSERT_TRUE(Math(c.left, '+', c.right)->Evaluate({}, &result)) << c.why;
        EXPECT_TRUE(c.joined.TextView() == result.TextView()) << c.why;
        EXPECT_EQ(c.joined.StoredText().Encoding(), result.StoredText().Encoding()) << c.why;
    }
}

TEST(VExprMath, UnknownOperandsLeaveWhatTheLeftOneLeft)
{
    const auto cases = std::to_array<std::pair<std::unique_ptr<VExprMath>, const char*>>({
        {MathOf(Unknown(), '+', Expr(1)), "UNKNOWN"},
        {MathOf(UnknownLeaving(VelaValue::Integer(3)), '+', Expr(1)), "UNKNOWN leaving Integer 3"},
        {MathOf(Expr(5), '+', Unknown()), "UNKNOWN leaving Integer 5"},
        {MathOf(Expr(5), '+', UnknownLeaving(VelaValue::Integer(3))), "UNKNOWN leaving Integer 5"},
        {MathOf(nullptr, '+', Expr(1)), "UNKNOWN"},
        {MathOf(Expr(1), '+', nullptr), "UNKNOWN"},
        {MathOf(Expr(1), '?', Expr(1)), "UNKNOWN leaving Integer 1"},
        {MathOf(Expr(1.5), '?', Expr(1)), "UNKNOWN leaving Double 1.5"},
    });
    for (const auto& [expr, outcome] : cases)
        EXPECT_EQ(outcome, Outcome(*expr)) << expr->Description().CString();
    const SimpleVector<VelaTable*> noTables;
    EXPECT_EQ(kTypeNone, MathOf(nullptr, '+', Expr(1))->GetType(noTables));
    EXPECT_EQ(kTypeNone, MathOf(Expr(1), '+', nullptr)->GetType(noTables));
}

TEST(VExprMath, ChooseWildcardTable_SingleIsWhetherThereIsATable)
{
    const uint32_t rows[] = {kInvalidRowID};
    const VelaRecSet recSet(rows);
    EXPECT_EQ("-1 not single", Choice(*MathOf(Wants(-1, true), '+', Wants(-1, true)), recSet));
    EXPECT_EQ("3 single", Choice(*MathOf(Wants(3, true), '+', Wants(-1, true)), recSet));
    EXPECT_EQ("4 single", Choice(*MathOf(Wants(-1, true), '+', Wants(4, true)), recSet));
    EXPECT_EQ("3 single", Choice(*MathOf(Wants(3, true), '+', Wants(4, true)), recSet));
    EXPECT_EQ("3 single", Choice(*MathOf(Wants(3, false), '+', Wants(-1, false)), recSet));
    EXPECT_EQ("4 single", Choice(*MathOf(nullptr, '+', Wants(4, true)), recSet));
}

TEST(VExprMath, TreeIsInspected)
{
    const auto sum = MathOf(ExprField(2, 1), '+', Expr("it's"));
    EXPECT_EQ(ExprKind::kMath, sum->Kind());
    EXPECT_EQ('+', sum->Op());
    EXPECT_EQ(ExprKind::kField, sum->Left()->Kind());
    EXPECT_EQ(ExprKind::kConstant, sum->Right()->Kind());
    EXPECT_EQ("(C.1+'it''s')", sum->Description());
    std::vector<bool> tables;
    sum->CollectTables(&tables);
    EXPECT_EQ((std::vector<bool>{false, false, true}), tables);

    EXPECT_TRUE(sum->Valid());
    EXPECT_FALSE(MathOf(nullptr, '+', Expr(1))->Valid());
    EXPECT_FALSE(MathOf(Expr(1), '+', nullptr)->Valid());
    EXPECT_FALSE(MathOf(Invalid(), '+', Expr(1))->Valid());
    EXPECT_FALSE(MathOf(Expr(1), '+', Invalid())->Valid());

    EXPECT_FALSE(sum->HasAggregate());
    EXPECT_TRUE(MathOf(WithAggregate(), '+', Expr(1))->HasAggregate());
    EXPECT_TRUE(MathOf(Expr(1), '+', WithAggregate())->HasAggregate());
    EXPECT_FALSE(MathOf(nullptr, '+', nullptr)->HasAggregate());
}

}   // namespace
}   // namespace vela
