#include "engine/rescue/CommittedFiles.h"

#include <gmock/gmock.h>

#include "engine/rescue/DatabaseCheck.h"
#include "engine/sql/VelaSQL.h"
#include "engine/storage/CommitLogFormat.h"
#include "tests/rescue/RescueTesting.h"
#include "tests/storage/TableFixture.h"
#include "tests/storage/WholeLogRecord.h"

namespace vela {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A table t with row 1, and the log of a commit of row 2 that has not reached the files.
DiskFiles CrashedDatabase()
{
    MemoryDisk disk;
    RunStatements(&disk, {"CREATE TABLE t (a Integer)", "INSERT INTO t VALUES (1)", "COMMIT"});
    DiskFiles files = disk.Snapshot();
    VelaDatabase database(std::make_unique<MemoryFileAccess>(&disk));
    VelaStatus status;
    VelaSQLExecute("INSERT INTO t VALUES (2)", database, &status);
    database.Commit();
    EXPECT_FALSE(database.LastCommitFailed());
    files[kCommitLogName] = disk.AllFiles().at(kCommitLogName);
    return files;
}

std::unique_ptr<VelaFileAccess> OpenCommitted(MemoryDisk* disk)
{
    return OpenCommittedFiles([disk] { return std::make_unique<MemoryFileAccess>(disk, true); });
}

CollectedFaults CheckCommitted(MemoryDisk* disk)
{
    CollectedFaults found;
    RescueWatch watch;
    CheckDatabase(OpenCommitted(disk).get(), &found, &watch);
    return found;
}

}   // namespace

TEST(CommittedFiles, CommitsThatACrashHasKeptFromTheFilesAreCheckedAndSaved)
{
    const DiskFiles crashed = CrashedDatabase();
    MemoryDisk disk;
    disk.Restore(crashed);
    const CollectedFaults found = CheckCommitted(&disk);
    EXPECT_THAT(found.texts, IsEmpty());
    EXPECT_EQ(2u, found.tables.at(1).rows);
    MemoryDisk repaired;
    RepairReport report;
    RescueWatch watch;
    EXPECT_TRUE(RepairDatabase(
        OpenCommitted(&disk).get(),
        [&repaired] { return std::make_unique<MemoryFileAccess>(&repaired); }, &report, &watch));
    EXPECT_TRUE(report.IsComplete());
    EXPECT_EQ(2u, RowsOf(&repaired, "t").size());
    EXPECT_EQ(crashed, disk.AllFiles());
}

TEST(CommittedFiles, LogThatCantBeReadIsAFaultAndTheFilesAreTakenAsTheyAre)
{
    DiskFiles crashed = CrashedDatabase();
    crashed[kCommitLogName] =
        EncodeLogHead(1) + WholeLogRecord({LogRecordKind::kCommit, 1, 0, 0, 0}, "rubbish");
    MemoryDisk disk;
    disk.Restore(crashed);
    const CollectedFaults found = CheckCommitted(&disk);
    EXPECT_THAT(found.faults, ElementsAre("commit-log _commit.log"));
    EXPECT_EQ(1u, found.tables.at(1).rows);
    MemoryDisk repaired;
    RepairReport report;
    RescueWatch watch;
    EXPECT_TRUE(RepairDatabase(
        OpenCommitted(&disk).get(),
        [&repaired] { return std::make_unique<MemoryFileAccess>(&repaired); }, &report, &watch));
    EXPECT_THAT(report.notes,
                ElementsAre("The log of commits, _commit.log, can't be read; commits that have not "
                            "reached the files are missing."));
    EXPECT_EQ(1u, RowsOf(&repaired, "t").size());
    EXPECT_EQ(crashed, disk.AllFiles());
}

TEST(CommittedFiles, ContainerThatIsNotThereIsGivenAsItIs)
{
    EXPECT_EQ(nullptr, OpenCommittedFiles([] { return nullptr; }));
}

}   // namespace vela
