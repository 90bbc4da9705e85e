#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "tests/sql/SqlScript.h"
#include "tests/storage/TemporaryFolder.h"

namespace vela {
namespace {

// The scripts in the folders below this one, by name.
std::vector<std::string> ScriptNames()
{
    const std::filesystem::path folder = std::filesystem::path(VELA_SOURCE_DIR) / "tests/sql";
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".sql")
            names.push_back(entry.path().lexically_relative(folder).string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string TestName(const testing::TestParamInfo<std::string>& info)
{
    std::string name = info.param;
    std::replace_if(
        name.begin(), name.end(),
        [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
}

class SqlScripts : public testing::TestWithParam<std::string> {};

TEST_P(SqlScripts, GivesWhatIsWrittenBesideIt)
{
    const std::string path = "tests/sql/" + GetParam();
    const SqlScript script(FileContent(VELA_SOURCE_DIR "/" + path));
    EXPECT_GT(script.Steps().size(), 0u);
    RunScript(script, path);
}

TEST_P(SqlScripts, GivesTheSameWithoutColumnsInMemory)
{
    const std::string path = "tests/sql/" + GetParam();
    RunScript(SqlScript(FileContent(VELA_SOURCE_DIR "/" + path)), path, 0);
}

INSTANTIATE_TEST_SUITE_P(All, SqlScripts, testing::ValuesIn(ScriptNames()), TestName);

class SqlPages : public testing::TestWithParam<std::string> {};

TEST_P(SqlPages, ExamplesGiveWhatThePageSays)
{
    const std::string path = "docs/" + GetParam();
    const std::string page = FileContent(VELA_SOURCE_DIR "/" + path);
    const SqlScript script = SqlScript::FromMarkdown(page);
    EXPECT_GT(script.Steps().size(), 0u);
    RunScript(script, path);
}

INSTANTIATE_TEST_SUITE_P(All, SqlPages, testing::Values("sql.md", "sql-differences.md"), TestName);

TEST(SqlScript, IsTakenApart)
{
    const SqlScript script(
        "-- a comment\n"
        "SELECT 'a;b',\n"
        "  -- another\n"
        "  1;  COMMIT;\n"
        "--= x|y\n"
        "--! 42S02 Error: no.\n"
        "SELECT 'it''s;\n"
        "--not a comment';\n"
        "--> it's|1\n"
        "-->\n"
        "--reopen\n"
        "SET ESCAPE ^;\n"
        "SELECT '^';';\n");
    const auto& steps = script.Steps();
    ASSERT_EQ(6u, steps.size());
    EXPECT_EQ("SELECT 'a;b',   1", steps[0].sql);
    EXPECT_EQ(2u, steps[0].line);
    EXPECT_EQ("COMMIT", steps[1].sql);
    EXPECT_EQ("x|y", steps[1].columnNames);
    EXPECT_EQ("42S02", steps[1].state);
    EXPECT_EQ("Error: no.", steps[1].message);
    EXPECT_EQ("SELECT 'it''s;\n--not a comment'", steps[2].sql);
    EXPECT_EQ((std::vector<std::string>{"it's|1", ""}), steps[2].rows);
    EXPECT_TRUE(steps[3].isReopen);
    EXPECT_EQ("SELECT '^';'", steps[5].sql);
}

}   // namespace
}   // namespace vela
