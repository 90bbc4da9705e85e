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

}   // namespace

TEST(CommittedFiles, CommitsThatACrashHasKeptFromTheFilesAreCheckedAndSavedOrMissed)
{
    for (const bool isReadable : {true, false}) {
        DiskFiles crashed = CrashedDatabase();
        if (!isReadable)
            crashed[kCommitLogName] =
                EncodeLogHead(1) + WholeLogRecord({LogRecordKind::kCommit, 1, 0, 0, 0}, "rubbish");
        MemoryDisk disk;
        disk.Restore(crashed);
        CollectedFaults found;
        RescueWatch watch;
        CheckDatabase(OpenCommitted(&disk).get(), &found, &watch);
        const size_t rows = isReadable ? 2 : 1;
        EXPECT_EQ(rows, found.tables.at(1).rows);
        MemoryDisk repaired;
        RepairReport report;
        EXPECT_TRUE(RepairDatabase(
            OpenCommitted(&disk).get(),
            [&repaired] { return std::make_unique<MemoryFileAccess>(&repaired); }, &report,
            &watch));
        EXPECT_EQ(rows, RowsOf(&repaired, "t").size());
        EXPECT_EQ(crashed, disk.AllFiles());
        if (isReadable) {
            EXPECT_THAT(found.texts, IsEmpty());
            EXPECT_TRUE(report.IsComplete());
            continue;
        }
        EXPECT_THAT(found.faults, ElementsAre("commit-log _commit.log"));
        EXPECT_THAT(report.notes,
                    ElementsAre("The log of commits, _commit.log, can't be read; commits that have "
                                "not reached the files are missing."));
    }
}

TEST(CommittedFiles, ContainerThatIsNotThereIsGivenAsItIs)
{
    EXPECT_EQ(nullptr, OpenCommittedFiles([] { return nullptr; }));
}

}   // namespace vela
