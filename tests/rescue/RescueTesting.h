#pragma once

#include <map>
#include <string>
#include <vector>

#include "engine/rescue/DatabaseFault.h"
#include "engine/rescue/DatabaseRepair.h"
#include "tests/storage/MemoryFileAccess.h"

namespace vela {

using DiskFiles = std::map<std::string, std::string>;

// Runs statements on the database of a disk; a failure fails the test.
void RunStatements(MemoryDisk* disk, const std::vector<std::string>& statements);

// The files of a small database with something of everything: table t with values of all types that
// statements can make, two indexes, deleted and moved rows, a dropped column; table u with a few
// rows.
DiskFiles SmallDatabase();

// Where the live records of a good record file lie.
struct RecordExtent {
    uint32_t rowID;
    size_t begin;
    size_t end;
};
std::vector<RecordExtent> LiveRecords(const std::string& bytes);

// Collects what a check finds: "word file:offset row n", without offset and row where there is
// none.
class CollectedFaults : public FaultReceiver {
public:
    void AddFault(const DatabaseFault& fault) override;
    void AddTable(const TableSummary& table) override { tables.push_back(table); }

    std::vector<std::string> faults;
    std::vector<std::string> texts;
    std::vector<TableSummary> tables;
};
// Checks the database of a disk, which must stay as it is.
CollectedFaults Check(MemoryDisk* disk);

// Repairs the database of a disk, which must stay as it is, into another, empty one.
RepairReport Repair(MemoryDisk* damaged, MemoryDisk* repaired);

// The rows of a table by row id, as the engine reads them; empty when there is no such table.
std::map<uint32_t, std::string> RowsOf(MemoryDisk* disk, const std::string& table);

}   // namespace vela
