#include "shell/Literal.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "shell/OpenDatabase.h"
#include "tests/shell/ShellTesting.h"

namespace vela::shell {
namespace {

VelaValue Text(VelaDataType type, std::string_view text, TextEncoding encoding = kEncodingUTF8)
{
    return VelaValue::Text(type, string(text, encoding));
}

TEST(Literal, SaysValuesAsTheDialectReadsThem)
{
    const double inf = std::numeric_limits<double>::infinity();
    const struct {
        VelaValue value;
        std::string text;
        std::string loss;
    } cases[] = {
        {VelaValue::Integer(0), "0", ""},
        {VelaValue::Integer(-2147483647 - 1), "-2147483648", ""},
        {VelaValue::Integer(2147483647), "2147483647", ""},
        {VelaValue::Boolean(true), "TRUE", ""},
        {VelaValue::Boolean(false), "FALSE", ""},
        {VelaValue::Double(5), "5.0", ""},
        {VelaValue::Double(-2.5), "-2.5", ""},
        {VelaValue::Double(-0.0), "0.0*-1.0", ""},
        {VelaValue::Double(std::nan("")), "0.0/0.0", ""},
        {VelaValue::Double(inf), "1.0/0.0", ""},
        {VelaValue::Double(-inf), "-1.0/0.0", ""},
        {VelaValue::Double(1e300), "1.0e+300", ""},
        {Text(kTypeString, ""), "''", ""},
        {Text(kTypeString, "it's"), "'it''s'", ""},
        {Text(kTypeString, "a\nb;--\\"), "'a\nb;--\\'", ""},
        {Text(kTypeString, "'"), "''''", ""},
        {Text(kTypeString, "\xFF"), "'\xFF'", ""},
        {Text(kTypeString, "42", kEncodingASCII), "'42'", ""},
        {Text(kTypeString, std::string_view("a\0b", 3)), "'ab'",
         "its NUL bytes, in hexadecimal it is 610062"},
        {Text(kTypeString, "K\xF6ln", kEncodingLatin1), "'K\xC3\xB6ln'", "its encoding 0x00000201"},
        {Text(kTypeDate, "1994-07-09"), "DATE '1994-07-09'", ""},
        {Text(kTypeDate, "0000-00-00"), "DATE '0000-00-00'", ""},
        {Text(kTypeDate, "12026-01-01"), "DATE '12026-01-01'", ""},
        {Text(kTypeDate, ""), "", ""},
        {Text(kTypeDate, "1994-7-9"), "'1994-07-09'", "its text 1994-7-9"},
        {Text(kTypeTime, "12:34:56"), "TIME '12:34:56'", ""},
        {Text(kTypeTimestamp, "1994-07-09 12:34:56"), "TIMESTAMP '1994-07-09 12:34:56'", ""},
        {Text(kTypeTimestamp, "soon"), "'0000-00-00 00:00:00'", "its text soon"},
        {Text(kTypeBinary, std::string_view("a\0", 2)), "'a'",
         "its type Binary, it becomes a String; in hexadecimal it is 6100"},
        {Text(kTypeBinary, ""), "", ""},
        {VelaValue::Null(kTypeInteger), "", ""},
    };
    for (const auto& c : cases) {
        const Literal literal = LiteralOf(c.value);
        EXPECT_EQ(c.text, literal.text);
        EXPECT_EQ(c.loss, literal.loss) << c.text;
    }
}

// Stores the value by its literal and compares what comes back, bit by bit.
void ExpectRoundTrip(TestDatabase* database, const VelaValue& value, const char* type)
{
    database->Run(std::string("CREATE TABLE t (a ") + type + "); INSERT INTO t VALUES (" +
                  LiteralOf(value).text + ")");
    VelaValue stored;
    ASSERT_TRUE(FindStoredTable(database->Database(), "t")->GetValue(1, 1, &stored));
    EXPECT_EQ(value.GetType(), stored.GetType());
    EXPECT_EQ(value.GetInteger(), stored.GetInteger());
    if (!std::isnan(value.GetDouble())) {
        EXPECT_EQ(std::bit_cast<uint64_t>(value.GetDouble()),
                  std::bit_cast<uint64_t>(stored.GetDouble()))
            << LiteralOf(value).text;
    } else {
        EXPECT_TRUE(std::isnan(stored.GetDouble()));
    }
    EXPECT_EQ(value.GetSaveString().View(), stored.GetSaveString().View());
    database->Run("COMMIT; DROP TABLE t");
}

TEST(Literal, IsReadBackAsTheSameValue)
{
    TestDatabase database;
    const double inf = std::numeric_limits<double>::infinity();
    for (const double number :
         {0.0, -0.0, 1.0, -1.0, 5e-324, -5e-324, 1.7976931348623157e308, 1e15, 1e-5, 9.9e-6,
          123456789012.0, 0.1, 1.0 / 3, inf, -inf, std::nan("")})
        ExpectRoundTrip(&database, VelaValue::Double(number), "Double");
    for (const int32_t number :
         {0, 1, -1, 999999999, 1000000000, -1000000000, 2147483647, -2147483647 - 1})
        ExpectRoundTrip(&database, VelaValue::Integer(number), "Integer");

    const uint32_t seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937_64 random(seed);
    for (int round = 0; round < 300; round++) {
        ExpectRoundTrip(&database, VelaValue::Double(std::bit_cast<double>(random())), "Double");
        ExpectRoundTrip(&database, VelaValue::Integer(static_cast<int32_t>(random())), "Integer");
    }
}

}   // namespace
}   // namespace vela::shell
