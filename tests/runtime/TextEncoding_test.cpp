#include "runtime/TextEncoding.h"

#include <gtest/gtest.h>

#include <bit>
#include <string>

#include "runtime/String.h"

namespace vela {
namespace {

constexpr TextEncoding kNamed[] = {
    kEncodingMacRoman,    kEncodingMacCyrillic, kEncodingMacCentralEurope, kEncodingMacIcelandic,
    kEncodingLatin1,      kEncodingLatin1 + 1,  kEncodingLatin1 + 2,       kEncodingLatin1 + 3,
    kEncodingLatin1 + 4,  kEncodingLatin1 + 5,  kEncodingLatin1 + 6,       kEncodingLatin1 + 7,
    kEncodingLatin1 + 8,  kEncodingLatin1 + 9,  kEncodingLatin1 + 10,      kEncodingLatin1 + 12,
    kEncodingLatin1 + 13, kEncodingLatin1 + 14, kEncodingLatin1 + 15,      kEncodingWindows1250,
    kEncodingWindows1251, kEncodingWindows1252, kEncodingWindows1253,      kEncodingWindows1254,
    kEncodingWindows1255, kEncodingWindows1256, kEncodingWindows1257,      kEncodingWindows1258,
    kEncodingASCII,       kEncodingUTF8,
};

std::string Convert(std::string_view text, TextEncoding from, TextEncoding to)
{
    const string result = ConvertEncoding(string(text, from), to);
    EXPECT_EQ(to, result.Encoding());
    return std::string(result.View());
}

// The bytes of UTF-16 text as the machine keeps it.
std::string Units(std::u16string_view units)
{
    return std::string(reinterpret_cast<const char*>(units.data()),
                       units.size() * sizeof(char16_t));
}

TEST(TextEncoding, CharactersHaveTheBytesOfEachEncoding)
{
    struct {
        TextEncoding encoding;
        const char* bytes;
        const char* utf8;
        const char* why;
    } cases[] = {
        {kEncodingASCII, "Az~", "Az~", "ASCII"},
        {kEncodingLatin1, "\xE9\xDF\xFF", "\xC3\xA9\xC3\x9F\xC3\xBF", "Latin-1"},
        {kEncodingLatin1 + 1, "\xB3", "\xC5\x82", "ISO 8859-2, l with stroke"},
        {kEncodingLatin1 + 4, "\xB6", "\xD0\x96", "ISO 8859-5, zhe"},
        {kEncodingLatin1 + 6, "\xE1", "\xCE\xB1", "ISO 8859-7, alpha"},
        {kEncodingLatin1 + 8, "\xFD", "\xC4\xB1", "ISO 8859-9, dotless i"},
        {kEncodingLatin1 + 14, "\xA4", "\xE2\x82\xAC", "ISO 8859-15, euro"},
        {kEncodingLatin1 + 15, "\xA4", "\xE2\x82\xAC", "ISO 8859-16, euro"},
        {kEncodingWindows1252, "\x80\xE9", "\xE2\x82\xAC\xC3\xA9", "Windows, euro"},
        {kEncodingWindows1250, "\xB3", "\xC5\x82", "Windows, l with stroke"},
        {kEncodingWindows1251, "\xC6", "\xD0\x96", "Windows, zhe"},
        {kEncodingWindows1253, "\xE1", "\xCE\xB1", "Windows, alpha"},
        {kEncodingWindows1254, "\xFD", "\xC4\xB1", "Windows, dotless i"},
        {kEncodingWindows1255, "\xE0", "\xD7\x90", "Windows, alef"},
        {kEncodingWindows1256, "\xC7", "\xD8\xA7", "Windows, alif"},
        {kEncodingWindows1257, "\xE0", "\xC4\x85", "Windows, a with ogonek"},
        {kEncodingWindows1258, "\xFE", "\xE2\x82\xAB", "Windows, dong"},
        {kEncodingMacRoman, "\x8E\x80", "\xC3\xA9\xC3\x84", "Mac, e acute, A diaeresis"},
        {kEncodingMacCyrillic, "\x86", "\xD0\x96", "Mac, zhe"},
        {kEncodingMacCentralEurope, "\xB8", "\xC5\x82", "Mac, l with stroke"},
        {kEncodingMacIcelandic, "\xDE", "\xC3\x9E", "Mac, Thorn"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.utf8, Convert(c.bytes, c.encoding, kEncodingUTF8)) << c.why;
        EXPECT_EQ(c.bytes, Convert(c.utf8, kEncodingUTF8, c.encoding)) << c.why;
        EXPECT_EQ(c.bytes,
                  Convert(Convert(c.bytes, c.encoding, kEncodingUTF16), kEncodingUTF16, c.encoding))
            << c.why << ", by way of UTF-16";
    }
}

TEST(TextEncoding, UTF16IsInTheMachinesOrderWithoutAMark)
{
    EXPECT_EQ(Units(u"h\u00E9\u20AC"),
              Convert("h\xC3\xA9\xE2\x82\xAC", kEncodingUTF8, kEncodingUTF16));
    EXPECT_EQ(Units(u"\U0001F600"), Convert("\xF0\x9F\x98\x80", kEncodingUTF8, kEncodingUTF16));
    EXPECT_EQ("\xF0\x9F\x98\x80", Convert(Units(u"\U0001F600"), kEncodingUTF16, kEncodingUTF8));
    EXPECT_EQ(Units(u"ab"), Convert("ab", kEncodingASCII, kEncodingUTF16));
    EXPECT_EQ("ab", Convert(Units(u"ab"), kEncodingUTF16, kEncodingASCII));
}

TEST(TextEncoding, MissingCharactersBecomeOneQuestionMarkEach)
{
    EXPECT_EQ(
        "h\xE9?"
        "?!",
        Convert("h\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80!", kEncodingUTF8, kEncodingLatin1));
    EXPECT_EQ("h??", Convert("h\xC3\xA9\xE2\x82\xAC", kEncodingUTF8, kEncodingASCII));
    EXPECT_EQ("?", Convert("\xE9", kEncodingLatin1, kEncodingASCII));
    EXPECT_EQ("?x", Convert(Units(u"\u20ACx"), kEncodingUTF16, kEncodingLatin1));
}

TEST(TextEncoding, MalformedBytesBecomeQuestionMarksAndTheRestIsKept)
{
    struct {
        std::string text;
        TextEncoding encoding;
        std::u16string expected;
        const char* why;
    } cases[] = {
        {"a\x80z", kEncodingASCII, u"a?z", "ASCII has no byte 0x80"},
        {"a\xFFz", kEncodingUTF8, u"a?z", "a byte that starts nothing"},
        {"a\xC3z", kEncodingUTF8, u"a?z", "a second byte is missing"},
        {"z\xC3", kEncodingUTF8, u"z?", "cut at the end"},
        {"z\xE2\x82", kEncodingUTF8, u"z??", "three bytes cut to two"},
        {"\xC0\x80z", kEncodingUTF8, u"??z", "over-long"},
        {"\xED\xA0\x80z", kEncodingUTF8, u"???z", "a surrogate"},
        {"a\x81z", kEncodingWindows1252, u"a?z", "a byte without meaning"},
        {Units(u"a") + std::string("z"), kEncodingUTF16, u"a?", "half a unit"},
        {Units(std::u16string({u'a', 0xD800, u'z'})), kEncodingUTF16, u"a?z",
         "a high surrogate alone"},
        {Units(std::u16string({u'a', 0xDC00, u'z'})), kEncodingUTF16, u"a?z",
         "a low surrogate alone"},
        {Units(std::u16string({u'a', 0xD800})), kEncodingUTF16, u"a?", "a pair cut in the middle"},
        {std::string(5000, '\x80'), kEncodingUTF8, std::u16string(5000, u'?'), "thousands"},
    };
    for (const auto& c : cases) {
        const TextEncoding target = c.encoding == kEncodingUTF16 ? kEncodingUTF8 : kEncodingUTF16;
        const std::string expected = target == kEncodingUTF8
                                         ? std::string(c.expected.begin(), c.expected.end())
                                         : Units(c.expected);
        EXPECT_EQ(expected, Convert(c.text, c.encoding, target)) << c.why;
    }
}

TEST(TextEncoding, EncodingsWithoutAConverterRetagTheSameBytes)
{
    const TextEncoding unknown = 0x0DEAD000;
    EXPECT_EQ(nullptr, IconvName(unknown));
    EXPECT_EQ("\xE9\xFF", Convert("\xE9\xFF", kEncodingLatin1, unknown));
    EXPECT_EQ("\xE9\xFF", Convert("\xE9\xFF", unknown, kEncodingUTF8));
    for (const TextEncoding encoding :
         {kEncodingMacGreek, kEncodingMacTurkish, kEncodingMacCroatian, kEncodingMacRomanian,
          kEncodingLatin1 + 11, kEncodingLatin1 + 16}) {
        EXPECT_EQ(nullptr, IconvName(encoding)) << encoding;
        EXPECT_EQ("\xE9", Convert("\xE9", encoding, kEncodingUTF8)) << encoding;
    }
}

TEST(TextEncoding, SameEncodingAndEmptyTextComeBackAsTheyAre)
{
    const string broken("\xFF\x80", kEncodingUTF8);
    EXPECT_EQ(broken.CString(), ConvertEncoding(broken, kEncodingUTF8).CString()) << "shared";
    EXPECT_EQ("", Convert("", kEncodingUTF8, kEncodingUTF16));
}

TEST(TextEncoding, EveryNamedEncodingKeepsASCIIAndRoundTripsWhatItHas)
{
    std::string ascii;
    for (char byte = 1; byte < 127; byte++)
        ascii += byte;
    ascii += '\x7F';
    ascii += '\0';
    for (const TextEncoding encoding : kNamed) {
        ASSERT_NE(nullptr, IconvName(encoding)) << encoding;
        EXPECT_EQ(ascii,
                  Convert(Convert(ascii, encoding, kEncodingUTF16), kEncodingUTF16, encoding))
            << IconvName(encoding);
        EXPECT_EQ(ascii, Convert(ascii, encoding, kEncodingUTF8)) << IconvName(encoding);
        if (encoding == kEncodingUTF8)
            continue;
        for (int byte = 0x80; byte <= 0xFF; byte++) {
            const std::string one(1, static_cast<char>(byte));
            const std::string utf8 = Convert(one, encoding, kEncodingUTF8);
            ASSERT_FALSE(utf8.empty()) << IconvName(encoding) << " " << byte << ": dropped";
            if (utf8 != "?") {
                EXPECT_EQ(one, Convert(utf8, kEncodingUTF8, encoding))
                    << IconvName(encoding) << " " << byte;
            }
        }
    }
}

TEST(TextEncoding, LongTextsPassTheConvertersBlocksWhole)
{
    std::string utf8;
    std::string latin;
    for (int i = 0; i < 100000; i++) {
        utf8 += i % 7 == 0 ? "\xC3\xA9" : "x";
        latin += i % 7 == 0 ? "\xE9" : "x";
    }
    EXPECT_EQ(latin, Convert(utf8, kEncodingUTF8, kEncodingLatin1));
    EXPECT_EQ(utf8, Convert(latin, kEncodingLatin1, kEncodingUTF8));
}

}   // namespace
}   // namespace vela
