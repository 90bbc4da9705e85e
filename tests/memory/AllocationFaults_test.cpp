// Every allocation made to fail in turn: in statements, commits, openings, and what else is asked of a database.

#include <gtest/gtest.h>

#include <algorithm>

#include "engine/sql/VelaSQL.h"
#include "engine/storage/CommitFileAccess.h"
#include "tests/memory/FailingAllocations.h"
#include "tests/storage/DatabaseContents.h"
#include "tests/storage/MemoryFileAccess.h"
#include "tests/storage/StorageTesting.h"

namespace vela {

namespace {

using Mode = FailingAllocations::Mode;
using Files = std::map<std::string, std::string>;
using Statements = std::vector<const char*>;

const Statements kCommitted = {
    "CREATE TABLE parts (id INTEGER, name VARCHAR, qty INTEGER, price DOUBLE, made DATE, "
    "good BOOLEAN)",
    "CREATE TABLE kinds (name VARCHAR, note VARCHAR)",
    "CREATE TABLE old (x INTEGER, y VARCHAR)",
    "CREATE INDEX byid ON parts (id)",
    "CREATE INDEX byname ON parts (name, qty)",
    "CREATE INDEX byx ON old (x)",
    "INSERT INTO parts VALUES (1, 'nut', 10, 0.5, DATE '2001-02-03', TRUE)",
    "INSERT INTO parts VALUES (2, 'bolt with a long name, longer than others', 20, 1.5, "
    "DATE '2002-02-03', FALSE)",
    "INSERT INTO parts VALUES (3, 'screw', 30, 2.5, DATE '2003-02-03', TRUE)",
    "INSERT INTO parts VALUES (4, 'nut', 40, 3.5, DATE '2004-02-03', FALSE)",
    "INSERT INTO parts VALUES (5, 'cam', 50, 4.5, DATE '2005-02-03', TRUE)",
    "INSERT INTO parts VALUES (6, 'cog', 60, 5.5, DATE '2006-02-03', FALSE)",
    "INSERT INTO kinds VALUES ('nut', 'small and round')",
    "INSERT INTO kinds VALUES ('cam', 'turns around, as anyone who reads this knows')",
    "INSERT INTO old VALUES (1, 'one')",
    "INSERT INTO old VALUES (2, 'two')",
};

// Something of everything.
const Statements kMixture = {
    "INSERT INTO parts VALUES (7, 'cap', 70, 6.5, DATE '2007-02-03', TRUE)",
    "UPDATE parts SET name = 'a name that has grown by far too much for the place where it was' "
    "WHERE id = 3",
    "UPDATE parts SET qty = 41 WHERE id = 4",
    "DELETE FROM parts WHERE id = 1",
    "CREATE INDEX bynote ON kinds (note)",
    "DROP INDEX parts.byname",
    "CREATE TABLE fresh (a INTEGER, b VARCHAR)",
    "INSERT INTO fresh VALUES (1, 'first of all')",
    "INSERT INTO fresh VALUES (2, 'second of all')",
    "INSERT INTO fresh VALUES (3, 'third of all')",
    "DROP TABLE old",
};

enum class Kind {
    kWhole,   // the statement is done whole or not at all
    kRows,    // row by row
    kSchema   // as kWhole, but may take the open transaction along
};

struct Scenario {
    const char* name;
    Statements pending;
    const char* statement;
    Kind kind;
};

const Statements kSomeRows = {
    "INSERT INTO parts VALUES (8, 'rod', 80, 7.5, DATE '2008-02-03', TRUE)",
    "UPDATE parts SET name = 'pin' WHERE id = 5",
    "DELETE FROM parts WHERE id = 2",
};

const Scenario kScenarios[] = {
    {"CreateTable", {}, "CREATE TABLE more (a INTEGER, b VARCHAR, c DATE)", Kind::kSchema},
    {"CreateTableLater", kSomeRows, "CREATE TABLE more (a INTEGER, b VARCHAR)", Kind::kSchema},
    {"Insert",
     {},
     "INSERT INTO parts VALUES (9, 'lever', 90, 8.5, DATE '2009-02-03', FALSE)",
     Kind::kWhole},
    {"InsertLater", kSomeRows,
     "INSERT INTO parts (name, id, qty, price, made, good) VALUES "
     "(UPPER('lever'), 3 * 3, 90, 8.5, DATE '2009-02-03', FALSE)",
     Kind::kWhole},
    {"InsertSelect", kSomeRows, "INSERT INTO parts SELECT * FROM parts", Kind::kRows},
    {"InsertSelectRows",
     {},
     "INSERT INTO kinds (name, note) SELECT name, 'copied, at some length' FROM parts",
     Kind::kRows},
    {"UpdateOne", {}, "UPDATE parts SET qty = 11, name = 'axle' WHERE id = 1", Kind::kWhole},
    {"UpdatePending", kSomeRows, "UPDATE parts SET name = 'axle' WHERE id = 8", Kind::kWhole},
    {"UpdateMany", kSomeRows, "UPDATE parts SET name = 'axle of steel', qty = 1", Kind::kRows},
    {"DeleteOne", {}, "DELETE FROM parts WHERE name = 'screw'", Kind::kWhole},
    {"DeletePending", kSomeRows, "DELETE FROM parts WHERE id = 8", Kind::kWhole},
    {"DeleteMany", kSomeRows, "DELETE FROM parts WHERE qty > 20", Kind::kRows},
    {"CreateIndex", kSomeRows, "CREATE INDEX byprice ON parts (price, name)", Kind::kWhole},
    {"DropIndex", kSomeRows, "DROP INDEX parts.byname", Kind::kWhole},
    {"AddColumn", {}, "ALTER TABLE parts ADD COLUMN weight INTEGER", Kind::kSchema},
    {"DropColumn",
     {"INSERT INTO kinds VALUES ('rod', 'long')"},
     "ALTER TABLE parts DROP COLUMN name",
     Kind::kSchema},
    {"DropTable", {"INSERT INTO kinds VALUES ('rod', 'long')"}, "DROP TABLE parts", Kind::kSchema},
    {"SetEscape", kSomeRows, "SET ESCAPE '\\'", Kind::kWhole},
    {"SyntaxError", kSomeRows, "UPDATE parts SET name == = 'a'", Kind::kWhole},
};

const char* const kQueries[] = {
    "SELECT * FROM parts",
    "SELECT p.name, k.note FROM parts p, kinds k WHERE p.name = k.name ORDER BY p.name",
    ("SELECT name, COUNT(*) AS n, SUM(qty), AVG(price) FROM parts GROUP BY name "
     "HAVING COUNT(*) > 0 ORDER BY n"),
    "SELECT DISTINCT name, good FROM parts WHERE name LIKE '%o%' OR id = 4",
    "SELECT id, SUBSTRING(name FROM 1 FOR 2), UPPER(name) FROM parts WHERE qty / 2 > 5",
    "SELECT note FROM kinds WHERE name = 'nut'",
};

// A database on a disk in memory, that a test closes, opens and tears away.
struct World {
    MemoryDisk disk;
    std::unique_ptr<VelaDatabase> database;

    void Open()
    {
        database.reset();
        database = std::make_unique<VelaDatabase>(std::make_unique<MemoryFileAccess>(&disk));
        CommitFileAccess::Limits limits;
        limits.aheadPiece = 1;   // nearly every inserted row goes ahead of its commit
        database->Files()->SetLimits(limits);
    }
    void Open(const Files& files)
    {
        database.reset();
        disk.Restore(files);
        Open();
    }
    // The committed database, and pending changes of it.
    void OpenWith(const Statements& pending);
    VelaStatus Run(const char* statement)
    {
        VelaStatus status;
        VelaSQLExecute(statement, *database, &status);
        return status;
    }
    void RunAll(const Statements& statements)
    {
        for (const char* statement : statements) {
            const VelaStatus status = Run(statement);
            ASSERT_EQ(kVEStateSuccess, status.State())
                << statement << ": " << status.Description().CString();
        }
    }
    bool Commit()
    {
        database->Commit();
        return !database->LastCommitFailed();
    }
    // Everything that there is to be read, in an order of its own: a row that has moved in its file is the same row.
    Texts Sorted()
    {
        Texts lines;
        std::string table;
        for (const std::string& line : Contents(*database)) {
            if (line.starts_with("table "))
                table = line;
            lines.push_back(table + ": " + line);
        }
        std::sort(lines.begin(), lines.end());
        return lines;
    }
};

Files MakeCommitted()
{
    World world;
    world.Open();
    world.RunAll(kCommitted);
    EXPECT_TRUE(world.Commit());
    EXPECT_EQ(6u, RowIDsOf(world.database->OpenTables()[1]).size());
    world.database.reset();
    return world.disk.AllFiles();
}

const Files& Committed()
{
    static const Files files = MakeCommitted();
    return files;
}

void World::OpenWith(const Statements& pending)
{
    Open(Committed());
    RunAll(pending);
}

// What is read after the process has died now.
Texts AfterDeath(const World& world)
{
    World copy;
    copy.Open(world.disk.AllFiles());
    EXPECT_EQ("", IndexFault(*copy.database));
    return copy.Sorted();
}

// What must hold of a database in any state: its indexes agree, it commits, and what is read then is read by the next
// opening, which finds the files that the formats name and no others.
void CheckStillGood(World& world)
{
    EXPECT_EQ("", IndexFault(*world.database));
    EXPECT_TRUE(world.Commit()) << world.database->CommitErrorText().CString();
    const Texts committed = world.Sorted();
    const Texts names = DescribedFiles(*world.database);
    EXPECT_EQ("", IndexFault(*world.database));
    world.Open();
    EXPECT_TRUE(world.database->IsValid());
    EXPECT_EQ(committed, world.Sorted());
    EXPECT_EQ("", IndexFault(*world.database));
    world.database.reset();
    EXPECT_EQ(names, world.disk.Names());
    EXPECT_FALSE(world.disk.Contains("_commit.log"));
}

class AllocationFaults : public testing::TestWithParam<Scenario> {};

class AllocationFaultsInQueries : public testing::TestWithParam<const char*> {};

std::string ResultText(VelaTable* rows)
{
    std::string text;
    if (rows != nullptr)
        for (const std::string& row : TableText(rows))
            text += row + "\n";
    return text;
}

}   // namespace

TEST_P(AllocationFaults, StatementTellsAndKeepsWhatWasPending)
{
    const Scenario& scenario = GetParam();
    World world;
    world.Open(Committed());
    const Texts committed = world.Sorted();
    world.RunAll(scenario.pending);
    const Texts before = world.Sorted();
    const VelaState expected = world.Run(scenario.statement).State();
    const Texts after = world.Sorted();
    FailEach([&](int64_t number, Mode mode) {
        world.OpenWith(scenario.pending);
        VelaStatus status;
        const string statement(scenario.statement);
        const bool failed =
            FailDuring(number, mode, [&] { VelaSQLExecute(statement, *world.database, &status); });
        const VelaState state = status.State();
        const Texts now = world.Sorted();
        if (state == expected) {
            EXPECT_EQ(after, now);
        } else if (state == kVETransactionLost) {
            EXPECT_EQ(Kind::kSchema, scenario.kind);
            EXPECT_EQ(committed, now);
        } else {
            EXPECT_EQ(kVEOutOfMemory, state) << status.Description().CString();
            EXPECT_TRUE(scenario.kind == Kind::kRows || before == now);
            for (const std::string& line : now)
                EXPECT_TRUE(std::binary_search(before.begin(), before.end(), line) ||
                            std::binary_search(after.begin(), after.end(), line))
                    << line;
        }
        EXPECT_EQ("", IndexFault(*world.database));
        EXPECT_EQ(committed, AfterDeath(world));
        if (state != expected && scenario.kind != Kind::kRows) {
            if (state == kVETransactionLost)
                world.RunAll(scenario.pending);
            EXPECT_EQ(expected, world.Run(scenario.statement).State());
            EXPECT_EQ(after, world.Sorted());
        }
        CheckStillGood(world);
        return failed;
    });
}

INSTANTIATE_TEST_SUITE_P(AllStatements, AllocationFaults, testing::ValuesIn(kScenarios),
                         [](const auto& scenario) { return std::string(scenario.param.name); });

TEST_P(AllocationFaultsInQueries, QueryTellsAndChangesNothing)
{
    World world;
    world.OpenWith(kSomeRows);
    const Texts before = world.Sorted();
    const string query(GetParam());
    VelaStatus status;
    const std::string expected = ResultText(VelaSQLQuery(query, *world.database, &status).get());
    ASSERT_EQ(kVEStateSuccess, status.State()) << status.Description().CString();
    FailEach([&](int64_t number, Mode mode) {
        world.OpenWith(kSomeRows);
        std::unique_ptr<VelaTable> rows;
        const bool failed =
            FailDuring(number, mode, [&] { rows = VelaSQLQuery(query, *world.database, &status); });
        if (rows) {
            EXPECT_EQ(kVEStateSuccess, status.State());
            EXPECT_EQ(expected, ResultText(rows.get()));
        } else {
            EXPECT_EQ(kVEOutOfMemory, status.State()) << status.Description().CString();
        }
        EXPECT_EQ(expected, ResultText(VelaSQLQuery(query, *world.database, &status).get()));
        EXPECT_EQ(before, world.Sorted());
        CheckStillGood(world);
        return failed;
    });
}

INSTANTIATE_TEST_SUITE_P(AllQueries, AllocationFaultsInQueries, testing::ValuesIn(kQueries));

TEST(AllocationFaultsInCommit, CommitTellsTheTruthAndCanBeTriedAgain)
{
    World world;
    world.Open(Committed());
    const Texts committed = world.Sorted();
    world.RunAll(kMixture);
    const Texts pending = world.Sorted();
    ASSERT_TRUE(world.Commit());
    const Texts after = world.Sorted();
    const struct {
        const char* name;
        CommitFileAccess::Limits limits;
        bool rollsBack;   // what a failed commit has left; else it is tried again
    } cases[] = {{"small", {.aheadPiece = 1}, false},
                 {"large", {16, 1, 1}, false},
                 {"rolled back", {.aheadPiece = 1}, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        FailEach([&](int64_t number, Mode mode) {
            world.Open(Committed());
            world.database->Files()->SetLimits(c.limits);
            world.RunAll(kMixture);
            const bool failed = FailDuring(number, mode, [&] { world.database->Commit(); });
            const bool told = world.database->LastCommitFailed();
            const Texts found = AfterDeath(world);
            EXPECT_EQ(told ? pending : after, world.Sorted());
            EXPECT_TRUE(found == after || (told && found == committed));
            if (told) {
                EXPECT_STREQ("There is not enough memory",
                             world.database->CommitErrorText().CString());
            }
            if (told && c.rollsBack) {
                world.database->Rollback();
                EXPECT_EQ(committed, world.Sorted());
            }
            CheckStillGood(world);
            world.Open();
            EXPECT_EQ(told && c.rollsBack ? committed : after, world.Sorted());
            return failed;
        });
    }
}

TEST(AllocationFaultsInRollback, EverythingPendingIsGone)
{
    World world;
    world.Open(Committed());
    const Texts committed = world.Sorted();
    for (const Statements& changes : {kMixture, kSomeRows}) {
        FailEach([&](int64_t number, Mode mode) {
            world.OpenWith(changes);
            const bool failed = FailDuring(number, mode, [&] { world.database->Rollback(); });
            EXPECT_FALSE(world.database->TransactionInProgress());
            EXPECT_EQ(kVEStateSuccess,
                      world.Run("UPDATE kinds SET note = 'x' WHERE name = 'none'").State());
            EXPECT_EQ(committed, world.Sorted());
            world.RunAll(changes);
            CheckStillGood(world);
            return failed;
        });
    }
}

TEST(AllocationFaultsInOpening, OpeningTellsAndTheNextOneSucceeds)
{
    World world;
    world.Open(Committed());
    const Texts committed = world.Sorted();
    world.RunAll(kMixture);
    ASSERT_TRUE(world.Commit());
    const Texts after = world.Sorted();
    const Files unfinished = world.disk.AllFiles();
    ASSERT_NE(0u, unfinished.count("_commit.log"));
    for (const Files& files : {Committed(), unfinished, Files()}) {
        SCOPED_TRACE(std::to_string(files.size()) + " files");
        FailEach([&](int64_t number, Mode mode) {
            world.database.reset();
            world.disk.Restore(files);
            auto access = std::make_unique<MemoryFileAccess>(&world.disk);
            auto* place = static_cast<VelaDatabase*>(::operator new(sizeof(VelaDatabase)));
            bool valid = false;
            const bool failed = FailDuring(number, mode, [&] {
                new (place) VelaDatabase(std::move(access));
                valid = place->IsValid();
            });
            world.database.reset(place);
            if (!valid && mode == Mode::kOnce && world.database->OpenErrorText().empty())
                valid = world.database->IsValid();   // it failed, and so did nothing else
            if (!valid) {
                EXPECT_STREQ("There is not enough memory",
                             world.database->OpenErrorText().CString());
                EXPECT_EQ(kVEOutOfMemory, world.Run("DELETE FROM parts").State());
                EXPECT_FALSE(world.Commit());
                world.database->Rollback();
                EXPECT_TRUE(world.database->Damage().Places().empty());
                world.Open();
            }
            const Texts now = world.Sorted();
            if (files.empty()) {
                EXPECT_EQ(8u, now.size()) << "the schema and its rows";
            } else {
                EXPECT_EQ(files.count("_commit.log") != 0 ? after : committed, now);
            }
            CheckStillGood(world);
            return failed;
        });
    }
}

TEST(AllocationFaultsInClosing, ClosingNeverThrowsAndLosesNoCommit)
{
    World world;
    world.OpenWith(kMixture);
    ASSERT_TRUE(world.Commit());
    const Texts after = world.Sorted();
    FailEach([&](int64_t number, Mode mode) {
        world.OpenWith(kMixture);
        EXPECT_TRUE(world.Commit());
        world.RunAll({"INSERT INTO kinds VALUES ('pending', 'dropped by closing')"});
        const bool failed = FailDuring(number, mode, [&] { world.database.reset(); });
        world.Open();
        EXPECT_EQ(after, world.Sorted());
        CheckStillGood(world);
        return failed;
    });
}

TEST(AllocationFaultsInSchemaData, SchemaIsGivenAndReplacedOrTheErrorIsTold)
{
    World world;
    world.Open(Committed());
    const Texts committed = world.Sorted();
    VelaStatus status;
    const string data = world.database->GetSchemaData(&status);
    ASSERT_NE(0u, data.length());
    FailEach([&](int64_t number, Mode mode) {
        world.Open(Committed());
        string given;
        VelaStatus replaced;
        const bool failed = FailDuring(number, mode, [&] {
            given = world.database->GetSchemaData(&status);
            world.database->ReplaceSchemaData(data, &replaced);
        });
        EXPECT_EQ(given.empty() ? kVEOutOfMemory : kVEStateSuccess, status.State());
        EXPECT_TRUE(replaced.State() == kVEStateSuccess || replaced.State() == kVEOutOfMemory)
            << replaced.Description().CString();
        EXPECT_TRUE(failed || replaced.State() == kVEStateSuccess);
        world.database->ReplaceSchemaData(data, &replaced);
        EXPECT_EQ(kVEStateSuccess, replaced.State());
        EXPECT_EQ(committed, world.Sorted());
        CheckStillGood(world);
        return failed;
    });
}

}   // namespace vela
