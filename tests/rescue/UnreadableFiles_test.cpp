// Files that a device doesn't give: sectors that can't be read, files that can't be opened.

#include <gmock/gmock.h>

#include "engine/rescue/DatabaseCheck.h"
#include "tests/rescue/RescueTesting.h"

namespace vela {
namespace {

using testing::Contains;
using testing::ElementsAre;

constexpr int64_t kSector = 512;

// A file in which one sector can't be read.
class BadSectorStream : public MemoryStream {
public:
    BadSectorStream(MemoryDisk* disk, const std::string& name, int64_t sector)
        : MemoryStream(disk, std::make_shared<std::string>(disk->Bytes(name)), true),
          mSector(sector)
    {}

    bool ReadData(void* buffer, int count, int* bytesRead) override
    {
        if (GetPosition() >= mSector + kSector || GetPosition() + count <= mSector)
            return MemoryStream::ReadData(buffer, count, bytesRead);
        if (bytesRead != nullptr)
            *bytesRead = 0;
        return false;
    }

private:
    int64_t mSector;
};

// The files of a disk, one of which has a bad sector, or can't be opened when sector is negative.
class BadFiles : public MemoryFileAccess {
public:
    BadFiles(MemoryDisk* disk, const std::string& file, int64_t sector)
        : MemoryFileAccess(disk, true), mDisk(disk), mFile(file), mSector(sector)
    {}

    std::unique_ptr<RandomAccessMechanism> OpenFile(const string& name, bool create) override
    {
        if (name.View() != mFile)
            return MemoryFileAccess::OpenFile(name, create);
        if (mSector < 0)
            return nullptr;
        return std::make_unique<BadSectorStream>(mDisk, mFile, mSector);
    }

private:
    MemoryDisk* mDisk;
    std::string mFile;
    int64_t mSector;
};

std::vector<std::string> FaultsOf(MemoryDisk* disk, const std::string& file, int64_t sector)
{
    BadFiles files(disk, file, sector);
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
    const int64_t bad = 2 * kSector;
    EXPECT_THAT(FaultsOf(&disk, "p.dat", bad), Contains("unreadable p.dat:1024"));

    BadFiles files(&disk, "p.dat", bad);
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
            static_cast<int64_t>(record.begin) >= bad + kSector)
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
