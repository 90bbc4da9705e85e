#include "fuzz/DamagedDatabase.h"

#include <iterator>
#include <memory>

#include "engine/sql/VelaSQL.h"

namespace vela {

namespace {

constexpr size_t kEditSize = 6;
constexpr size_t kMostEdits = 64;

const char* const kPreparation[] = {
    "CREATE TABLE t (a integer, b string, c double, d date, e boolean)",
    "INSERT INTO t VALUES (1, 'one', 1.5, '2020-01-02', TRUE)",
    "INSERT INTO t VALUES (2, 'two', -2.5, '2021-1-2', FALSE)",
    "INSERT INTO t VALUES (3, 'three', 3.5, '2022-1-2', FALSE)",
    "CREATE TABLE u (f integer)",
    "INSERT INTO u VALUES (7)",
    "COMMIT",
    "CREATE INDEX i ON t (a)",
    "CREATE INDEX j ON t (b, c)",
    "COMMIT",
    "DELETE FROM t WHERE a = 2",
    "UPDATE t SET b = 'a longer text than before' WHERE a = 1",
    "UPDATE t SET b = '3' WHERE a = 3",
    "ALTER TABLE t DROP e RESTRICT",
    "COMMIT",
};

Files MakeGoodFiles()
{
    MemoryDisk disk;
    {
        VelaDatabase database(std::make_unique<MemoryFileAccess>(&disk));
        VelaStatus status;
        for (const char* statement : kPreparation)
            VelaSQLExecute(string(statement, kEncodingUTF8), database, &status);
    }
    return disk.Snapshot();
}

// One edit: a byte replaced, a 32-bit number replaced, bytes put in, the file cut, or a part of it
// put elsewhere.
void Edit(const uint8_t* edit, Files* files)
{
    auto file = files->begin();
    std::advance(file, edit[0] % files->size());
    std::string& bytes = file->second;
    const size_t place = (static_cast<size_t>(edit[2]) << 8 | edit[3]) % (bytes.size() + 1);
    const std::string with(reinterpret_cast<const char*>(edit + 4), 2);
    switch (edit[1] % 5) {
        case 0:
            bytes.replace(place, 1, with, 0, 1);
            break;
        case 1:
            bytes.replace(place, 4, with + with);
            break;
        case 2:
            bytes.insert(place, with);
            break;
        case 3:
            bytes.resize(place);
            break;
        default:
            bytes.insert(place, bytes.substr(edit[4] % (bytes.size() + 1), edit[5]));
            break;
    }
}

}   // namespace

const Files& GoodFiles()
{
    static const Files kFiles = MakeGoodFiles();
    return kFiles;
}

Files DamagedFiles(const uint8_t* data, size_t size)
{
    Files files = GoodFiles();
    for (size_t i = 0; i + kEditSize <= size && i < kMostEdits * kEditSize; i += kEditSize)
        Edit(data + i, &files);
    return files;
}

void ReadTables(VelaDatabase* database)
{
    VelaValue value;
    for (VelaTable* table : database->OpenTables()) {
        SimpleVector<uint32_t> rowIDs;
        table->GetRowIDs(&rowIDs);
        for (const uint32_t rowID : rowIDs)
            for (long column = 0; column < table->QtyColumns(); column++)
                table->GetValue(rowID, column, &value);
    }
}

}   // namespace vela
