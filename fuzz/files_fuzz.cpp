// Files with anything in them: opening, reading, changing and committing ends, in bounded memory, and a database that was
// committed opens again.
//
// The input is a list of edits (DamagedDatabase.h).

#include <cstdint>
#include <memory>

#include "engine/sql/VelaSQL.h"
#include "fuzz/DamagedDatabase.h"

namespace vela {

namespace {

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

void ReadAll(VelaDatabase* database)
{
    ReadTables(database);
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
    MemoryDisk disk;
    disk.Restore(DamagedFiles(data, size));
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
