// The program veladb as its users meet it: what it prints where, and the status it ends with.

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/shell/ShellTesting.h"

namespace vela::shell {
namespace {

using testing::AssertionFailure;
using testing::AssertionResult;
using testing::AssertionSuccess;

AssertionResult IsRun(const ProgramRun& run, int exitStatus, const std::string& output,
                      const std::string& errors)
{
    if (run.exitStatus == exitStatus && run.output == output && run.errors == errors)
        return AssertionSuccess();
    return AssertionFailure() << "status " << run.exitStatus << " for " << exitStatus
                              << "\noutput:\n"
                              << run.output << "expected:\n"
                              << output << "errors:\n"
                              << run.errors << "expected:\n"
                              << errors;
}

// Sets up a database "db" with the table t: (1, 'x'), (2, 'y').
void MakeDatabase(const TemporaryFolder& folder)
{
    EXPECT_TRUE(
        IsRun(RunProgram(folder, {"--create", "db", "CREATE TABLE t (a Integer, b String)",
                                  "INSERT INTO t VALUES (1, 'x'); INSERT INTO t VALUES (2, 'y')"}),
              0, "", ""));
}

TEST(Program, RunsArgumentsAndScriptsAlike)
{
    TemporaryFolder folder;
    const std::string script =
        "CREATE TABLE t (a integer, b string);INSERT INTO t VALUES (1, 'x');SELECT * FROM t";
    const std::string expected =
        "{\"n\": 1, \"canonical\": \"CREATE TABLE t (a integer, b string)\", \"sqlstate\": "
        "\"00000\", \"message\": \"\"}\n"
        "{\"n\": 2, \"canonical\": \"INSERT INTO t VALUES (1, 'x')\", \"sqlstate\": \"00000\", "
        "\"message\": \"\"}\n"
        "{\"n\": 3, \"canonical\": \"SELECT * FROM t\", \"sqlstate\": \"00000\", \"message\": "
        "\"\", "
        "\"columns\": [{\"name\": \"_rowid\", \"type\": \"Integer\"}, {\"name\": \"a\", \"type\": "
        "\"Integer\"}, "
        "{\"name\": \"b\", \"type\": \"String\"}], \"rows\": [[1, 1, \"x\"]]}\n";
    EXPECT_TRUE(IsRun(RunProgram(folder, {"--create", "--format", "jsonl", "one"}, script), 0,
                      expected, ""));
    EXPECT_TRUE(IsRun(RunProgram(folder, {"two", script, "--format", "jsonl", "--create"}), 0,
                      expected, ""));
    for (const char* file : {"_schema.dat", "_schema.map", "t.dat", "t.map"})
        EXPECT_EQ(FileContent(folder / ("one/" + std::string(file))),
                  FileContent(folder / ("two/" + std::string(file))))
            << file;
    EXPECT_FALSE(FileContent(folder / "one/t.dat").empty());
}

TEST(Program, OpensOnlyDatabasesAndCreatesOnlyWhenTold)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    folder.Put("file", "x");
    std::filesystem::create_directory(folder / "empty");
    const struct {
        std::vector<std::string> arguments;
        int exitStatus;
        const char* errors;
    } cases[] = {
        {{"missing", "SELECT 1"},
         3,
         "veladb: there is no database \"missing\"; use --create to make it\n"},
        {{"empty", "SELECT 1"},
         3,
         "veladb: \"empty\" is a folder without a database (it has no _schema.dat); use --create "
         "to make one in it\n"},
        {{"empty", "SELECT 1", "--readonly"},
         3,
         "veladb: \"empty\" is a folder without a database (it has no _schema.dat); use --create "
         "to make one in it\n"},
        {{"file", "SELECT 1"},
         3,
         "veladb: \"file\" is not a database: a database is a folder, this is a file\n"},
        {{"file/db", "--create"}, 3, "veladb: can't open \"file/db\": Not a directory\n"},
        {{"no/db", "--create"},
         3,
         "veladb: can't open the database: no/db: No such file or directory\n"},
        {{"", "SELECT 1"}, 3, "veladb: the name of the database is empty\n"},
        {{"db", "--create"}, 0, ""},
        {{"empty", "--create"}, 0, ""},
    };
    for (const auto& c : cases) {
        const ProgramRun run = RunProgram(folder, c.arguments);
        EXPECT_EQ(c.exitStatus, run.exitStatus) << c.arguments[0];
        EXPECT_EQ(c.errors, run.errors) << c.arguments[0];
        EXPECT_EQ("", run.output) << c.arguments[0];
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "missing"));
    EXPECT_EQ("a,b\n1,x\n2,y\n",
              RunProgram(folder, {"--format", "csv", "db", "SELECT a, b FROM t"}).output);
}

TEST(Program, WrongUsageOpensNothing)
{
    TemporaryFolder folder;
    const ProgramRun run = RunProgram(folder, {"--create", "db", "SELECT 1", "--frmat", "csv"});
    EXPECT_EQ(2, run.exitStatus);
    EXPECT_NE(std::string::npos, run.errors.find("--frmat"));
    EXPECT_FALSE(std::filesystem::exists(folder / "db"));
}

TEST(Program, ReportsFailuresWithTheirPlace)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    folder.Put("inner.sql", "SELECT 1;\n  SELECT c FROM t;");
    const struct {
        std::string script;
        const char* errors;
    } cases[] = {
        {"SELEC 1", "stdin:1:1: 07000 SQL Error: keyword expected\nSELEC 1\n^\n"},
        {"SELECT a FROM t;\nSELECT a,\n\t, b FROM t;",
         "stdin:3:2: 07000 SQL Syntax Error\n\t, b FROM t\n\t^\n"},
        {"SELECT 1;  SELECT a FROM nix", "stdin:1:12: 42S02 Error: Table nix not found.\n"},
        {"-- comment\n\n  SELECT c\nFROM t", "stdin:3:3: 42S22 Error: Column c not found.\n"},
        {"SELECT 'K\xC3\xB6ln' x y",
         "stdin:1:17: 07000 SQL Error: FROM expected\nSELECT 'K\xC3\xB6ln' x y\n                "
         "^\n"},
        {".nix", "stdin:1:1: 22023 Error: Unknown command .nix; \".help\" lists the commands.\n"},
        {".import x", "stdin:1:1: 22023 Error: Usage: .import FILE TABLE\n"},
        {".read 'x", "stdin:1:1: 22023 Error: A quote is not closed.\n"},
        {".read x", "stdin:1:1: 58030 Error: Can't open x: No such file or directory.\n"},
        {".mode xml", "stdin:1:1: 22023 Error: Unknown mode xml; modes are table, csv, jsonl.\n"},
        {".schema x", "stdin:1:1: 42S02 Error: Table x not found.\n"},
        {".canonical SELECT 'it''s', FROM t",
         "stdin:1:28: 07000 SQL Syntax Error\n"
         ".canonical SELECT 'it''s', FROM t\n                           ^\n"},
        {"\n.read inner.sql", "inner.sql:2:3: 42S22 Error: Column c not found.\n"},
        {std::string("SELECT 1\0 FROM t", 16),
         "stdin:1:9: 07000 Error: The statement holds a NUL byte.\nSELECT 1\\x00 FROM t\n        "
         "^\n"},
    };
    for (const auto& c : cases) {
        const ProgramRun run = RunProgram(folder, {"db"}, c.script);
        EXPECT_EQ(1, run.exitStatus) << c.script;
        EXPECT_EQ(std::string(c.errors) + "veladb: stopped at the failure; no changes were open\n",
                  run.errors)
            << c.script;
    }
    EXPECT_EQ(
        "argument 2:1:3: 42S02 Error: Table nix not found.\nveladb: stopped at the failure; no "
        "changes were open\n",
        RunProgram(folder, {"db", "SELECT 1", "; SELECT 1 FROM nix"}).errors);
}

TEST(Program, AFailureStopsTheScriptAndRollsBackUnlessToldToGoOn)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    const std::string script =
        "INSERT INTO t VALUES (3, 'z'); SELECT 1 FROM nix; SELECT MAX(a) FROM t";
    EXPECT_TRUE(IsRun(RunProgram(folder, {"db", "--headers", "off"}, script), 1, "",
                      "stdin:1:32: 42S02 Error: Table nix not found.\n"
                      "veladb: stopped at the failure; open changes were rolled back\n"));
    EXPECT_TRUE(IsRun(RunProgram(folder, {"db", "--headers", "off", "SELECT MAX(a) FROM t"}), 0,
                      "2\n", ""));
    EXPECT_TRUE(IsRun(RunProgram(folder, {"db", "--headers", "off", "--keep-going"}, script), 1,
                      "3\n", "stdin:1:32: 42S02 Error: Table nix not found.\n"));
    EXPECT_TRUE(IsRun(RunProgram(folder, {"db", "--headers", "off", "SELECT MAX(a) FROM t"}), 0,
                      "3\n", ""));
}

TEST(Program, NoDataAndNullsAreNoFailures)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    EXPECT_TRUE(IsRun(RunProgram(folder, {"db", "SELECT a FROM t WHERE a = 9"}), 0, "a\n-\n", ""));
    EXPECT_TRUE(
        IsRun(RunProgram(folder, {"db", "--format", "jsonl", "SELECT a FROM t WHERE a = 9"}), 0,
              "{\"n\": 1, \"canonical\": \"SELECT a FROM t WHERE (a=9)\", \"sqlstate\": \"02000\", "
              "\"message\": "
              "\"No records found.\", \"columns\": [{\"name\": \"a\", \"type\": \"Integer\"}], "
              "\"rows\": []}\n",
              ""));
    EXPECT_TRUE(IsRun(RunProgram(folder, {"db", "--null", "-", "SELECT NULL AS n, 1 AS m"}), 0,
                      "n  m\n-  -\n-  1\n", ""));
}

TEST(Program, QuitEndsCleanly)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    folder.Put("quit.sql", "DELETE FROM t WHERE a = 1;\n.quit\nDELETE FROM t;");
    EXPECT_TRUE(IsRun(RunProgram(folder, {"db", ".read quit.sql", "DELETE FROM t"}), 0, "", ""));
    EXPECT_TRUE(
        IsRun(RunProgram(folder, {"db", "--headers", "off", "SELECT a FROM t"}), 0, "2\n", ""));
}

TEST(Program, ReadIsBoundedInDepth)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    folder.Put("self.sql", ".read self.sql");
    const ProgramRun run = RunProgram(folder, {"db", ".read self.sql"});
    EXPECT_EQ(1, run.exitStatus);
    EXPECT_EQ(
        "self.sql:1:1: 22023 Error: .read is nested more than 32 deep.\n"
        "veladb: stopped at the failure; no changes were open\n",
        run.errors);
}

TEST(Program, SetEscapeChangesHowTheRestIsSplit)
{
    TemporaryFolder folder;
    const std::string script =
        "SELECT '\\' AS a; SET ESCAPE \\\n; SELECT '\\'; SELECT 1' AS a; SET ESCAPE; SELECT '\\' "
        "AS a;";
    EXPECT_TRUE(IsRun(RunProgram(folder, {"--create", "--format", "csv", "db"}, script), 0,
                      "a\n\\\na\n'; SELECT 1\na\n\\\n", ""));
}

TEST(Program, CommandsShowWhatTheyAreFor)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    const struct {
        const char* script;
        const char* output;
    } cases[] = {
        {".tables", "t\n"},
        {".schema", "CREATE TABLE t (a Integer, b String);\n"},
        {"CREATE INDEX i ON t (b, a);\n.schema t;",
         "CREATE TABLE t (a Integer, b String);\nCREATE INDEX i ON t (b, a);\n"},
        {".dump",
         "SET ESCAPE;\nCREATE TABLE t (a Integer, b String);\nINSERT INTO t VALUES (1, 'x');\n"
         "INSERT INTO t VALUES (2, 'y');\nCREATE INDEX i ON t (b, a);\nCOMMIT;\n"},
        {".canonical select  a+1 from t where b='it''s';",
         "SELECT (a+1) FROM t WHERE (b='it''s')\n"},
        {".mode\n.mode csv\n.mode\nSELECT a FROM t WHERE a=2;.mode jsonl\nSELECT 1 AS a",
         "table\ncsv\na\n2\n"
         "{\"n\": 2, \"canonical\": \"SELECT 1 AS a\", \"sqlstate\": \"00000\", \"message\": \"\", "
         "\"columns\": "
         "[{\"name\": \"a\", \"type\": \"Integer\"}], \"rows\": [[1]]}\n"},
    };
    for (const auto& c : cases)
        EXPECT_TRUE(IsRun(RunProgram(folder, {"db"}, c.script), 0, c.output, "")) << c.script;
    const std::string help = RunProgram(folder, {"db", ".help"}).output;
    for (const char* name : {".canonical", ".dump", ".help", ".import", ".mode", ".quit", ".read",
                             ".schema", ".tables"})
        EXPECT_NE(std::string::npos, help.find(name)) << name;
}

TEST(Program, ReadOnlyWritesNothing)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    folder.Put("t.csv", "a,b\n5,z\n");
    const auto state = [&folder] {
        std::string all;
        for (const auto& entry : std::filesystem::directory_iterator(folder / "db"))
            all += entry.path().filename().string() +
                   std::to_string(FileContent(entry.path()).size()) + FileContent(entry.path());
        return all;
    };
    const std::string before = state();
    EXPECT_TRUE(
        IsRun(RunProgram(folder, {"--readonly", "--headers", "off", "db", "SELECT a FROM t"}), 0,
              "1\n2\n", ""));
    EXPECT_TRUE(
        IsRun(RunProgram(folder, {"--readonly", "db", "DELETE FROM t"}), 1, "",
              "veladb: the database is open for reading only; open changes were dropped\n"));
    const ProgramRun commit = RunProgram(folder, {"--readonly", "db", "DELETE FROM t; COMMIT"});
    EXPECT_EQ(1, commit.exitStatus);
    EXPECT_EQ(0u, commit.errors.find("argument 1:1:16: 58030 Error: COMMIT failed: "))
        << commit.errors;
    EXPECT_EQ(1, RunProgram(folder, {"--readonly", "db", ".import t.csv t"}).exitStatus);
    EXPECT_EQ(before, state());
}

TEST(Program, TimerPrintsOneTimePerStatement)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    const ProgramRun run =
        RunProgram(folder, {"--timer", "--headers", "off", "db", "SELECT a FROM t; ; SELECT 5"});
    EXPECT_EQ("1\n2\n5\n", run.output);
    int times = 0;
    for (size_t at = run.errors.find("time: "); at != std::string::npos;
         at = run.errors.find("time: ", at + 1))
        times++;
    EXPECT_EQ(2, times) << run.errors;
}

TEST(Program, OutputThatCantBeWrittenIsReported)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    const struct {
        const char* commandLine;
        const char* errors;
    } cases[] = {
        {"$VELADB db 'DELETE FROM t; SELECT 1' >/dev/full",
         "veladb: can't write to standard output: No space left on device; open changes were "
         "rolled back\n"},
        {"$VELADB db --keep-going 'DELETE FROM t; SELECT 1; SELECT 2' >/dev/full",
         "veladb: can't write to standard output: No space left on device; open changes were "
         "rolled back\n"},
        {"$VELADB db 'DELETE FROM t; SELECT 1' >&-",
         "veladb: can't write to standard output: Bad file descriptor; open changes were rolled "
         "back\n"},
    };
    for (const auto& c : cases) {
        const ProgramRun run = RunCommandLine(folder, c.commandLine);
        EXPECT_TRUE(IsRun(run, 1, "", c.errors)) << c.commandLine;
    }
    EXPECT_TRUE(IsRun(RunProgram(folder, {"db", "--headers", "off", "SELECT COUNT(*) FROM t"}), 0,
                      "2\n", ""));
}

TEST(Program, AReaderThatLeavesEndsTheRun)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    std::string script = "DELETE FROM t;";
    for (int i = 0; i < 200; i++)
        script += "SELECT '" + std::string(1000, 'x') + "';";   // more than a pipe holds
    folder.Put("script.sql", script);
    const ProgramRun run = RunCommandLine(
        folder,
        "{ $VELADB db <script.sql; echo $? >status; } | head -n 1 >/dev/null; exit $(cat status)");
    EXPECT_TRUE(
        IsRun(run, 1, "",
              "veladb: standard output was closed by its reader; open changes were rolled back\n"));
    EXPECT_TRUE(IsRun(RunProgram(folder, {"db", "--headers", "off", "SELECT COUNT(*) FROM t"}), 0,
                      "2\n", ""));
}

TEST(Program, InputThatCantBeReadIsReported)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    EXPECT_TRUE(IsRun(RunCommandLine(folder, "$VELADB db </"), 1, "",
                      "stdin:1:1: 58030 Error: Can't read stdin: Is a directory.\n"
                      "veladb: stopped at the failure; no changes were open\n"));
    EXPECT_TRUE(IsRun(RunCommandLine(folder, "$VELADB db <&-"), 1, "",
                      "stdin:1:1: 58030 Error: Can't read stdin: Bad file descriptor.\n"
                      "veladb: stopped at the failure; no changes were open\n"));
}

TEST(Program, EachStatementIsAnsweredBeforeTheNextIsRead)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    // The second statement is sent only when the answer to the first has come.
    const ProgramRun run = RunCommandLine(
        folder,
        "mkfifo in; $VELADB db --headers off <in >out & exec 4>in; echo 'SELECT 7;' >&4; "
        "n=0; until grep -q 7 out || [ $n = 100 ]; do sleep 0.05; n=$((n+1)); done; "
        "cat out; echo 'SELECT 8;' >&4; exec 4>&-; wait; cat out");
    EXPECT_EQ("7\n7\n8\n", run.output);
}

}   // namespace
}   // namespace vela::shell
