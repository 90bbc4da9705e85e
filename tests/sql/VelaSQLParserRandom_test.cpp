#include <gtest/gtest.h>

#include <iterator>
#include <random>

#include "tests/core/ShortTexts.h"
#include "tests/sql/RandomStatement.h"
#include "tests/sql/SQLTestTexts.h"

namespace vela {
namespace {

TEST(VelaSQLParserRandom, CanonicalTextIsItsOwnCanonicalText)
{
    const uint32_t seed = std::random_device()();
    RandomStatement statements(seed);
    for (int i = 0; i < 20000; i++) {
        const std::string statement = statements.Next();
        const std::string canonical = Canonical(statement);
        ASSERT_EQ(canonical, Canonical(canonical)) << "seed " << seed << ", from " << statement;
        ASSERT_NE("error", canonical.substr(0, 5)) << "seed " << seed << ", from " << statement;
    }
}

// What the parser made of it must be safe to print and delete, also along with an error.
void ParseAnything(std::string_view statement, char escape)
{
    VelaSQLParser parser(escape);
    const SQLSyntaxNodePtr tree = parser.Evaluate(Sql(statement));
    ASSERT_TRUE(tree || parser.LastError() != VelaSQLParser::kNoError);
    ASSERT_LE(parser.ErrorOffset(), statement.size());
    if (tree) {
        ASSERT_GT(tree->Description().length(), 0u);
    }
}

TEST(VelaSQLParserRandom, AnyTokensAreATreeOrAnError)
{
    const char* const tokens[] = {
        "SELECT", "INSERT", "UPDATE", "DELETE", "CREATE",  "ALTER",     "DROP",    "SET",
        "TABLE",  "INDEX",  "INTO",   "VALUES", "FROM",    "WHERE",     "GROUP",   "ORDER",
        "BY",     "HAVING", "AS",     "ASC",    "DESC",    "DISTINCT",  "ALL",     "AND",
        "OR",     "NOT",    "LIKE",   "ESCAPE", "IN",      "NULL",      "DEFAULT", "PRIMARY",
        "KEY",    "ADD",    "COLUMN", "RENAME", "TO",      "MODIFY",    "ON",      "RESTRICT",
        "DATE",   "TIME",   "TRUE",   "TRIM",   "LEADING", "SUBSTRING", "FOR",     "POSITION",
        "COUNT",  "SUM",    "LOWER",  "ESCAPE", "CASCADE", "foo",       "t.*",     "t.a",
        "(",      ")",      "(",      ")",      ",",       ",",         "*",       "+",
        "-",      "/",      "=",      "<>",     "<=",      "%",         "'a'",     "''",
        "'",      "N'x'",   "1",      "2.5",    "1e",      "1e-",       ";",       "\"",
        "!",      "\x80",   "\n",     "COMMIT", "integer", "^",         "\\"};
    const uint32_t seed = std::random_device()();
    std::mt19937 random(seed);
    for (int i = 0; i < 50000; i++) {
        std::string statement = tokens[random() % 10];
        for (size_t count = random() % 20; count > 0; count--) {
            statement += random() % 8 == 0 ? "" : " ";
            statement += tokens[random() % std::size(tokens)];
        }
        SCOPED_TRACE(testing::Message() << "seed " << seed << ": " << statement);
        ParseAnything(statement, random() % 4 == 0 ? '^' : '\0');
        if (HasFatalFailure())
            return;
    }
}

TEST(VelaSQLParserRandom, AnyBytesAreATreeOrAnError)
{
    const uint32_t seed = std::random_device()();
    std::mt19937 random(seed);
    RandomStatement statements(seed);
    for (int i = 0; i < 50000; i++) {
        // A right statement with some bytes replaced; the buffer ends where the statement does.
        std::string statement = statements.Next();
        statement.resize(random() % (statement.size() + 1));
        for (size_t count = random() % 4; count > 0 && !statement.empty(); count--)
            statement[random() % statement.size()] = static_cast<char>(random());
        SCOPED_TRACE(testing::Message() << "seed " << seed << ": " << statement);
        ParseAnything(statement, random() % 4 == 0 ? static_cast<char>(random()) : '\0');
        if (HasFatalFailure())
            return;
    }
}

TEST(VelaSQLParserRandom, EveryShortStatementIsATreeOrAnError)
{
    // All texts of up to five letters behind "SELECT ", over letters that the lexer treats apart.
    for (const std::string& text : AllTexts(std::string_view("a1e.'N(*;\"\\\0", 12), 5)) {
        ParseAnything("SELECT " + text, '\\');
        if (HasFatalFailure())
            return;
    }
}

}   // namespace
}   // namespace vela
