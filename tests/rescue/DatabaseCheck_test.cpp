// Each kind of fault that a check knows, made on purpose in the files of a good database.

#include "engine/rescue/DatabaseCheck.h"

#include <gmock/gmock.h>

#include "engine/storage/RecordFormat.h"
#include "runtime/ByteOrder.h"
#include "tests/rescue/RescueTesting.h"
#include "tests/storage/StorageTesting.h"
#include "tests/storage/TableFixture.h"

namespace vela {
namespace {

using testing::Contains;
using testing::IsEmpty;

// A table p with rows 1 "aaaa", 2 "bbbb", 3 "cccc" of the columns id 1 Integer, id 2 String, and an
// index k on the String. Each record takes 12 + 1 + 4 + 4 + 16 = 37 bytes: row n lies at 256 + 37
// (n - 1). Its string's header is 21 bytes on. Each entry takes 12 + 1 + 2 + 16 = 31 bytes: that of
// row n lies at 256 + 31 (n - 1).
DiskFiles PlainDatabase()
{
    MemoryDisk disk;
    RunStatements(&disk,
                  {"CREATE TABLE p (a Integer, b String)", "INSERT INTO p VALUES (1, 'aaaa')",
                   "INSERT INTO p VALUES (2, 'bbbb')", "INSERT INTO p VALUES (3, 'cccc')", "COMMIT",
                   "CREATE INDEX k ON p (b)", "COMMIT"});
    return disk.Snapshot();
}

// The counters at the start of a record file are in the machine's byte order.
ByteDamage SetCounter(size_t place, uint32_t number)
{
    return [=](std::string* bytes) { std::memcpy(&bytes->at(place), &number, sizeof number); };
}

std::string Joined(const std::vector<std::string>& faults)
{
    std::string text;
    for (const std::string& fault : faults)
        text += (text.empty() ? "" : ", ") + fault;
    return text;
}

TEST(DatabaseCheck, GoodDatabasesHaveNoFaults)
{
    MemoryDisk disk;
    disk.Restore(SmallDatabase());
    const CollectedFaults found = Check(&disk);
    EXPECT_THAT(found.texts, IsEmpty());
    ASSERT_EQ(3u, found.tables.size());
    EXPECT_EQ("t", found.tables[1].name);
    EXPECT_EQ(5u, found.tables[1].rows);
    EXPECT_EQ(2u, found.tables[1].indexes);
    EXPECT_EQ(2u, found.tables[1].deletedRecords);   // one deleted, one moved
    EXPECT_EQ(0, found.tables[1].bytesPassedOver);
}

TEST(DatabaseCheck, WhatStatementsLeaveBehindIsNoFault)
{
    MemoryDisk disk;
    RunStatements(&disk, {"CREATE TABLE empty (a Integer)"});
    EXPECT_THAT(Check(&disk).texts, IsEmpty()) << "a table without rows";
    RunStatements(&disk, {"INSERT INTO empty VALUES (1)", "COMMIT", "CREATE INDEX i ON empty (a)",
                          "COMMIT", "DELETE FROM empty"});
    EXPECT_THAT(Check(&disk).texts, IsEmpty()) << "an index without entries";
    RunStatements(&disk,
                  {"INSERT INTO empty VALUES (7)", "COMMIT", "ALTER TABLE empty MODIFY a String",
                   "COMMIT", "INSERT INTO empty VALUES ('x')"});
    EXPECT_THAT(Check(&disk).texts, IsEmpty()) << "values and entries of an earlier type";
    RunStatements(&disk, {"ALTER TABLE empty ADD b Double", "INSERT INTO empty (b) VALUES (2.5)",
                          "COMMIT", "UPDATE empty SET a = 'a longer text' WHERE _rowid = 2",
                          "CREATE INDEX j ON empty (b, a)", "COMMIT",
                          "UPDATE empty SET b = NULL, a = NULL WHERE _rowid = 4"});
    EXPECT_THAT(Check(&disk).texts, IsEmpty()) << "columns that records lack, moved records";
    RunStatements(&disk, {"ALTER TABLE empty DROP b CASCADE", "DROP INDEX empty.i"});
    EXPECT_THAT(Check(&disk).texts, IsEmpty()) << "values of a dropped column";
}

TEST(DatabaseCheck, EachKindOfFaultIsFoundInItsPlace)
{
    const DiskFiles good = PlainDatabase();
    const std::string table = good.at("p.dat");
    ASSERT_EQ(256u + 3 * 37, table.size());
    struct {
        const char* why;
        const char* file;
        ByteDamage damage;
        const char* faults;   // all of them, in order
    } cases[] = {
        {"a tag that is none", "p.dat", SetByte(293, 'X'),
         "tag p.dat:293, map-pair p.map:16 row 2, index-entry p.k.idx:287 row 2"},
        {"a live record marked as deleted", "p.dat", SetNumber(293, kTrashTag),
         "index-entry p.k.idx:287 row 2"},
        {"a body length of 0", "p.dat", SetNumber(301, 0), "length p.dat:301 row 2"},
        {"a body length over the end", "p.dat", SetNumber(301, 0x7FFFFFFF),
         "length p.dat:301 row 2"},
        {"a body length over the next record", "p.dat", SetNumber(301, 25 + 37),
         "length p.dat:301 row 2"},
        {"a body length into the next record", "p.dat", SetNumber(301, 25 + 7),
         "length p.dat:301 row 2"},
        {"a file cut within its last record", "p.dat", CutTo(360),
         "length p.dat:338, map-pair p.map:24 row 3, index-entry p.k.idx:318 row 3"},
        {"a file cut within a header", "p.dat", CutTo(335),
         "length p.dat:330, map-pair p.map:24 row 3, index-entry p.k.idx:318 row 3"},
        {"more values than the body can hold", "p.dat", SetByte(305, 40), "body p.dat:305 row 2"},
        {"payloads taken for columns", "p.dat", SetByte(305, 12), "type-code p.dat:313 row 2"},
        {"a type code that is none", "p.dat", SetByte(307, 4), "type-code p.dat:307 row 2"},
        {"a text longer than its space", "p.dat", SetNumber(318, 5), "payload p.dat:314 row 2"},
        {"a text of two billion bytes", "p.dat", SetNumber(314, 0x7FFFFFFF),
         "payload p.dat:314 row 2"},
        {"an encoding that is none", "p.dat", SetNumber(322, 0x12345),
         "encoding p.dat:322 row 2, index-value p.k.idx:302 row 2"},
        {"a column that never was", "p.dat", SetByte(306, 9), "column-id p.dat:293 row 2"},
        {"the row id that is none", "p.dat", SetNumber(297, 0xFFFFFFFF),
         "row-id p.dat:293 row 4294967295, map-pair p.map:16 row 2, "
         "map-row p.map row 4294967295, index-entry p.k.idx:287 row 2"},
        {"two records of one row", "p.dat", SetNumber(297, 1),
         "duplicate-row p.dat:256 row 1, map-pair p.map:8 row 1, map-pair p.map:16 row 2, "
         "index-value p.k.idx:271 row 1, index-entry p.k.idx:287 row 2"},
        {"bytes in the empty part of the metadata", "p.dat", SetByte(100, 1), "metadata p.dat:100"},
        {"a file shorter than its metadata", "p.dat", CutTo(100),
         "metadata p.dat:0, map-pair p.map:8 row 1, map-pair p.map:16 row 2, "
         "map-pair p.map:24 row 3, index-entry p.k.idx:256 row 1, "
         "index-entry p.k.idx:287 row 2, index-entry p.k.idx:318 row 3"},
        {"a last row id below the rows", "p.dat", SetCounter(0, 2), "counter p.dat:0"},
        {"a last row id of 0 is computed anew", "p.dat", SetCounter(0, 0), ""},
        {"a last column id below the columns", "p.dat", SetCounter(4, 1), "counter p.dat:4"},
        {"a last column id out of this world", "p.dat", SetCounter(4, 0x7F000000),
         "counter p.dat:4"},

        {"a stale map", "p.map", SetNumber(0, kMapStale), "map-state p.map:0"},
        {"no map at all", "p.map", SetNumber(0, 5), "map-state p.map:0"},
        {"a count too low", "p.map", SetNumber(4, 2), "map-count p.map:24, map-row p.map row 3"},
        {"a count of billions", "p.map", SetNumber(4, 0x7FFFFFFF), "map-count p.map:4"},
        {"no end mark", "p.map", SetByte(33, 0), "map-count p.map:32"},
        {"what is behind the end mark means nothing", "p.map",
         [](std::string* b) { *b += "left over"; }, ""},
        {"a position that is not the row's", "p.map", SetNumber(20, 330),
         "map-pair p.map:16 row 2"},
        {"a row that is not there", "p.map", SetNumber(16, 99),
         "map-pair p.map:16 row 99, map-row p.map row 2"},
        {"rows out of order", "p.map",
         [](std::string* b) {
             *b = b->substr(0, 8) + b->substr(16, 8) + b->substr(8, 8) + b->substr(24);
         },
         "map-pair p.map:8 row 2"},
        {"a row listed more often than it moved", "p.map",
         [](std::string* b) {
             *b = b->substr(0, 16) + b->substr(8);
             SetNumber(4, 4)(b);
         },
         "map-row p.map row 1"},

        {"an index without records", "p.k.idx", CutTo(256), "index p.k.idx"},
        {"an index on a column that is not there", "p.k.idx",
         [](std::string* b) { (*b)[269] = (*b)[300] = (*b)[331] = 7; }, "index p.k.idx:256"},
        {"an entry of other columns", "p.k.idx", SetByte(300, 1),
         "index-entry p.k.idx:287 row 2, index-row p.k.idx row 2"},
        {"an entry of no row", "p.k.idx", SetNumber(291, 99),
         "index-entry p.k.idx:287 row 99, index-row p.k.idx row 2"},
        {"a second entry", "p.k.idx", [](std::string* b) { *b += b->substr(287, 31); },
         "index-entry p.k.idx:349 row 2"},
        {"a value that is not the row's", "p.k.idx", SetByte(314, 'x'),
         "index-value p.k.idx:302 row 2"},
        {"a deleted entry", "p.k.idx", SetNumber(287, kTrashTag), "index-row p.k.idx row 2"},
        {"a broken entry", "p.k.idx", SetByte(287, 'X'),
         "tag p.k.idx:287, index-row p.k.idx row 2"},
    };
    for (const auto& c : cases) {
        DiskFiles files = good;
        c.damage(&files.at(c.file));
        MemoryDisk disk;
        disk.Restore(files);
        const CollectedFaults found = Check(&disk);
        EXPECT_EQ(c.faults, Joined(found.faults)) << c.why << "\n"
                                                  << testing::PrintToString(found.texts);
    }
}

TEST(DatabaseCheck, SchemaAndFilesAreCompared)
{
    const DiskFiles good = PlainDatabase();
    const size_t last = LiveRecords(good.at("_schema.dat")).back().begin;
    const struct {
        const char* why;
        const char* file;
        ByteDamage damage;   // null: the file is gone
        std::string fault;
    } cases[] = {
        {"a table without files", "p.dat", nullptr, "missing-file p.dat"},
        {"no schema", "_schema.dat", nullptr, "missing-file _schema.dat"},
        {"no map", "p.map", nullptr, "map-state p.map"},
        {"a table that no one describes", "q.dat", CutTo(300), "orphan-file q.dat"},
        {"a map without a table", "q.map", CutTo(0), "orphan-file q.map"},
        {"an index without a table", "q.k.idx", CutTo(0), "orphan-file q.k.idx"},
        {"a file left by a commit", "p.k.idx.new", CutTo(0), "orphan-file p.k.idx.new"},
        {"another file", "notes", CutTo(1), "orphan-file notes"},
        // The first schema row is at 256: 12 + 15 bytes of header and list, TableName 12 + 7 bytes, ColumnID 4.
        {"_schema doesn't describe itself", "_schema.dat", SetByte(283 + 12, 'x'),
         "schema-self _schema.dat"},
        {"a column described twice", "_schema.dat", SetByte(last + 27 + 13 + 3, 1),
         "schema-row _schema.dat:" + std::to_string(last) + " row 9"},
        {"a column without a type", "_schema.dat", SetByte(last + 27 + 13 + 4 + 13 + 3, 4),
         "schema-row _schema.dat:" + std::to_string(last) + " row 9"},
    };
    for (const auto& c : cases) {
        DiskFiles files = good;
        if (c.damage)
            c.damage(&files[c.file]);
        else
            files.erase(c.file);
        MemoryDisk disk;
        disk.Restore(files);
        EXPECT_THAT(Check(&disk).faults, Contains(c.fault)) << c.why;
    }
}

// Lists of faults name every one: ten rows out of a hundred are broken, and ten are told.
TEST(DatabaseCheck, GoesOnAfterEachFault)
{
    MemoryDisk disk;
    std::vector<std::string> statements = {"CREATE TABLE p (a Integer)"};
    for (int i = 0; i < 100; i++)
        statements.push_back("INSERT INTO p VALUES (" + std::to_string(i) + ")");
    RunStatements(&disk, statements);
    std::string bytes = disk.Bytes("p.dat");
    const std::vector<RecordExtent> records = LiveRecords(bytes);
    for (size_t i = 3; i < records.size(); i += 10)
        bytes[records[i].begin] = 'X';
    disk.Put("p.dat", bytes);
    const CollectedFaults found = Check(&disk);
    EXPECT_EQ(10, std::count_if(found.faults.begin(), found.faults.end(),
                                [](const std::string& f) { return f.starts_with("tag p.dat"); }));
    EXPECT_EQ(90u, found.tables.back().rows);
}

// A stop is asked for after each block, so that Ctrl-C ends a long check soon.
TEST(DatabaseCheck, EndsWhenItIsStopped)
{
    class Stopper : public RescueWatch {
    public:
        void BytesRead(int64_t) override { reads++; }
        bool Stopped() override { return reads > 0; }
        int reads = 0;
    };
    MemoryDisk disk;
    disk.Restore(SmallDatabase());
    MemoryFileAccess files(&disk, true);
    CollectedFaults found;
    Stopper watch;
    CheckDatabase(&files, &found, &watch);
    EXPECT_THAT(found.tables, IsEmpty());
    EXPECT_LT(watch.reads, 5);
}

}   // namespace
}   // namespace vela
