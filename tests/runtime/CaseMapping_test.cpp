#include "runtime/CaseMapping.h"

#include <gtest/gtest.h>
#include <locale.h>

#include <string>

namespace vela {
namespace {

std::string Mapped(std::string_view text, TextEncoding encoding, LetterCase letterCase)
{
    const string result = MapCase(string(text, encoding), letterCase);
    EXPECT_EQ(encoding, result.Encoding());
    return std::string(result.View());
}

// tests/sql/functions/text.sql has the letters that map.
TEST(CaseMapping, MalformedUTF8PassesThroughAndTheRestIsMapped)
{
    struct {
        const char* text;
        const char* upper;
        const char* why;
    } cases[] = {
        {"a\xFFz", "A\xFFZ", "a byte that starts nothing"},
        {"a\xC3z", "A\xC3Z", "the second byte is missing"},
        {"z\xC3", "Z\xC3", "cut at the end"},
        {"z\xF0\x90\x90", "Z\xF0\x90\x90", "four bytes cut to three"},
        {"\xC1\xA1z", "\xC1\xA1Z", "an over-long a stays one"},
        {"\xF4\x90\x80\x80z", "\xF4\x90\x80\x80Z", "above the last code point"},
        {"\xC3\xC3\xA4", "\xC3\xC3\x84", "well-formed right behind malformed"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.upper, Mapped(c.text, kEncodingUTF8, LetterCase::kUpper)) << c.why;
}

TEST(CaseMapping, OtherEncodingsMapASCIILettersAlone)
{
    for (const TextEncoding encoding :
         {kEncodingASCII, kEncodingLatin1, kEncodingMacRoman, TextEncoding{0x12345678}}) {
        EXPECT_EQ("AZ\xE4\xC4", Mapped("aZ\xE4\xC4", encoding, LetterCase::kUpper)) << encoding;
        EXPECT_EQ("az\xE4\xC4", Mapped("aZ\xE4\xC4", encoding, LetterCase::kLower)) << encoding;
    }
}

TEST(CaseMapping, UTF16MapsWholeUnitsNotTheirBytes)
{
    const char16_t text[] = {'a', 0x6161, 0x0061, 0x6100, 0x00E4, 'Z'};
    const char16_t upper[] = {'A', 0x6161, 0x0041, 0x6100, 0x00E4, 'Z'};
    const std::string_view bytes(reinterpret_cast<const char*>(text), sizeof text);
    const std::string expected(reinterpret_cast<const char*>(upper), sizeof upper);
    EXPECT_EQ(expected, Mapped(bytes, kEncodingUTF16, LetterCase::kUpper));
    EXPECT_EQ("a", Mapped("a", kEncodingUTF16, LetterCase::kUpper)) << "half a unit";
}

TEST(CaseMapping, TheProcessLocaleDoesNotMatter)
{
    const std::string before = setlocale(LC_ALL, nullptr);
    for (const char* locale : {"C", "POSIX", "C.UTF-8", "tr_TR.UTF-8", "de_DE.ISO-8859-1"}) {
        if (!setlocale(LC_ALL, locale))
            continue;
        EXPECT_EQ("I\xC3\x84", Mapped("i\xC3\xA4", kEncodingUTF8, LetterCase::kUpper)) << locale;
        EXPECT_EQ("I\xE4", Mapped("i\xE4", kEncodingLatin1, LetterCase::kUpper)) << locale;
    }
    setlocale(LC_ALL, before.c_str());
}

}   // namespace
}   // namespace vela
