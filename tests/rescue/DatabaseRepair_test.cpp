// What a repair saves, case by case. That nothing whole is lost under any damage:
// DamageSweep_test.cpp.

#include "engine/rescue/DatabaseRepair.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "engine/storage/RecordFormat.h"
#include "tests/rescue/RescueTesting.h"
#include "tests/storage/DatabaseContents.h"
#include "tests/storage/StorageTesting.h"
#include "tests/storage/TableFixture.h"

namespace vela {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Everything that statements can see of a database, and the next ids. The schema is left out: its deleted rows count for
// its row ids.
Texts Everything(MemoryDisk* disk)
{
    DatabaseOnDisk database(disk);
    Texts lines = Contents(*database.database);
    const auto isTable = [](const std::string& line) { return line.starts_with("table "); };
    lines.erase(lines.begin(), std::find_if(lines.begin() + 1, lines.end(), isTable));
    for (VelaTable* table : database.database->OpenTables())
        if (table != database.database->Schema())
            lines.push_back("next " + std::to_string(table->AsStoredTable()->NextUnusedRowID()) +
                            " " + std::to_string(table->AsStoredTable()->NextUnusedColumnID()));
    return lines;
}

// The columns "b String", "a Integer" of table p, with rows 0, 7 and 4294967294.
DiskFiles OddRows()
{
    MemoryDisk disk;
    RunStatements(&disk, {"CREATE TABLE p (b String, a Integer)",
                          "INSERT INTO p (_rowid, b, a) VALUES (0, 'zero', 10)",
                          "INSERT INTO p (_rowid, b, a) VALUES (7, 'seven', 17)",
                          "INSERT INTO p (_rowid, b, a) VALUES (-2, 'last', 1)"});
    return disk.Snapshot();
}

TEST(DatabaseRepair, GoodDatabasesAreSavedAsTheyAre)
{
    for (const DiskFiles& good : {SmallDatabase(), OddRows()}) {
        MemoryDisk disk;
        disk.Restore(good);
        MemoryDisk repaired;
        EXPECT_TRUE(Repair(&disk, &repaired).IsComplete());
        EXPECT_EQ(Everything(&disk), Everything(&repaired));
    }
}

TEST(DatabaseRepair, WithoutASchemaColumnsAreMadeUp)
{
    DiskFiles files = OddRows();
    files.erase("_schema.dat");
    files.erase("_schema.map");
    MemoryDisk disk;
    disk.Restore(files);
    MemoryDisk repaired;
    const RepairReport report = Repair(&disk, &repaired);
    EXPECT_FALSE(report.IsComplete());
    EXPECT_THAT(
        Everything(&repaired),
        ElementsAre("table p c1:String[600]  c2:Integer 0", testing::HasSubstr("zero"),
                    testing::HasSubstr("seven"), testing::HasSubstr("last"), "next 4294967295 3"));
}

TEST(DatabaseRepair, SaysWhatWasNotSaved)
{
    const DiskFiles good = SmallDatabase();
    const std::vector<RecordExtent> records = LiveRecords(good.at("t.dat"));
    const ByteDamage everyLength = [&records](std::string* bytes) {
        for (const RecordExtent& record : records)
            SetNumber(record.begin + 8, 0x7FFFFFFF)(bytes);
    };
    const ByteDamage lastTwice = [&records](std::string* bytes) {
        *bytes += bytes->substr(records.back().begin);
    };
    const struct {
        const char* why;
        std::vector<const char*> files;
        ByteDamage damage;   // null: they are gone
        uint64_t rows;       // saved of the five of t
        uint64_t lost;
        uint64_t duplicates;
        size_t lostIndexes;
    } cases[] = {
        {"a payload", {"t.dat"}, SetByte(records[0].begin + 14, 99), 4, 1, 0, 0},
        {"a header", {"t.dat"}, SetByte(records[0].begin, 0), 4, 0, 0, 0},
        // One record has unused bytes behind its values, so that where it ends can't be told.
        {"every length", {"t.dat"}, everyLength, 4, 0, 0, 0},
        {"the last record twice", {"t.dat"}, lastTwice, 5, 0, 1, 0},
        {"the map", {"t.map"}, [](std::string* bytes) { bytes->assign(40, 'x'); }, 5, 0, 0, 0},
        {"an index", {"t.i.idx"}, CutTo(256), 5, 0, 0, 1},
        {"indexes and maps", {"t.map", "t.i.idx", "t.j.idx", "_schema.map"}, {}, 5, 0, 0, 0},
    };
    for (const auto& c : cases) {
        MemoryDisk disk;
        disk.Restore(good);
        for (const char* file : c.files) {
            if (c.damage) {
                std::string bytes = good.at(file);
                c.damage(&bytes);
                disk.Put(file, bytes);
            } else {
                disk.Remove(file);
            }
        }
        MemoryDisk repaired;
        const RepairReport report = Repair(&disk, &repaired);
        ASSERT_EQ(2u, report.tables.size()) << c.why;
        EXPECT_EQ(c.rows, report.tables[0].rows) << c.why;
        EXPECT_EQ(c.rows, RowsOf(&repaired, "t").size()) << c.why;
        EXPECT_EQ(c.lost, report.tables[0].lostRows) << c.why;
        EXPECT_EQ(c.duplicates, report.tables[0].duplicates) << c.why;
        EXPECT_EQ(c.lostIndexes, report.tables[0].lostIndexes.size()) << c.why;
        EXPECT_TRUE(report.tables[1].IsComplete()) << c.why;
        EXPECT_EQ("t", report.tables[0].name);
    }
}

// A text that is itself a record, and the left-over end of a longer one, are no records.
TEST(DatabaseRepair, RecordsWithinTextsAreNoRows)
{
    MemoryDisk disk;
    {
        DatabaseOnDisk database(&disk);
        VelaTrans* table = database.Create("p", {kTypeBinary, kTypeString});
        std::vector<char> inner;
        TestRow fake = {{1, Int(1)}};
        AppendRecord(&inner, 99, fake);
        const string bytes(inner.data(), inner.size(), kEncodingASCII);
        TestRow row = {{1, VelaValue::Text(kTypeBinary, bytes)}, {2, Str("x")}};
        table->AddRow(row, false);
        TestRow other = {{2, Str("y")}, {1, VelaValue::Text(kTypeBinary, "0123456789" + bytes)}};
        table->AddRow(other, false);
        ASSERT_TRUE(database.Commit());
        TestRow shorter = {{1, VelaValue::Text(kTypeBinary, "0")}};
        table->UpdateRow(2, shorter, false);
        ASSERT_TRUE(database.Commit());
    }
    ASSERT_NE(std::string::npos, disk.Bytes("p.dat").rfind("RcSt"));
    EXPECT_THAT(Check(&disk).texts, IsEmpty());
    MemoryDisk repaired;
    EXPECT_TRUE(Repair(&disk, &repaired).IsComplete());
    EXPECT_EQ(RowsOf(&disk, "p"), RowsOf(&repaired, "p"));
}

TEST(DatabaseRepair, TellsWhenTheNewDatabaseCantBeWritten)
{
    for (int64_t number = 1;; number++) {
        MemoryDisk disk;
        disk.Restore(SmallDatabase());
        MemoryFileAccess files(&disk, true);
        MemoryDisk full;
        full.FailAt(number, MemoryDisk::Fault::kForGood);
        RepairReport report;
        RescueWatch watch;
        const bool saved = RepairDatabase(
            &files, [&full] { return std::make_unique<MemoryFileAccess>(&full); }, &report, &watch);
        EXPECT_EQ(saved, report.error.empty()) << number;
        if (!full.HasFailed())
            break;
        if (!saved)
            continue;
        // It failed behind the last commit, which only has to be brought to the files.
        full.ClearFault();
        EXPECT_EQ(RowsOf(&disk, "t"), RowsOf(&full, "t")) << number;
        EXPECT_EQ(RowsOf(&disk, "u"), RowsOf(&full, "u")) << number;
        EXPECT_THAT(Check(&full).texts, testing::IsEmpty()) << number;
    }
}

}   // namespace
}   // namespace vela
