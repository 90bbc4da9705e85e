// What the stand-in host finds wrong with a plug-in that does wrong on purpose.

#include <gtest/gtest.h>

#include "tests/plugin/host/HostTesting.h"

namespace vela {
namespace {

const char* const kLibrary = MISBEHAVING_PLUGIN;

// A program that makes the one statement.
std::string Fault(const std::string& statement)
{
    return "new MOXADatabase db\n"
           "set db.DatabaseFile folder \"place\"\n"
           "execute db \"" +
           statement + "\"\n";
}

TEST(Complaints, AFaultOfThePluginIsFoundAndTold)
{
    struct {
        std::string program;
        const char* complaint;
    } cases[] = {
        {Fault("leak a string"), "program: the plug-in: 1 strings not given back:\n"},
        {Fault("leak a string"), "string macromanian\"some text\" with 1 reference(s)\n"},
        {Fault("leak a reference"), "string \"leak a reference\" with 1 reference(s)\n"},
        {Fault("unlock the argument"), "program:3: the plug-in: giving back a string that is not "},
        {Fault("use after the end"), "program:3: the plug-in: StringGetLength of a string that is"},
        {Fault("leak an object"), "program: the plug-in: 1 objects not given back:\n"},
        {Fault("unlock an object twice") + "drop db\n",
         "program:4: the plug-in: MOXAUnlockObject of an object that is not there"},
        {Fault("ask for nonsense"), "asking for a service that this host doesn't know: MOXANonsen"},
        {Fault("ask again"), "program:3: the plug-in: asking again for the service StringGetCStri"},
        {Fault("register again"), "program:3: the plug-in: engine is registered twice\n"},
        {Fault("stay in memory"), "program: the plug-in: the library stays in memory after it was"},
        {Fault("") + "expect error db 0 \"x\"\nexpect error db 0 \"x\"\n",
         "program:5: the plug-in: giving back a string that is not there"},
        {Fault("") + "select db \"\" as c\nlast c\n",
         "a cursor of 3 rows says that it stands on row 3, at its end\n"},
        {Fault("") + "select db \"\" as c\nvalue c 0\n", "a Boolean that is neither 0 nor 1\n"},
        {Fault("") + "select db \"\" as c\nvalue c 1\n", "a date or time with parts that its type"},
        {Fault("") + "select db \"\" as c\nvalue c 2\n", "a value of the unknown type 99\n"},
        {Fault("") + "select db \"\" as c\nvalue c 3\n", "a column without a value has stored one"},
        {"mark\n" + Fault("leak a string") + "drop db\nexpect balance\n",
         "program:6: expected as many strings, objects and references as at the mark"},
        {Fault("keep memory") + "mark memory\nrepeat 100\nexecute db \"keep memory\"\nend\n"
                                "expect memory flat\n",
         "program:8: expected memory not to grow, got "},
    };
    for (const auto& c : cases) {
        const HostRun run = RunHost(kLibrary, c.program);
        EXPECT_EQ(1, run.status) << c.program << run.output;
        EXPECT_NE(std::string::npos, run.output.find(c.complaint)) << c.complaint << "\n"
                                                                   << c.program << run.output;
    }
}

TEST(Complaints, APluginWithoutFaultsIsFreeOfThem)
{
    const HostRun run = RunHost(kLibrary, Fault("nothing wrong") + "drop db\n");
    EXPECT_EQ(0, run.status) << run.output;
    EXPECT_EQ(
        "moxa-host: 0 expectations held, 0 failures; 1 strings and 2 objects made, "
        "0 and 0 left\n",
        run.output);
}

TEST(Complaints, WhatIsRegisteredAndCannotWorkIsTold)
{
    struct {
        const char* withheld;
        const char* complaint;
    } cases[] = {
        {"MOXAGetMXVersion", "engine is registered, although it can't work\n"},
        {"MOXABuildString", "cursor is registered, although it can't work\n"},
        {"MOXAGetClassData", "MOXADatabase is registered, although it can't work\n"},
        {"DesignAddDataSource", "#566 is registered, although it can't work\n"},
        {"MOXALoadGlobalMethod", "#567 is registered, although it can't work\n"},
        {"MOXALoadObjectMethod", "veladb is registered, although it can't work\n"},
    };
    for (const auto& c : cases) {
        const HostRun run =
            RunHost(kLibrary, "", std::string("--lenient --withhold ") + c.withheld);
        EXPECT_EQ(1, run.status) << c.withheld;
        EXPECT_NE(std::string::npos, run.output.find(c.complaint)) << run.output;
    }
    const HostRun old = RunHost(kLibrary, "", "--version 5.4");
    EXPECT_EQ(1, old.status) << old.output;
    EXPECT_NE(std::string::npos, old.output.find("engine is registered, although it can't work"));
}

TEST(Complaints, ACrashWithoutAServiceIsFound)
{
    const HostRun run = RunHost(kLibrary, Fault("crash"), "--withhold-each");
    EXPECT_EQ(1, run.status);
    EXPECT_NE(std::string::npos,
              run.output.find("without MOXASetStringEncoding: ended by signal 6"))
        << run.output;
}

}   // namespace
}   // namespace vela
