#include "engine/query/VExprCompare.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

std::unique_ptr<VExprCompare> Compare(VelaExprPtr left, uint16_t op, VelaExprPtr right)
{
    return std::make_unique<VExprCompare>(std::move(left), op, std::move(right));
}

constexpr uint16_t kOps[] = {kOpEqual,     kOpNotEqual, kOpLess,
                             kOpLessEqual, kOpGreater,  kOpGreaterEqual};

// What each operator says of an order: below 0, 0 or above 0; 2 for not comparable.
const char* Answers(int order)
{
    switch (order) {
        case -1:
            return "011100";
        case 0:
            return "100101";
        case 1:
            return "010011";
        default:
            return "010000";
    }
}

// The answers of all six operators, in the order of kOps; "?" for UNKNOWN.
std::string AllAnswers(const VelaValue& left, const VelaValue& right)
{
    std::string answers;
    for (const uint16_t op : kOps) {
        const std::string outcome = Outcome(*Compare(Expr(left), op, Expr(right)));
        answers += outcome == "Integer 1" ? '1' : outcome == "Integer 0" ? '0' : '?';
    }
    return answers;
}

TEST(VExprCompare, OperatorCodesAreTheirPackedCharacters)
{
    EXPECT_EQ(60, kOpLess);
    EXPECT_EQ(62, kOpGreater);
    EXPECT_EQ(8509, kOpNotEqual);
    EXPECT_EQ(15421, kOpLessEqual);
    EXPECT_EQ(15677, kOpEqual);
    EXPECT_EQ(15933, kOpGreaterEqual);
}

// A value with each form in which it can take part, written out by hand.
struct Sample {
    VelaValue value;
    int integer;
    double number;
    const char* text;
    bool truth;
};

std::vector<Sample> Samples()
{
    return {
        {VelaValue::Integer(7), 7, 7, "7", true},
        {VelaValue::Integer(0), 0, 0, "0", false},
        {VelaValue::Integer(-10), -10, -10, "-10", true},
        {VelaValue::Double(7.5), 7, 7.5, "7.5", true},
        {VelaValue::Double(0), 0, 0, "0", false},
        {VelaValue::Double(-0.5), 0, -0.5, "-0.5", true},
        {Text("7.9x"), 7, 7.9, "7.9x", true},
        {Text("7"), 7, 7, "7", true},
        {Text("f"), 0, 0, "f", false},
        {Text("FALSE"), 0, 0, "FALSE", false},
        {Text(""), 0, 0, "", true},
        {VelaValue::Boolean(true), 1, 1, "TRUE", true},
        {VelaValue::Boolean(false), 0, 0, "FALSE", false},
        {Date("1994-07-09"), 0, 0, "1994-07-09", true},
        {Date("1994-10-01"), 0, 0, "1994-10-01", true},
        {Time("12:34:06"), 0, 0, "12:34:06", true},
        {Timestamp("1994-07-09 12:34:06"), 0, 0, "1994-07-09 12:34:06", true},
        {Binary("7"), 0, 0, "7", true},
        {Binary("0"), 0, 0, "0", false},
        {VelaValue::Null(kTypeNone), 0, 0, "NULL", true},
        {VelaValue::Null(kTypeInteger), 0, 0, "NULL", false},
        {VelaValue::Null(kTypeDouble), 0, 0, "NULL", false},
        {VelaValue::Null(kTypeString), 0, 0, "NULL", true},
        {VelaValue::Null(kTypeDate), 0, 0, "NULL", true},
    };
}

int OrderOf(double a, double b)
{
    return a < b ? -1 : a > b ? 1 : 0;
}

int OrderOf(const std::string& a, const std::string& b)
{
    return a < b ? -1 : a > b ? 1 : 0;
}

// The rules of the header, over the forms above.
int ExpectedOrder(const Sample& left, const Sample& right)
{
    const VelaDataType type = left.value.GetType();
    const VelaDataType other = right.value.GetType();
    const bool asTexts =
        type == kTypeString || type == kTypeDate || type == kTypeTime || type == kTypeTimestamp;
    if (type == kTypeBoolean || other == kTypeBoolean) {
        if (asTexts)
            return OrderOf(std::string(left.truth ? "TRUE" : "FALSE"),
                           std::string(right.truth ? "TRUE" : "FALSE"));
        return OrderOf(left.truth, right.truth);
    }
    if (asTexts)
        return OrderOf(std::string(left.text), std::string(right.text));
    if (type == kTypeDouble || other == kTypeDouble)
        return OrderOf(left.number, right.number);
    return OrderOf(left.integer, right.integer);
}

TEST(VExprCompare, EveryPairOfTypesUnderEveryOperator)
{
    for (const Sample& left : Samples()) {
        for (const Sample& right : Samples())
            EXPECT_EQ(Answers(ExpectedOrder(left, right)), AllAnswers(left.value, right.value))
                << Shown(left.value) << " against " << Shown(right.value);
    }
}

TEST(VExprCompare, ValuesCompare)
{
    struct {
        VelaValue left;
        VelaValue right;
        int order;
        const char* why;
    } cases[] = {
        {VelaValue::Integer(2), VelaValue::Integer(10), -1, "as numbers, not texts"},
        {VelaValue::Integer(-2147483647 - 1), VelaValue::Integer(2147483647), -1,
         "a difference would overflow"},
        {VelaValue::Integer(2), VelaValue::Double(2.5), -1, "the Integer as a Double"},
        {VelaValue::Double(2.5), Text("2.25"), 1, "the text as a Double"},
        {VelaValue::Integer(2), Text("2.9"), 0, "the text as an Integer"},
        {Text("2"), VelaValue::Integer(10), 1, "a text on the left: as texts"},
        {Text("5"), VelaValue::Double(5), 0, "a Double without a fraction is short"},
        {Text("abc"), Text("ABC"), 1, "letter case counts"},
        {Text("ab"), Text("abc"), -1, "the shorter first"},
        {Text("\x7F"), Text("\x80"), -1, "bytes are unsigned"},
        {VelaValue::String(string("a\0b", 3, kEncodingASCII)),
         VelaValue::String(string("a\0c", 3, kEncodingASCII)), -1, "NUL does not end a text"},
        {Date("1994-07-09"), Date("1994-07-09"), 0, "dates by their canonical text"},
        {Date("1994-07-09"), Timestamp("1994-07-09 00:00:00"), -1, "a prefix comes first"},
        {Time("09:00:00"), Time("10:00:00"), -1, "times, too"},
        {Binary("a"), Binary("b"), 0, "Binary values have no form but 0"},
        {VelaValue(), VelaValue::Integer(0), 0, "NULL is 0 among numbers"},
        {Text("NULL"), VelaValue(), 0, "and a word among texts"},
        {VelaValue::Boolean(true), Text("yes"), 0, "a text that isn't a word for false"},
        {VelaValue::Boolean(false), Text("F"), 0, "one that is"},
        {VelaValue::Boolean(true), VelaValue::Integer(5), 0, "a number that isn't 0"},
        {VelaValue::Double(0.5), VelaValue::Boolean(true), 0, "coerced, not truncated"},
        {VelaValue::Double(std::nan("")), VelaValue::Double(1), 2, "not-a-number has no order"},
        {VelaValue::Double(std::nan("")), VelaValue::Double(std::nan("")), 2, "nor equals itself"},
        {VelaValue::Double(-0.0), VelaValue::Integer(0), 0, "minus zero is zero"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Answers(c.order), AllAnswers(c.left, c.right)) << c.why;
}

TEST(VExprCompare, TypePrefixesAreDroppedFromStringsThatMeetDates)
{
    struct {
        VelaValue left;
        VelaValue right;
        bool equal;
        const char* why;
    } cases[] = {
        {Date("1994-07-09"), Text("DATE 1994-07-09"), true, "on the right"},
        {Text("DATE 1994-07-09"), Date("1994-07-09"), true, "on the left"},
        {Date("1994-07-09"), Text("1994-07-09"), true, "no prefix is needed"},
        {Date("1994-07-09"), Text("date 1994-07-09"), true, "in any letter case"},
        {Date("1994-07-09"), Text("TIME 1994-07-09"), true, "any of the prefixes"},
        {Date("1994-07-09"), Text("Timestamp 1994-07-09"), true, "the long one"},
        {Date("1994-07-09"), Text("DATE  1994-07-09"), false, "one blank only"},
        {Date("1994-07-09"), Text("DATE DATE 1994-07-09"), false, "one prefix only"},
        {Date("1994-07-09"), Text("DATE1994-07-09"), false, "the blank belongs to it"},
        {Date("1994-07-09"), Text("DATE"), false, "shorter than the prefix"},
        {Date(""), Text("DATE "), true, "nothing behind the prefix"},
        {Time("12:34:06"), Text("TIME 12:34:06"), true, "a time"},
        {Text("TIMESTAMP 1994-07-09 12:34:06"), Timestamp("1994-07-09 12:34:06"), true, "both"},
        {Text("DATE 1994-07-09"), Text("1994-07-09"), false, "not among strings"},
        {Text("DATE 1994-07-09"), Text("DATE 1994-07-09"), true, "which compare as they are"},
        {Date("1"), Date("DATE 1"), false, "dates lose nothing among themselves"},
        {Date("1"), Binary("DATE 1"), false, "nor do bytes"},
        {Date("DATE 1"), Text("DATE 1"), false, "a date itself loses nothing"},
        {Text("DATE 5"), VelaValue::Integer(5), false, "nor does a string against a number"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.equal ? "Integer 1" : "Integer 0",
                  Outcome(*Compare(Expr(c.left), kOpEqual, Expr(c.right))))
            << c.why;
}

TEST(VExprCompare, UnknownOperandsLeaveWhatTheLeftOneLeft)
{
    const VelaValue three = VelaValue::Integer(3);
    EXPECT_EQ("UNKNOWN", Outcome(*Compare(Unknown(), kOpEqual, Expr(1))));
    EXPECT_EQ("UNKNOWN leaving Integer 3",
              Outcome(*Compare(UnknownLeaving(three), kOpEqual, Expr(1))));
    EXPECT_EQ("UNKNOWN leaving Integer 5", Outcome(*Compare(Expr(5), kOpEqual, Unknown())));
    EXPECT_EQ("UNKNOWN leaving Integer 5",
              Outcome(*Compare(Expr(5), kOpEqual, UnknownLeaving(three))));
    EXPECT_EQ("UNKNOWN", Outcome(*Compare(nullptr, kOpEqual, Expr(1))));
    EXPECT_EQ("UNKNOWN", Outcome(*Compare(Expr(1), kOpEqual, nullptr)));
    EXPECT_EQ("UNKNOWN", Outcome(*Compare(ExprField(0, 0), kOpEqual, Expr(1))))
        << "a column without a row";
}

TEST(VExprCompare, ChooseWildcardTable_SingleUnlessOperandsNameTwoTables)
{
    const uint32_t rows[] = {kInvalidRowID};
    const VelaRecSet recSet(rows);
    const auto choice = [&recSet](VelaExprPtr left, VelaExprPtr right) {
        return Choice(*Compare(std::move(left), kOpEqual, std::move(right)), recSet);
    };
    EXPECT_EQ("-1 single", choice(Wants(-1, true), Wants(-1, true)));
    EXPECT_EQ("3 single", choice(Wants(3, true), Wants(-1, true)));
    EXPECT_EQ("4 single", choice(Wants(-1, true), Wants(4, true)));
    EXPECT_EQ("3 single", choice(Wants(3, true), Wants(3, true)));
    EXPECT_EQ("3 not single", choice(Wants(3, true), Wants(4, true)));
    EXPECT_EQ("3 single", choice(Wants(3, false), Wants(-1, false)))
        << "what the operands say about themselves doesn't count";
    EXPECT_EQ("4 single", choice(nullptr, Wants(4, true)));
}

TEST(VExprCompare, TreeIsInspected)
{
    const auto less = Compare(ExprField(1, 2), kOpLessEqual, Expr(5));
    EXPECT_EQ(ExprKind::kCompare, less->Kind());
    EXPECT_EQ(kOpLessEqual, less->Op());
    EXPECT_EQ(ExprKind::kField, less->Left()->Kind());
    EXPECT_EQ(ExprKind::kConstant, less->Right()->Kind());
    EXPECT_EQ("(B.2<=5)", less->Description());
    EXPECT_EQ("(1=2)", Compare(Expr(1), kOpEqual, Expr(2))->Description());
    EXPECT_EQ("(1<>2)", Compare(Expr(1), kOpNotEqual, Expr(2))->Description());
    EXPECT_EQ(kTypeInteger, less->GetType({}));
    std::vector<bool> tables = {true};
    less->CollectTables(&tables);
    EXPECT_EQ((std::vector<bool>{true, true}), tables);

    EXPECT_TRUE(less->Valid());
    EXPECT_FALSE(Compare(nullptr, kOpLess, Expr(1))->Valid());
    EXPECT_FALSE(Compare(Expr(1), kOpLess, nullptr)->Valid());
    EXPECT_FALSE(Compare(Invalid(), kOpLess, Expr(1))->Valid());
    EXPECT_FALSE(Compare(Expr(1), kOpLess, Invalid())->Valid());
    EXPECT_FALSE(less->HasAggregate());
    EXPECT_TRUE(Compare(WithAggregate(), kOpLess, Expr(1))->HasAggregate());
    EXPECT_TRUE(Compare(Expr(1), kOpLess, WithAggregate())->HasAggregate());
}

// A column and a constant are compared without making values; the answers must not show it.
TEST(VExprCompare, ColumnsInMemoryCompareAsTheirValues)
{
    const std::vector<Sample> samples = Samples();
    for (const VelaDataType type : {kTypeInteger, kTypeDouble, kTypeString, kTypeBoolean, kTypeDate,
                                    kTypeTime, kTypeTimestamp, kTypeBinary}) {
        std::vector<TestTable::Row> rows;
        for (const Sample& sample : samples) {
            if (sample.value.GetType() == type)
                rows.push_back({static_cast<uint32_t>(rows.size() + 10), {sample.value}});
        }
        rows.push_back({99, {VelaValue::Null(type)}});
        OneTable data({type}, rows);
        for (const Sample& sample : samples) {
            for (const uint16_t op : kOps) {
                const auto left = Compare(ExprField(0, 0), op, Expr(sample.value));
                const auto right = Compare(Expr(sample.value), op, ExprField(0, 0));
                for (size_t row = 0; row < rows.size(); row++) {
                    const auto both = Compare(Expr(rows[row].values[0]), op, Expr(sample.value));
                    EXPECT_EQ(Outcome(*both), Outcome(*left, data.Row(row)))
                        << both->Description().CString();
                    EXPECT_EQ(Outcome(*both), Outcome(*left, data.RowInColumns(row)))
                        << both->Description().CString();
                    const auto turned = Compare(Expr(sample.value), op, Expr(rows[row].values[0]));
                    EXPECT_EQ(Outcome(*turned), Outcome(*right, data.RowInColumns(row)))
                        << turned->Description().CString();
                }
            }
        }
    }
}

}   // namespace
}   // namespace vela
