#include "shell/Literal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

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

}   // namespace
}   // namespace vela::shell
