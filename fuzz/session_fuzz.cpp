// A session on a damaged database: whatever is in the files and whatever the statements say, each of
// them ends, and what was committed opens again.
//
// The input is the number of edits (one byte), the edits (DamagedDatabase.h), then the statements, up
// to 16, a line each.

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string_view>

#include "engine/sql/VelaSQL.h"
#include "fuzz/DamagedDatabase.h"

namespace vela {

namespace {

constexpr size_t kEditSize = 6;
constexpr size_t kMostStatements = 16;
// Enough for whatever a parser may find in it; a join of many tables would only be slow.
constexpr size_t kLongestStatement = 200;

void Run(VelaDatabase* database, std::string_view statement)
{
    VelaStatus status;
    const string sql(statement.substr(0, kLongestStatement), kEncodingUTF8);
    if (!VelaSQLQuery(sql, *database, &status))
        VelaSQLExecute(sql, *database, &status);
}

void RunAll(VelaDatabase* database, std::string_view statements)
{
    for (size_t i = 0; i < kMostStatements && !statements.empty(); i++) {
        const size_t end = std::min(statements.find('\n'), statements.size());
        Run(database, statements.substr(0, end));
        statements.remove_prefix(std::min(end + 1, statements.size()));
    }
}

}   // namespace

}   // namespace vela

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace vela;
    if (size == 0)
        return 0;
    const size_t edits = std::min(data[0] % 16 * kEditSize, size - 1);
    MemoryDisk disk;
    disk.Restore(DamagedFiles(data + 1, edits));
    {
        VelaDatabase database(std::make_unique<MemoryFileAccess>(&disk));
        RunAll(&database, {reinterpret_cast<const char*>(data + 1 + edits), size - 1 - edits});
        ReadTables(&database);
        database.Commit();
    }
    VelaDatabase again(std::make_unique<MemoryFileAccess>(&disk));
    ReadTables(&again);
    return 0;
}
