#include "runtime/UTF8.h"

#include <gtest/gtest.h>

#include <string>

namespace vela {
namespace {

TEST(UTF8, DecodesTheEndsOfEveryFormAndRefusesWhatLiesOutside)
{
    struct {
        const char* text;
        uint32_t codePoint;
        size_t size;
        const char* why;
    } cases[] = {
        {"\x7F", 0x7F, 1, "last of one byte"},
        {"\xC2\x80", 0x80, 2, "first of two bytes"},
        {"\xDF\xBF", 0x7FF, 2, "last of two bytes"},
        {"\xE0\xA0\x80", 0x800, 3, "first of three bytes"},
        {"\xED\x9F\xBF", 0xD7FF, 3, "last before the surrogates"},
        {"\xEE\x80\x80", 0xE000, 3, "first behind the surrogates"},
        {"\xEF\xBF\xBF", 0xFFFF, 3, "last of three bytes"},
        {"\xF0\x90\x80\x80", 0x10000, 4, "first of four bytes"},
        {"\xF4\x8F\xBF\xBF", 0x10FFFF, 4, "the last code point"},
        {"\xF4\x90\x80\x80", 0, 0, "one above the last"},
        {"\xC1\xBF", 0, 0, "over-long, two bytes"},
        {"\xE0\x9F\xBF", 0, 0, "over-long, three bytes"},
        {"\xF0\x8F\xBF\xBF", 0, 0, "over-long, four bytes"},
        {"\xED\xA0\x80", 0, 0, "first surrogate"},
        {"\xED\xBF\xBF", 0, 0, "last surrogate"},
        {"\x80", 0, 0, "a continuation"},
        {"\xF8\x88\x80\x80\x80", 0, 0, "a form of five bytes"},
        {"\xFF", 0, 0, "never used"},
        {"\xC3\x28", 0, 0, "no continuation behind the first byte"},
        {"\xE2\x28\xA1", 0, 0, "no continuation in the middle"},
        {"\xE2\x82\x28", 0, 0, "no continuation at the end"},
        {"", 0, 0, "nothing"},
    };
    for (const auto& c : cases) {
        const DecodedCodePoint decoded = DecodeUTF8(c.text);
        EXPECT_EQ(c.size, decoded.size) << c.why;
        EXPECT_EQ(c.codePoint, static_cast<uint32_t>(decoded.codePoint)) << c.why;
        const std::string followed = std::string(c.text) + "z";
        if (c.size > 0) {
            EXPECT_EQ(c.size, DecodeUTF8(followed).size) << c.why << ", with more behind it";
        }
    }
}

TEST(UTF8, EveryCodePointComesBackAndNoCutOfItDoes)
{
    for (uint32_t number = 1; number <= 0x10FFFF; number++) {
        if (number >= 0xD800 && number <= 0xDFFF)
            continue;
        char bytes[4];
        const size_t size = EncodeUTF8(static_cast<char32_t>(number), bytes);
        const DecodedCodePoint decoded = DecodeUTF8(std::string_view(bytes, size));
        ASSERT_EQ(number, static_cast<uint32_t>(decoded.codePoint));
        ASSERT_EQ(size, decoded.size) << number;
        if (size > 1) {
            ASSERT_EQ(0u, DecodeUTF8(std::string_view(bytes, size - 1)).size) << number;
        }
    }
}

}   // namespace
}   // namespace vela
