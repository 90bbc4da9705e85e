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

TEST_F(TableTest, AddRow_CountsFromOneAndAgainAfterRollback)
{
    EXPECT_EQ(1u, Add(10, "a"));
    EXPECT_EQ(2u, Add(20, "b"));
    EXPECT_EQ(3u, table->NextUnusedRowID());
    EXPECT_EQ(2u, table->LastRowID());
    table->Rollback();
    EXPECT_EQ(Rows{}, RowIDs());
    EXPECT_FALSE(table->HasChangesToCommit());
    EXPECT_EQ(1u, Add(10, "a"));
}

TEST_F(TableTest, AddRow_ExplicitRowIDMovesTheCounterOrIsRefused)
{
    Add(10, "a");
    Add(20, "b");
    EXPECT_EQ(7u, AddAs(7, 70));
    EXPECT_EQ(8u, table->NextUnusedRowID());
    EXPECT_EQ(kInvalidRowID, AddAs(7, 71));
    EXPECT_EQ(kInvalidRowID, AddAs(1, 11));
    EXPECT_EQ(4u, AddAs(4, 40)) << "a smaller one that is free";
    EXPECT_EQ(4u, table->LastRowID());
    EXPECT_EQ(8u, Add(80, "h")) << "doesn't move the counter back";
    EXPECT_EQ((Rows{1, 2, 7, 4, 8}), RowIDs()) << "in the order of insertion";
    EXPECT_EQ("Integer 70", Read(7, 1));
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(kInvalidRowID, AddAs(7, 71)) << "now in the file";
    EXPECT_EQ("8 2", Metadata());
    Reopen();
    EXPECT_EQ((Rows{1, 2, 7, 4, 8}), RowIDs());
    EXPECT_EQ(8u, table->LastRowID()) << "as opened: the last used one";
    EXPECT_EQ(9u, Add(90, "i"));
}

TEST_F(TableTest, AddRow_OfSeveralRowIDsTheLastOneWinsAndEachIsChecked)
{
    AddAs(5, 1);
    TestRow free{{0, Int(8)}, {1, Int(1)}, {0, Int(9)}};
    EXPECT_EQ(9u, table->AddRow(free, false));
    TestRow first{{0, Int(5)}, {0, Int(10)}};
    EXPECT_EQ(kInvalidRowID, table->AddRow(first, false));
    TestRow last{{0, Int(10)}, {0, Int(5)}};
    EXPECT_EQ(kInvalidRowID, table->AddRow(last, false));
    EXPECT_EQ((Rows{5, 9}), RowIDs());
    EXPECT_EQ(10u, table->NextUnusedRowID());
}

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
    EXPECT_EQ(kInvalidRowID, AddAs(-1, 1));
    EXPECT_EQ(3u, AddAs(3, 1)) << "an explicit one is still possible";
    EXPECT_EQ((Rows{0xFFFFFFFE, 3}), RowIDs());
    ASSERT_TRUE(db.Commit());
    Reopen();
    EXPECT_EQ(kInvalidRowID, Add(1, "a"));
    // A file that says that even -1 is used.
    std::string bytes = disk.Bytes("t.dat");
    std::memset(bytes.data(), 0xFF, 4);
    disk.Put("t.dat", bytes);
    Reopen();
    EXPECT_EQ(kInvalidRowID, Add(1, "a"));
    EXPECT_EQ((Rows{0xFFFFFFFE, 3}), RowIDs());
}

TEST_F(TableTest, AddRow_RowsWithPendingChangesKeepTheirIDs)
{
    for (int i = 1; i <= 3; i++)
        Add(i, "x");
    ASSERT_TRUE(db.Commit());
    // A file that tells too low a last used row id: the next one is that of a row which has a pending change.
    std::string bytes = disk.Bytes("t.dat");
    const uint32_t two = 2;
    std::memcpy(bytes.data(), &two, sizeof two);
    disk.Put("t.dat", bytes);
    Reopen();
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

TEST_F(TableTest, ValuesAreCoercedToTheirColumnsBeforeTheyAreKept)
{
    TestRow row{{1, Str("12 apples")}, {2, VelaValue::Double(2.5)}, {77, Str("of no column")}};
    const uint32_t rowID = table->AddRow(row, false);
    EXPECT_EQ("1=String[600] 12 apples, 2=Double 2.5, 77=String[600] of no column", RowText(row))
        << "the caller's own are not touched";
    EXPECT_EQ("Integer 12", Read(rowID, 1));
    EXPECT_EQ("String[600] 2.5", Read(rowID, 2));
    Update(rowID, 1, VelaValue::Double(-7.9));
    EXPECT_EQ("Integer -7", Read(rowID, 1));
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ("Integer -7", Read(rowID, 1));
    // The value of an unknown column is stored as it came.
    EXPECT_NE(std::string::npos, Records().find("4D 05")) << Records();
}

TEST_F(TableTest, PartialRowReadsNothingUntilItIsCommittedThenTheDefault)
{
    TestRow row{{2, Str("x")}};
    const uint32_t rowID = table->AddRow(row, false);
    EXPECT_EQ("none", Read(rowID, 1));
    EXPECT_EQ("String[600] x", Read(rowID, 2));
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ("Integer 0", Read(rowID, 1)) << "the empty default, as an integer";
}

TEST_F(TableTest, NullIsReadUntilCommitThenTheDefault)
{
    TestRow row{{1, Null(kTypeInteger)}, {2, Str("x")}};
    const uint32_t rowID = table->AddRow(row, false);
    EXPECT_EQ("NULL Integer", Read(rowID, 1));
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ("Integer 0", Read(rowID, 1));
    Update(rowID, 2, Null(kTypeString));
    EXPECT_EQ("NULL String", Read(rowID, 2));
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ("String[600] ", Read(rowID, 2));
    EXPECT_EQ(ToHex(FromHex("52 63 53 74 00 00 00 01 00 00 00 10 00")), Records().substr(0, 39));
    Update(rowID, 1, Null(kTypeString));
    EXPECT_EQ("Integer 0", Read(rowID, 1)) << "a null of another type is converted first";
}

TEST_F(TableTest, NullThatIsFilledInTheSameTransactionKeepsItsPlace)
{
    TestRow row{{1, Null(kTypeInteger)}, {2, Str("x")}};
    const uint32_t rowID = table->AddRow(row, false);
    Update(rowID, 1, Int(5));
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(ToHex(FromHex("52 63 53 74 00 00 00 01 00 00 00 16 02 01 03 02 05 00 00 00 05"
                            "00 00 00 01 00 00 00 01 00 00 06 00 78")),
              Records());
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

TEST_F(TableTest, ColumnAddedLaterReadsAsItsDefault)
{
    const uint32_t rowID = Add(1, "a");
    ASSERT_TRUE(db.Commit());
    table = db.Alter("t", kTypeInteger, "42");
    EXPECT_EQ("Integer 42", Read(rowID, 3));
    table = db.Alter("t", kTypeBoolean, "TRUE");
    EXPECT_EQ("Boolean FALSE", Read(rowID, 4)) << "the number in the text counts";
    table = db.Alter("t", kTypeDouble, "2.5 and so on");
    EXPECT_EQ("Double 2.5", Read(rowID, 5));
    table = db.Alter("t", kTypeDate, "1984-5-6");
    EXPECT_EQ("Date 1984-5-6", Read(rowID, 6)) << "as it stands";
    EXPECT_EQ(7u, table->NextUnusedColumnID());
    ASSERT_TRUE(db.Commit());
    Reopen();
    EXPECT_EQ((Texts{"1: Integer 1, String[600] a, Integer 42, Boolean FALSE, Double 2.5, "
                     "Date 1984-5-6"}),
              TableText(table));
}

// ---- updates and deletions

TEST_F(TableTest, UpdatesOfOneRowAreOneChange)
{
    const uint32_t rowID = Add(1, "a");
    ASSERT_TRUE(db.Commit());
    const size_t stored = table->QtyRows();
    Update(rowID, 1, Int(2));
    Update(rowID, 2, Str("b"));
    Update(rowID, 1, Int(3));
    EXPECT_EQ(stored + 1, table->QtyRows());
    EXPECT_EQ("Integer 3", Read(rowID, 1));
    EXPECT_EQ("String[600] b", Read(rowID, 2));
    EXPECT_EQ(Rows{rowID}, RowIDs());
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ((Texts{"1: Integer 3, String[600] b"}), TableText(table));
    EXPECT_EQ(1u, table->QtyRows());
}

TEST_F(TableTest, ColumnSetTwiceInOneUpdateHasItsLastValue)
{
    const uint32_t rowID = Add(1, "a");
    ASSERT_TRUE(db.Commit());
    TestRow row{{1, Int(5)}, {1, Int(6)}};
    table->UpdateRow(rowID, row, false);
    EXPECT_EQ("Integer 6", Read(rowID, 1));
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ("Integer 6", Read(rowID, 1));
    Reopen();
    EXPECT_EQ("Integer 6", Read(rowID, 1));
}

TEST_F(TableTest, DeleteRow_OfAnInsertedRowWritesNothing)
{
    const uint32_t rowID = Add(1, "a");
    table->DeleteRow(rowID);
    EXPECT_EQ(Rows{}, RowIDs());
    EXPECT_TRUE(table->HasChangesToCommit());
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ("", Records());
    EXPECT_FALSE(table->HasChangesToCommit());
    EXPECT_EQ(2u, Add(1, "b")) << "its id stays used";
}

TEST_F(TableTest, DeleteRow_TakesThePendingUpdateAlong)
{
    const uint32_t rowID = Add(1, "a");
    const uint32_t other = Add(2, "b");
    ASSERT_TRUE(db.Commit());
    Update(rowID, 1, Int(100));
    table->DeleteRow(rowID);
    EXPECT_EQ(Rows{other}, RowIDs());
    EXPECT_EQ("Integer 1", Read(rowID, 1)) << "the record still answers who asks for it";
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ("54 72 73 68 ", Records().substr(0, 12));
    EXPECT_EQ(Rows{other}, RowIDs());
    EXPECT_EQ(kInvalidRowID, AddAs(static_cast<int32_t>(rowID), 1)) << "the map knows it still";
    Reopen();
    EXPECT_EQ(kInvalidRowID, AddAs(static_cast<int32_t>(rowID), 1));
    disk.Remove("t.map");
    Reopen();
    EXPECT_EQ(rowID, AddAs(static_cast<int32_t>(rowID), 1)) << "built anew it doesn't";
}

TEST_F(TableTest, DeleteRow_AloneIsAChange)
{
    EXPECT_FALSE(table->HasChangesToCommit());
    table->DeleteRow(99);
    EXPECT_TRUE(table->HasChangesToCommit());
    ASSERT_TRUE(db.Commit());
    EXPECT_FALSE(table->HasChangesToCommit());
    EXPECT_EQ("", Records());
}

TEST_F(TableTest, StoredRowThatWasDeletedCantBeInsertedUnderItsID)
{
    const uint32_t rowID = Add(1, "a");
    ASSERT_TRUE(db.Commit());
    table->DeleteRow(rowID);
    EXPECT_TRUE(table->ContainsRow(rowID));
    EXPECT_FALSE(table->HasRow(rowID));
    EXPECT_EQ(kInvalidRowID, AddAs(static_cast<int32_t>(rowID), 2));
}

TEST_F(TableTest, InsertedRowDeletedAndInsertedAgainUnderItsIDIsLost)
{
    EXPECT_EQ(5u, AddAs(5, 1));
    table->DeleteRow(5);
    EXPECT_FALSE(table->ContainsRow(5));
    EXPECT_EQ(5u, AddAs(5, 2)) << "it is accepted";
    EXPECT_EQ("Integer 2", Read(5, 1)) << "and read";
    EXPECT_EQ(Rows{}, RowIDs()) << "but the deletion still counts";
    EXPECT_FALSE(table->HasRow(5));
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(ToHex(FromHex("54 72 73 68 00 00 00 05")), Records().substr(0, 24));
    EXPECT_EQ(Rows{}, RowIDs());
}

TEST_F(TableTest, QtyRows_CountsPendingChangesOnTop)
{
    Add(1, "a");
    Add(2, "b");
    EXPECT_EQ(2u, table->QtyRows());
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(2u, table->QtyRows());
    Update(1, 1, Int(5));
    EXPECT_EQ(3u, table->QtyRows()) << "an update is counted again";
    table->DeleteRow(2);
    EXPECT_EQ(3u, table->QtyRows()) << "a deletion is not taken off";
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(2u, table->QtyRows()) << "the map lists the deleted row";
    Update(1, 2, Str("a text that moves the record"));
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(3u, table->QtyRows()) << "and the moved one twice";
    EXPECT_EQ(Rows{1}, RowIDs());
    disk.Remove("t.map");
    Reopen();
    EXPECT_EQ(1u, table->QtyRows());
}

TEST_F(TableTest, Rollback_BringsBackWhatWasStored)
{
    const uint32_t first = Add(1, "a");
    const uint32_t second = Add(2, "b");
    ASSERT_TRUE(db.Commit());
    Update(first, 1, Int(100));
    table->DeleteRow(second);
    Add(3, "c");
    AddAs(50, 1);
    table->Rollback();
    EXPECT_EQ((Texts{"1: Integer 1, String[600] a", "2: Integer 2, String[600] b"}),
              TableText(table));
    EXPECT_EQ(3u, table->NextUnusedRowID());
    EXPECT_FALSE(table->HasChangesToCommit());
}

TEST_F(TableTest, UpdateOfADeletedRecordBringsItBack)
{
    const uint32_t rowID = Add(1, "a");
    ASSERT_TRUE(db.Commit());
    table->DeleteRow(rowID);
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(Rows{}, RowIDs());
    Update(rowID, 1, Int(7));
    EXPECT_EQ(Rows{}, RowIDs()) << "an update adds no row to the list";
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ((Texts{"1: Integer 7, String[600] a"}), TableText(table));
}

TEST_F(TableTest, MovedRowsGoToTheEndOfTheOrder)
{
    for (int i = 1; i <= 3; i++)
        Add(i, "x");
    ASSERT_TRUE(db.Commit());
    Update(1, 2, Str("long enough to move"));
    EXPECT_EQ((Rows{1, 2, 3}), RowIDs()) << "not before the commit";
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ((Rows{2, 3, 1}), RowIDs());
    EXPECT_EQ("String[600] long enough to move", Read(1, 2));
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

TEST_F(TableTest, IndexFollowsEveryChange)
{
    table->AddIndex("i", {1});
    Add(1, "a");
    Add(2, "b");
    ASSERT_TRUE(db.Commit());
    Update(1, 1, Int(3));
    Update(2, 2, Str("of no index"));
    SimpleVector<uint32_t> rows;
    EXPECT_TRUE(table->FindRowsByIndex(1, Int(1), &rows));
    EXPECT_EQ(0u, rows.size());
    EXPECT_TRUE(table->FindRowsByIndex(1, Int(3), &rows));
    EXPECT_EQ(1u, rows.size());
    table->DeleteRow(2);
    EXPECT_TRUE(table->FindRowsByIndex(1, Int(2), &rows));
    EXPECT_EQ(0u, rows.size());
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(ToHex(FromHex("52 63 53 74 00 00 00 01 00 00 00 07 01 01 03 00 00 00 03")),
              ToHex(disk.Bytes("t.i.idx").substr(256)));
}

TEST_F(TableTest, RowsFoundByIndexComeInTableOrder)
{
    table->AddIndex("i", {1});
    for (int i = 0; i < 4; i++)
        Add(7, "x");
    ASSERT_TRUE(db.Commit());
    Update(2, 1, Int(8));
    Update(2, 1, Int(7));   // its entry is the last one now
    Add(7, "new");
    Update(1, 2, Str("a text that moves the record"));
    SimpleVector<uint32_t> rows;
    EXPECT_TRUE(table->FindRowsByIndex(1, Int(7), &rows));
    EXPECT_EQ((Rows{1, 2, 3, 4, 5}), Rows(rows.begin(), rows.end()));
    ASSERT_TRUE(db.Commit());
    EXPECT_TRUE(table->FindRowsByIndex(1, Int(7), &rows));
    EXPECT_EQ(RowIDs(), Rows(rows.begin(), rows.end()));
}

TEST_F(TableTest, PendingPartialRowReadsNullWhereAnIndexHasIt)
{
    table->AddIndex("i", {1});
    TestRow row{{2, Str("x")}};
    const uint32_t rowID = table->AddRow(row, false);
    EXPECT_EQ("NULL Integer", Read(rowID, 1));
    VelaValue value;
    EXPECT_FALSE(table->GetValue(rowID, 1, &value, false)) << "not from the row itself";
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ("Integer 0", Read(rowID, 1)) << "committed, the index says what the record says";
    SimpleVector<uint32_t> rows;
    EXPECT_TRUE(table->FindRowsByIndex(1, Int(0), &rows));
    EXPECT_EQ(1u, rows.size());
    Reopen();
    EXPECT_TRUE(table->FindRowsByIndex(1, Int(0), &rows));
    EXPECT_EQ(1u, rows.size());
    EXPECT_EQ("Integer 0", Read(rowID, 1));
}

TEST_F(TableTest, DropIndex_FileGoesAtCommitAndComesBackAtRollback)
{
    Add(5, "five");
    table->AddIndex("i", {1});
    ASSERT_TRUE(db.Commit());
    EXPECT_FALSE(table->DropIndex("x"));
    EXPECT_TRUE(table->DropIndex("i"));
    EXPECT_FALSE(table->DropIndex("i"));
    EXPECT_TRUE(HasIndexFile("i"));
    Update(1, 1, Int(6));   // the dropped index doesn't hear of it
    table->Rollback();
    SimpleVector<uint32_t> rows;
    EXPECT_TRUE(table->FindRowsByIndex(1, Int(5), &rows));
    EXPECT_EQ(1u, rows.size());
    EXPECT_TRUE(table->DropIndex("i"));
    ASSERT_TRUE(db.Commit());
    EXPECT_FALSE(HasIndexFile("i"));
    EXPECT_FALSE(table->FindRowsByIndex(1, Int(5), &rows));
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

TEST_F(TableTest, IndexDroppedAndMadeAgainUnderItsName)
{
    Add(5, "five");
    table->AddIndex("i", {1});
    ASSERT_TRUE(db.Commit());
    const std::string before = disk.Bytes("t.i.idx");
    table->DropIndex("i");
    EXPECT_TRUE(table->AddIndex("i", {2}));
    table->Rollback();
    EXPECT_EQ(1u, table->IndexColumns("i")[0]);
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(before, disk.Bytes("t.i.idx"));
    table->DropIndex("i");
    EXPECT_TRUE(table->AddIndex("i", {2}));
    ASSERT_TRUE(db.Commit());
    Reopen();
    EXPECT_EQ(2u, table->IndexColumns("i")[0]);
    EXPECT_EQ("String[600] five", Read(1, 2));
}

TEST_F(TableTest, CreatedAndDroppedIndexLeavesNoFile)
{
    const auto before = disk.Snapshot();
    table->AddIndex("i", {1});
    table->DropIndex("i");
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(before, disk.Snapshot());
    table->AddIndex("i", {1});
    table->Rollback();
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(before, disk.Snapshot());
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
    disk.Remove("t.i.idx");   // while the table is open
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

}   // namespace vela
