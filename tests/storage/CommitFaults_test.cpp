#include <gtest/gtest.h>

#include <functional>
#include <ostream>

#include "engine/storage/CommitFileAccess.h"
#include "tests/storage/DatabaseContents.h"
#include "tests/storage/TableFixture.h"

// A disk that fails at every single call of a commit, one after the other.

namespace vela {

namespace {

using Files = std::map<std::string, std::string>;

// A committed table t of c1 Integer and c2 String, with an index.
void FillDatabase(DatabaseOnDisk& db)
{
    VelaTrans* table = db.Create("t", {kTypeInteger, kTypeString});
    for (int i = 1; i <= 6; i++) {
        TestRow row{{1, Int(i)}, {2, Str("row " + std::to_string(i))}};
        table->AddRow(row, false);
    }
    table->AddIndex("i", {1, 2});
}

void ChangeRows(DatabaseOnDisk& db)
{
    VelaTrans* table = db.Table("t");
    TestRow moves{{2, Str("this text is too long for its old place")}};
    TestRow stays{{1, Int(30)}};
    TestRow row{{1, Int(7)}, {2, Str("row 7")}};
    TestRow partial{{1, Int(8)}, {2, Null(kTypeString)}};
    table->UpdateRow(2, moves, false);
    table->UpdateRow(3, stays, false);
    table->DeleteRow(4);
    table->AddRow(row, false);
    table->AddRow(partial, false);
}

void AddRows(DatabaseOnDisk& db)
{
    for (int i = 10; i < 15; i++) {
        TestRow row{{1, Int(i)}, {2, Str("row " + std::to_string(i))}};
        db.Table("t")->AddRow(row, false);
    }
}

struct Scenario {
    const char* name;
    std::function<void(DatabaseOnDisk&)> change;
    bool bulk = false;   // with limits that make the commit a large one
};
void PrintTo(const Scenario& scenario, std::ostream* out)
{
    *out << scenario.name;
}

void CreateTable(DatabaseOnDisk& db)
{
    VelaTrans* table = db.Create("u", {kTypeInteger});
    for (int i = 1; i <= 4; i++) {
        TestRow row{{1, Int(i)}};
        table->AddRow(row, false);
    }
    table->AddIndex("i", {1});
}

void DoEverything(DatabaseOnDisk& db)
{
    ChangeRows(db);
    CreateTable(db);
    db.Table("t")->DropIndex("i");
    db.Table("t")->AddIndex("k", {2});
}

const Scenario kScenarios[] = {
    {"rows", ChangeRows},
    {"rows that an index file is lengthened for", AddRows},
    {"index created", [](DatabaseOnDisk& db) { db.Table("t")->AddIndex("k", {2}); }},
    {"index dropped", [](DatabaseOnDisk& db) { db.Table("t")->DropIndex("i"); }},
    {"index made again",
     [](DatabaseOnDisk& db) {
         db.Table("t")->DropIndex("i");
         db.Table("t")->AddIndex("i", {2});
     }},
    {"table created", CreateTable},
    {"table dropped", [](DatabaseOnDisk& db) { db.Drop("t"); }},
    {"table made again",
     [](DatabaseOnDisk& db) {
         db.Drop("t");
         db.Create("t", {kTypeInteger});
     }},
    {"everything", DoEverything},
    {"many rows", AddRows, true},
    {"many rows of a new table", CreateTable, true},
    {"everything large", DoEverything, true},
};

class CommitFaults : public testing::TestWithParam<Scenario> {
protected:
    CommitFaults()
    {
        DatabaseOnDisk db(&disk);
        FillDatabase(db);
        EXPECT_TRUE(db.Commit());
        before = disk.Snapshot();
        db.Open();
        contentsBefore = Contents(*db.database);
        GetParam().change(db);
        contentsPending = Contents(*db.database);
        EXPECT_TRUE(db.Commit());
        after = disk.Snapshot();
        db.Open();
        contentsAfter = Contents(*db.database);
    }
    // A database as it is before the changes, of the undisturbed life.
    void StartAgain(DatabaseOnDisk& db)
    {
        disk.ClearFault();
        db.database.reset();
        disk.Restore(before);
        db.Open();
        if (GetParam().bulk)
            db.database->Files()->SetLimits({16, 1, 1});
    }
    // Commits with each call failing in turn, up to the first commit that needs fewer calls, then with each call of the changes and
    // their commit; check is told whether it succeeded all the same.
    void FailEachCall(DatabaseOnDisk& db, MemoryDisk::Fault fault,
                      const std::function<void(bool committed)>& check)
    {
        for (const bool inChanges : {false, true}) {
            SCOPED_TRACE(inChanges ? "in the changes" : "in the commit");
            for (int64_t failing = 1;; failing++) {
                SCOPED_TRACE("call " + std::to_string(failing));
                ASSERT_LT(failing, 200);
                StartAgain(db);
                if (inChanges)
                    disk.FailAt(failing, fault);
                GetParam().change(db);
                if (!inChanges)
                    disk.FailAt(failing, fault);
                const bool committed = db.Commit();
                if (!disk.HasFailed()) {
                    EXPECT_TRUE(committed);
                    break;
                }
                check(committed);
            }
        }
    }
    // What is read after the process has died now, by an opening that only reads and by one that recovers.
    Texts ContentsAfterDeath()
    {
        MemoryDisk copy;
        copy.Restore(disk.AllFiles());
        DatabaseOnDisk reader(&copy, true);
        const Texts read = Contents(*reader.database);
        EXPECT_EQ(disk.AllFiles(), copy.AllFiles()) << "a reader writes nothing";
        reader.database.reset();
        DatabaseOnDisk db(&copy);
        EXPECT_EQ(read, Contents(*db.database));
        EXPECT_EQ("", IndexFault(*db.database));
        db.database.reset();
        EXPECT_FALSE(copy.Contains(kCommitLogName));
        EXPECT_EQ(copy.AllFiles(), copy.Snapshot());
        return read;
    }

    MemoryDisk disk;
    Files before;
    Files after;
    Texts contentsBefore;
    Texts contentsPending;
    Texts contentsAfter;
};

}   // namespace

TEST_P(CommitFaults, FailedCommitKeepsTheChangesAndSucceedsLater)
{
    DatabaseOnDisk db(&disk);
    for (MemoryDisk::Fault fault : {MemoryDisk::Fault::kOnce, MemoryDisk::Fault::kForGood}) {
        FailEachCall(db, fault, [&](bool committed) {
            if (committed)
                return;   // room that can't be reserved for a map, say: nothing that a commit needs
            EXPECT_NE(0u, db.database->CommitErrorText().length());
            disk.ClearFault();
            ASSERT_TRUE(db.Commit()) << db.database->CommitErrorText().CString();
            EXPECT_FALSE(db.database->LastCommitFailed());
            EXPECT_EQ("", IndexFault(*db.database));
            db.Open();
            EXPECT_EQ(contentsAfter, Contents(*db.database));
            EXPECT_EQ("", IndexFault(*db.database));
            for (const auto& [name, bytes] : after)
                if (name.find(".map") == std::string::npos) {
                    EXPECT_TRUE(bytes == disk.Bytes(name)) << name;
                }
            EXPECT_EQ(after.size(), disk.Names().size());
        });
    }
}

TEST_P(CommitFaults, FailedCommitLeavesTheChangesReadable)
{
    DatabaseOnDisk db(&disk);
    FailEachCall(db, MemoryDisk::Fault::kOnce, [&](bool committed) {
        EXPECT_EQ(committed, !db.database->LastCommitFailed());
        EXPECT_EQ(committed ? contentsAfter : contentsPending, Contents(*db.database));
        EXPECT_EQ(committed ? contentsAfter : contentsBefore, ContentsAfterDeath());
    });
}

TEST_P(CommitFaults, FailedCommitCanBeRolledBack)
{
    DatabaseOnDisk db(&disk);
    FailEachCall(db, MemoryDisk::Fault::kOnce, [&](bool committed) {
        const Texts& expected = committed ? contentsAfter : contentsBefore;
        disk.ClearFault();
        db.Rollback();
        EXPECT_FALSE(db.database->LastCommitFailed());
        EXPECT_FALSE(db.database->TransactionInProgress());
        EXPECT_EQ("", IndexFault(*db.database));
        EXPECT_EQ(expected, Contents(*db.database));
        ASSERT_TRUE(db.Commit());
        db.Open();
        EXPECT_EQ("", IndexFault(*db.database));
        EXPECT_EQ(expected, Contents(*db.database));
        EXPECT_EQ(committed ? after.size() : before.size(), disk.Names().size())
            << "files left behind";
    });
}

TEST_P(CommitFaults, DiskThatStaysFullLosesNothingThatWasCommitted)
{
    DatabaseOnDisk db(&disk);
    FailEachCall(db, MemoryDisk::Fault::kForGood, [&](bool committed) {
        const Texts dead = ContentsAfterDeath();
        if (committed)
            EXPECT_EQ(contentsAfter, dead);
        else
            EXPECT_TRUE(dead == contentsBefore || dead == contentsAfter);
        db.Rollback();
        EXPECT_EQ(committed ? contentsAfter : contentsBefore, Contents(*db.database));
        db.database.reset();
        EXPECT_EQ(dead, ContentsAfterDeath()) << "closing could not do anything";
        disk.ClearFault();
        db.Open();
        EXPECT_TRUE(db.database->IsValid());
        EXPECT_EQ(dead, Contents(*db.database));
    });
}

INSTANTIATE_TEST_SUITE_P(Scenarios, CommitFaults, testing::ValuesIn(kScenarios),
                         [](const testing::TestParamInfo<Scenario>& param) {
                             std::string name = param.param.name;
                             for (char& c : name)
                                 c = c == ' ' ? '_' : c;
                             return name;
                         });

}   // namespace vela
