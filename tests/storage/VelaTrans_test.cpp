#include "engine/storage/VelaTrans.h"

#include <gtest/gtest.h>

#include <cstring>

#include "engine/storage/RecordFormat.h"
#include "tests/storage/TableFixture.h"

namespace vela {

namespace {

using Rows = std::vector<uint32_t>;
using Texts = std::vector<std::string>;

// The table t: c1 Integer, c2 String.
class TableTest : public testing::Test {
protected:
    TableTest() : db(&disk)
    {
        table = db.Create("t", {kTypeInteger, kTypeString});
        EXPECT_TRUE(db.Commit());
    }
    uint32_t Add(int32_t number, const char* text)
    {
        TestRow row{{1, Int(number)}, {2, Str(text)}};
        return table->AddRow(row, false);
    }
    uint32_t AddAs(int32_t rowID, int32_t number)
    {
        TestRow row{{0, Int(rowID)}, {1, Int(number)}};
        return table->AddRow(row, false);
    }
    void Update(uint32_t rowID, uint32_t columnID, const VelaValue& value)
    {
        TestRow row{{columnID, value}};
        table->UpdateRow(rowID, row, false);
    }
    std::string Read(uint32_t rowID, long number) { return ReadText(table, rowID, number); }
    Rows RowIDs() { return RowIDsOf(table); }
    void Reopen()
    {
        db.Open();
        table = db.Table("t");
    }
    // With a file that says so.
    void ReopenWithLastRowID(uint32_t rowID)
    {
        std::string bytes = disk.Bytes("t.dat");
        std::memcpy(bytes.data(), &rowID, sizeof rowID);
        disk.Put("t.dat", bytes);
        Reopen();
    }
    std::string Records() const { return ToHex(disk.Bytes("t.dat").substr(kMetadataSize)); }
    // The last used row id and column id that the file tells.
    std::string Metadata() const
    {
        uint32_t numbers[2];
        std::memcpy(numbers, disk.Bytes("t.dat").data(), sizeof numbers);
        return std::to_string(numbers[0]) + " " + std::to_string(numbers[1]);
    }
    bool HasIndexFile(const char* name) const
    {
        return disk.Contains(std::string("t.") + name + ".idx");
    }

    MemoryDisk disk;
    DatabaseOnDisk db;
    VelaTrans* table = nullptr;
};

}   // namespace

// ---- row ids

TEST_F(TableTest, AddRow_ARefusedRowIsTakenAllTheSame)
{
    AddAs(1, 1);
    TestRow row{{0, Int(1)}, {1, Int(2)}};
    EXPECT_EQ(kInvalidRowID, table->AddRow(row, true));
    EXPECT_EQ(0u, row.Values().size());
    TestRow kept{{1, Int(2)}};
    EXPECT_EQ(2u, table->AddRow(kept, false));
    EXPECT_EQ(1u, kept.Values().size());
    EXPECT_EQ(3u, table->AddRow(kept, true));
    EXPECT_EQ(0u, kept.Values().size());
}

TEST_F(TableTest, AddRow_NoRowIDIsHandedOutAboveTheLargest)
{
    EXPECT_EQ(0xFFFFFFFEu, AddAs(-2, 1));
    EXPECT_EQ(kInvalidRowID, Add(1, "a"));
    ASSERT_TRUE(db.Commit());
    // A file that says that even -1 is used.
    ReopenWithLastRowID(0xFFFFFFFF);
    EXPECT_EQ(kInvalidRowID, Add(1, "a"));
    EXPECT_EQ((Rows{0xFFFFFFFE}), RowIDs());
}

TEST_F(TableTest, AddRow_RowsWithPendingChangesKeepTheirIDs)
{
    for (int i = 1; i <= 3; i++)
        Add(i, "x");
    ASSERT_TRUE(db.Commit());
    // A file that tells too low a last used row id: the next one is that of a row which has a pending change.
    ReopenWithLastRowID(2);
    Update(3, 1, Int(33));
    EXPECT_EQ(4u, Add(4, "y"));
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ((Rows{1, 2, 3, 4}), RowIDs());
    EXPECT_EQ("Integer 33", Read(3, 1));
}

TEST_F(TableTest, LoadMetadata_ZeroesAreCountedAnew)
{
    AddAs(9, 1);
    AddAs(4, 1);
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ("9 2", Metadata());
    disk.Put("t.dat", Zeros(8) + disk.Bytes("t.dat").substr(8));
    Reopen();
    EXPECT_EQ(10u, table->NextUnusedRowID());
    EXPECT_EQ(9u, table->LastRowID());
    EXPECT_EQ(3u, table->NextUnusedColumnID());
    EXPECT_EQ(10u, Add(1, "a"));
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ("10 2", Metadata());
}

// ---- values

TEST_F(TableTest, GetValue_RowIDForAnyRowAndNothingOutsideTheColumns)
{
    EXPECT_EQ("Integer 12345", Read(12345, 0));
    EXPECT_EQ("Integer -2", Read(0xFFFFFFFE, 0));
    const uint32_t row = Add(1, "a");
    EXPECT_EQ("none", Read(row, -1));
    EXPECT_EQ("none", Read(row, 3));
    EXPECT_EQ("none", Read(row + 1, 1));
    EXPECT_EQ(3, table->QtyColumns());
    EXPECT_EQ(nullptr, table->Column(3));
    EXPECT_EQ(nullptr, table->Column(-1));
    EXPECT_EQ(&RowIDColumn(), table->Column(0));
    EXPECT_TRUE(table->Column(0)->name == "_rowid");
    EXPECT_EQ(kTypeInteger, table->Column(0)->Type());
    EXPECT_EQ(0, table->FindColumnNumber(0));
    EXPECT_EQ(2, table->FindColumnNumber(2));
    EXPECT_EQ(-1, table->FindColumnNumber(3));
}

// As a reader of all the names finds them.
TEST_F(TableTest, FindColumnNamed_FindsTheFirstOfExactlyThatName)
{
    const std::vector<const char*> names = {"_rowid", "a", "ab", "A", "b", "a", "_rowid", "_row"};
    VelaSchema* schema = db.database->Schema();
    for (size_t i = 1; i < names.size(); i++)
        schema->AddSchemaRow("named", static_cast<uint32_t>(i), names[i], kTypeInteger, 0, true,
                             "");
    const std::unique_ptr<VelaTrans> named = schema->CreateTable("named");
    ASSERT_EQ(8, named->QtyColumns());
    const struct {
        const char* name;
        long number;
    } cases[] = {{"_rowid", 0}, {"a", 1},  {"ab", 2},   {"A", 3},       {"b", 4}, {"_row", 7},
                 {"", -1},      {"B", -1}, {"abc", -1}, {"_ROWID", -1}, {"_", -1}};
    for (const auto& c : cases) {
        EXPECT_EQ(c.number, named->FindColumnNamed(c.name)) << c.name;
        EXPECT_EQ(c.number, named->VelaTable::FindColumnNamed(c.name)) << c.name;
    }
}

TEST_F(TableTest, ExplicitRowIDIsStoredAsAValueOfColumnZero)
{
    AddAs(7, 1);
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(ToHex(FromHex("52 63 53 74 00 00 00 07 00 00 00 0D 02 00 03 01 03 00 00 00 07"
                            "00 00 00 01")),
              Records());
    Update(7, 0, Int(99));
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(Rows{7}, RowIDs()) << "an update doesn't change the row's id";
    EXPECT_EQ("Integer 7", Read(7, 0));
}

// ---- indexes

TEST_F(TableTest, IndexFileIsMadeAtCommitAndReadAgain)
{
    Add(5, "five");
    ASSERT_TRUE(db.Commit());
    EXPECT_TRUE(table->AddIndex("i", {1}));
    EXPECT_FALSE(table->AddIndex("i", {2})) << "the name is taken";
    EXPECT_FALSE(table->AddIndex("j", {})) << "no column";
    EXPECT_FALSE(HasIndexFile("i"));
    EXPECT_FALSE(table->HasChangesToCommit());
    EXPECT_TRUE(table->IsTouched());
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(ToHex(FromHex("52 63 53 74 00 00 00 01 00 00 00 07 01 01 03 00 00 00 05")),
              ToHex(disk.Bytes("t.i.idx").substr(256)));
    Reopen();
    SimpleVector<string> names;
    table->GetIndexNames(names);
    ASSERT_EQ(1u, names.size());
    EXPECT_TRUE(names[0] == "i");
    EXPECT_EQ(1u, table->IndexColumns("i")[0]);
    EXPECT_EQ(0u, table->IndexColumns("x").size());
    SimpleVector<uint32_t> rows;
    EXPECT_TRUE(table->FindRowsByIndex(1, Int(5), &rows));
    EXPECT_EQ(Rows{1}, Rows(rows.begin(), rows.end()));
    EXPECT_FALSE(table->FindRowsByIndex(2, Str("five"), &rows)) << "not indexed";
    EXPECT_FALSE(table->FindRowsByIndex(1, Str("5"), &rows)) << "of another type";
    EXPECT_FALSE(table->FindRowsByIndex(1, Null(kTypeInteger), &rows));
}

TEST_F(TableTest, IndexOfAnEmptyTableKeepsItsColumns)
{
    EXPECT_TRUE(table->AddIndex("i", {2, 1}));
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(ToHex(FromHex("52 63 53 74 FF FF FF FF 00 00 00 0D 02 02 03 01 03"
                            "00 00 00 00 00 00 00 00")),
              ToHex(disk.Bytes("t.i.idx").substr(256)));
    Reopen();
    EXPECT_EQ(2u, table->IndexColumns("i").size());
    Add(1, "a");
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(ToHex(FromHex("52 63 53 74 00 00 00 01 00 00 00 16 02 02 05 01 03"
                            "00 00 00 01 00 00 00 01 00 00 06 00 61 00 00 00 01")),
              ToHex(disk.Bytes("t.i.idx").substr(256)))
        << "the record of the columns has gone";
    table->DeleteRow(1);
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ("52 63 53 74 FF FF FF FF ", ToHex(disk.Bytes("t.i.idx").substr(256, 8)))
        << "and is back with the last entry gone";
}

TEST_F(TableTest, Rollback_IndexDroppedWithAPendingRowForgetsThatRow)
{
    table->AddIndex("i", {1});
    ASSERT_TRUE(db.Commit());
    const uint32_t rowID = Add(5, "five");
    table->DropIndex("i");
    table->DeleteRow(rowID);
    table->Rollback();
    EXPECT_FALSE(table->ContainsRow(rowID));
    EXPECT_EQ("none", Read(rowID, 1));
    EXPECT_EQ(rowID, AddAs(static_cast<int32_t>(rowID), 6));
}

TEST_F(TableTest, DamagedOrMissingIndexFileIsFilledFromTheRows)
{
    for (int i = 1; i <= 5; i++)
        Add(i, "x");
    table->AddIndex("i", {1});
    ASSERT_TRUE(db.Commit());
    const auto good = disk.Snapshot();
    const std::string index = good.at("t.i.idx");
    for (size_t cut = 256 + 19; cut < index.size(); cut += 7) {
        const CapturedErrors errors;
        disk.Restore(good);
        disk.Put("t.i.idx", index.substr(0, cut));
        Reopen();
        const bool atARecord = (cut - 256) % 19 == 0;   // nothing shows that one is missing then
        SimpleVector<uint32_t> rows;
        for (int i = 1; i <= 5; i++) {
            EXPECT_TRUE(table->FindRowsByIndex(1, Int(i), &rows)) << cut;
            if (!atARecord) {
                EXPECT_EQ(1u, rows.size()) << cut;
            }
        }
        EXPECT_TRUE(db.Commit());
        if (!atARecord) {
            EXPECT_EQ(index, disk.Bytes("t.i.idx")) << "and saved with the next commit";
        }
    }
    disk.Restore(good);
    Reopen();
    EXPECT_EQ(1u, table->IndexColumns("i").size());
    disk.Remove("t.i.idx");   // while the index is open
    SimpleVector<uint32_t> rows;
    EXPECT_TRUE(table->FindRowsByIndex(1, Int(3), &rows));
    EXPECT_EQ(1u, rows.size());
}

TEST_F(TableTest, EntryOfAnEarlierTypeDoesNotSpeakForTheRecord)
{
    Add(1, "12 apples");
    ASSERT_TRUE(db.Commit());
    VelaSchema* schema = db.database->Schema();
    const auto setType = [&](VelaDataType type) {
        for (uint32_t rowID : RowIDsOf(schema)) {
            TestRow row{{VelaSchema::kTypeCode, Int(type)}};
            if (ReadText(schema, rowID, VelaSchema::kTableName) == "String[600] t" &&
                ReadText(schema, rowID, VelaSchema::kColumnID) == "Integer 2")
                schema->UpdateRow(rowID, row, false);
        }
        table = db.Reload("t");
    };
    setType(kTypeInteger);
    table->AddIndex("i", {2});
    EXPECT_EQ("Integer 12", Read(1, 2));
    setType(kTypeString);
    EXPECT_EQ("String[600] 12 apples", Read(1, 2)) << "the entry has lost the apples";
    SimpleVector<uint32_t> rows;
    EXPECT_FALSE(table->FindRowsByIndex(2, Str("12"), &rows));
    setType(kTypeInteger);
    EXPECT_TRUE(table->FindRowsByIndex(2, Int(12), &rows));
    EXPECT_EQ(1u, rows.size());
}

TEST(VelaTrans, TablesKeepTheirIndexFilesApart)
{
    MemoryDisk disk;
    DatabaseOnDisk db(&disk);
    for (const char* name : {"a", "ab", "a*", "*"}) {
        VelaTrans* table = db.Create(name, {kTypeInteger});
        table->AddIndex("i", {1});
    }
    ASSERT_TRUE(db.Commit());
    db.Open();
    for (const char* name : {"a", "ab", "a*", "*"}) {
        SimpleVector<string> names;
        db.Table(name)->GetIndexNames(names);
        EXPECT_EQ(1u, names.size()) << name;
    }
    db.Drop("a*");
    db.Drop("*");
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ((Texts{"_schema.dat", "_schema.map", "a.dat", "a.i.idx", "a.map", "ab.dat",
                     "ab.i.idx", "ab.map"}),
              disk.Names());
}

TEST(VelaTrans, TableWithoutItsRecordFileHasNoRows)
{
    MemoryDisk disk;
    DatabaseOnDisk db(&disk);
    TestRow row{{1, Int(1)}};
    db.Create("t", {kTypeInteger})->AddRow(row, false);
    ASSERT_TRUE(db.Commit());
    disk.Remove("t.dat");
    db.Open();
    VelaTrans* table = db.Table("t");
    ASSERT_NE(nullptr, table);
    EXPECT_EQ(0u, table->QtyRows());
    EXPECT_EQ(Rows{}, RowIDsOf(table));
    EXPECT_EQ("none", ReadText(table, 1, 1));
    EXPECT_FALSE(table->ContainsRow(1));
    EXPECT_TRUE(db.Commit());
    table->AddRow(row, false);
    EXPECT_EQ(0u, table->QtyRows());
    EXPECT_FALSE(db.Commit());
    EXPECT_TRUE(db.database->CommitErrorText() ==
                "The record file t.dat is missing or can't be opened.");
}

// ---- pending changes

// Far more memory than the last changes need goes through the arena, which is emptied on the way.
TEST_F(TableTest, UpdateRow_PendingRowsAreRightHoweverOftenTheyChange)
{
    const std::string filler(500, 'x');
    constexpr int kRows = 300;
    for (int row = 0; row < kRows; row++)
        Add(row, "new");
    for (int round = 1; round <= 60; round++)
        for (int row = 0; row < kRows; row++)
            if ((row + round) % 3 != 0)
                Update(static_cast<uint32_t>(row + 1), 2,
                       Str((std::to_string(row * round) + filler).c_str()));
    table->DeleteRow(2);
    const auto check = [&] {
        for (int row = 0; row < kRows; row++) {
            const int last = (row + 60) % 3 != 0 ? 60 : 59;
            if (row == 1)
                continue;
            ASSERT_EQ("String[600] " + std::to_string(row * last) + filler,
                      Read(static_cast<uint32_t>(row + 1), 2));
        }
    };
    check();
    ASSERT_TRUE(db.Commit());
    Reopen();
    check();
}

// What is not in memory any more can't be changed then, and isn't committed in part.
TEST_F(TableTest, RowsAheadThatCantBeReadBackKeepTheTransactionFromCommitting)
{
    CommitFileAccess::Limits limits;
    limits.aheadPiece = 1;
    db.SetLimits(limits);
    db.Open();
    table = db.Table("t");
    for (int i = 1; i <= 4; i++)
        Add(i, "row");
    std::string bytes = disk.Bytes("t.dat");
    ASSERT_LT(kMetadataSize, bytes.size()) << "none went ahead";
    EXPECT_EQ("Integer 1", Read(1, 1));
    bytes[kMetadataSize] = '?';
    disk.Replace("t.dat", bytes);
    TestRow row{{1, Int(7)}};
    EXPECT_FALSE(table->UpdateRow(2, row, false));
    table->DeleteRow(3);
    EXPECT_EQ("Integer 2", Read(2, 1));
    EXPECT_TRUE(table->HasRow(3));
    EXPECT_FALSE(db.Commit());
    EXPECT_STREQ("Rows of table t that were inserted could not be read again.",
                 db.database->CommitErrorText().CString());
    db.Rollback();
    table = db.Table("t");
    EXPECT_EQ(Rows{}, RowIDsOf(table));
    Add(5, "another");
    EXPECT_TRUE(db.Commit());
    EXPECT_EQ("Integer 5", Read(1, 1));
}

}   // namespace vela
