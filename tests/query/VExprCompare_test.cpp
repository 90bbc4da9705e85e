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
        {I(7), 7, 7, "7", true},
        {I(0), 0, 0, "0", false},
        {I(-10), -10, -10, "-10", true},
        {D(7.5), 7, 7.5, "7.5", true},
        {D(0), 0, 0, "0", false},
        {D(-0.5), 0, -0.5, "-0.5", true},
        {Text("7.9x"), 7, 7.9, "7.9x", true},
        {Text("7"), 7, 7, "7", true},
        {Text("f"), 0, 0, "f", false},
        {Text("FALSE"), 0, 0, "FALSE", false},
        {Text(""), 0, 0, "", true},
        {B(true), 1, 1, "TRUE", true},
        {B(false), 0, 0, "FALSE", false},
        {Date("1994-07-09"), 0, 0, "1994-07-09", true},
        {Date("1994-10-01"), 0, 0, "1994-10-01", true},
        {Time("12:34:06"), 0, 0, "12:34:06", true},
        {Timestamp("1994-07-09 12:34:06"), 0, 0, "1994-07-09 12:34:06", true},
        {Binary("7"), 0, 0, "7", true},
        {Binary("0"), 0, 0, "0", false},
        {Null(kTypeNone), 0, 0, "NULL", true},
        {Null(kTypeInteger), 0, 0, "NULL", false},
        {Null(kTypeDouble), 0, 0, "NULL", false},
        {Null(kTypeString), 0, 0, "NULL", true},
        {Null(kTypeDate), 0, 0, "NULL", true},
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
    const VelaValue nan = D(std::nan(""));
    EXPECT_EQ(Answers(2), AllAnswers(nan, D(1))) << "not-a-number has no order";
    EXPECT_EQ(Answers(2), AllAnswers(nan, nan)) << "nor equals itself";
    EXPECT_EQ(Answers(0), AllAnswers(Text("DATE 1994-07-09"), Date("1994-07-09"))) << "one prefix";
    EXPECT_EQ(Answers(-1), AllAnswers(Date("1"), Date("DATE 1"))) << "dates lose none";
    EXPECT_EQ(Answers(1), AllAnswers(Date("DATE 1"), Text("DATE 1"))) << "but the text does";
    EXPECT_EQ(Answers(0), AllAnswers(Binary("a"), Binary("b"))) << "bytes have no form but 0";
}

}   // namespace
}   // namespace vela
