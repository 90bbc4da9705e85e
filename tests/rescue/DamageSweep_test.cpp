// A small database in which every byte is set to 0 and 255 and flipped, every file is cut at every
// place, and blocks are zeroed and swapped. After each: it opens and is read, a check and a repair
// end, neither writes to it, every row whose record was not touched is saved as it was, and what
// the repair made has no faults.
//
// Without VELA_DAMAGE_ALL in the environment one case in four is run, other ones for each
// VELA_DAMAGE_SEED.

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "tests/rescue/RescueTesting.h"
#include "tests/storage/StorageTesting.h"
#include "tests/storage/TableFixture.h"

namespace vela {
namespace {

constexpr uint32_t kOneIn = 4;
constexpr size_t kBlock = 16;

struct Damage {
    std::string what;
    std::string file;
    size_t begin;   // of the bytes that may differ
    size_t end;
    std::string bytes;   // of the file, afterwards
};

void ReadAllRows(MemoryDisk* disk)
{
    DatabaseOnDisk database(disk);
    for (size_t i = 0; i < database.database->OpenTables().size(); i++)
        TableText(database.database->OpenTables()[i]);
}

// What is known of the good database.
class DamageSweep : public testing::Test {
protected:
    DamageSweep() : mFiles(SmallDatabase())
    {
        for (const char* table : {"t", "u"}) {
            MemoryDisk disk;
            disk.Restore(mFiles);
            mRows[table] = RowsOf(&disk, table);
        }
        const char* seed = std::getenv("VELA_DAMAGE_SEED");
        mSeed = seed == nullptr ? 1 : static_cast<uint32_t>(std::atoi(seed));
        mRunAll = std::getenv("VELA_DAMAGE_ALL") != nullptr;
        mRandom = TestRandom(mSeed);
    }

    void TearDown() override
    {
        if (mRunAll)
            std::printf("%d cases, in which %lld rows were whole and %lld of them saved\n", mTried,
                        mWhole, mSaved);
    }

    void Try(const Damage& damage)
    {
        if (damage.bytes == mFiles[damage.file] || (!mRunAll && !mRandom.OneIn(kOneIn)))
            return;
        SCOPED_TRACE(damage.file + ", " + damage.what + ", seed " + std::to_string(mSeed));
        DiskFiles files = mFiles;
        files[damage.file] = damage.bytes;
        MemoryDisk disk;
        disk.Restore(files);
        Check(&disk);
        MemoryDisk repaired;
        Repair(&disk, &repaired);
        ExpectNoFaults(&repaired);
        for (const auto& [table, rows] : mRows)
            ExpectRows(damage, table, rows, &repaired);
        ReadAllRows(&disk);   // last, as opening may mend a map
        mTried++;
    }

    // Text encodings that nobody knows are carried along.
    static void ExpectNoFaults(MemoryDisk* repaired)
    {
        for (const std::string& fault : Check(repaired).texts)
            EXPECT_TRUE(fault.starts_with("encoding ")) << fault;
    }

    void ExpectRows(const Damage& damage, const std::string& table,
                    const std::map<uint32_t, std::string>& rows, MemoryDisk* repaired)
    {
        const std::map<uint32_t, std::string> saved = RowsOf(repaired, table);
        for (const RecordExtent& record : LiveRecords(mFiles[table + ".dat"])) {
            const bool isTouched = damage.file == table + ".dat" && damage.begin < record.end &&
                                   record.begin < damage.end;
            if (isTouched)
                continue;
            mWhole++;
            const auto found = saved.find(record.rowID);
            ASSERT_NE(saved.end(), found) << table << " row " << record.rowID;
            mSaved++;
            if (damage.file != "_schema.dat") {
                EXPECT_EQ(rows.at(record.rowID), found->second) << table;
            }
        }
    }

    DiskFiles mFiles;
    std::map<std::string, std::map<uint32_t, std::string>> mRows;
    CapturedErrors mErrors;   // the engine's words on what it meets
    uint32_t mSeed;
    TestRandom mRandom{1};
    bool mRunAll;
    int mTried = 0;
    long long mWhole = 0;
    long long mSaved = 0;
};

TEST_F(DamageSweep, EveryByte)
{
    for (const auto& [file, good] : mFiles) {
        for (size_t place = 0; place < good.size(); place++) {
            const char flipped = static_cast<char>(~good[place]);
            for (const char byte : {'\0', '\xFF', flipped, static_cast<char>(good[place] ^ 1)}) {
                std::string bytes = good;
                bytes[place] = byte;
                Try({"byte " + std::to_string(place) + " is " + ToHex({&byte, 1}), file, place,
                     place + 1, bytes});
            }
        }
    }
    EXPECT_GT(mTried, 500);
}

TEST_F(DamageSweep, EveryTruncation)
{
    for (const auto& [file, good] : mFiles)
        for (size_t size = 0; size < good.size(); size++)
            Try({"cut to " + std::to_string(size), file, size, good.size(), good.substr(0, size)});
    EXPECT_GT(mTried, 100);
}

TEST_F(DamageSweep, BlocksZeroedAndSwapped)
{
    for (const auto& [file, good] : mFiles) {
        for (size_t place = 0; place + kBlock <= good.size(); place += kBlock / 2) {
            std::string bytes = good;
            bytes.replace(place, kBlock, kBlock, '\0');
            Try({"block zeroed at " + std::to_string(place), file, place, place + kBlock, bytes});
            bytes = good;
            std::swap_ranges(bytes.begin() + static_cast<std::ptrdiff_t>(place),
                             bytes.begin() + static_cast<std::ptrdiff_t>(place + kBlock / 2),
                             bytes.begin() + static_cast<std::ptrdiff_t>(place + kBlock / 2));
            Try({"halves of the block swapped at " + std::to_string(place), file, place,
                 place + kBlock, bytes});
        }
    }
    EXPECT_GT(mTried, 10);
}

TEST_F(DamageSweep, EveryFileMissing)
{
    mRunAll = true;
    for (const auto& [file, good] : mFiles)
        Try({"emptied", file, 0, good.size(), ""});
    for (const auto& [file, good] : mFiles) {
        SCOPED_TRACE(file + " is gone");
        DiskFiles files = mFiles;
        files.erase(file);
        MemoryDisk disk;
        disk.Restore(files);
        // Which indexes there should be is written nowhere.
        EXPECT_EQ(file.ends_with(".idx"), Check(&disk).texts.empty());
        MemoryDisk repaired;
        Repair(&disk, &repaired);
        ExpectNoFaults(&repaired);
        for (const auto& [table, rows] : mRows)
            if (file != table + ".dat") {
                EXPECT_EQ(rows.size(), RowsOf(&repaired, table).size()) << table;
            }
    }
}

}   // namespace
}   // namespace vela
