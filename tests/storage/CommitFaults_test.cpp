#include <gtest/gtest.h>

#include <functional>

#include "tests/storage/TableFixture.h"

// A disk that fails at every single call of a commit, one after the other.

namespace vela {

namespace {

using Texts = std::vector<std::string>;
using Files = std::map<std::string, std::string>;

// What is to be read in a database: tables, rows, indexes.
Texts Contents(DatabaseOnDisk& db)
{
    Texts contents;
    for (VelaTable* table : db.database->OpenTables()) {
        contents.emplace_back(table->TableName().View());
        SimpleVector<string> names;
        table->GetIndexNames(names);
        for (const string& name : names)
            contents.push_back("index " + std::string(name.View()));
        for (const std::string& row : TableText(table))
            contents.push_back(row);
    }
    return contents;
}

// Every row by every index: what indexes answer must be what the rows hold.
void ExpectIndexesAgree(DatabaseOnDisk& db)
{
    for (VelaTable* table : db.database->OpenTables()) {
        for (uint32_t rowID : RowIDsOf(table)) {
            for (long number = 1; number < table->QtyColumns(); number++) {
                VelaValue value;
                VelaValue stored;
                SimpleVector<uint32_t> rows;
                ASSERT_TRUE(table->GetValue(rowID, number, &value));
                ASSERT_TRUE(table->AsStoredTable()->GetValue(rowID, number, &stored, false));
                EXPECT_EQ(ValueText(stored), ValueText(value));
                if (!table->FindRowsByIndex(number, value, &rows))
                    continue;
                EXPECT_NE(rows.end(), std::find(rows.begin(), rows.end(), rowID))
                    << table->TableName().CString() << " row " << rowID << ", column " << number;
            }
        }
    }
}

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
    bool undone;   // after a failed commit a rollback brings all of the old contents back
};

const Scenario kScenarios[] = {
    {"rows", ChangeRows, true},
    {"rows that an index file is lengthened for", AddRows, true},
    {"index created", [](DatabaseOnDisk& db) { db.Table("t")->AddIndex("k", {2}); }, true},
    {"index dropped", [](DatabaseOnDisk& db) { db.Table("t")->DropIndex("i"); }, true},
    {"table created",
     [](DatabaseOnDisk& db) {
         VelaTrans* table = db.Create("u", {kTypeInteger});
         TestRow row{{1, Int(1)}};
         table->AddRow(row, false);
         table->AddIndex("i", {1});
     },
     true},
    {"table dropped", [](DatabaseOnDisk& db) { db.Drop("t"); }, false},
    {"everything",
     [](DatabaseOnDisk& db) {
         ChangeRows(db);
         VelaTrans* table = db.Create("u", {kTypeInteger});
         TestRow row{{1, Int(1)}};
         table->AddRow(row, false);
     },
     false},
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
        contentsBefore = Contents(db);
        GetParam().change(db);
        contentsPending = Contents(db);
        EXPECT_TRUE(db.Commit());
        after = disk.Snapshot();
        db.Open();
        contentsAfter = Contents(db);
    }
    // A database with the changes pending, as in the undisturbed life.
    void StartAgain(DatabaseOnDisk& db)
    {
        disk.ClearFault();
        db.database.reset();
        disk.Restore(before);
        db.Open();
        GetParam().change(db);
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
        for (int64_t failing = 1;; failing++) {
            SCOPED_TRACE("call " + std::to_string(failing));
            ASSERT_LT(failing, 200);
            StartAgain(db);
            disk.FailAt(failing, fault);
            const bool committed = db.Commit();
            if (!disk.HasFailed()) {
                EXPECT_TRUE(committed);
                break;
            }
            if (committed)
                continue;   // room that can't be reserved for a map, say: nothing that a commit needs
            EXPECT_NE(0u, db.database->CommitErrorText().length());
            disk.ClearFault();
            ASSERT_TRUE(db.Commit()) << db.database->CommitErrorText().CString();
            EXPECT_FALSE(db.database->LastCommitFailed());
            ExpectIndexesAgree(db);
            db.Open();
            EXPECT_EQ(contentsAfter, Contents(db));
            ExpectIndexesAgree(db);
            for (const auto& [name, bytes] : after)
                if (name.find(".map") == std::string::npos) {
                    EXPECT_TRUE(bytes == disk.Bytes(name)) << name;
                }
            EXPECT_EQ(after.size(), disk.Names().size());
        }
    }
}

TEST_P(CommitFaults, FailedCommitLeavesTheChangesReadable)
{
    DatabaseOnDisk db(&disk);
    for (int64_t failing = 1;; failing++) {
        SCOPED_TRACE("call " + std::to_string(failing));
        StartAgain(db);
        disk.FailAt(failing, MemoryDisk::Fault::kOnce);
        if (db.Commit() && !disk.HasFailed())
            break;
        if (!db.database->LastCommitFailed())
            continue;
        Texts contents = Contents(db);
        // What one table has committed already reads as committed: nulls as defaults, moved rows at the end.
        if (GetParam().undone)
            EXPECT_EQ(contentsPending, contents);
        else
            EXPECT_EQ(contentsPending.size(), contents.size());
    }
}

TEST_P(CommitFaults, FailedCommitCanBeRolledBack)
{
    DatabaseOnDisk db(&disk);
    for (int64_t failing = 1;; failing++) {
        SCOPED_TRACE("call " + std::to_string(failing));
        StartAgain(db);
        disk.FailAt(failing, MemoryDisk::Fault::kOnce);
        if (db.Commit() && !disk.HasFailed())
            break;
        const bool failed = db.database->LastCommitFailed();
        disk.ClearFault();
        db.Rollback();
        EXPECT_FALSE(db.database->LastCommitFailed());
        EXPECT_FALSE(db.database->TransactionInProgress());
        ExpectIndexesAgree(db);
        if (failed && GetParam().undone) {
            EXPECT_EQ(contentsBefore, Contents(db));
        }
        ASSERT_TRUE(db.Commit());
        db.Open();
        ExpectIndexesAgree(db);
        if (failed && GetParam().undone) {
            EXPECT_EQ(contentsBefore, Contents(db));
            EXPECT_EQ(before.size(), disk.Names().size()) << "files left behind";
        }
    }
}

TEST_P(CommitFaults, DiskThatStaysFullLosesNothingThatWasCommitted)
{
    DatabaseOnDisk db(&disk);
    for (int64_t failing = 1;; failing++) {
        SCOPED_TRACE("call " + std::to_string(failing));
        StartAgain(db);
        disk.FailAt(failing, MemoryDisk::Fault::kForGood);
        if (db.Commit() && !disk.HasFailed())
            break;
        const CapturedErrors errors;
        db.Rollback();
        Contents(db);
        db.Open();
        Contents(db);
        EXPECT_TRUE(db.database->IsValid());
    }
}

INSTANTIATE_TEST_SUITE_P(Scenarios, CommitFaults, testing::ValuesIn(kScenarios),
                         [](const testing::TestParamInfo<Scenario>& param) {
                             std::string name = param.param.name;
                             for (char& c : name)
                                 c = c == ' ' ? '_' : c;
                             return name;
                         });

}   // namespace vela
