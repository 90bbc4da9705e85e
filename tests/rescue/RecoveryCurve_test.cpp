// How many rows a repair saves, by how much of the record file is damaged. With VELA_RECOVERY_CURVE
// in the environment the curve is measured on more rows and printed as the table of docs/repair.md.

#include <gmock/gmock.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "tests/rescue/RescueTesting.h"
#include "tests/storage/StorageTesting.h"

namespace vela {
namespace {

// Rows of about a hundred bytes.
DiskFiles ManyRows(int rows)
{
    MemoryDisk disk;
    std::vector<std::string> statements = {"CREATE TABLE p (n Integer, name String, note String)"};
    for (int i = 0; i < rows; i++)
        statements.push_back("INSERT INTO p VALUES (" + std::to_string(i) + ", 'name " +
                             std::to_string(i) + "', 'a note of some thirty letters')");
    RunStatements(&disk, statements);
    return disk.Snapshot();
}

// Overwrites pieces of size bytes with random ones until that share of the file is hit. Returns how
// many rows have all of their bytes still.
size_t Damage(std::string* bytes, double share, size_t size, TestRandom* random)
{
    const std::vector<RecordExtent> records = LiveRecords(*bytes);
    std::vector<bool> isHit(bytes->size());
    const size_t wanted = static_cast<size_t>(share * static_cast<double>(bytes->size()));
    for (size_t hit = 0; hit < wanted;) {
        const size_t place = random->Below(static_cast<uint32_t>(bytes->size() - 256 - size)) + 256;
        for (size_t i = place; i < place + size; i++) {
            hit += isHit[i] ? 0 : 1;
            isHit[i] = true;
            (*bytes)[i] = static_cast<char>(random->Next());
        }
    }
    size_t whole = 0;
    for (const RecordExtent& record : records) {
        bool isWhole = true;
        for (size_t i = record.begin; i < record.end; i++)
            isWhole = isWhole && !isHit[i];
        whole += isWhole;
    }
    return whole;
}

TEST(RecoveryCurve, EveryRowWithAllItsBytesIsSaved)
{
    const bool isLong = std::getenv("VELA_RECOVERY_CURVE") != nullptr;
    const int rows = isLong ? 20000 : 500;
    const DiskFiles good = ManyRows(rows);
    TestRandom random(1);
    for (const size_t size : {size_t{1}, size_t{512}, size_t{4096}}) {
        for (const double share : {0.0001, 0.001, 0.01, 0.05, 0.1, 0.25, 0.5}) {
            if (share * static_cast<double>(good.at("p.dat").size()) < static_cast<double>(size))
                continue;   // a single piece is more than that
            DiskFiles files = good;
            const size_t whole = Damage(&files.at("p.dat"), share, size, &random);
            MemoryDisk disk;
            disk.Restore(files);
            MemoryDisk repaired;
            const RepairReport report = Repair(&disk, &repaired);
            const size_t saved = static_cast<size_t>(report.tables.at(0).rows);
            EXPECT_GE(saved, whole) << size << " " << share;
            EXPECT_LE(saved, static_cast<size_t>(rows));
            if (isLong)
                std::printf("| %zu | %g %% | %.2f %% | %.2f %% |\n", size, share * 100,
                            100.0 * static_cast<double>(whole) / rows,
                            100.0 * static_cast<double>(saved) / rows);
        }
    }
}

}   // namespace
}   // namespace vela
