// The language of the stand-in host's programs: what is refused, what can fail, what is printed.

#include <gtest/gtest.h>

#include "tests/plugin/host/HostTesting.h"

namespace vela {
namespace {

const char* const kLibrary = VELADB_PLUGIN;

TEST(HostProgram, WhatMakesNoSenseIsRefusedWithItsPlace)
{
    struct {
        const char* program;
        const char* problem;
    } cases[] = {
        {"frob\n", "program:1: no line begins with this\n"},
        {"new MOXADatabase\n", "program:1: wanted: new CLASS NAME\n"},
        {"print \"no end\n", "program:1: a text has no closing quote\n"},
        {"print \"\\q\"\n", "program:1: an escape is one of"},
        {"print \"\\x4\"\n", "program:1: \\x needs two hexadecimal digits\n"},
        {"print \"\\u{110000}\"\n", "program:1: \\u needs a code point in braces"},
        {"print latin1\"\\u{F8}\"\n", "program:1: \\u beyond ASCII is for utf8 and utf16 texts\n"},
        {"print utf16\"\\xF8\"\n", "program:1: utf16 takes \\u{H...}"},
        {"print \"\xC3\"\n", "program:1: the program is not in UTF-8 here\n"},
        {"print \"{i\"\n", "program:1: \"{\" without \"}\""},
        {"end\n", "program:1: \"end\" without a block\n"},
        {"\nrepeat 2\nprint 1\n", "program:2: this block has no \"end\"\n"},
        {"new MOXADatabase db\nunload\n", "program:2: the plug-in can't be unloaded: objects are"},
        {"unload\nunload\n", "program:2: the plug-in is not loaded\n"},
        {"new MOXADatabase db\nselect db \"SELECT 1\" is rows\n", "program:2: \"as NAME\" is want"},
    };
    for (const auto& c : cases) {
        const HostRun run = RunHost(kLibrary, c.program);
        EXPECT_EQ(2, run.status) << c.program << run.output;
        EXPECT_EQ(0u, run.output.find(c.problem)) << c.program << run.output;
    }
    std::string deep;
    for (int i = 0; i < 20; i++)
        deep += "repeat 1\n";
    EXPECT_EQ(2, RunHost(kLibrary, deep).status);
}

// Every kind of expectation, on one table: what fails, and beside it what holds.
TEST(HostProgram, AnExpectationThatDoesNotHoldFails)
{
    const std::string begin =
        "new MOXADatabase db\n"
        "set db.DatabaseFile folder \"db\"\n"
        "call db.CreateDatabaseFile\n"
        "execute db \"CREATE TABLE t (n integer, s string)\"\n"
        "execute db \"INSERT INTO t VALUES (1, 'one')\"\n"
        "execute db \"INSERT INTO t VALUES (2, 'two')\"\n"
        "mark\n"
        "select db \"SELECT n, s FROM t\" as c\n"
        "first c\n";
    struct {
        const char* fails;
        const char* message;   // after "expected "
        const char* holds;
    } cases[] = {
        {"expect false", "false, got true", "expect true"},
        {"expect 1", "1, got true", "expect {}"},
        {"expect row c 1 \"won\"", "1 \"won\", got 1 \"one\"", "expect row c 1 \"one\""},
        {"expect rows c\n1 \"one\"\nend", "no more rows, got 2 \"two\"",
         "expect rows c\n1 \"one\"\n2 \"two\"\nend"},
        {"expect rows c\n1 \"one\"\n2 \"two\"\n3 \"three\"\nend", "this row, got the end", "mark"},
        {"expect rows c\n2 \"two\"\n1 \"one\"\nend", "2 \"two\", got 1 \"one\"", "mark memory"},
        {"expect query db \"SELECT n FROM t\"\n1\nend", "no more rows, got 2",
         "expect query db \"SELECT n FROM t\"\n1\n2\nend"},
        {"expect query db \"SELECT x\"\nend", "rows, got no cursor: ", "expect ok db"},
        {"expect columns c n", "\"n\", got \"n s\"", "expect columns c n s"},
        {"expect types c integer", "\"integer\", got \"integer text\"",
         "expect types c integer text"},
        {"expect count c 3", "3, got 2", "expect count c 2"},
        {"expect place c 1", "1, got 0", "expect place c 0"},
        {"expect at end c", "the end of the rows, got the other", "expect not at end c"},
        {"next c\nnext c\nexpect not at end c", "not the end of the rows, got the other",
         "next c\nnext c\nexpect at end c"},
        {"close db\nexpect connected db", "a connected database",
         "close db\nexpect not connected db"},
        {"expect file \"nowhere\"", "", "expect file \"db\""},
        {"expect source \"a\" veladb", "a data source of the kind veladb, got none",
         "source a veladb \"\"\nexpect source \"a\" veladb"},
        {"source a veladb \"\"\nexpect no source \"a\"", "no data source a, got one",
         "expect no source \"a\""},
        {"execute db \"x\"\nexpect ok db", "no error, got ", "expect ok db"},
        {"expect error db 0 \"Success\"", "0 \"Success\", got 0 \"Success [00000]\"",
         "expect error db 0 \"Success [00000]\""},
        {"expect message \"x\"", "\"x\", got nothing", "expect message nothing"},
        {"expect asked 1", "1, got 0", "expect asked 0"},
        {"expect registered engine", "\"engine\", got \"engine cursor MOXADatabase ",
         "expect registered engine cursor MOXADatabase \"#566\" \"#567\" veladb"},
        {"expect balance", "as many strings, objects", "drop c\nexpect balance"},
        {"value c n\nexpect 2", "2, got 1", "value c n\nexpect 1"},
    };
    for (const auto& c : cases) {
        const HostRun failed = RunHost(kLibrary, begin + c.fails + "\n");
        EXPECT_EQ(1, failed.status) << c.fails << "\n" << failed.output;
        EXPECT_NE(std::string::npos, failed.output.find(std::string("expected ") + c.message))
            << c.fails << "\n"
            << failed.output;
        const HostRun held = RunHost(kLibrary, begin + c.holds + "\n");
        EXPECT_EQ(0, held.status) << c.holds << "\n" << held.output;
    }
}

TEST(HostProgram, WhatIsNotThereFailsAndTheProgramGoesOn)
{
    const char* const lines[] = {
        "new Spaceship s",       "drop nobody",          "execute nobody \"SELECT 1\"",
        "first nobody",          "walk nobody\nend",     "get nobody.Name",
        "expect nobody",         "design \"#568\"",      "open nothing as db",
        "offer MOXABuildString", "remove \"not there\"", "print {i}",
        "print {1 / 0}",         "repeat \"many\"\nend",
    };
    for (const char* line : lines) {
        const HostRun run = RunHost(kLibrary, std::string(line) + "\nprint \"went on\"\n");
        EXPECT_EQ(1, run.status) << line << "\n" << run.output;
        EXPECT_NE(std::string::npos, run.output.find("went on\n")) << line << "\n" << run.output;
        EXPECT_EQ(0u, run.output.find("program:1: ")) << line << "\n" << run.output;
    }
    EXPECT_EQ(1, RunHost(kLibrary, "dialog cancels\n").status);   // nobody asked
    EXPECT_EQ(0, RunHost(kLibrary, "first nobody\n", "--lenient").status);
}

TEST(HostProgram, ValuesAndSumsAreWhatTheyAreWrittenAs)
{
    struct {
        const char* program;
        const char* printed;
    } cases[] = {
        {"print \"a\\tb\\\\\\\"\\{\\}\\#\\x41\\u{42}\"", "a\tb\\\"{}#AB\n"},
        {"print # nothing", "\n"},
        {"print 1 2.5 true nothing null \"a b\" # c", "1 2.5 true nothing null a b\n"},
        {"print 1994-07-09 12:34:06 1994-07-09T12:34:06",
         "1994-07-09 12:34:06 1994-07-09T12:34:06\n"},
        {"print 7.0 -1.0e+300 inf -inf nan", "7.0 -1e+300 inf -inf nan\n"},
        {"repeat 3 as i\nprint \"{i}{i * 2 + 1}\" {i%2}\nend", "13 1\n25 0\n37 1\n"},
        {"repeat 2 as i\nrepeat 2 as k\nprint \"{i}{k}\"\nend\nend", "11\n12\n21\n22\n"},
        {"repeat 6 as i\nevery 3 of i\nprint {i}\nend\nend", "3\n6\n"},
        {"repeat 0\nprint 1\nend", ""},
        {"print {-5 + 2} {7 / 2} {-7 % 3}", "-3 3 -1\n"},
    };
    for (const auto& c : cases) {
        const HostRun run = RunHost(kLibrary, std::string(c.program) + "\n");
        EXPECT_EQ(0, run.status) << run.output;
        EXPECT_EQ(c.printed, run.output.substr(0, run.output.find("moxa-host: ")))
            << c.program << run.output;
    }
}

TEST(HostProgram, AShownRowReadsAsItIsWritten)
{
    const HostRun run = RunHost(
        kLibrary,
        "new MOXADatabase db\nset db.DatabaseFile folder \"db\"\ncall db.CreateDatabaseFile\n"
        "execute db \"CREATE TABLE t (s string)\"\n"
        "repeat 5\nexecute db \"INSERT INTO t VALUES ('')\"\nend\n"
        "select db \"SELECT s FROM t\" as c\n"
        "next c\nupdate c s utf16\"\xC3\xB8\\u{1F600}\"\nnext c\nupdate c s 0x0100\"\\x41\"\n"
        "next c\nupdate c s latin1\"\\xF8\\{\"\nnext c\nupdate c s \"\\0\xC3\xB8\\xFF\"\n"
        "next c\nupdate c s 0x99\"\\x80\"\nselect db \"SELECT s FROM t\" as c\nshow c\n");
    EXPECT_EQ(0, run.status);
    EXPECT_EQ(0u, run.output.find("s\nutf16\"\xC3\xB8\xF0\x9F\x98\x80\"\n0x0100\"A\"\n"
                                  "latin1\"\\xF8\\{\"\n\"\\x00\xC3\xB8\\xFF\"\n0x0099\"\\x80\"\n"))
        << run.output;
}

TEST(HostProgram, WrongUsageAndALibraryThatIsNoneAreRefused)
{
    EXPECT_EQ(2, RunHost(kLibrary, "", "--frob").status);
    EXPECT_EQ(2, RunHost(kLibrary, "", "--withhold MOXANonsense").status);
    EXPECT_EQ(2, RunHost(kLibrary, "", "--no-services --withhold-each").status);
    EXPECT_EQ(2, RunHost(kLibrary, "", "program").status);
    EXPECT_EQ(3, RunHost("./program", "not a library").status);
    EXPECT_EQ(3, RunHost("libc.so.6", "").status);
    EXPECT_EQ(0, RunHost(kLibrary, "", "--help").status);
}

}   // namespace
}   // namespace vela
