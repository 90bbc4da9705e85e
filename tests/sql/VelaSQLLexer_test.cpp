#include "engine/sql/VelaSQLLexer.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/sql/SQLTestTexts.h"

namespace vela {
namespace {

constexpr auto kNone = VelaSQLLexer::kTokenNone;
constexpr auto kString = VelaSQLLexer::kTokenString;

// The tokens, "w[SELECT] n[1]", up to the end, or up to the first byte that starts none, which is
// included; "!" behind them where there was an error.
std::string Tokens(const string& statement, char escape = '\0')
{
    VelaSQLLexer lexer(escape);
    lexer.Start(statement);
    std::string tokens;
    for (lexer.GetToken(); !lexer.IsEnd(); lexer.GetToken()) {
        tokens += tokens.empty() ? "" : " ";
        tokens += "-dwns"[lexer.Kind()];
        tokens += "[" + std::string(lexer.TokenView()) + "]";
        if (lexer.Kind() == kNone)
            break;
    }
    return tokens + (lexer.LastError() == VelaSQLLexer::kNoError ? "" : "!");
}

TEST(VelaSQLLexer, SplitsStatementsIntoTokens)
{
    const struct {
        const char* text;
        const char* tokens;   // kind and text of each: word, delimiter, number, string, - for none
        const char* why;
    } cases[] = {
        {"", "", "empty"},
        {" \t\r\n\x01\x1F ", "", "all bytes from 1 to 32 are blanks between tokens"},
        {"_x #y", "w[_x] w[#y]", "the two other word starts"},
        {"a1.b2", "w[a1.b2]", "a point does not end a word"},
        {"a\nb", "w[a\nb]", "nor does a line feed"},
        {"a\vb\fc", "w[a\vb\fc]", "nor any other control byte but tab and return"},
        {"a\tb\rc", "w[a] w[b] w[c]", "tab and return do"},
        {"1\n2", "n[1\n2]", "numbers run on over line feeds too"},
        {"a'b\"c!\xC3\xA9", "w[a'b\"c!\xC3\xA9]", "all but delimiters belong to a word"},
        {"T.*", "w[T.*]", "a star after a point belongs to the word"},
        {"T.*x", "w[T.*] w[x]", "and ends it"},
        {"T.*.*", "w[T.*] -[]", "what follows starts anew"},
        {"<= <> >= < > = =>", "d[<=] d[<>] d[>=] d[<] d[>] d[=] d[=] d[>]",
         "the three pairs, and no other"},
        {"<=>=><", "d[<=] d[>=] d[>] d[<]", "pairs are taken from the left; >< is none"},
        {"%()*+,-/\\^", "d[%] d[(] d[)] d[*] d[+] d[,] d[-] d[/] d[\\] d[^]",
         "the other delimiters"},
        {"a!=1", "w[a!] d[=] n[1]", "!= is no operator"},
        {"1.5 12abc 1.2.3", "n[1.5] n[12abc] n[1.2.3]",
         "a number holds anything up to a delimiter"},
        {"1e-5 1e+5 1e5", "n[1e-5] n[1e+5] n[1e5]", "exponents"},
        {"1E-5", "n[1E] d[-] n[5]", "an upper-case E takes nothing along"},
        {"1e;2", "n[1e;2]", "even what would end the statement"},
        {"1eee-2", "n[1eee-2]", "the third e is looked at again"},
        {"1e", "n[1e]", "never past the end"},
        {"a;b", "w[a]", "nothing is read after a semicolon"},
        {";a", "", "nor after a leading one"},
        {".5", "-[]", "a point starts no token"},
        {"\x80", "-[]", "nor a byte past ASCII"},
        {"'a' N'b' ''", "s['a'] s['b'] s['']", "literals"},
        {"'it''s'", "s['it''s']", "a doubled quote is kept"},
        {"''''", "s['''']", "a literal of one quote"},
        {"n'b'", "w[n'b']", "only an upper-case N makes a national literal"},
        {"N 'b'", "w[N] s['b']", "and only right before the quote"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.tokens, Tokens(Sql(c.text))) << c.text << ": " << c.why;
}

TEST(VelaSQLLexer, TellsEveryDelimiterFromEveryOtherByte)
{
    const std::string delimiters = "\t\r %()*+,-/;<=>\\^";
    for (int byte = 1; byte < 256; byte++) {
        const std::string statement = std::string("a") + static_cast<char>(byte) + "b";
        const bool ends = delimiters.find(static_cast<char>(byte)) != std::string::npos;
        const std::string first = "w[" + (ends ? "a" : statement) + "]";
        EXPECT_EQ(first, Tokens(Sql(statement)).substr(0, first.size())) << "byte " << byte;
    }
}

TEST(VelaSQLLexer, SaysWhichLiteralsAreWrong)
{
    const struct {
        const char* text;
        char escape;
        const char* token;
        bool isWrong;
        const char* why;
    } cases[] = {
        {"'a'", 0, "'a'", false, "closed at the end of the statement"},
        {"'a';", 0, "'a'", false, "so may a semicolon"},
        {"'a", 0, "'a", true, "not closed"},
        {"'a''", 0, "'a''", true, "the last quote is a doubled one"},
        {"'a'x", 0, "'a'", true, "a word follows at once"},
        {"'a'\n", 0, "'a'", true, "a line feed is no delimiter"},
        {"'a\\'", 0, "'a\\'", false, "no escape is set"},
        {"'a\\'", '\\', "'a\\'", true, "the escape takes the closing quote"},
        {"'a\\''", '\\', "'a\\''", false, "and leaves the next one"},
        {"'a\\\\'", '\\', "'a\\\\'", false, "an escaped escape leaves it too"},
        {"'\\'''", '\\', "'\\'''", true, "escaped quote, then a doubled one"},
        {"'\\''''", '\\', "'\\''''", false, "escaped quote, doubled quote, closing quote"},
        {"'a\\", '\\', "'a\\", true, "nothing is read past an escape at the end"},
        {"'aaa'", 'a', "'aaa'", true, "a letter as escape takes the closing quote along"},
        {"'aa'", 'a', "'aa'", false, "a letter that escapes itself"},
        {"'a'", '\'', "'a'", true, "with the quote as escape no literal can end"},
        {"N'a", 0, "'a", true, "a national literal that is not closed"},
    };
    for (const auto& c : cases) {
        VelaSQLLexer lexer(c.escape);
        lexer.Start(Sql(c.text));
        lexer.GetToken();
        EXPECT_EQ(kString, lexer.Kind()) << c.text << ": " << c.why;
        EXPECT_EQ(c.token, lexer.TokenView()) << c.text << ": " << c.why;
        EXPECT_EQ(c.isWrong ? VelaSQLLexer::kErrSyntax : VelaSQLLexer::kNoError, lexer.LastError())
            << c.text << ": " << c.why;
    }
}

TEST(VelaSQLLexer, NulEndsTheStatement)
{
    EXPECT_EQ("w[ab]", Tokens(Sql(std::string_view("ab\0cd", 5))));
    EXPECT_EQ("n[1e]", Tokens(Sql(std::string_view("1e\0+2", 5))));
    EXPECT_EQ("s['a]!", Tokens(Sql(std::string_view("'a\0b'", 5))))
        << "no literal goes on behind it";
    EXPECT_EQ("s['a\\]!", Tokens(Sql(std::string_view("'a\\\0b'", 6)), '\\'))
        << "not even when it is escaped";
}

class Listener : public VelaSQLErrorListener {
public:
    void HandleError(VelaSQLLexer::ErrorType kind) override { mKinds.push_back(kind); }
    std::vector<VelaSQLLexer::ErrorType> mKinds;
};

TEST(VelaSQLLexer, FirstErrorIsKeptAndTheListenerHearsAll)
{
    Listener listener;
    VelaSQLLexer lexer('\0', &listener);
    lexer.Start(Sql("abc def"));
    lexer.GetToken();
    lexer.GetToken();
    lexer.serror(VelaSQLLexer::kErrFromExpected);
    lexer.GetToken();
    lexer.serror(VelaSQLLexer::kErrSyntax);
    EXPECT_EQ(VelaSQLLexer::kErrFromExpected, lexer.LastError());
    EXPECT_EQ(4u, lexer.ErrorOffset());
    EXPECT_EQ((std::vector{VelaSQLLexer::kErrFromExpected, VelaSQLLexer::kErrSyntax}),
              listener.mKinds);
    lexer.Start(Sql("abc"));
    EXPECT_EQ(VelaSQLLexer::kNoError, lexer.LastError()) << "a new statement starts without one";
}

}   // namespace
}   // namespace vela
