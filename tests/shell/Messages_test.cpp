#include "shell/Messages.h"

#include <gtest/gtest.h>

namespace vela::shell {
namespace {

SourceStatement StatementOf(const std::string& script)
{
    StatementSplitter splitter;
    splitter.Feed(script);
    splitter.Finish();
    SourceStatement statement;
    EXPECT_EQ(StatementSplitter::Result::kStatement, splitter.Next(0, &statement));
    return statement;
}

TEST(Messages, TheCaretStandsBelowTheByte)
{
    const struct {
        std::string script;
        size_t offset;
        std::string text;
        const char* why;
    } cases[] = {
        {"SELECT x", 0, "SELECT x\n^\n", "at the start"},
        {"SELECT", 6, "SELECT\n      ^\n", "behind the end"},
        {"A\nB C\nD", 4, "B C\n  ^\n", "its own line alone"},
        {"A\nB", 1, "A\n ^\n", "at the end of a line"},
        {"\ta\tb c", 4, "a\tb c\n \t  ^\n", "tabs stay"},
        {"'K\xC3\xB6ln' x", 8, "'K\xC3\xB6ln' x\n       ^\n", "by width, not by bytes"},
        {"'\xE6\x97\xA5' x", 6, "'\xE6\x97\xA5' x\n     ^\n", "wide characters"},
        {"a\x1B b", 3, "a\\x1b b\n      ^\n", "what a terminal would obey is escaped"},
        {"SELECT 1; SELEC 2", 0, "SELECT 1\n^\n", "no other statement of the line"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.text, CaretText(StatementOf(c.script), c.offset)) << c.why;
}

TEST(Messages, OfALongLineThePartAroundTheCaretIsShown)
{
    const std::string before(500, 'a');
    const std::string behind(500, 'b');
    const std::string text = CaretText(StatementOf(before + "X" + behind), 500);
    EXPECT_EQ("..." + std::string(70, 'a') + "X" + std::string(39, 'b') + "...\n" +
                  std::string(73, ' ') + "^\n",
              text);
}

}   // namespace
}   // namespace vela::shell
