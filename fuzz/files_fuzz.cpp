// Files with anything in them: opening, reading, changing and committing ends, in bounded memory, and a database that was
// committed opens again.
//
// The input is a list of edits to the files of a good database, 6 bytes each: which file, what to do, where (2 bytes), and
// 2 bytes to do it with.

#include <cstdint>
#include <iterator>
#include <map>
#include <memory>
#include <string>

#include "engine/sql/VelaSQL.h"
#include "engine/storage/VelaDatabase.h"
#include "tests/storage/MemoryFileAccess.h"

namespace vela {

namespace {

constexpr size_t kEditSize = 6;
constexpr size_t kMostEdits = 64;
using Files = std::map<std::string, std::string>;

const char* const kPreparation[] = {
    "CREATE TABLE t (a integer, b string, c double, d date, e boolean)",
    "INSERT INTO t VALUES (1, 'one', 1.5, '2020-01-02', TRUE)",
    "INSERT INTO t VALUES (2, 'two', -2.5, '2021-1-2', FALSE)",
    "INSERT INTO t VALUES (3, 'three', 3.5, '2022-1-2', FALSE)",
    "CREATE INDEX i ON t (a)",
    "CREATE INDEX j ON t (b, c)",
    "COMMIT",
    "DELETE FROM t WHERE a = 2",
    "UPDATE t SET b = 'a longer text than before' WHERE a = 1",
    "COMMIT",
};

const char* const kChanges[] = {
    "INSERT INTO t VALUES (4, 'four', 4.5, '2023-1-2', TRUE)",
    "UPDATE t SET b = 'x', c = 7.5 WHERE a = 3",
    "UPDATE t SET b = 'a text that has grown a lot' WHERE a = 4",
    "DELETE FROM t WHERE _rowid = 1",
    "ALTER TABLE t ADD f integer",
    "COMMIT",
    "INSERT INTO t VALUES (5, 'five', 5.5, '2024-1-2', TRUE, 6)",
    "CREATE TABLE v (g integer)",
    "ROLLBACK",
    "DROP INDEX t.i",
    "COMMIT",
};

void Run(VelaDatabase* database, const char* statement)
{
    VelaStatus status;
    VelaSQLExecute(string(statement, kEncodingUTF8), *database, &status);
}

std::unique_ptr<VelaDatabase> Open(MemoryDisk* disk)
{
    return std::make_unique<VelaDatabase>(std::make_unique<MemoryFileAccess>(disk));
}

Files MakeGoodFiles()
{
    MemoryDisk disk;
    const std::unique_ptr<VelaDatabase> database = Open(&disk);
    for (const char* statement : kPreparation)
        Run(database.get(), statement);
    return disk.Snapshot();
}

// One edit of 6 bytes: a byte replaced, a 32-bit number replaced, bytes put in, or the file cut.
void Edit(const uint8_t* edit, Files* files)
{
    auto file = files->begin();
    std::advance(file, edit[0] % files->size());
    std::string& bytes = file->second;
    const size_t place = (static_cast<size_t>(edit[2]) << 8 | edit[3]) % (bytes.size() + 1);
    const std::string with(reinterpret_cast<const char*>(edit + 4), 2);
    switch (edit[1] % 4) {
        case 0:
            bytes.replace(place, 1, with, 0, 1);
            break;
        case 1:
            bytes.replace(place, 4, with + with);
            break;
        case 2:
            bytes.insert(place, with);
            break;
        default:
            bytes.resize(place);
            break;
    }
}

void ReadAll(VelaDatabase* database)
{
    VelaValue value;
    for (VelaTable* table : database->OpenTables()) {
        SimpleVector<uint32_t> rowIDs;
        table->GetRowIDs(&rowIDs);
        for (const uint32_t rowID : rowIDs) {
            for (long column = 0; column < table->QtyColumns(); column++)
                table->GetValue(rowID, column, &value);
        }
    }
    VelaStatus status;
    const char* const queries[] = {"SELECT * FROM t WHERE a = 3", "SELECT COUNT(*), MAX(b) FROM t",
                                   "SELECT t.b FROM t, t x WHERE t.a = x.a ORDER BY b"};
    for (const char* query : queries)
        VelaSQLQuery(string(query, kEncodingUTF8), *database, &status);
}

}   // namespace

}   // namespace vela

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace vela;
    static const Files kGoodFiles = MakeGoodFiles();
    Files files = kGoodFiles;
    for (size_t i = 0; i + kEditSize <= size && i < kMostEdits * kEditSize; i += kEditSize)
        Edit(data + i, &files);
    MemoryDisk disk;
    disk.Restore(files);
    {
        const std::unique_ptr<VelaDatabase> database = Open(&disk);
        ReadAll(database.get());
        for (const char* statement : kChanges)
            Run(database.get(), statement);
        ReadAll(database.get());
    }
    const std::unique_ptr<VelaDatabase> again = Open(&disk);
    ReadAll(again.get());
    return 0;
}
