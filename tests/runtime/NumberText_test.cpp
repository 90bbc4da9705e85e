#include "runtime/NumberText.h"

#include <gtest/gtest.h>
#include <locale.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

namespace vela {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string Text(double number)
{
    const string text = DoubleText(number);
    EXPECT_EQ(kEncodingASCII, text.Encoding());
    return text.CString();
}

TEST(NumberText, DoublesPrintShortestAndPlainInTheOrdinaryRange)
{
    struct {
        double number;
        const char* text;
        const char* why;
    } cases[] = {
        {0.0, "0", "zero"},
        {1, "1", "integral"},
        {100, "100", "zeros at the end stay"},
        {0.1, "0.1", "not the sum of its bits"},
        {0.1 + 0.2, "0.30000000000000004", "seventeen digits where they are needed"},
        {2.5, "2.5", ""},
        {1e-5, "0.00001", "the first plain one"},
        {9.9999e-6, "9.9999e-6", "just below"},
        {0.000012345678901234567, "0.000012345678901234568", "plain with all its digits"},
        {999999999999999.0, "999999999999999", "the last plain integer"},
        {999999999999999.9, "999999999999999.9", "the last plain number"},
        {1e15, "1.0e+15", "the first with an exponent"},
        {1234567890123456.0, "1.234567890123456e+15", "integral but too large"},
        {2.5e-7, "2.5e-7", "no zero before the exponent's digit"},
        {1e100, "1.0e+100", "zeros in the exponent stay"},
        {1e23, "1.0e+23", "halfway between two doubles"},
        {9007199254740993.0, "9.007199254740992e+15", "2^53 and one"},
        {std::numeric_limits<double>::max(), "1.7976931348623157e+308", "the largest"},
        {std::numeric_limits<double>::min(), "2.2250738585072014e-308", "the smallest normal"},
        {std::numeric_limits<double>::denorm_min(), "5.0e-324", "the smallest of all"},
        {-0.0, "-0", "reads back as itself"},
        {kInfinity, "inf", ""},
        {-kInfinity, "-inf", ""},
        {std::nan(""), "nan", ""},
        {-std::nan(""), "nan", "the sign of not-a-number is no one's business"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.text, Text(c.number)) << c.text << " " << c.why;
}

TEST(NumberText, RandomDoublesReadBackAsThemselvesAndNoShorterTextDoes)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    for (int i = 0; i < 200000; i++) {
        double number = std::bit_cast<double>(random());
        if (i % 2 == 0)
            number = std::ldexp(static_cast<double>(random() >> 11),
                                static_cast<int>(random() % 100) - 90);
        if (!std::isfinite(number))
            continue;
        const std::string text = Text(number);
        const double back = TextToDouble(text);
        ASSERT_EQ(std::bit_cast<uint64_t>(number), std::bit_cast<uint64_t>(back)) << text;
        ASSERT_EQ(number, std::strtod(text.c_str(), nullptr)) << text << ": a second opinion";

        const bool isPlain = number == 0 || (std::fabs(number) >= 1e-5 && std::fabs(number) < 1e15);
        ASSERT_EQ(isPlain, text.find('e') == std::string::npos) << text;
        ASSERT_TRUE(isPlain || text.find('.') != std::string::npos) << text;

        // One significant digit fewer must be another number.
        std::string digits = text.substr(0, text.find('e'));
        std::erase_if(digits, [](char c) { return c == '-' || c == '.'; });
        digits.erase(0, digits.find_first_not_of('0'));
        digits.erase(digits.find_last_not_of('0') + 1);
        if (digits.size() > 1) {
            char shorter[64];
            snprintf(shorter, sizeof shorter, "%.*e", static_cast<int>(digits.size()) - 2, number);
            ASSERT_NE(number, std::strtod(shorter, nullptr)) << text;
        }
    }
}

TEST(NumberText, TextToDoubleTakesTheLongestLeadingDecimalNumber)
{
    struct {
        const char* text;
        double number;
        const char* why;
    } cases[] = {
        {"", 0, "nothing"},
        {"abc", 0, "no number"},
        {"42", 42, ""},
        {"-42", -42, ""},
        {"--42", 0, "one sign only"},
        {"-5.148914936017333e+34", -0x1.3d538dcf72a3fp+115, "wide registers would round it twice"},
        {"9007199254740993e0", 9007199254740992.0, "the first whole that is no double"},
        {"- 42", 0, "no blank behind the sign"},
        {" \t\n\v\f\r 42", 42, "all the blanks"},
        {"\x01"
         "42",
         0, "a control byte is no blank"},
        {"2.5.5", 2.5, "up to the second point"},
        {"2,5", 2, "a comma is no point"},
        {".5", 0.5, "no digit before the point"},
        {"5.", 5, "no digit behind it"},
        {".", 0, "a point alone"},
        {".e5", 0, "no digit at all"},
        {"5.e2", 500, ""},
        {"1e3", 1000, ""},
        {"1E3", 1000, ""},
        {"1e-3", 0.001, ""},
        {"1e", 1, "an exponent without digits is none"},
        {"1e-x", 1, ""},
        {"1e3.5", 1000, "an exponent has no fraction"},
        {"0x10", 0, "no hexadecimal numbers"},
        {"inf", 0, "words are no decimal numbers"},
        {"nan", 0, ""},
        {"1.7976931348623157e308", std::numeric_limits<double>::max(), "the largest"},
        {"1.7976931348623159e308", kInfinity, "just too large"},
        {"1e309", kInfinity, ""},
        {"-1e309", -kInfinity, ""},
        {"5e-324", 5e-324, "the smallest"},
        {"2e-324", 0, "too small"},
        {"-1e-400", 0, ""},
        {"1e99999999999999999999999", kInfinity, "an exponent that no integer holds"},
        {"1e-99999999999999999999999", 0, ""},
        {"0e99999999999999999999999", 0, "zero stays zero"},
        {"0.0000000000000000000000000000000000000001e340", 1e300, "small digits, large exponent"},
        {"0.00000000000000000000000000000000000000001e400", kInfinity, ""},
        {"100000000000000000000000000000000000000000e-400", 0, ""},
        {"123456789012345678901234567890", 123456789012345678901234567890.0,
         "digits beyond a double's"},
        {"0.1000000000000000055511151231257827021181583404541015625", 0.1, "exactly the double"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.number, TextToDouble(c.text)) << c.text << " " << c.why;
    EXPECT_TRUE(std::signbit(TextToDouble("-0")));
    EXPECT_EQ(1.0, TextToDouble(std::string_view("1\0002", 3))) << "NUL ends a number";
}

TEST(NumberText, TextToDoubleBearsAMillionDigits)
{
    const std::string ones(1000000, '1');
    EXPECT_EQ(kInfinity, TextToDouble(ones));
    EXPECT_EQ(0.0, TextToDouble("0." + std::string(1000000, '0') + "1"));
    EXPECT_EQ(1.0, TextToDouble("0." + std::string(999999, '0') + "1e1000000"));
    EXPECT_NEAR(0.111111, TextToDouble("0." + ones), 1e-5);
}

// The C library rounds correctly, in its own locale "C".
TEST(NumberText, DecimalsOfAllLengthsReadAsTheNearestDouble)
{
    std::mt19937 random(1);
    for (int i = 0; i < 300000; i++) {
        std::string text;
        const size_t digits = 1 + random() % 20;
        const size_t point = random() % (digits + 8);   // beyond the digits: none
        for (size_t d = 0; d < digits; d++) {
            if (d == point && d > 0)
                text += '.';
            text += static_cast<char>('0' + (random() % 4 == 0 ? 0 : random() % 10));
        }
        if (point == digits)
            text += '.';
        if (random() % 8 == 0)
            text += "e" + std::to_string(static_cast<int>(random() % 40) - 20);
        ASSERT_EQ(strtod(text.c_str(), nullptr), TextToDouble(text)) << text;
        ASSERT_EQ(strtod(text.c_str(), nullptr), TextToDouble(text + "x")) << text;
        ASSERT_EQ(-strtod(text.c_str(), nullptr), TextToDouble("-" + text)) << text;
    }
    for (const char* text :
         {"9007199254740991", "9007199254740992", "9007199254740993", "900719925474099.3",
          "9.00719925474099", "9.007199254740993", "9999999999999999", "999999999999999.9",
          "0.00000000000001", "0.30000000000000", "00000000000000.1"})
        EXPECT_EQ(strtod(text, nullptr), TextToDouble(text)) << text;
}

TEST(NumberText, TextToIntegerReadsLeadingDigitsAndSaturates)
{
    for (const char* text : {"42", "  42", "\t\n42", "+42", "42.9", "42x", "42 7", "42e3", "0042"})
        EXPECT_EQ(42, TextToInteger(text)) << text;
    for (const char* text : {"", "x", "- 42", "--42", "-0", "0x1F", ".5"})
        EXPECT_EQ(0, TextToInteger(text)) << text;
    EXPECT_EQ(-42, TextToInteger("-42"));
    EXPECT_EQ(2147483646, TextToInteger("2147483646"));
    for (const char* text : {"2147483647", "2147483648", "4294967296", "18446744073709551617"})
        EXPECT_EQ(INT32_MAX, TextToInteger(text)) << text;
    EXPECT_EQ(-INT32_MAX, TextToInteger("-2147483647"));
    for (const char* text : {"-2147483648", "-2147483649", "-99999999999999999999999999"})
        EXPECT_EQ(INT32_MIN, TextToInteger(text)) << text;
    EXPECT_EQ(INT32_MAX, TextToInteger(std::string(1000000, '9')));
    EXPECT_EQ(5, TextToInteger(std::string(1000000, '0') + "5"));
}

TEST(NumberText, DoubleToIntegerTruncatesAndSaturates)
{
    for (const double number : {0.0, 0.9999999, -0.9999999, std::nan("")})
        EXPECT_EQ(0, DoubleToInteger(number)) << number;
    EXPECT_EQ(2, DoubleToInteger(2.5));
    EXPECT_EQ(-2, DoubleToInteger(-2.5));
    EXPECT_EQ(INT32_MAX - 1, DoubleToInteger(2147483646.9));
    EXPECT_EQ(-INT32_MAX, DoubleToInteger(-2147483647.9));
    for (const double number : {2147483647.0, 2147483647.5, 2147483648.0, 1e300, kInfinity}) {
        EXPECT_EQ(INT32_MAX, DoubleToInteger(number)) << number;
        EXPECT_EQ(INT32_MIN, DoubleToInteger(-number - 1)) << number;
    }
}

TEST(NumberText, IntegersPrintInFull)
{
    EXPECT_STREQ("0", IntegerText(0).CString());
    EXPECT_STREQ("-1", IntegerText(-1).CString());
    EXPECT_STREQ("4294967295", IntegerText(4294967295).CString());
    EXPECT_STREQ("9223372036854775807", IntegerText(INT64_MAX).CString());
    EXPECT_STREQ("-9223372036854775808", IntegerText(INT64_MIN).CString());
}

TEST(NumberText, ACommaLocaleChangesNothing)
{
    const std::string before = setlocale(LC_ALL, nullptr);
    for (const char* locale : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "C.UTF-8"}) {
        if (!setlocale(LC_ALL, locale))
            continue;
        EXPECT_EQ("1234.5", Text(1234.5)) << locale;
        EXPECT_EQ("1.5e+20", Text(1.5e20)) << locale;
        EXPECT_EQ(1234.5, TextToDouble("1234.5")) << locale;
        EXPECT_EQ(1234.0, TextToDouble("1234,5")) << locale;
    }
    setlocale(LC_ALL, before.c_str());
}

}   // namespace
}   // namespace vela
