#include "engine/storage/VelaDatabase.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "engine/storage/RecordFormat.h"
#include "engine/storage/SchemaData.h"
#include "runtime/LocalClock.h"
#include "tests/storage/TableFixture.h"

namespace vela {

namespace {

using Texts = std::vector<std::string>;

class DatabaseTest : public testing::Test {
protected:
    DatabaseTest() : db(&disk) {}

    // A table of one Integer column with these values in rows 1, 2 ...
    void CreateFilled(const char* name, std::initializer_list<int> values)
    {
        db.Create(name, {kTypeInteger});
        for (int value : values)
            Add(name, value);
    }
    uint32_t Add(const char* name, int value)
    {
        TestRow row{{1, Int(value)}};
        return db.Table(name)->AddRow(row, false);
    }
    Texts Rows(const char* name) { return TableText(db.Table(name)); }

    MemoryDisk disk;
    DatabaseOnDisk db;
};

}   // namespace

TEST_F(DatabaseTest, RollbackBeforeTheFirstCommitKeepsTheSchemasOwnRows)
{
    CreateFilled("t", {1});
    db.Rollback();
    EXPECT_TRUE(db.database->IsValid());
    EXPECT_EQ(7u, RowIDsOf(db.database->Schema()).size());
    EXPECT_EQ(nullptr, db.Table("t"));
    EXPECT_EQ(Texts{}, disk.Names());
    ASSERT_TRUE(db.Commit());
    db.Open();
    EXPECT_EQ(7u, RowIDsOf(db.database->Schema()).size());
    EXPECT_EQ(1u, RowIDsOf(db.database->Schema())[0]) << "counted from one again";
}

TEST_F(DatabaseTest, NewTableHasNothingOfFilesThatLieThere)
{
    CreateFilled("t", {1, 2});
    db.Table("t")->AddIndex("i", {1});
    ASSERT_TRUE(db.Commit());
    const auto files = disk.Snapshot();
    db.Drop("t");
    ASSERT_TRUE(db.Commit());
    for (const char* name : {"t.dat", "t.map", "t.i.idx"})
        disk.Put(name, files.at(name));
    const auto leftBehind = disk.Snapshot();
    db.Open();
    EXPECT_EQ(nullptr, db.Table("t"));
    db.Create("t", {kTypeInteger});
    EXPECT_EQ(Texts{}, Rows("t"));
    db.Rollback();
    EXPECT_EQ(leftBehind, disk.Snapshot()) << "what isn't ours is not touched by a rollback";
    db.Create("t", {kTypeInteger});
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(Texts{}, Rows("t"));
    EXPECT_FALSE(disk.Contains("t.i.idx"));
    EXPECT_EQ(1u, Add("t", 5));
}

TEST_F(DatabaseTest, MapThatWasLostIsSavedWithTheNextCommit)
{
    CreateFilled("t", {1, 2});
    CreateFilled("u", {1});
    ASSERT_TRUE(db.Commit());
    const auto files = disk.Snapshot();
    disk.Remove("t.map");
    db.Open();
    EXPECT_EQ((Texts{"1: Integer 1", "2: Integer 2"}), Rows("t"));
    ASSERT_TRUE(db.Commit()) << "of nothing";
    EXPECT_EQ(files, disk.Snapshot());
}

// ---- read-only

TEST_F(DatabaseTest, ReadOnlyOpeningWritesNothing)
{
    CreateFilled("t", {1, 2});
    db.Table("t")->AddIndex("i", {1});
    CreateFilled("u", {3});
    ASSERT_TRUE(db.Commit());
    disk.Remove("u.map");
    disk.Put("t.map", "Drty");
    disk.Put("t.i.idx", disk.Bytes("t.i.idx").substr(0, 290));   // cut
    const auto before = disk.Snapshot();
    {
        const CapturedErrors errors;
        db.Open(true);
        const int64_t operations = disk.Operations();
        EXPECT_TRUE(db.database->IsValid());
        EXPECT_EQ((Texts{"1: Integer 1", "2: Integer 2"}), Rows("t"));
        EXPECT_EQ(2u, db.Table("t")->QtyRows());
        EXPECT_EQ((Texts{"1: Integer 3"}), Rows("u"));
        SimpleVector<uint32_t> rows;
        EXPECT_TRUE(db.Table("t")->FindRowsByIndex(1, Int(2), &rows));
        EXPECT_EQ(1u, rows.size());
        EXPECT_TRUE(db.Commit()) << "there is nothing to commit";
        db.Rollback();
        EXPECT_EQ(operations, disk.Operations()) << "not even tried";
        Add("t", 3);
        EXPECT_FALSE(db.Commit());
        EXPECT_NE(0u, db.database->CommitErrorText().length());
        EXPECT_EQ(3u, Rows("t").size()) << "still pending";
        db.Rollback();
        EXPECT_FALSE(db.database->LastCommitFailed());
        EXPECT_EQ(2u, Rows("t").size());
        VelaStatus status;
        EXPECT_EQ("SCHEMADA" + before.at("_schema.dat"),
                  std::string(db.database->GetSchemaData(&status).View()));
        db.database->ReplaceSchemaData(db.database->GetSchemaData(nullptr), &status);
        EXPECT_EQ(kVETableNotFound, status.State());
        EXPECT_TRUE(status.Description() == "Unable to write schema file.");
    }
    EXPECT_EQ(before, disk.Snapshot());
}

TEST_F(DatabaseTest, ReadOnlyOpeningOfNothingIsNotValid)
{
    MemoryDisk empty;
    VelaDatabase database(std::make_unique<MemoryFileAccess>(&empty, true));
    EXPECT_FALSE(database.IsValid());
    EXPECT_FALSE(database.TransactionInProgress());
    EXPECT_EQ(Texts{}, empty.Names());
    VelaStatus status;
    EXPECT_TRUE(database.GetSchemaData(&status).empty());
    EXPECT_EQ(kVETableNotFound, status.State());
    EXPECT_TRUE(status.Description() == "Schema file not found.");
}

// ---- the schema as a block of data

TEST_F(DatabaseTest, GetSchemaData_RefusesDuringATransaction)
{
    VelaStatus status;
    EXPECT_TRUE(db.database->GetSchemaData(&status).empty()) << "the seven rows are pending";
    EXPECT_EQ(kVETransactionInProgress, status.State());
    EXPECT_TRUE(status.Description() == "Can't get schema data while transaction is in progress.");
    EXPECT_TRUE(db.database->GetSchemaData(nullptr).empty());
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ("SCHEMADA" + disk.Bytes("_schema.dat"),
              std::string(db.database->GetSchemaData(&status).View()));
    EXPECT_EQ(kVEStateSuccess, status.State());
    disk.Remove("_schema.dat");
    EXPECT_TRUE(db.database->GetSchemaData(&status).empty());
    EXPECT_EQ(kVETableNotFound, status.State());
    EXPECT_TRUE(status.Description() == "Schema file not found.");
}

TEST_F(DatabaseTest, ReplaceSchemaData_TakesWhatGetSchemaDataGave)
{
    CreateFilled("t", {1, 2});
    ASSERT_TRUE(db.Commit());
    const string withT = db.database->GetSchemaData(nullptr);
    db.Alter("t", kTypeString, "");
    CreateFilled("u", {3});
    ASSERT_TRUE(db.Commit());
    VelaStatus status(kVEStateNoData, "");
    const string lower = string("schemada") + withT.mid(8);
    for (const string& data : {withT, lower}) {
        db.database->ReplaceSchemaData(data, &status);
        EXPECT_EQ(kVEStateSuccess, status.State());
        EXPECT_EQ(2u, db.database->OpenTables().size());
        EXPECT_EQ((Texts{"1: Integer 1", "2: Integer 2"}), Rows("t"));
        EXPECT_EQ(nullptr, db.Table("u"));
        EXPECT_EQ(std::string(withT.mid(8).View()), disk.Bytes("_schema.dat"));
    }
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ("RMap", disk.Bytes("_schema.map").substr(0, 4)) << "built anew";
    EXPECT_EQ(12u + 8 * 8, disk.Bytes("_schema.map").size());
    db.Open();
    EXPECT_EQ(8u, db.database->Schema()->QtyRows());
    EXPECT_EQ((Texts{"1: Integer 1", "2: Integer 2"}), Rows("t"));
}

TEST_F(DatabaseTest, ReplaceSchemaData_RefusalsChangeNothing)
{
    CreateFilled("t", {1});
    VelaStatus status;
    db.database->ReplaceSchemaData("SCHEMADA", &status);
    EXPECT_EQ(kVETransactionInProgress, status.State()) << "before the data are looked at";
    EXPECT_TRUE(status.Description() == "Can't replace schema while transaction is in progress.");
    ASSERT_TRUE(db.Commit());
    const auto before = disk.Snapshot();
    const std::string good = "SCHEMADA" + disk.Bytes("_schema.dat");
    const auto damaged = [&good](const ByteDamage& damage) {
        std::string data = good;
        damage(&data);
        return data;
    };
    constexpr size_t kFirstRow = 8 + 256;   // that of TableName
    const struct {
        std::string data;
        const char* why;
    } cases[] = {
        {"", "nothing"},
        {"SCHEMAD", "seven bytes"},
        {"SCHEMADA", "the mark alone"},
        {"SCHEMADB" + good.substr(8), "another mark"},
        {"SCHEMADA" + Zeros(255), "no whole metadata block"},
        {"SCHEMADA" + Zeros(256), "no rows"},
        {good.substr(0, good.size() - 1), "cut in the last record"},
        {good.substr(0, kFirstRow + 95), "one of seven rows"},
        {good + "R", "rubbish behind"},
        {damaged(SetNumber(kFirstRow, kTrashTag)), "six of seven rows"},
        {damaged(SetByte(kFirstRow, 'X')), "a bad tag"},
        {damaged(SetByte(kFirstRow + 8, 0x7F)), "a bad length"},
        {damaged(SetByte(kFirstRow + 12, 0x70)), "a body that can't be read"},
        {damaged(SetByte(kFirstRow + 12 + 15 + 12, '-')), "a row of another table"},
    };
    for (const auto& c : cases) {
        db.database->ReplaceSchemaData(string(c.data, kEncodingASCII), &status);
        EXPECT_EQ(kVEInvalidParameter, status.State()) << c.why;
        EXPECT_TRUE(status.Description() == "Invalid schema data.") << c.why;
        EXPECT_EQ(before, disk.Snapshot()) << c.why;
        EXPECT_EQ((Texts{"1: Integer 1"}), Rows("t")) << c.why;
        status = VelaStatus();
        db.database->ReplaceSchemaData(string(c.data, kEncodingASCII), nullptr);
        EXPECT_EQ(before, disk.Snapshot()) << c.why;
    }
    db.database->ReplaceSchemaData(string(good, kEncodingASCII), nullptr);
    EXPECT_EQ((Texts{"1: Integer 1"}), Rows("t")) << "a null status silences, it doesn't refuse";
}

TEST_F(DatabaseTest, ReplaceSchemaData_FailuresOfTheDiskChangeNothing)
{
    CreateFilled("t", {1});
    ASSERT_TRUE(db.Commit());
    const string data = db.database->GetSchemaData(nullptr);
    CreateFilled("u", {2});
    ASSERT_TRUE(db.Commit());
    const auto before = disk.Snapshot();
    for (int64_t failing = 1;; failing++) {
        ASSERT_LT(failing, 50);
        disk.FailAt(failing, MemoryDisk::Fault::kOnce);
        VelaStatus status;
        db.database->ReplaceSchemaData(data, &status);
        if (status.State() == kVEStateSuccess)
            break;
        ASSERT_TRUE(disk.HasFailed());
        EXPECT_EQ(kVETableNotFound, status.State()) << failing;
        EXPECT_TRUE(status.Description() == "Unable to write schema file.") << failing;
        EXPECT_EQ((Texts{"1: Integer 2"}), Rows("u")) << failing;
        EXPECT_EQ(before, disk.Snapshot()) << failing;
    }
    disk.ClearFault();   // it has struck after the commit, if at all
    EXPECT_EQ(nullptr, db.Table("u"));
    db.Open();
    EXPECT_EQ(std::string(data.mid(8).View()), disk.Bytes("_schema.dat"));
    EXPECT_EQ((Texts{"1: Integer 1"}), Rows("t"));
}

TEST(SchemaData, RecordFilesOfASchemaAndOthers)
{
    MemoryDisk disk;
    DatabaseOnDisk db(&disk);
    db.Create("t", {kTypeInteger});
    ASSERT_TRUE(db.Commit());
    EXPECT_TRUE(IsSchemaRecordFile(disk.Bytes("_schema.dat")));
    EXPECT_FALSE(IsSchemaRecordFile(disk.Bytes("t.dat")));
    EXPECT_FALSE(IsSchemaRecordFile(""));
    // Rows that were changed leave deleted records and slack, which are as good.
    VelaSchema* schema = db.database->Schema();
    TestRow longer{{VelaSchema::kColumnName, Str("a longer name of the column")}};
    TestRow shorter{{VelaSchema::kColumnName, Str("x")}};
    schema->UpdateRow(8, longer, false);
    ASSERT_TRUE(db.Commit());
    schema->UpdateRow(8, shorter, false);
    ASSERT_TRUE(db.Commit());
    EXPECT_TRUE(IsSchemaRecordFile(disk.Bytes("_schema.dat")));
}

// ---- the clock, the option

TEST_F(DatabaseTest, UpdateClock_WritesTwoDigitsAndTheYear)
{
    // The second may pass between the two readings; not three times.
    for (int attempt = 0; attempt < 3; attempt++) {
        const LocalTime before = CurrentLocalTime();
        db.database->UpdateClock();
        const LocalTime after = CurrentLocalTime();
        if (before.second != after.second)
            continue;
        char date[64];
        char time[64];
        std::snprintf(date, sizeof date, "%d-%02d-%02d", before.year, before.month, before.day);
        std::snprintf(time, sizeof time, "%02d:%02d:%02d", before.hour, before.minute,
                      before.second);
        EXPECT_TRUE(db.database->CurrentDate() == date);
        EXPECT_TRUE(db.database->CurrentTime() == time);
        EXPECT_TRUE(db.database->CurrentTimestamp() == (std::string(date) + " " + time).c_str());
        return;
    }
    FAIL() << "the clock runs too fast";
}

}   // namespace vela
