#include "shell/Import.h"

#include <gtest/gtest.h>

#include "tests/shell/ShellTesting.h"

namespace vela::shell {
namespace {

// What a run of .import did: its status, what it told (without the speed), and the table afterwards
// as CSV with its CREATE TABLE statement.
struct ImportRun {
    int exitStatus;
    std::string errors;
    std::string schema;
    std::string rows;
};

ImportRun Import(const std::string& content, const std::string& before = "",
                 const std::string& fileName = "f.csv")
{
    TemporaryFolder folder;
    folder.Put(fileName, content);
    EXPECT_EQ(0, RunProgram(folder, {"--create", "db"}, before).exitStatus) << before;
    const ProgramRun run = RunProgram(folder, {"db", ".import " + fileName + " t"});
    EXPECT_EQ("", run.output);
    ImportRun result;
    result.exitStatus = run.exitStatus;
    result.errors = run.errors.substr(0, run.errors.find(" in 0."));
    result.schema = RunProgram(folder, {"db", ".schema t"}).output;
    result.rows =
        RunProgram(folder, {"db", "--format", "csv", "--headers", "off", "SELECT * FROM t"}).output;
    return result;
}

TEST(Import, MakesATableForWhatTheFileHolds)
{
    const ImportRun run = Import(
        "i,d,b,day,time,stamp,s,none,mixed\n"
        "1,1.5,true,2026-11-21,09:05:00,2026-11-21 09:05:00,K\xC3\xB6ln,,1\n"
        "-2,3,FALSE,2000-02-29,00:00:00,2000-02-29 00:00:00,\"a,\"\"b\"\"\nc\",,x\n"
        ",,,,,,\"\",,\n");
    EXPECT_EQ(0, run.exitStatus);
    EXPECT_EQ(
        "veladb: column time has to be called t.time in expressions\n"
        "veladb: 3 rows imported into t",
        run.errors);
    EXPECT_EQ(
        "CREATE TABLE t (i Integer, d Double, b Boolean, day Date, time Time, stamp Timestamp, s "
        "String, "
        "none String, mixed String);\n",
        run.schema.substr(run.schema.find("CREATE")));
    // A column left out reads as 0, FALSE or the empty text; a date that was never set is bare.
    EXPECT_EQ(
        "1,1,1.5,TRUE,2026-11-21,09:05:00,2026-11-21 09:05:00,K\xC3\xB6ln,\"\",1\n"
        "2,-2,3,FALSE,2000-02-29,00:00:00,2000-02-29 00:00:00,\"a,\"\"b\"\"\nc\",\"\",x\n"
        "3,0,0,FALSE,,,,\"\",\"\",\"\"\n",
        run.rows);
}

TEST(Import, ReadsTabSeparatedFilesByTheirName)
{
    for (const char* name : {"f.tsv", "f.tab", "f.TSV"})
        EXPECT_EQ("1,1,\"a,b\"\n", Import("x\ty\r\n1\ta,b\r\n", "", name).rows) << name;
}

TEST(Import, MakesNamesUsableAndSaysSo)
{
    const ImportRun run = Import(
        "\xEF\xBB\xBF"
        "my col,,date,a,a\n1,2,2026-01-01,4,5\n");
    EXPECT_EQ(
        "CREATE TABLE t (my_col Integer, column_2 Integer, date Date, a Integer, a_2 Integer);\n",
        run.schema);
    EXPECT_EQ(
        "veladb: column \"my col\" is called my_col, as statements need a plain name\n"
        "veladb: column \"\" is called column_2, as statements need a plain name\n"
        "veladb: column date has to be called t.date in expressions\n"
        "veladb: column \"a\" is called a_2, as statements need a plain name\n"
        "veladb: 1 row imported into t",
        run.errors);
}

TEST(Import, MatchesTheColumnsOfATableByName)
{
    const std::string create =
        "CREATE TABLE t (a Integer, b String, my_col Double); INSERT INTO t VALUES (1, 'x', 2.5);";
    EXPECT_EQ("1,1,x,2.5\n2,2,y,0\n", Import("b,a\ny,2\n", create).rows);
    EXPECT_EQ("1,1,x,2.5\n2,0,\"\",7\n", Import("my col\n7\n", create).rows);
    EXPECT_EQ("1,1,x,2.5\n7,3,\"\",0\n8,4,\"\",0\n", Import("a,_rowid\n3,7\n4,\n", create).rows);
    EXPECT_EQ("1,1,x,2.5\n", Import("a\n", create).rows);
}

TEST(Import, RefusesTheWholeFileForOneFault)
{
    const std::string create =
        "CREATE TABLE t (a Integer, d Date); INSERT INTO t VALUES (1, '2026-01-01');";
    const struct {
        const char* content;
        const char* errors;   // but for the note that the run stopped
    } cases[] = {
        {"a,d\n2,2026-01-02\n3\n",
         "f.csv:3: the line has 1 field, the header has 2\n"
         "argument 1:1:1: 22000 Error: Nothing was imported: 1 faulty line in f.csv.\n"},
        {"a,d\n\"2\"x,2026-01-02\nx,2026-01-02\n3,1/2/2026\n",
         "f.csv:2: text stands behind a closing quote\n"
         "f.csv:3: \"x\" in column a is no Integer\n"
         "f.csv:4: \"1/2/2026\" in column d is no Date\n"
         "argument 1:1:1: 22000 Error: Nothing was imported: 3 faulty lines in f.csv.\n"},
        {"a,d\n2,2026-01-02\n\"3,2026-01-02\n",
         "f.csv:3: a quote is not closed\n"
         "argument 1:1:1: 22000 Error: Nothing was imported: 1 faulty line in f.csv.\n"},
        {"a,_rowid\n2,5\n3,1\n4,5\n5,-1\n",
         "f.csv:3: the row id 1 is taken\n"
         "f.csv:4: the row id 5 is taken\n"
         "f.csv:5: -1 can't be a row id\n"
         "argument 1:1:1: 22000 Error: Nothing was imported: 3 faulty lines in f.csv.\n"},
        {"a,x\n2,3\n",
         "argument 1:1:1: 42S22 Error: Column x not found in table t; nothing was imported.\n"},
        {"a,a\n2,3\n",
         "argument 1:1:1: 42S22 Error: Column a not found in table t; nothing was imported.\n"},
        {"",
         "argument 1:1:1: 22000 Error: f.csv is empty; a header line with the columns' names is "
         "missing.\n"},
        {"a\"b\n1\n",
         "argument 1:1:1: 22000 Error: The header of f.csv is malformed, line 1: a quote stands "
         "inside a "
         "field without quotes.\n"},
    };
    for (const auto& c : cases) {
        const ImportRun run = Import(c.content, create);
        EXPECT_EQ(1, run.exitStatus) << c.content;
        EXPECT_EQ(std::string(c.errors) + "veladb: stopped at the failure; no changes were open\n",
                  run.errors);
        EXPECT_EQ("1,1,2026-01-01\n", run.rows) << c.content;
    }
}

TEST(Import, ARefusedFileMakesNoTable)
{
    const ImportRun run = Import("a,b\n1\n");
    EXPECT_EQ(1, run.exitStatus);
    EXPECT_EQ("", run.schema);
}

TEST(Import, ReportsTheFirstFaultsAndCountsTheRest)
{
    std::string content = "a,b\n";
    for (int i = 0; i < 25; i++)
        content += "1\n";
    const std::string errors = Import(content).errors;
    EXPECT_NE(std::string::npos, errors.find("f.csv:21: "));
    EXPECT_EQ(std::string::npos, errors.find("f.csv:22: "));
    EXPECT_NE(std::string::npos, errors.find("f.csv: 5 more faulty lines\n"));
    EXPECT_NE(std::string::npos, errors.find("25 faulty lines in f.csv."));
}

TEST(Import, RefusesTablesThatAreNotForIt)
{
    TemporaryFolder folder;
    folder.Put("f.csv", "a\n1\n");
    for (const char* name : {"_schema", "_SCHEMA", "_TABLES", "a.b", "'my table'", "1", "''"})
        EXPECT_EQ(
            1,
            RunProgram(folder, {"--create", "db", std::string(".import f.csv ") + name}).exitStatus)
            << name;
    EXPECT_EQ("", RunProgram(folder, {"db", ".tables"}).output);
}

TEST(Import, JoinsAnOpenTransactionAndLeavesItOpen)
{
    TemporaryFolder folder;
    folder.Put("f.csv", "a\n1\n");
    folder.Put("bad.csv", "a\nx\"\n");
    const ProgramRun run =
        RunProgram(folder, {"--create", "--headers", "off", "--keep-going", "db"},
                   "CREATE TABLE t (a Integer); INSERT INTO t VALUES (0);\n.import f.csv "
                   "t\n.import bad.csv t\n"
                   "SELECT a FROM t; ROLLBACK; SELECT COUNT(*) FROM _schema WHERE TableName = 't'");
    EXPECT_EQ("0\n1\n0\n", run.output);
    EXPECT_NE(std::string::npos, run.errors.find("not committed yet")) << run.errors;
}

TEST(Import, CommitsAtOnceWhenNothingWasOpen)
{
    TemporaryFolder folder;
    folder.Put("f.csv", "a\n1\n");
    const ProgramRun run = RunProgram(folder, {"--create", "--headers", "off", "db"},
                                      ".import f.csv t\nROLLBACK; SELECT a FROM t");
    EXPECT_EQ("1\n", run.output);
}

TEST(Import, ACsvExportComesBackAsItWas)
{
    TemporaryFolder folder;
    EXPECT_EQ(
        0, RunProgram(
               folder, {"--create", "db"},
               "CREATE TABLE t (a Integer, b String, c Double, d Date);"
               "INSERT INTO t (_rowid, a, b, c, d) VALUES (5, -1, 'x,\"y\"\n', 0.1, '2026-01-01');"
               "INSERT INTO t (b) VALUES (''); INSERT INTO t (b, c) VALUES (' ', 1.0/0.0);")
               .exitStatus);
    const std::string exported =
        RunProgram(folder, {"--format", "csv", "db", "SELECT * FROM t"}).output;
    folder.Put("t.csv", exported);
    EXPECT_EQ(0, RunProgram(folder, {"--create", "db2", ".import t.csv t"}).exitStatus);
    for (const char* show : {".schema", "SELECT * FROM t"})
        EXPECT_EQ(RunProgram(folder, {"--format", "csv", "db", show}).output,
                  RunProgram(folder, {"--format", "csv", "db2", show}).output);
}

}   // namespace
}   // namespace vela::shell
