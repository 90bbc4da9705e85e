// Files that a device doesn't give: sectors that can't be read, files that can't be opened.

#include <gmock/gmock.h>

#include "engine/rescue/DatabaseCheck.h"
#include "tests/rescue/RescueTesting.h"

namespace vela {
namespace {

using testing::Contains;
using testing::ElementsAre;

std::vector<std::string> FaultsOf(MemoryDisk* disk, const std::string& file, int64_t sector)
{
    MemoryFileAccess files(disk, true);
    files.MakeUnreadable(file, sector);
    CollectedFaults found;
    RescueWatch watch;
    CheckDatabase(&files, &found, &watch);
    return found.faults;
}

TEST(UnreadableFiles, ASectorThatCantBeReadCostsItsOwnRecords)
{
    MemoryDisk disk;
    std::vector<std::string> statements = {"CREATE TABLE p (a Integer, b String)"};
    for (int i = 0; i < 100; i++)
        statements.push_back("INSERT INTO p VALUES (" + std::to_string(i) + ", 'text')");
    RunStatements(&disk, statements);
    const int64_t bad = 2 * MemoryFileAccess::kSector;
    EXPECT_THAT(FaultsOf(&disk, "p.dat", bad), Contains("unreadable p.dat:1024"));

    MemoryFileAccess files(&disk, true);
    files.MakeUnreadable("p.dat", bad);
    MemoryDisk repaired;
    RepairReport report;
    RescueWatch watch;
    const auto openNew = [&repaired]() { return std::make_unique<MemoryFileAccess>(&repaired); };
    ASSERT_TRUE(RepairDatabase(&files, openNew, &report, &watch)) << report.error;
    EXPECT_FALSE(report.IsComplete());
    const std::map<uint32_t, std::string> rows = RowsOf(&disk, "p");
    std::map<uint32_t, std::string> whole;
    for (const RecordExtent& record : LiveRecords(disk.Bytes("p.dat")))
        if (static_cast<int64_t>(record.end) <= bad ||
            static_cast<int64_t>(record.begin) >= bad + MemoryFileAccess::kSector)
            whole[record.rowID] = rows.at(record.rowID);
    EXPECT_GT(whole.size(), 80u);
    EXPECT_EQ(whole, RowsOf(&repaired, "p"));
}

TEST(UnreadableFiles, AFileThatCantBeOpenedIsOneFault)
{
    MemoryDisk disk;
    RunStatements(&disk, {"CREATE TABLE p (a Integer)", "INSERT INTO p VALUES (1)", "COMMIT",
                          "CREATE INDEX k ON p (a)"});
    EXPECT_THAT(FaultsOf(&disk, "p.dat", -1), ElementsAre("missing-file p.dat"));
    EXPECT_THAT(FaultsOf(&disk, "p.map", -1), ElementsAre("map-state p.map"));
    EXPECT_THAT(FaultsOf(&disk, "p.k.idx", -1), ElementsAre("unreadable p.k.idx"));
}

}   // namespace
}   // namespace vela
