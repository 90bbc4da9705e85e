#include "engine/storage/VelaStorage.h"

#include <gtest/gtest.h>

#include "engine/storage/RecordFormat.h"
#include "engine/storage/UnixDataFile.h"
#include "tests/storage/MemoryFileAccess.h"
#include "tests/storage/StorageTesting.h"
#include "tests/storage/TemporaryFolder.h"

namespace vela {

namespace {

constexpr char kMapValidMark[] = "RMap";
constexpr char kMapStaleMark[] = "Drty";

// A storage on two files of a disk in memory.
class StorageTest : public testing::Test {
protected:
    // Opens the files anew, as a reopened table does.
    void Open()
    {
        storage.reset();
        recordStream = files.OpenFile("t.dat", true);
        mapStream = files.OpenFile("t.map", true);
        storage = std::make_unique<VelaStorage>(recordStream.get(), mapStream.get());
    }
    void OpenWithoutMap()
    {
        storage.reset();
        recordStream = files.OpenFile("t.dat", true);
        storage = std::make_unique<VelaStorage>(recordStream.get(), nullptr);
    }
    // "1=Integer 5" of the current record.
    std::string Current(bool exact = true)
    {
        VelaRow values;
        EXPECT_EQ(exact, storage->ReadRecordValues(&values));
        const std::string text = RowText(values);
        DeleteValues(&values);
        return text;
    }
    std::string Row(uint32_t rowID)
    {
        return storage->GoToRowID(rowID, false) ? Current() : "none";
    }
    // The live rows in file order: "1 3 2".
    std::string LiveRows()
    {
        std::string rows;
        for (bool more = storage->GoToFirstRecord(); more; more = storage->NextRecord())
            rows += (rows.empty() ? "" : " ") + std::to_string(storage->GetRowID());
        return rows;
    }
    bool Add(uint32_t rowID, const VelaValue& value)
    {
        TestRow row{{1, value}};
        return storage->AddNewRecord(rowID, row);
    }
    bool Update(uint32_t rowID, const VelaValue& value)
    {
        TestRow row{{1, value}};
        return storage->GoToRowID(rowID, false) && storage->UpdateRecord(row);
    }
    std::string Records() const { return ToHex(disk.Bytes("t.dat").substr(kMetadataSize)); }
    std::string Map() const { return ToHex(disk.Bytes("t.map")); }

    MemoryDisk disk;
    MemoryFileAccess files{&disk};
    std::unique_ptr<RandomAccessMechanism> recordStream;
    std::unique_ptr<RandomAccessMechanism> mapStream;
    std::unique_ptr<VelaStorage> storage;
};

}   // namespace

TEST_F(StorageTest, ShortFileGrowsToItsMetadataBlock)
{
    disk.Put("t.dat", "abc");
    Open();
    EXPECT_EQ("abc" + Zeros(253), disk.Bytes("t.dat"));
    EXPECT_FALSE(storage->GoToFirstRecord());
    EXPECT_FALSE(storage->NextRecord());
    EXPECT_FALSE(storage->GoToRowID(1, false));
    EXPECT_EQ(0u, storage->QtyRows());
}

// ---- updates

TEST_F(StorageTest, UpdateRecord_ShrunkRecordKeepsItsLengthAndIsFalse)
{
    Open();
    Add(1, Int(0x11223344));
    Add(2, Int(2));
    EXPECT_FALSE(Update(1, VelaValue::Boolean(true))) << "complete, but slack is left";
    EXPECT_EQ(ToHex(FromHex("52 63 53 74  00 00 00 01  00 00 00 07  01  01 0C  01 22 33 44"
                            "52 63 53 74  00 00 00 02  00 00 00 07  01  01 03  00 00 00 02")),
              Records())
        << "the tail is what lay there before";
    ASSERT_TRUE(storage->GoToRowID(1, false));
    EXPECT_EQ("1=Boolean TRUE", Current(false));
    EXPECT_EQ("1 2", LiveRows());
    EXPECT_TRUE(Update(1, Int(5))) << "the old length still has room";
    EXPECT_EQ("1=Integer 5", Row(1));
}

TEST_F(StorageTest, UpdateRecord_GrownRecordMovesAndKeepsItsRowID)
{
    Open();
    TestRow row1{{1, Str("short")}, {2, Int(43)}};
    TestRow row2{{1, Str("other")}, {2, Int(44)}};
    storage->AddNewRecord(1, row1);
    storage->AddNewRecord(2, row2);
    EXPECT_TRUE(Update(1, Str("a longer string")));
    EXPECT_EQ("1=String[600] a longer string, 2=Integer 43", Current()) << "it is current";
    EXPECT_EQ("1=String[600] a longer string, 2=Integer 43", Row(1));
    EXPECT_EQ(1u, storage->GetRowID());
    EXPECT_EQ("2 1", LiveRows());
    EXPECT_EQ("54 72 73 68 00 00 00 01 ", Records().substr(0, 24)) << "the old place";
    EXPECT_EQ(3u, storage->QtyRows()) << "listed twice";
    ASSERT_TRUE(storage->FlushToDisk());
    // Position 0x100 + 2 * (12 + 26) = 0x14C; each place in the list tells the newest one.
    EXPECT_EQ(ToHex(FromHex("52 4D 61 70  00 00 00 03  00 00 00 01 00 00 01 4C"
                            "00 00 00 02 00 00 01 26  00 00 00 01 00 00 01 4C  4D 45 6E 64")),
              Map());
    Open();
    EXPECT_EQ(3u, storage->QtyRows()) << "the saved list still has it twice";
    disk.Remove("t.map");
    Open();
    EXPECT_EQ(2u, storage->QtyRows()) << "a scan counts it once";
}

TEST_F(StorageTest, UpdateRecord_NeedsACurrentRecord)
{
    Open();
    Add(1, Int(1));
    EXPECT_FALSE(storage->GoToRowID(2, false));
    TestRow row{{1, Int(9)}};
    EXPECT_FALSE(storage->UpdateRecord(row));
    EXPECT_FALSE(storage->DeleteRecord());
    VelaRow values;
    EXPECT_FALSE(storage->ReadRecordValues(&values));
    EXPECT_EQ("1=Integer 1", Row(1));
}

TEST_F(StorageTest, WriteRecordAt_TellsWhetherTheValuesFillTheRecord)
{
    Open();
    TestRow row{{1, Int(42)}};
    EXPECT_TRUE(storage->WriteRecordAt(256, 5, row, 256 + 19));
    EXPECT_TRUE(storage->WriteRecordAt(256 + 19, 6, row, 256 + 38));
    EXPECT_FALSE(storage->WriteRecordAt(256, 5, row, 256 + 38)) << "19 bytes of slack";
    EXPECT_EQ(5u, storage->GetRowID());
    EXPECT_EQ(ToHex(FromHex("52 63 53 74  00 00 00 05  00 00 00 1A  01  01 03  00 00 00 2A")),
              Records().substr(0, 57));
    EXPECT_EQ("5", LiveRows());
}

// ---- deleted records

TEST_F(StorageTest, GoToRowID_FindsDeletedRecordsThatTheMapKnows)
{
    Open();
    for (uint32_t rowID = 1; rowID <= 4; rowID++)
        Add(rowID, Int(static_cast<int32_t>(rowID)));
    for (uint32_t rowID : {2u, 4u}) {
        ASSERT_TRUE(storage->GoToRowID(rowID, false));
        storage->DeleteRecord();
    }
    ASSERT_TRUE(storage->FlushToDisk());
    for (int reopened = 0; reopened < 2; reopened++) {
        ASSERT_TRUE(storage->GoToFirstRecord());
        EXPECT_TRUE(storage->GoToRowID(2, false));
        EXPECT_EQ(2u, storage->GetRowID());
        EXPECT_FALSE(storage->IsLive());
        EXPECT_EQ("1=Integer 2", Current());
        EXPECT_TRUE(storage->GoToRowID(2, true)) << "it is current already";
        EXPECT_EQ(2u, storage->GetRowID());
        ASSERT_TRUE(storage->GoToFirstRecord());
        EXPECT_TRUE(storage->GoToRowID(2, true));
        EXPECT_EQ(3u, storage->GetRowID()) << "passed over to the next live one";
        EXPECT_FALSE(storage->GoToRowID(4, true)) << "there is none behind it";
        EXPECT_FALSE(storage->NextRecord()) << "nothing is current";
        Open();
    }
    disk.Remove("t.map");
    Open();
    EXPECT_FALSE(storage->GoToRowID(2, false)) << "a scan sees live records only";
    EXPECT_EQ("1 3", LiveRows());
}

// ---- metadata

TEST_F(StorageTest, MetadataIsPaddedAndCut)
{
    Open();
    Add(1, Int(1));
    string text;
    EXPECT_TRUE(storage->WriteMetadata("Here's some metadata"));
    EXPECT_TRUE(storage->WriteMetadata("Second version of the metadata"));
    ASSERT_TRUE(storage->ReadMetadata(&text));
    EXPECT_EQ("Second version of the metadata" + Zeros(226), std::string(text.View()));
    EXPECT_TRUE(storage->WriteMetadata("x"));
    EXPECT_EQ("x" + Zeros(255), disk.Bytes("t.dat").substr(0, 256)) << "no rest of the second";
    const std::string large(300, 'z');
    EXPECT_TRUE(storage->WriteMetadata(string(large, kEncodingASCII)));
    EXPECT_EQ(large.substr(0, 256), disk.Bytes("t.dat").substr(0, 256));
    EXPECT_EQ("1=Integer 1", Row(1));
    EXPECT_TRUE(storage->ReadMetadata(nullptr));
}

// ---- the map file

TEST_F(StorageTest, MapFileIsStaleFromTheFirstChangeToTheNextSave)
{
    Open();
    EXPECT_EQ("", Map());
    EXPECT_TRUE(storage->FlushToDisk());
    EXPECT_EQ("", Map()) << "nothing to tell";
    Add(1, Int(1));
    EXPECT_EQ(kMapStaleMark, disk.Bytes("t.map"));
    EXPECT_TRUE(storage->FlushToDisk());
    EXPECT_EQ(ToHex(FromHex("52 4D 61 70  00 00 00 01  00 00 00 01 00 00 01 00  4D 45 6E 64")),
              Map());
    Add(2, Int(2));
    EXPECT_EQ(kMapStaleMark, disk.Bytes("t.map").substr(0, 4));
    EXPECT_TRUE(storage->FlushToDisk());
    EXPECT_EQ(ToHex(FromHex("52 4D 61 70  00 00 00 02  00 00 00 01 00 00 01 00"
                            "00 00 00 02 00 00 01 13  4D 45 6E 64")),
              Map());
}

TEST_F(StorageTest, BytesBehindTheEndMarkStay)
{
    Open();
    for (uint32_t rowID = 1; rowID <= 4; rowID++)
        Add(rowID, Int(1));
    for (uint32_t rowID = 1; rowID <= 3; rowID++) {
        ASSERT_TRUE(storage->GoToRowID(rowID, false));
        storage->DeleteRecord();
    }
    ASSERT_TRUE(storage->FlushToDisk());
    const std::string before = disk.Bytes("t.map");
    disk.Put("t.map", kMapStaleMark + before.substr(4));
    Open();
    EXPECT_EQ(1u, storage->QtyRows());
    ASSERT_TRUE(storage->FlushToDisk());
    EXPECT_EQ(ToHex(FromHex("52 4D 61 70  00 00 00 01  00 00 00 04 00 00 01 39  4D 45 6E 64")) +
                  ToHex(before.substr(20)),
              Map());
    Open();
    EXPECT_EQ(1u, storage->QtyRows());
}

TEST_F(StorageTest, MapThatIsStaleMissingOrDamagedIsBuiltAnew)
{
    Open();
    for (uint32_t rowID = 10; rowID <= 12; rowID++)
        Add(rowID, Int(static_cast<int32_t>(rowID)));
    ASSERT_TRUE(storage->FlushToDisk());
    const std::string good = disk.Bytes("t.map");
    const std::string pairs = good.substr(8, 24);
    const struct {
        std::string map;
        const char* why;
    } cases[] = {
        {"", "empty"},
        {"RMa", "cut in the state"},
        {kMapStaleMark + good.substr(4), "stale"},
        {"RMAP" + good.substr(4), "unknown state"},
        {good.substr(0, 8), "cut behind the count"},
        {good.substr(0, 31), "cut in the pairs"},
        {good.substr(0, 32), "no end mark"},
        {good.substr(0, 35), "half an end mark"},
        {good.substr(0, 32) + "MEnb", "a wrong end mark"},
        {kMapValidMark + FromHex("7F FF FF FF") + pairs + "MEnd", "a count of two billion"},
        {kMapValidMark + FromHex("FF FF FF FF") + pairs + "MEnd", "a count below zero"},
        {kMapValidMark + FromHex("1F FF FF FF") + pairs + "MEnd", "8 * count passes 32 bits"},
        {kMapValidMark + FromHex("00 00 00 02") + pairs + "MEnd", "a count too small"},
    };
    for (const auto& c : cases) {
        disk.Put("t.map", c.map);
        Open();
        EXPECT_EQ(3u, storage->QtyRows()) << c.why;
        for (uint32_t rowID = 10; rowID <= 12; rowID++)
            EXPECT_EQ("1=Integer " + std::to_string(rowID), Row(rowID)) << c.why;
        EXPECT_FALSE(storage->GoToRowID(9, false)) << c.why;
        EXPECT_TRUE(storage->FlushToDisk()) << c.why;
        EXPECT_EQ(ToHex(good), ToHex(disk.Bytes("t.map").substr(0, good.size()))) << c.why;
    }
}

TEST_F(StorageTest, MapThatMisleadsIsFoundOut)
{
    Open();
    for (uint32_t rowID = 1; rowID <= 3; rowID++)
        Add(rowID, Int(static_cast<int32_t>(rowID)));
    const char* const kPairsOf[] = {
        "00 00 00 01 00 00 01 00  00 00 00 02 00 00 01 26  00 00 00 03 00 00 01 13",
        "00 00 00 01 00 00 01 00  00 00 00 02 00 00 01 00  00 00 00 03 00 00 01 00",
        "00 00 00 01 FF FF FF FF  00 00 00 02 7F FF FF FF  00 00 00 03 80 00 00 00",
        "00 00 00 01 00 00 00 00  00 00 00 02 00 00 01 01  00 00 00 03 00 00 01 39",
        "00 00 00 07 00 00 01 00  00 00 00 08 00 00 01 13  00 00 00 09 00 00 01 26",
        "00 00 00 01 00 00 01 00  00 00 00 01 00 00 01 13  00 00 00 01 00 00 01 26",
        "00 00 00 03 00 00 01 26  00 00 00 02 00 00 01 13  00 00 00 01 00 00 01 00",
    };
    const std::string records = disk.Bytes("t.dat");
    for (const char* pairs : kPairsOf) {
        // With few look-ups the map is searched where it lies, with more it is loaded.
        for (bool loaded : {false, true}) {
            const CapturedErrors errors;
            disk.Put("t.map", kMapValidMark + FromHex("00 00 00 03") + FromHex(pairs) + "MEnd");
            Open();
            if (loaded) {
                EXPECT_EQ(3u, storage->QtyRows()) << "the file's word is taken for this";
            }
            for (uint32_t rowID : {2u, 1u, 3u})
                EXPECT_EQ("1=Integer " + std::to_string(rowID), Row(rowID)) << pairs;
            EXPECT_EQ("none", Row(4)) << pairs;
            EXPECT_EQ("none", Row(9)) << pairs;
        }
    }
    EXPECT_EQ(records, disk.Bytes("t.dat"));
}

TEST_F(StorageTest, WithoutAMapStreamRowsAreFoundToo)
{
    OpenWithoutMap();
    Add(3, Int(3));
    Add(2, Int(2));
    EXPECT_TRUE(storage->FlushToDisk());
    OpenWithoutMap();
    EXPECT_EQ("1=Integer 2", Row(2));
    EXPECT_EQ("3 2", LiveRows());
    EXPECT_EQ(2u, storage->QtyRows());
    EXPECT_EQ(std::vector<std::string>{"t.dat"}, disk.Names());
}

// ---- bad headers

TEST_F(StorageTest, BadHeadersAreReportedAndEndTheWalk)
{
    const std::string good =
        FromHex("52 63 53 74  00 00 00 01  00 00 00 07  01  01 03  00 00 00 2A");
    const struct {
        const char* second;
        const char* error;
        const char* why;
    } cases[] = {
        {"52 63 53 75 00 00 00 02 00 00 00 07 01 01 03 00 00 00 2A", "VelaStorage error1\n", "tag"},
        {"52 63 53 74 00 00 00 02 00 00 00 00 01 01 03 00 00 00 2A", "VelaStorage error1\n",
         "body length 0"},
        {"52 63 53 74 00 00 00 02 FF FF FF FF 01 01 03 00 00 00 2A", "VelaStorage error1\n",
         "body length -1"},
        {"52 63 53 74 00 00 00 02 7F FF FF FF 01 01 03 00 00 00 2A", "VelaStorage error1\n",
         "body length past the end"},
        {"52 63 53 74 00 00 00 02 00 00 00 08 01 01 03 00 00 00 2A", "VelaStorage error1\n",
         "body one byte too long"},
        {"54 72 73 68 00 00 00 02 00 00 00 00", "VelaStorage error1\n", "in a deleted record"},
        {"52 63 53 74 00 00 00 02 00 00 00", "VelaStorage error2\n", "cut in the length"},
        {"52", "VelaStorage error2\n", "one byte"},
    };
    for (const auto& c : cases) {
        disk.Put("t.dat", Zeros(256) + good + FromHex(c.second));
        disk.Remove("t.map");
        Open();
        CapturedErrors errors;
        EXPECT_TRUE(storage->GoToFirstRecord()) << c.why;
        EXPECT_FALSE(storage->NextRecord()) << c.why;
        EXPECT_EQ(c.error, errors.Text()) << c.why;
        const CapturedErrors more;
        EXPECT_FALSE(storage->NextRecord()) << "nothing is current";
        EXPECT_EQ("1=Integer 42", Row(1)) << c.why << ": it stays usable";
        EXPECT_EQ(1u, storage->QtyRows()) << c.why;
    }
}

TEST_F(StorageTest, DeletedRecordsAtTheEndAreNoRecords)
{
    disk.Put("t.dat", Zeros(256) + FromHex("54 72 73 68 00 00 00 02 00 00 00 01 00"));
    Open();
    EXPECT_FALSE(storage->GoToFirstRecord());
    EXPECT_EQ(0u, storage->QtyRows());
}

// ---- 4 GiB

TEST(VelaStorage, RecordFileEndsBelowFourGiB)
{
    constexpr int64_t kRecordSize = 19;
    const struct {
        int64_t length;
        bool fits;
    } cases[] = {{0xFFFFFFFF - kRecordSize, true},
                 {0xFFFFFFFF - kRecordSize + 1, false},
                 {0xFFFFFFFF, false},
                 {int64_t{1} << 40, false}};
    for (const auto& c : cases) {
        const CapturedErrors errors;
        const TemporaryFolder folder;
        UnixDataFile stream;   // a file of holes takes no room
        ASSERT_TRUE(stream.Create(folder.File("t.dat").c_str()) && stream.SetLength(c.length));
        VelaStorage storage(&stream, nullptr);
        TestRow row{{1, Int(1)}};
        EXPECT_EQ(c.fits, storage.AddNewRecord(1, row)) << c.length;
        EXPECT_EQ(!c.fits, storage.IsFull()) << c.length;
        EXPECT_EQ(c.fits ? c.length + kRecordSize : c.length, stream.GetLength());
        if (c.fits) {
            EXPECT_EQ(static_cast<uint32_t>(c.length), storage.Position());
        }
    }
}

// ---- streams that go back

TEST_F(StorageTest, StreamsWentBack_ForgetsWhatWasWrittenSince)
{
    Open();
    for (uint32_t rowID = 1; rowID <= 5; rowID++)
        Add(rowID, Str("row number " + std::to_string(rowID)));
    ASSERT_TRUE(storage->FlushToDisk());
    const std::string records = disk.Bytes("t.dat");
    const std::string map = disk.Bytes("t.map");
    for (bool saved : {false, true}) {
        TestRow longer{{1, Str("a row that has to move to the end")}};
        ASSERT_TRUE(storage->GoToRowID(2, false));
        ASSERT_TRUE(storage->UpdateRecord(longer));
        ASSERT_TRUE(Add(6, Int(6)));
        ASSERT_TRUE(storage->GoToRowID(3, false));
        ASSERT_TRUE(storage->DeleteRecord());
        if (saved) {
            ASSERT_TRUE(storage->FlushToDisk());
        }
        disk.Replace("t.dat", records);
        disk.Replace("t.map", map);
        storage->StreamsWentBack();
        EXPECT_EQ("1 2 3 4 5", LiveRows());
        for (uint32_t rowID = 1; rowID <= 5; rowID++)
            EXPECT_EQ("1=String[600] row number " + std::to_string(rowID), Row(rowID));
        EXPECT_EQ("none", Row(6));
        EXPECT_EQ(5u, storage->QtyRows());
        ASSERT_TRUE(Add(6, Int(7)));
        ASSERT_TRUE(storage->FlushToDisk());
        EXPECT_EQ(12u + 8 * 6, disk.Bytes("t.map").size()) << "the map is complete";
        disk.Replace("t.dat", records);
        disk.Replace("t.map", map);
        storage->StreamsWentBack();
    }
}

}   // namespace vela
