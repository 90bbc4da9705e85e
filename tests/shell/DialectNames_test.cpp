#include "shell/DialectNames.h"

#include <gtest/gtest.h>

#include "tests/shell/ShellTesting.h"

namespace vela::shell {
namespace {

TEST(DialectNames, UsableNamesAreWords)
{
    for (const char* name : {"a", "_a", "#1", "A9", "k\xC3\xB6ln", "from", "a:b"})
        EXPECT_TRUE(IsUsableName(name)) << name;
    for (const char* name : {"", "1a", "a b", "a.b", "a-b", "a/b", "a,b", "a;", "a'b", "a\"b",
                             "a\nb", "a\x7F", "\xC3\xB6", "a\\"})
        EXPECT_FALSE(IsUsableName(name)) << name;
    EXPECT_TRUE(IsUsableName(std::string(200, 'a')));
    EXPECT_FALSE(IsUsableName(std::string(201, 'a')));
}

// The engine has the last word on what it can say.
TEST(DialectNames, UsableNamesCanBeSaid)
{
    for (const std::string name : {"a", "#1", "k\xC3\xB6ln", "from", "date", "count", "not"}) {
        TestDatabase database;
        database.Run("CREATE TABLE " + name + " (" + name + " Integer); INSERT INTO " + name +
                     " (" + name + ") VALUES (7)");
        const std::string column = NeedsQualifier(name) ? name + "." + name : name;
        EXPECT_EQ(name + "\n7\n",
                  database.Run("SELECT " + column + " FROM " + name, OutputMode::kCsv));
    }
}

TEST(DialectNames, MakesNamesUsableAndDifferent)
{
    const struct {
        std::vector<std::string> names;
        std::vector<std::string> usable;
        const char* why;
    } cases[] = {
        {{"a", "b"}, {"a", "b"}, "usable ones stay"},
        {{"a b", "c-d"}, {"a_b", "c_d"}, "unusable bytes"},
        {{"1st", "\xC3\xB6"}, {"_1st", "_\xC3\xB6"}, "unusable beginnings"},
        {{"", "x", ""}, {"column_1", "x", "column_3"}, "empty ones"},
        {{"a", "a", "a"}, {"a", "a_2", "a_3"}, "the same name again"},
        {{"a", "a", "a_2"}, {"a", "a_3", "a_2"}, "a made name never takes another column's own"},
        {{"a b", "a_b"}, {"a_b_2", "a_b"}, "also when that comes later"},
        {{"A", "a"}, {"A", "a"}, "names are compared exactly"},
        {{"_rowid"}, {"_rowid_2"}, "the name of the row ids"},
        {{std::string(300, 'x')}, {std::string(200, 'x')}, "too long a name is cut"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.usable, UsableNames(c.names, true)) << c.why;
    EXPECT_EQ(std::vector<std::string>{"_rowid"}, UsableNames({"_rowid"}, false));
}

}   // namespace
}   // namespace vela::shell
