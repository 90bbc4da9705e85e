#include "shell/StatementSplitter.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "engine/sql/VelaSQLLexer.h"

namespace vela::shell {
namespace {

// What a script is split into: "line:column text", commands with "!" in front.
using Parts = std::vector<std::string>;

std::string PartText(const SourceStatement& statement)
{
    const bool isCommand = statement.kind == SourceStatement::Kind::kCommand;
    return (isCommand ? "!" : "") + std::to_string(statement.place.line) + ":" +
           std::to_string(statement.place.column) + " " + statement.text;
}

void TakeAll(StatementSplitter* splitter, char escape, Parts* parts)
{
    SourceStatement statement;
    while (splitter->Next(escape, &statement) == StatementSplitter::Result::kStatement) {
        EXPECT_EQ(statement.text.size(), statement.source.size()) << statement.text;
        parts->push_back(PartText(statement));
    }
}

// Feeds pieces of that size; 0: all at once.
Parts Split(const std::string& script, char escape, size_t pieceSize)
{
    StatementSplitter splitter;
    Parts parts;
    if (pieceSize == 0)
        pieceSize = script.size() + 1;
    for (size_t i = 0; i < script.size(); i += pieceSize) {
        splitter.Feed(std::string_view(script).substr(i, pieceSize));
        TakeAll(&splitter, escape, &parts);
    }
    splitter.Finish();
    TakeAll(&splitter, escape, &parts);
    return parts;
}

TEST(StatementSplitter, SplitsAtSemicolonsOutsideLiterals)
{
    const struct {
        std::string script;
        char escape;
        Parts parts;
        const char* why;
    } cases[] = {
        {"", 0, {}, "nothing"},
        {" \n\t ;; ;\n", 0, {}, "statements without text are skipped"},
        {"A", 0, {"1:1 A"}, "the last one needs no semicolon"},
        {"A;B", 0, {"1:1 A", "1:3 B"}, "columns count on in a line"},
        {"A;\n  B ;C", 0, {"1:1 A", "2:3 B", "2:6 C"}, "blanks around are not part of it"},
        {"A\nB", 0, {"1:1 A B"}, "a line feed becomes a blank"},
        {"A\r\nB;C", 0, {"1:1 A  B", "2:3 C"}, "CR LF: two blanks, one line"},
        {"A\rB;C", 0, {"1:1 A B", "2:3 C"}, "a lone CR ends a line"},
        {"\xC3\xBCX;B", 0, {"1:1 \xC3\xBCX", "1:4 B"}, "columns are characters"},
        {"\xEF\xBB\xBFX;B", 0, {"1:1 X", "1:3 B"}, "a byte order mark is skipped"},
        {"\xEF\xBBX", 0, {"1:1 \xEF\xBBX"}, "half a byte order mark is text"},

        {"'a''b;c';D", 0, {"1:1 'a''b;c'", "1:10 D"}, "a doubled quote"},
        {"'a\nb';C", 0, {"1:1 'a\nb'", "2:4 C"}, "a line feed in a literal stays"},
        {"'a\r\n--b\n;';C", 0, {"1:1 'a\r\n--b\n;'", "3:4 C"}, "no comments inside literals"},
        {std::string("'\0';B", 5), 0, {std::string("1:1 '\0'", 7), "1:5 B"}, "NUL escapes nothing"},
        {std::string("A\0;B", 4), 0, {std::string("1:1 A\0", 6), "1:4 B"}, "nor is it a blank"},
        {"'a;b", 0, {"1:1 'a;b"}, "an unclosed literal takes the rest"},
        {"A n'x;y';B", 0, {"1:1 A n'x", "1:7 y'", "1:10 B"}, "n'x is a word, and y' is one"},
        {"1e;B", 0, {"1:1 1e", "1:4 B"}, "a semicolon behind an e still ends"},
        {"1e\n'a;B'", 0, {"1:1 1e 'a", "2:4 B'"}, "the lexer takes the blank into the number"},
        {"a\n'b;c'", 0, {"1:1 a 'b;c'"}, "a line feed does, as it becomes a blank"},

        {"'a\\';b';C", '\\', {"1:1 'a\\';b'", "1:9 C"}, "an escaped quote closes nothing"},
        {"'\\", '\\', {"1:1 '\\"}, "an escape character at the very end"},
        {"'a?;b?';c';D", '?', {"1:1 'a?;b?';c'", "1:12 D"}, "any byte may be the one"},
    };
    for (const auto& c : cases)
        for (size_t pieceSize = 0; pieceSize <= 3; pieceSize++)
            EXPECT_EQ(c.parts, Split(c.script, c.escape, pieceSize))
                << c.why << ": " << c.script << ", in pieces of " << pieceSize;
}

TEST(StatementSplitter, TakesCommentLinesAndCommandsForWhatTheyAre)
{
    const struct {
        std::string script;
        Parts parts;
        const char* why;
    } cases[] = {
        {"-- A;B\nC", {"2:1 C"}, "a comment before a statement"},
        {"  --A\n--\nB", {"3:1 B"}, "blanks before it; an empty one"},
        {"A\n-- ;'\nB;", {"1:1 A       B"}, "a comment inside a statement becomes blanks"},
        {"A\n--B", {"1:1 A"}, "a comment as the last line"},
        {"A --B;C", {"1:1 A --B", "1:7 C"}, "not at the start of a line: no comment"},
        {"A; --B", {"1:1 A", "1:4 --B"}, "nor behind a statement in its line"},
        {"-1;A", {"1:1 -1", "1:4 A"}, "one minus is no comment"},
        {"A\n-1", {"1:1 A -1"}, "also inside a statement"},
        {"A\n-\n-B", {"1:1 A - -B"}, "two minuses on two lines"},
        {"-", {"1:1 -"}, "a lone minus"},
        {"A\n-", {"1:1 A -"}, "a minus at the very end"},
        {"-;A", {"1:1 -", "1:3 A"}, "a minus that ends at once"},
        {"- -A", {"1:1 - -A"}, "a blank between"},
        {"'a\n'--b;c", {"1:1 'a\n'--b", "2:6 c"}, "a line that begins inside a literal"},
        {"--a\rB", {"2:1 B"}, "a CR ends a comment"},
        {"--a\r\nB", {"2:1 B"}, "and so does CR LF"},

        {".tables", {"!1:1 .tables"}, "a command"},
        {".read a;b\nC", {"!1:1 .read a;b", "2:1 C"}, "it ends with its line alone"},
        {".x 'a\nB;", {"!1:1 .x 'a", "2:1 B"}, "quotes don't hold it open"},
        {" \n  .x  \r\nB", {"!2:3 .x", "3:1 B"}, "blanks around it"},
        {"A; .x\nB", {"1:1 A", "!1:4 .x", "2:1 B"}, "behind a statement"},
        {"A\n.x;", {"1:1 A .x"}, "inside a statement it is text"},
        {"--c\n.x", {"!2:1 .x"}, "behind a comment"},
        {".x\n--c\n.y", {"!1:1 .x", "!3:1 .y"}, "a comment behind a command"},
    };
    for (const auto& c : cases)
        for (size_t pieceSize = 0; pieceSize <= 3; pieceSize++)
            EXPECT_EQ(c.parts, Split(c.script, 0, pieceSize))
                << c.why << ": " << c.script << ", in pieces of " << pieceSize;
}

TEST(StatementSplitter, AsksForTheEscapeCharacterAnewForEachStatement)
{
    StatementSplitter splitter;
    splitter.Feed("'a\\';'b\\';c';'d\\'");
    splitter.Finish();
    SourceStatement statement;
    ASSERT_EQ(StatementSplitter::Result::kStatement, splitter.Next(0, &statement));
    EXPECT_EQ("'a\\'", statement.text);
    ASSERT_EQ(StatementSplitter::Result::kStatement, splitter.Next('\\', &statement));
    EXPECT_EQ("'b\\';c'", statement.text);
    ASSERT_EQ(StatementSplitter::Result::kStatement, splitter.Next(0, &statement));
    EXPECT_EQ("'d\\'", statement.text);
    EXPECT_EQ(StatementSplitter::Result::kEnd, splitter.Next(0, &statement));
}

TEST(StatementSplitter, KnowsWhetherAStatementIsOpen)
{
    const struct {
        const char* text;
        bool isOpen;
    } cases[] = {{"", false},  {" \n", false},  {"--x", false},   {"--x\n", false},
                 {"A", true},  {"A;", false},   {"A\n--x", true}, {"'a;", true},
                 {".x", true}, {".x\n", false}, {"A; B", true}};
    for (const auto& c : cases) {
        StatementSplitter splitter;
        splitter.Feed(c.text);
        Parts parts;
        TakeAll(&splitter, 0, &parts);
        EXPECT_EQ(c.isOpen, splitter.InStatement()) << c.text;
    }
}

TEST(SourceStatement, PlacesAndLinesAreThoseOfTheScript)
{
    StatementSplitter splitter;
    splitter.Feed("\n  A\t\xC3\xBC\n--c\r\nB C");
    splitter.Finish();
    SourceStatement statement;
    ASSERT_EQ(StatementSplitter::Result::kStatement, splitter.Next(0, &statement));
    const struct {
        char byte;
        size_t line;
        size_t column;
        const char* lineText;
    } cases[] = {{'A', 2, 3, "A\t\xC3\xBC"},
                 {'\xC3', 2, 5, "A\t\xC3\xBC"},
                 {'c', 3, 3, "--c"},
                 {'B', 4, 1, "B C"},
                 {'C', 4, 3, "B C"}};
    for (const auto& c : cases) {
        const size_t offset = statement.source.find(c.byte);
        const TextPlace place = statement.PlaceOf(offset);
        EXPECT_EQ(c.line, place.line) << c.byte;
        EXPECT_EQ(c.column, place.column) << c.byte;
        size_t lineStart = 0;
        EXPECT_EQ(c.lineText, statement.LineAround(offset, &lineStart)) << c.byte;
        EXPECT_EQ(c.lineText, statement.source.substr(lineStart, std::string(c.lineText).size()));
    }
    EXPECT_EQ(4u, statement.PlaceOf(1000).line);
    EXPECT_EQ(4u, statement.PlaceOf(1000).column);
}

// Where the lexer finds the end of the first statement of text.
size_t EndForLexer(const std::string& text, char escape)
{
    size_t start = 0;
    for (;;) {
        const string rest(std::string_view(text).substr(start), kEncodingUTF8);
        VelaSQLLexer lexer(escape);
        lexer.Start(rest);
        size_t end = 0;
        for (lexer.GetToken(); !lexer.IsEnd() && lexer.Kind() != VelaSQLLexer::kTokenNone;
             lexer.GetToken())
            end = static_cast<size_t>(lexer.TokenView().data() - rest.CString()) +
                  lexer.TokenView().size();
        const size_t stop = std::min(rest.View().find_first_not_of(" \t\x01", end), rest.length());
        if (lexer.IsEnd())
            return start + stop;
        start += stop + 1;   // a byte that starts no token, where the lexer would stay
    }
}

TEST(StatementSplitter, FindsTheSameLiteralsAsTheLexer)
{
    const uint32_t seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const std::string alphabet = "''''aN1e;;\\  \t\x01+*.!(x";
    for (int round = 0; round < 20000; round++) {
        std::string text = "a";   // no command, no comment, no empty statement
        const size_t size = random() % 14;
        for (size_t i = 0; i < size; i++)
            text += alphabet[random() % alphabet.size()];
        if (text.find("e;") != std::string::npos)
            continue;   // there the script ends where the lexer would go on
        const char escape = random() % 2 == 0 ? '\\' : '\0';
        const size_t end = EndForLexer(text, escape);
        StatementSplitter splitter;
        splitter.Feed(text);
        splitter.Finish();
        SourceStatement statement;
        ASSERT_EQ(StatementSplitter::Result::kStatement, splitter.Next(escape, &statement));
        std::string expected = text.substr(0, end);
        while (expected.back() >= 1 && expected.back() <= ' ')
            expected.pop_back();
        ASSERT_EQ(expected, statement.text) << text << ", escape " << (escape ? "on" : "off");
    }
}

}   // namespace
}   // namespace vela::shell
