#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "engine/storage/VelaFolderFileAccess.h"
#include "tests/storage/SystemCalls.h"
#include "tests/storage/TableFixture.h"
#include "tests/storage/TemporaryFolder.h"

// What commits cost a device: flushes and bytes, on a folder. VELA_COST_ROWS says how many rows the large table has; the
// figures are printed when it is given.

namespace vela {

namespace {

struct Cost {
    int flushes;
    long bytes;
    int writes;
};

class CommitCosts : public testing::Test {
protected:
    CommitCosts()
        : db([this](bool) {
              return std::make_unique<VelaFolderFileAccess>(folder.Locator(),
                                                            VelaFolderFileAccess::Mode::kReadWrite);
          })
    {
        const char* text = std::getenv("VELA_COST_ROWS");
        rows = text == nullptr ? 20000 : std::atoi(text);
        tells = text != nullptr;
    }

    // A table of three columns, of which the first two have an index each.
    VelaTrans* CreateTable()
    {
        VelaTrans* table = db.Create("t", {kTypeInteger, kTypeString, kTypeInteger});
        table->AddIndex("number", {1});
        table->AddIndex("text", {2});
        return table;
    }
    void AddRows(int count)
    {
        for (int i = 0; i < count; i++) {
            TestRow row{{1, Int(i)}, {2, Str("row " + std::to_string(i))}, {3, Int(i % 7)}};
            db.Table("t")->AddRow(row, false);
        }
    }
    // What the commit of what is pending costs.
    Cost Commit(const char* what)
    {
        SystemCalls calls;
        return Commit(what, calls);
    }
    // The same with what calls has counted so far.
    Cost Commit(const char* what, const SystemCalls& calls)
    {
        EXPECT_TRUE(db.Commit()) << db.database->CommitErrorText().CString();
        const Cost cost{calls.synchronisations, calls.bytesWritten, calls.writes};
        if (tells)
            std::printf("%-44s %3d flushes %4d writes %11ld bytes\n", what, cost.flushes,
                        cost.writes, cost.bytes);
        return cost;
    }
    void Update(uint32_t rowID, uint32_t columnID, const VelaValue& value)
    {
        TestRow values{{columnID, value}};
        db.Table("t")->UpdateRow(rowID, values, false);
    }
    long FilesSize() const
    {
        uintmax_t size = 0;
        for (const char* name : {"t.dat", "t.map", "t.number.idx", "t.text.idx"})
            size += std::filesystem::file_size(folder.File(name));
        return static_cast<long>(size);
    }

    TemporaryFolder folder;
    DatabaseOnDisk db;
    int rows;
    bool tells;
};

// Far less than the map or an index of the large table.
constexpr long kSmall = 40000;

}   // namespace

TEST_F(CommitCosts, SmallCommitOnALargeTableIsOneFlushAndFewBytes)
{
    CreateTable();
    AddRows(rows);
    ASSERT_TRUE(db.Commit());
    db.Open();
    AddRows(1);
    const Cost first = Commit("one row, the first commit of an opening");
    EXPECT_GE(2, first.flushes) << "the log is made";
    EXPECT_GE(64 * 1024 + kSmall, first.bytes);
    const struct {
        const char* what;
        std::function<void()> change;
    } cases[] = {
        {"one row added", [this] { AddRows(1); }},
        {"ten rows added", [this] { AddRows(10); }},
        {"one row updated in place", [this] { Update(7, 3, Int(99)); }},
        {"another row added", [this] { AddRows(1); }},
    };
    for (const auto& c : cases) {
        c.change();
        const Cost cost = Commit(c.what);
        EXPECT_EQ(1, cost.flushes) << c.what;
        EXPECT_GE(kSmall, cost.bytes) << c.what;
    }
}

// Maps and indexes stay in their files while rows are only added.
TEST_F(CommitCosts, RowsAddedAfterOpeningReadNeitherMapNorIndexes)
{
    CreateTable();
    AddRows(rows);
    ASSERT_TRUE(db.Commit());
    db.Open();
    {
        SystemCalls calls;
        for (int i = 0; i < 3; i++) {
            AddRows(2);
            ASSERT_TRUE(db.Commit());
        }
        EXPECT_GE(2 * kSmall, calls.bytesRead);
    }
    VelaTrans* table = db.Table("t");
    SimpleVector<uint32_t> found;
    ASSERT_TRUE(table->FindRowsByIndex(2, Str("row 1"), &found));
    EXPECT_EQ(4u, found.size());
    EXPECT_EQ("Integer 1", ReadText(table, static_cast<uint32_t>(rows) + 6, 1));
    EXPECT_EQ(static_cast<size_t>(rows) + 6, table->QtyRows());
}

TEST_F(CommitCosts, GrownRowIsOneFlushWithoutAnIndexOfItsColumn)
{
    VelaTrans* table = db.Create("t", {kTypeInteger, kTypeString, kTypeInteger});
    table->AddIndex("number", {1});
    table->AddIndex("third", {3});
    AddRows(rows);
    ASSERT_TRUE(db.Commit());
    Update(5, 2, Str("a text that is longer than the record has room for"));
    ASSERT_TRUE(db.Commit());   // the pairs of a row that moves are written with those behind them
    AddRows(1);
    ASSERT_TRUE(db.Commit());
    Update(6, 2, Str("a text that is longer than the record has room for"));
    const Cost cost = Commit("one row grown");
    EXPECT_GE(2 + 4, cost.flushes);
}

TEST_F(CommitCosts, BulkCommitWritesItsDataOnce)
{
    db.Create("t", {kTypeInteger});
    ASSERT_TRUE(db.Commit());
    db.Drop("t");
    CreateTable();
    ASSERT_TRUE(db.Commit());
    const int count = std::max(rows, 100000);
    SystemCalls calls;
    AddRows(count);
    const Cost cost = Commit("many rows inserted", calls);
    EXPECT_GE(24 + count / 50000, cost.flushes) << "and one for each 4 MiB that go ahead";
    EXPECT_GE(FilesSize() + FilesSize() / 20 + 3 * 1024 * 1024, cost.bytes);
    if (tells)
        std::printf("%-44s %27ld bytes\n", "the files then", FilesSize());
}

}   // namespace vela
