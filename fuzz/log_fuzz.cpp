// A log of commits with anything in it, beside a good database: opening it for reading and for
// writing ends, in bounded memory, and neither damages what is not in the log's files; what is
// committed afterwards opens again.
//
// The first byte says how the rest is taken: as the log itself, or as the payloads of its records,
// each with its size before it (2 bytes), in a log that is right otherwise.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "engine/sql/VelaSQL.h"
#include "engine/storage/CommitLogFormat.h"
#include "fuzz/DamagedDatabase.h"
#include "tests/storage/WholeLogRecord.h"

namespace vela {

namespace {

std::string LogOf(std::string_view payloads)
{
    std::string log = EncodeLogHead(1);
    LogHeader header;
    header.generation = 1;
    while (payloads.size() >= 2) {
        const auto first = static_cast<unsigned char>(payloads[0]);
        const auto second = static_cast<unsigned char>(payloads[1]);
        const std::string_view payload = payloads.substr(2, size_t{first} % 8 << 8 | second);
        header.kind = first >= 128 ? LogRecordKind::kNote : LogRecordKind::kCommit;
        log += WholeLogRecord(header, payload);
        log.resize((log.size() + kLogAlignment - 1) / kLogAlignment * kLogAlignment);
        header.number++;
        payloads.remove_prefix(2 + payload.size());
    }
    return log;
}

}   // namespace

}   // namespace vela

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace vela;
    if (size == 0)
        return 0;
    const std::string_view rest(reinterpret_cast<const char*>(data + 1), size - 1);
    Files files = GoodFiles();
    files["_commit.log"] = data[0] % 2 == 0 ? std::string(rest) : LogOf(rest);
    MemoryDisk disk;
    disk.Restore(files);
    {
        VelaDatabase reading(std::make_unique<MemoryFileAccess>(&disk, true));
        if (reading.IsValid())
            ReadTables(&reading);
    }
    if (disk.AllFiles() != files)
        __builtin_trap();
    for (int opening = 0; opening < 2; opening++) {
        VelaDatabase database(std::make_unique<MemoryFileAccess>(&disk));
        if (!database.IsValid())
            return 0;
        ReadTables(&database);
        VelaStatus status;
        VelaSQLExecute("INSERT INTO u VALUES (8)", database, &status);
        database.Commit();
    }
    return 0;
}
