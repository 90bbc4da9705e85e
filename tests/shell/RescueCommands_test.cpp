// "veladb check" and "veladb repair" as their users meet them.

#include "shell/RescueCommands.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/shell/ShellTesting.h"

namespace vela::shell {
namespace {

using Json = nlohmann::json;

// A database "db" with the table t of three rows and an index on it.
void MakeDatabase(const TemporaryFolder& folder)
{
    const ProgramRun run =
        RunProgram(folder, {"--create", "db",
                            "CREATE TABLE t (a Integer, b String); INSERT INTO t VALUES (1, 'x'); "
                            "INSERT INTO t VALUES (2, 'y'); INSERT INTO t VALUES (3, 'z')",
                            "CREATE INDEX i ON t (a)"});
    ASSERT_EQ(0, run.exitStatus) << run.errors;
}

// Takes the tag of the second record away.
void DamageDatabase(const TemporaryFolder& folder)
{
    std::string bytes = FileContent(folder / "db/t.dat");
    bytes.at(bytes.find("RcSt", 257)) = 'X';
    folder.Put("db/t.dat", bytes);
}

TEST(RescueCommands, ChecksAndRepairs)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    ProgramRun run = RunProgram(folder, {"check", "db"});
    EXPECT_EQ("_schema: 9 rows\nt: 3 rows, 1 index\nno faults\n", run.output);
    EXPECT_EQ("", run.errors);
    EXPECT_EQ(0, run.exitStatus);

    DamageDatabase(folder);
    const std::string damaged = FileContent(folder / "db/t.dat");
    run = RunProgram(folder, {"check", "db"});
    EXPECT_EQ(
        "t.dat:290: no record begins here; 34 bytes passed over [tag]\n"
        "t.map:16: row 2: the map has a row of which there is no record [map-pair]\n"
        "t.i.idx:275: row 2: the entry is of a row that is not there [index-entry]\n"
        "_schema: 9 rows\nt: 2 rows, 34 bytes passed over, 1 index, 3 faults\n3 faults\n",
        run.output);
    EXPECT_EQ(4, run.exitStatus);

    run = RunProgram(folder, {"repair", "db", "new"});
    EXPECT_EQ(
        "t: 2 rows saved, 34 bytes passed over, index i made anew\nnot everything was saved\n",
        run.output);
    EXPECT_EQ(4, run.exitStatus);
    EXPECT_EQ(damaged, FileContent(folder / "db/t.dat"));
    run = RunProgram(folder, {"--format", "csv", "new", "SELECT a, b FROM t"});
    EXPECT_EQ("a,b\n1,x\n3,z\n", run.output);
    EXPECT_EQ(0, RunProgram(folder, {"check", "new"}).exitStatus);
}

TEST(RescueCommands, JsonIsOneDocument)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    DamageDatabase(folder);
    const Json check = Json::parse(RunProgram(folder, {"check", "--json", "db"}).output);
    EXPECT_EQ(3, check["faultCount"]);
    EXPECT_TRUE(check["complete"]);
    EXPECT_EQ(Json({{"kind", "tag"},
                    {"table", "t"},
                    {"file", "t.dat"},
                    {"offset", 290},
                    {"row", nullptr},
                    {"text", "no record begins here; 34 bytes passed over"}}),
              check["faults"][0]);
    EXPECT_EQ(2, check["faults"][1]["row"]);
    EXPECT_EQ(2, check["tables"][1]["rows"]);
    const Json repair = Json::parse(RunProgram(folder, {"repair", "db", "new", "--json"}).output);
    EXPECT_FALSE(repair["complete"]);
    EXPECT_EQ("t", repair["tables"][0]["name"]);
    EXPECT_EQ(2, repair["tables"][0]["rows"]);
    EXPECT_EQ(34, repair["tables"][0]["bytesPassedOver"]);
    EXPECT_EQ(Json({"i"}), repair["tables"][0]["indexes"]);
}

TEST(RescueCommands, RefusesWhatMakesNoSense)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    std::filesystem::create_directory(folder / "empty");
    const struct {
        std::vector<std::string> arguments;
        int exitStatus;
        const char* words;
    } cases[] = {
        {{"check"}, 2, "DATABASE is missing"},
        {{"check", "db", "other"}, 2, "too many arguments"},
        {{"check", "db", "--jsno"}, 2, "unknown option --jsno"},
        {{"repair", "db"}, 2, "NEWDATABASE is missing"},
        {{"check", "missing"}, 3, "missing"},
        {{"check", "empty"}, 3, "without a database"},
        {{"check", "db/t.dat"}, 3, "t.dat"},
        {{"repair", "missing", "new"}, 3, "missing"},
        {{"repair", "db", "empty"}, 1, "is there already"},
        {{"repair", "db", "db"}, 1, "within the damaged one"},
        {{"repair", "db", "db/new"}, 1, "within the damaged one"},
        {{"repair", "db", "nowhere/new"}, 1, "can't make"},
    };
    for (const auto& c : cases) {
        const ProgramRun run = RunProgram(folder, c.arguments);
        EXPECT_EQ(c.exitStatus, run.exitStatus) << c.words;
        EXPECT_NE(std::string::npos, run.errors.find(c.words)) << run.errors;
        EXPECT_EQ("", run.output) << c.words;
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "new"));
    EXPECT_TRUE(std::filesystem::is_empty(folder / "empty"));
}

TEST(RescueCommands, ADatabaseMayHaveTheNameOfAVerb)
{
    TemporaryFolder folder;
    const ProgramRun run =
        RunProgram(folder, {"./check", "--create", "CREATE TABLE t (a Integer)"});
    EXPECT_EQ(0, run.exitStatus) << run.errors;
    EXPECT_EQ(0, RunProgram(folder, {"check", "check"}).exitStatus);
}

// The table is big enough for the signal to come in time.
TEST(RescueCommands, AnInterruptedRepairLeavesNothing)
{
    TemporaryFolder folder;
    MakeDatabase(folder);
    std::string bytes = FileContent(folder / "db/t.dat");
    const std::string records = bytes.substr(256);
    while (bytes.size() < (size_t{48} << 20))
        bytes.append(bytes.size() < (size_t{1} << 20) ? records : bytes.substr(256));
    folder.Put("db/t.dat", bytes);
    const ProgramRun run = RunCommandLine(
        folder, "$VELADB repair db new & while [ ! -d new ]; do :; done; kill -TERM $!; wait $!");
    EXPECT_EQ(1, run.exitStatus) << run.errors;
    EXPECT_NE(std::string::npos, run.errors.find("interrupted; nothing was saved")) << run.errors;
    EXPECT_FALSE(std::filesystem::exists(folder / "new"));
}

}   // namespace
}   // namespace vela::shell
