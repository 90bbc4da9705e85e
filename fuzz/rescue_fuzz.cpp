// A damaged database, whatever is in its files: opening and reading, a check and a repair end, in
// bounded memory, neither writes to it, and what the repair made is read and checked without a
// fault.
//
// The input is a list of edits (DamagedDatabase.h).

#include <cstdint>
#include <cstdlib>
#include <memory>

#include "engine/rescue/DatabaseCheck.h"
#include "engine/rescue/DatabaseRepair.h"
#include "fuzz/DamagedDatabase.h"

namespace vela {

namespace {

void ReadAll(MemoryDisk* disk)
{
    VelaDatabase database(std::make_unique<MemoryFileAccess>(disk, true));
    ReadTables(&database);
}

// Counts faults but for encodings, which are carried along whatever they are.
class FaultCounter : public FaultReceiver {
public:
    void AddFault(const DatabaseFault& fault) override
    {
        count += fault.kind != FaultKind::kEncoding;
    }
    void AddTable(const TableSummary&) override {}
    int count = 0;
};

int Check(MemoryDisk* disk)
{
    MemoryFileAccess files(disk, true);
    FaultCounter counter;
    RescueWatch watch;
    CheckDatabase(&files, &counter, &watch);
    return counter.count;
}

void Repair(MemoryDisk* damaged, MemoryDisk* repaired)
{
    MemoryFileAccess files(damaged, true);
    RepairReport report;
    RescueWatch watch;
    const auto openNew = [repaired] { return std::make_unique<MemoryFileAccess>(repaired); };
    if (!RepairDatabase(&files, openNew, &report, &watch))
        std::abort();
}

}   // namespace

}   // namespace vela

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace vela;
    const Files files = DamagedFiles(data, size);
    MemoryDisk disk;
    disk.Restore(files);
    ReadAll(&disk);
    Check(&disk);
    MemoryDisk repaired;
    Repair(&disk, &repaired);
    if (disk.Snapshot() != files)
        std::abort();
    ReadAll(&repaired);
    if (Check(&repaired) != 0)
        std::abort();
    return 0;
}
