#include "shell/CommandLine.h"

#include <gtest/gtest.h>

namespace vela::shell {
namespace {

TEST(CommandLine, SplitsIntoWords)
{
    const struct {
        const char* line;
        std::vector<std::string> words;
        const char* why;
    } cases[] = {
        {"", {}, "nothing"},
        {".x", {".x"}, "a name alone"},
        {".x  a\tb ", {".x", "a", "b"}, "blanks and tabs"},
        {".x 'a b'", {".x", "a b"}, "single quotes"},
        {".x \"a 'b\"", {".x", "a 'b"}, "double quotes around a single one"},
        {".x 'it''s'", {".x", "it's"}, "a doubled quote"},
        {".x ''", {".x", ""}, "an empty word"},
        {".x a'b c'd", {".x", "ab cd"}, "quotes inside a word"},
        {".x a;", {".x", "a"}, "a semicolon out of habit"},
        {".x a ; ", {".x", "a"}, "with blanks around it"},
        {".x 'a;'", {".x", "a;"}, "one in quotes is meant"},
        {".x a;b", {".x", "a;b"}, "and so is one inside"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> words;
        EXPECT_TRUE(SplitCommandLine(c.line, &words)) << c.why;
        EXPECT_EQ(c.words, words) << c.why;
    }
}

TEST(CommandLine, RefusesAQuoteThatIsNotClosed)
{
    std::vector<std::string> words;
    for (const char* line : {".x 'a", ".x \"a'", ".x a'", ".x ''' "})
        EXPECT_FALSE(SplitCommandLine(line, &words)) << line;
}

}   // namespace
}   // namespace vela::shell
