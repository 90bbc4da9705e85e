#include "tests/rescue/RescueTesting.h"

#include <gtest/gtest.h>

#include "engine/rescue/DatabaseCheck.h"
#include "engine/sql/VelaSQL.h"
#include "engine/storage/RecordFormat.h"
#include "engine/storage/VelaDatabase.h"
#include "runtime/ByteOrder.h"
#include "tests/storage/StorageTesting.h"
#include "tests/storage/TableFixture.h"

namespace vela {

void RunStatements(MemoryDisk* disk, const std::vector<std::string>& statements)
{
    VelaDatabase database(std::make_unique<MemoryFileAccess>(disk));
    for (const std::string& statement : statements) {
        VelaStatus status;
        VelaSQLExecute(string(statement, kEncodingUTF8), database, &status);
        EXPECT_TRUE(status.State() == kVEStateSuccess || status.State() == kVEStateNoData)
            << statement << ": " << status.Description().CString();
    }
    database.Commit();
    EXPECT_FALSE(database.LastCommitFailed());
}

DiskFiles SmallDatabase()
{
    MemoryDisk disk;
    RunStatements(&disk,
                  {"CREATE TABLE t (a Integer, b String, c Double, d Date, e Boolean, x Integer)",
                   "INSERT INTO t VALUES (1, 'one', 1.5, '2020-01-02', TRUE, 9)",
                   "INSERT INTO t VALUES (2, 'two', -2.5, '2021-01-02', FALSE, 9)",
                   "INSERT INTO t VALUES (3, 'three', 3.5, '2022-01-02', FALSE, 9)",
                   "INSERT INTO t (a) VALUES (4)",
                   "INSERT INTO t VALUES (5, 'a text of more than a few letters', 0, "
                   "'2023-01-02', TRUE, 9)",
                   "INSERT INTO t (_rowid, a, b) VALUES (70, 6, 'six')", "COMMIT",
                   "CREATE INDEX i ON t (a)", "CREATE INDEX j ON t (b, c)", "COMMIT"});
    RunStatements(&disk, {"DELETE FROM t WHERE a = 2",
                          "UPDATE t SET b = 'a longer text than before' WHERE a = 1",
                          "UPDATE t SET b = 'short' WHERE a = 5", "COMMIT",
                          "ALTER TABLE t DROP x RESTRICT", "CREATE TABLE u (n Timestamp, m Time)",
                          "INSERT INTO u VALUES ('2026-11-21 09:05:00', '09:05:00')",
                          "INSERT INTO u VALUES ('2026-11-22 09:05:00', '19:05:00')"});
    return disk.Snapshot();
}

std::vector<RecordExtent> LiveRecords(const std::string& bytes)
{
    std::vector<RecordExtent> records;
    for (size_t place = kMetadataSize; place < bytes.size();) {
        const size_t end = place + kRecordHeaderSize + LoadBigEndian32(&bytes[place + 8]);
        if (LoadBigEndian32(&bytes[place]) == kRecordTag)
            records.push_back({LoadBigEndian32(&bytes[place + 4]), place, end});
        place = end;
    }
    return records;
}

void CollectedFaults::AddFault(const DatabaseFault& fault)
{
    std::string line = std::string(FaultWord(fault.kind)) + " " + fault.file;
    if (fault.offset >= 0)
        line += ":" + std::to_string(fault.offset);
    if (fault.hasRow)
        line += " row " + std::to_string(fault.rowID);
    faults.push_back(line);
    texts.push_back(line + ": " + fault.text);
}

CollectedFaults Check(MemoryDisk* disk)
{
    const DiskFiles before = disk->Snapshot();
    MemoryFileAccess files(disk, true);
    CollectedFaults found;
    RescueWatch watch;
    CheckDatabase(&files, &found, &watch);
    EXPECT_TRUE(before == disk->Snapshot()) << "a check has written";
    return found;
}

RepairReport Repair(MemoryDisk* damaged, MemoryDisk* repaired)
{
    const DiskFiles before = damaged->Snapshot();
    MemoryFileAccess files(damaged, true);
    RepairReport report;
    RescueWatch watch;
    const auto openNew = [repaired]() -> std::unique_ptr<VelaFileAccess> {
        return std::make_unique<MemoryFileAccess>(repaired);
    };
    EXPECT_TRUE(RepairDatabase(&files, openNew, &report, &watch)) << report.error;
    EXPECT_TRUE(before == damaged->Snapshot()) << "a repair has written to the damaged database";
    return report;
}

std::map<uint32_t, std::string> RowsOf(MemoryDisk* disk, const std::string& table)
{
    DatabaseOnDisk database(disk);
    std::map<uint32_t, std::string> rows;
    VelaTrans* stored = database.Table(table);
    if (stored == nullptr)
        return rows;
    for (const uint32_t rowID : RowIDsOf(stored))
        for (long number = 0; number < stored->QtyColumns(); number++)
            rows[rowID] += ReadText(stored, rowID, number) + "; ";
    return rows;
}

}   // namespace vela
