#include "engine/sql/VelaSQLParser.h"

#include <gtest/gtest.h>

#include "tests/sql/SQLTestTexts.h"

namespace vela {
namespace {

// tests/sql/syntax holds many more; these are the ones that a script can't say.
TEST(VelaSQLParser, PrintsCanonicalText)
{
    const struct {
        const char* sql;
        const char* canonical;
    } cases[] = {
        {"SELECT\t1\r,2", "SELECT 1, 2"},
        {"SELECT a\nFROM t", "SELECT a\nFROM AS t"},
        {"SELECT TIME\t'12:00'", "SELECT TIME '12:00'"},
        {"SELECT 'a;b' FROM t; and then !!", "SELECT 'a;b' FROM t"},
        {"SELECT 1;", "SELECT 1"},
        {"set escape   \\", "SET escape \\"},
        {"SET ESCAPE", "SET ESCAPE "},
        {"SET ESCAPE ^ ; and so on", "SET ESCAPE ^ ; and so on"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.canonical, Canonical(c.sql)) << c.sql;
}

// Where the parser has to stop is marked by "@".
TEST(VelaSQLParser, StopsAtTheFirstError)
{
    const struct {
        std::string marked;
        VelaSQLParser::ErrorType error;
        char escape;
    } cases[] = {
        {"@", VelaSQLParser::kErrKeywordExpected, 0},
        {"  @;", VelaSQLParser::kErrKeywordExpected, 0},
        {"INSERT INTO t VALUES (1@;)", VelaSQLParser::kErrCommaOrParenExpected, 0},
        {"UPDATE t SET a=1, b=@;", VelaSQLParser::kErrAssignValueExpected, 0},
        {"SELECT @\x80", VelaSQLParser::kErrSyntax, 0},
        {"SELECT @'abc", VelaSQLParser::kErrSyntax, 0},
        {"SELECT DATE @'1994", VelaSQLParser::kErrSyntax, 0},
        {"INSERT INTO t VALUES (DATE@, 'abc", VelaSQLParser::kErrDatetimeIncomplete, 0},
        {"SELECT @'a^'", VelaSQLParser::kErrSyntax, '^'},
    };
    for (const auto& c : cases) {
        std::string sql = c.marked;
        const size_t offset = sql.find('@');
        sql.erase(offset, 1);
        VelaSQLParser parser(c.escape);
        const SQLSyntaxNodePtr tree = parser.Evaluate(Sql(sql));
        EXPECT_EQ(c.error, parser.LastError()) << c.marked;
        EXPECT_EQ(offset, parser.ErrorOffset()) << c.marked;
    }
}

TEST(VelaSQLParser, EscapeCharacterRulesLiteralsAndAliases)
{
    EXPECT_EQ("SELECT 'a^''", Canonical("SELECT 'a^''", '^')) << "escapes are kept in the text";
    EXPECT_EQ("SELECT a AS bc", Canonical("SELECT a AS b!c", '!')) << "and undone in an alias";
    EXPECT_EQ("SELECT a AS b'c", Canonical("SELECT a AS b''c")) << "as are doubled quotes";
    EXPECT_EQ("SELECT a AS b!c", Canonical("SELECT a AS b!c"));
}

TEST(VelaSQLParser, OneParserReadsManyStatements)
{
    VelaSQLParser parser('\0');
    EXPECT_EQ(nullptr, parser.Evaluate(Sql("NONSENSE")));
    EXPECT_EQ(VelaSQLParser::kErrKeywordExpected, parser.LastError());
    EXPECT_NE(nullptr, parser.Evaluate(Sql("SELECT POSITION(")));
    EXPECT_EQ(VelaSQLParser::kErrSyntax, parser.LastError());
    (void)parser.Evaluate(Sql("SELECT a IN b"));
    EXPECT_EQ(VelaSQLParser::kErrNotSupported, parser.LastError())
        << "an interrupted POSITION leaves nothing behind";
    EXPECT_NE(nullptr, parser.Evaluate(Sql("COMMIT")));
    EXPECT_EQ(VelaSQLParser::kNoError, parser.LastError());
}

TEST(VelaSQLParser, CanonicalTextHasTheStatementsEncoding)
{
    for (const TextEncoding encoding : {kEncodingUTF8, kEncodingLatin1}) {
        VelaSQLParser parser('\0');
        const SQLSyntaxNodePtr tree =
            parser.Evaluate(string("SELECT (a+COUNT(*)) FROM t WHERE \xE9=1", encoding));
        ASSERT_NE(nullptr, tree);
        EXPECT_EQ(encoding, tree->Description().Encoding());
    }
}

}   // namespace
}   // namespace vela
