// Every allocation made to fail in turn while a large result lives, whose rows share the columns of their table: in changes of
// the table, and in reading the result.

#include <gtest/gtest.h>

#include <new>

#include "engine/query/VelaTempTable.h"
#include "engine/sql/VelaSQL.h"
#include "engine/storage/VelaDatabase.h"
#include "tests/memory/FailingAllocations.h"
#include "tests/storage/MemoryFileAccess.h"
#include "tests/storage/StorageTesting.h"

namespace vela {

namespace {

using Mode = FailingAllocations::Mode;
using Texts = std::vector<std::string>;

constexpr size_t kRows = 2 * ColumnRows::kLeastRows;   // a power of 2: rows are doubled
const char* const kAll = "SELECT id, name, _rowid FROM parts";

class SharedResultFaults : public testing::Test {
protected:
    SharedResultFaults()
    {
        Open();
        Run("CREATE TABLE parts (id INTEGER, name VARCHAR)");
        Run("INSERT INTO parts VALUES (1, 'a name')");
        while (RowIDsOf(Table()).size() < kRows)
            Run("INSERT INTO parts SELECT _rowid + 1, name FROM parts");
        mDatabase->Commit();
        Open();
    }

    void Open()
    {
        mDatabase.reset();
        mDatabase = std::make_unique<VelaDatabase>(std::make_unique<MemoryFileAccess>(&mDisk));
    }
    VelaTable* Table()
    {
        return mDatabase->OpenTables()[static_cast<size_t>(mDatabase->FindOpenTable("parts"))];
    }
    VelaState Run(const char* statement)
    {
        VelaStatus status;
        VelaSQLExecute(statement, *mDatabase, &status);
        return status.State();
    }
    std::unique_ptr<VelaTable> Select(const char* query)
    {
        VelaStatus status;
        return VelaSQLQuery(query, *mDatabase, &status);
    }

    MemoryDisk mDisk;
    std::unique_ptr<VelaDatabase> mDatabase;
};

// Reads all values, which are forgotten, column by column. False: there was no memory for one of them.
bool ReadAll(VelaTable* rows)
{
    try {
        VelaValue value;
        for (long column = 0; column < rows->QtyColumns(); column++) {
            for (uint32_t row = 0; row < rows->QtyRows(); row++) {
                if (!rows->GetValue(row, column, &value))
                    ADD_FAILURE() << "row " << row;
            }
        }
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}   // namespace

TEST_F(SharedResultFaults, ChangesAreMadeOrRefusedAndTheResultStays)
{
    const Texts before = TableText(Table());
    const Texts expected = TableText(Select(kAll).get());
    for (const char* statement :
         {"UPDATE parts SET name = 'changed', id = -1 WHERE _rowid = 7",
          "DELETE FROM parts WHERE _rowid = 7", "INSERT INTO parts VALUES (5, 'added')"}) {
        SCOPED_TRACE(statement);
        Open();
        ASSERT_EQ(kVEStateSuccess, Run(statement));
        const Texts after = TableText(Table());
        FailEach([&](int64_t number, Mode mode) {
            Open();
            const std::unique_ptr<VelaTable> result = Select(kAll);
            const string text(statement);
            const string count("SELECT COUNT(*) FROM parts");
            VelaStatus status;
            VelaState state = kVEStateSuccess;
            const bool failed = FailDuring(number, mode, [&] {
                VelaSQLExecute(text, *mDatabase, &status);
                state = status.State();
                (void)VelaSQLQuery(count, *mDatabase, &status);   // takes deletions in
            });
            EXPECT_EQ(expected, TableText(result.get()));
            EXPECT_TRUE(state == kVEStateSuccess || state == kVEOutOfMemory);
            EXPECT_EQ(state == kVEStateSuccess ? after : before, TableText(Table()));
            if (state != kVEStateSuccess) {
                EXPECT_EQ(kVEStateSuccess, Run(statement));
                EXPECT_EQ(after, TableText(Table()));
            }
            EXPECT_EQ(expected, TableText(result.get()));
            return failed;
        });
    }
}

TEST_F(SharedResultFaults, ValuesThatCouldNotBeReadAreReadLater)
{
    const Texts expected = TableText(Select(kAll).get());
    FailEach([&](int64_t number, Mode mode) {
        const std::unique_ptr<VelaTable> result = Select(kAll);
        bool read = false;
        const bool failed = FailDuring(number, mode, [&] { read = ReadAll(result.get()); });
        EXPECT_EQ(read, !failed);
        EXPECT_EQ(expected, TableText(result.get()));
        return failed;
    });
}

TEST_F(SharedResultFaults, RowsOfItsOwnAreMadeWholeOrNotAtAll)
{
    const Texts expected = TableText(Select(kAll).get());
    FailEach([&](int64_t number, Mode mode) {
        const std::unique_ptr<VelaTable> result = Select(kAll);
        auto* table = dynamic_cast<VelaTempTable*>(result.get());
        bool failed = false;
        try {
            const FailingAllocations faults(number, mode);
            table->RemoveLastRow();
        } catch (const std::bad_alloc&) {
            failed = true;
        }
        EXPECT_EQ(failed ? kRows : kRows - 1, table->QtyRows());
        if (failed) {
            EXPECT_EQ(expected, TableText(table));
            EXPECT_EQ(kRows, table->GetSourceRecSet(kRows - 1)->RowID(0));
            table->RemoveLastRow();
        }
        Texts shorter = TableText(table);
        shorter.push_back(expected.back());
        EXPECT_EQ(expected, shorter);
        return failed;
    });
}

}   // namespace vela
