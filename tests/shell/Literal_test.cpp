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

// The dumps of random databases say many others.
TEST(Literal, SaysValuesAsTheDialectReadsThem)
{
    const double inf = std::numeric_limits<double>::infinity();
    const struct {
        VelaValue value;
        std::string text;
        std::string loss;
    } cases[] = {
        {VelaValue::Integer(-2147483647 - 1), "-2147483648", ""},
        {VelaValue::Double(5), "5.0", ""},
        {VelaValue::Double(-0.0), "0.0*-1.0", ""},
        {VelaValue::Double(std::nan("")), "0.0/0.0", ""},
        {VelaValue::Double(inf), "1.0/0.0", ""},
        {VelaValue::Double(-inf), "-1.0/0.0", ""},
        {Text(kTypeString, "42", kEncodingASCII), "'42'", ""},
        {Text(kTypeString, std::string_view("a\0b", 3)), "'ab'",
         "its NUL bytes, in hexadecimal it is 610062"},
        {Text(kTypeString, "K\xF6ln", kEncodingLatin1), "'K\xC3\xB6ln'", "its encoding 0x00000201"},
        {Text(kTypeDate, "1994-07-09"), "DATE '1994-07-09'", ""},
        {Text(kTypeDate, "0000-00-00"), "DATE '0000-00-00'", ""},
        {Text(kTypeDate, "12026-01-01"), "DATE '12026-01-01'", ""},
        {Text(kTypeDate, ""), "", ""},
        {Text(kTypeDate, "1994-7-9"), "'1994-07-09'", "its text 1994-7-9"},
        {Text(kTypeTimestamp, "soon"), "'0000-00-00 00:00:00'", "its text soon"},
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
