#include "tests/sql/RandomStatement.h"

#include <cctype>
#include <iterator>
#include <map>
#include <sstream>
#include <vector>

namespace vela {

namespace {

// What statements are made of. Alternatives are equally likely, and the first one of a rule ends soon:
// it is taken where the text has become deep enough. Lower-case words in <> are rules, [ ] is left out
// now and then, { } comes any number of times, all else is a token; capitals are keywords.
const std::map<std::string, std::vector<std::string>> kRules = {
    {"statement",
     {"<select>", "<select>", "<insert>", "<update>", "DELETE FROM <name> [ <where> ]", "<create>",
      "<alter>", "<drop>"}},
    {"select",
     {"SELECT <item>", "SELECT [ <quantifier> ] <item> { , <item> } [ <from> ]",
      "SELECT [ <quantifier> ] <item> { , <item> } <from>"}},
    {"quantifier", {"DISTINCT", "ALL"}},
    {"item",
     {"<condition>", "<condition>", "<condition> <name>", "<condition> AS <name>", "*", "t.*"}},
    {"from",
     {"FROM <table>",
      "FROM <table> { , <table> } [ <where> ] [ GROUP BY <column> { , <column> } ] "
      "[ HAVING <condition> ] [ ORDER BY <key> { , <key> } ]"}},
    {"table", {"<name>", "<name> <name>", "<name> AS <name>"}},
    {"key", {"<column>", "<column> ASC", "<column> DESC"}},
    {"insert",
     {"INSERT INTO <name> DEFAULT VALUES",
      "INSERT INTO <name> [ ( <name> { , <name> } ) ] DEFAULT VALUES",
      "INSERT INTO <name> [ ( <name> { , <name> } ) ] <select>",
      "INSERT INTO <name> [ ( <name> { , <name> } ) ] VALUES ( <expression> { , <expression> } )"}},
    {"update", {"UPDATE <name> SET <change> { , <change> } [ <where> ]"}},
    {"change", {"<name> = <expression>"}},
    {"create",
     {"CREATE TABLE <name> ( <columndef> { , <columndef> } )",
      "CREATE INDEX <name> ON <name> ( <name> { , <name> } )"}},
    {"columndef", {"<name> <type> [ PRIMARY KEY ] [ DEFAULT <expression> ] [ NOT NULL ]"}},
    {"type", {"INTEGER", "STRING"}},
    {"alter",
     {"ALTER TABLE <name> RENAME TO <name>", "ALTER TABLE <name> ADD [ COLUMN ] <columndef>",
      "ALTER TABLE <name> MODIFY [ COLUMN ] <columndef>",
      "ALTER TABLE <name> DROP [ COLUMN ] <name> [ <behaviour> ]",
      "ALTER TABLE <name> RENAME [ COLUMN ] <name> TO <name>",
      "ALTER TABLE <name> ALTER [ COLUMN ] <name> DROP DEFAULT",
      "ALTER TABLE <name> ALTER [ COLUMN ] <name> SET <expression>"}},
    {"behaviour", {"RESTRICT", "CASCADE"}},
    {"drop", {"DROP INDEX t.i", "DROP TABLE <name> [ <behaviour> ]"}},
    {"where", {"WHERE <condition>"}},
    {"condition",
     {"<term>", "<term>", "<term> AND <term> { AND <term> }", "<term> OR <term> { OR <term> }"}},
    {"term",
     {"<expression>", "[ NOT ] <expression>", "[ NOT ] <expression> <comparison> <expression>",
      "[ NOT ] <expression> [ NOT ] LIKE <expression> [ ESCAPE <literal> ]"}},
    {"comparison", {"=", "<>", "<", "<=", ">", ">="}},
    {"expression",
     {"<column>", "<literal>", "<literal>", "- ( <expression> )", "+ ( <expression> )",
      "<expression> <operator> ( <expression> )", "<call>"}},
    {"operator", {"+", "-", "*", "/"}},
    {"call",
     {"COUNT ( * )", "LOWER ( <expression> )", "UPPER ( <expression> )",
      "CHARACTER_LENGTH ( <expression> )", "BIT_LENGTH ( <expression> )",
      "COUNT ( [ <quantifier> ] <expression> )", "SUM ( [ <quantifier> ] <expression> )",
      "POSITION ( <expression> IN <expression> )",
      "TRIM ( [ <side> ] 'x' FROM <expression> )",   // no word there: the first one must be a side
      "SUBSTRING ( <expression> FROM <literal> [ FOR <literal> ] )"}},
    {"side", {"LEADING", "BOTH"}},
    {"name", {"a", "b", "Tab_1", "#x", "caf\xC3\xA9", "_rowid", "x'y"}},
    {"column", {"a", "t.b", "T.a.b", "u._rowid"}},
    {"literal",
     {"1", "42", "1.5", "1e-5", "1234567890", "''", "'it''s'", "N'n'", "'a;b%_'", "'\xC3\xA9'",
      "DATE '1994-07-09'", "TIMESTAMP '1994-07-09'", "TRUE", "FALSE"}},
};

constexpr int kDeepest = 14;

}   // namespace

std::string RandomStatement::Next()
{
    mText.clear();
    Rule("statement", 0);
    return mText;
}

void RandomStatement::Rule(const std::string& name, int depth)
{
    const std::vector<std::string>& alternatives = kRules.at(name);
    const size_t choice = depth > kDeepest ? 0 : Below(static_cast<uint32_t>(alternatives.size()));
    Items(alternatives[choice], depth + 1);
}

void RandomStatement::Items(const std::string& items, int depth)
{
    std::istringstream words(items);
    for (std::string word; words >> word;) {
        if (word == "[" || word == "{") {
            const std::string end = word == "[" ? "]" : "}";
            std::string inner;
            while (words >> word && word != end)
                inner += word + " ";
            if (end == "]" && Chance(50))
                Items(inner, depth);
            while (end == "}" && Chance(depth > kDeepest ? 0 : 40))
                Items(inner, depth);
        } else if (word.size() > 2 && word[0] == '<' && word.back() == '>') {
            Rule(word.substr(1, word.size() - 2), depth);
        } else {
            Put(word);
        }
    }
}

// A token, with a blank before it where two words would run together, and sometimes elsewhere.
// Keywords come in any case.
void RandomStatement::Put(const std::string& token)
{
    const char* const blanks[] = {" ", "  ", "\t", "\r ", " \n"};
    const std::string delimiters = "()*+,-/<=>";
    const bool runsOn = mText.empty() || delimiters.find(mText.back()) != std::string::npos ||
                        delimiters.find(token[0]) != std::string::npos;
    // "<" and ">" before "=" would read as one operator; so might a word's end before "*".
    if (!mText.empty() && (!runsOn || Chance(30) || token == "*"))
        mText += blanks[Below(std::size(blanks))];
    const bool isKeyword = token.size() > 1 && std::isupper(static_cast<unsigned char>(token[0])) &&
                           std::isupper(static_cast<unsigned char>(token[1]));
    for (const char c : token)
        mText += isKeyword && Chance(50) ? static_cast<char>(std::tolower(c)) : c;
}

}   // namespace vela
