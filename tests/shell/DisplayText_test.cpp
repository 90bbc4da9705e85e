#include "shell/DisplayText.h"

#include <gtest/gtest.h>

namespace vela::shell {
namespace {

TEST(DisplayText, ShowsTextInItsWidthAndEscapesWhatWouldLeaveItsPlace)
{
    const struct {
        std::string text;
        std::string shown;
        size_t columns;
        const char* why;
    } cases[] = {
        {"", "", 0, "nothing"},
        {"K\xC3\xB6ln", "K\xC3\xB6ln", 4, "two bytes, one column"},
        {"\xE6\x97\xA5\xE6\x9C\xAC", "\xE6\x97\xA5\xE6\x9C\xAC", 4, "wide characters"},
        {"e\xCC\x81", "e\xCC\x81", 1, "a combining accent takes no column"},
        {"a\nb", "a\\nb", 4, "a line feed"},
        {"\r\t", "\\r\\t", 4, "carriage return and tab"},
        {std::string("\0", 1), "\\x00", 4, "NUL"},
        {"\x1B[2J", "\\x1b[2J", 7, "an escape sequence for terminals"},
        {"\x7F", "\\x7f", 4, "DEL"},
        {"\xC2\x9B", "\\u{9b}", 6, "a control character of Latin-1"},
        {"\xE2\x80\xA8", "\\u{2028}", 8, "the line separator"},
        {"\xE2\x80\xAA", "\\u{202a}", 8, "the first of the embeddings"},
        {"\xE2\x80\xAE", "\\u{202e}", 8, "right-to-left override"},
        {"\xE2\x81\xA9", "\\u{2069}", 8, "the last of the isolates"},
        {"\xE2\x81\xAA", "\xE2\x81\xAA", 0, "the one behind it is left alone"},
        {"\xFF", "\\xff", 4, "not UTF-8"},
        {"\xC3", "\\xc3", 4, "cut in the middle"},
        {"\\n", "\\n", 2, "a backslash is a character like others"},
    };
    for (const auto& c : cases) {
        size_t columns = 99;
        EXPECT_EQ(c.shown, ShownText(c.text, &columns)) << c.why;
        EXPECT_EQ(c.columns, columns) << c.why;
    }
}

TEST(DisplayText, TellsUtf8FromOtherBytes)
{
    const struct {
        std::string text;
        bool isValid;
        const char* why;
    } cases[] = {
        {"", true, "nothing"},
        {std::string("a\0b", 3), true, "NUL is a character"},
        {"twelve bytes", true, "more than a machine word of ASCII"},
        {"twelve byt\xC3\xA9s", true, "an accent behind it"},
        {"1234567\xC3", false, "cut at a machine word's end"},
        {"\x80", false, "a continuation byte alone"},
        {"\xE0\x9F\xBF", false, "overlong, three bytes"},
        {"\xED\xA0\x80", false, "a surrogate"},
        {"\xF4\x8F\xBF\xBF", true, "the last code point"},
        {"\xF4\x90\x80\x80", false, "behind it"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.isValid, IsValidUtf8(c.text)) << c.why;
}

}   // namespace
}   // namespace vela::shell
