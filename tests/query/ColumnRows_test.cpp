#include "engine/query/ColumnRows.h"

#include <gtest/gtest.h>

#include <deque>

#include "engine/query/VExprAndOr.h"
#include "engine/query/VExprCompare.h"
#include "engine/query/VelaQuery.h"
#include "engine/sql/VelaSQL.h"
#include "tests/query/ExprTesting.h"
#include "tests/storage/TableFixture.h"

// Results that share the columns of stored tables, compared with copies made at the same time.

namespace vela {

namespace {

using Texts = std::vector<std::string>;

constexpr size_t kCopied = SIZE_MAX;   // as the least number of shared rows
const std::vector<VelaDataType> kTypes = {kTypeInteger, kTypeString, kTypeDouble, kTypeDate,
                                          kTypeBoolean};

struct Field {
    uint32_t table;
    uint32_t column;
};

class SharedResults : public testing::Test {
protected:
    SharedResults() { mFiles.Create("t", kTypes); }

    VelaTrans* Table(const char* name = "t") { return mFiles.Table(name); }

    void Run(const std::string& sql)
    {
        VelaStatus status;
        VelaSQLExecute(string(sql, kEncodingASCII), *mFiles.database, &status);
        ASSERT_EQ(kVEStateSuccess, status.State()) << sql;
    }

    void Insert(uint32_t rows, const char* name = "t")
    {
        for (uint32_t i = 0; i < rows; i++) {
            const int32_t number = static_cast<int32_t>(mRandom.Below(1000));
            TestRow row{{1, Int(number)}, {3, VelaValue::Double(number * 0.5)}};
            row.Add(2, mRandom.OneIn(8) ? VelaValue::Null(kTypeString) : TextOf(number));
            row.Add(4, VelaValue::Text(kTypeDate, "2020-01-01"));
            row.Add(5, mRandom.OneIn(30) ? VelaValue::Null(kTypeBoolean)
                                         : VelaValue::Boolean(number % 2 == 0));
            ASSERT_NE(kInvalidRowID, Table(name)->AddRow(row, false));
        }
    }

    VelaValue TextOf(int32_t number)
    {
        const size_t length = mRandom.OneIn(50) ? 5000 : mRandom.Below(30);
        const std::string text = std::to_string(number) + std::string(length, 'x');
        return VelaValue::String(
            string(std::string_view(text), mRandom.OneIn(5) ? kEncodingLatin1 : kEncodingUTF8));
    }

    std::unique_ptr<VelaTempTable> Select(const std::vector<Field>& fields, size_t leastShared,
                                          VelaExprPtr where = nullptr, bool sorted = false,
                                          const std::vector<const char*>& tables = {"t"})
    {
        VelaQuery query(mFiles.database.get());
        for (const char* name : tables)
            query.AddTable(Table(name));
        for (const Field& field : fields)
            query.AddOutput(ExprField(field.table, field.column));
        query.SetWhere(std::move(where));
        query.SetLeastSharedRows(leastShared);
        if (sorted)
            query.AddSortKey(0, -1);
        return query.RunQuery();
    }

    std::unique_ptr<VelaTempTable> SelectAll(size_t leastShared, bool sorted = false)
    {
        return Select({{0, 1}, {0, 2}, {0, 0}, {0, 3}, {0, 4}, {0, 5}}, leastShared, nullptr,
                      sorted);
    }

    // Whether somebody beside the table holds the column, or the row ids (0).
    bool IsShared(uint32_t column)
    {
        return column == 0 ? Table()->Columns()->ShareRowIDs().use_count() > 2
                           : Table()->Columns()->Share(column).use_count() > 2;
    }

    MemoryDisk mDisk;
    DatabaseOnDisk mFiles{&mDisk};
    TestRandom mRandom{20260101};
};

std::string ShownSource(VelaTempTable* table, long row, size_t tables = 1)
{
    const auto source = table->GetSourceRecSet(row);
    std::string text = source ? "from" : "no source";
    for (size_t i = 0; source && i < tables; i++)
        text += " " + std::to_string(source->RowID(i));
    return text;
}

Texts ShownRows(VelaTempTable* table, size_t tables = 1)
{
    Texts rows = TableText(table);
    for (size_t row = 0; row < rows.size(); row++)
        rows[row] += " " + ShownSource(table, static_cast<long>(row), tables);
    return rows;
}

}   // namespace

TEST_F(SharedResults, ReadTheSameInAnyOrder)
{
    Insert(1500);
    const auto copied = SelectAll(kCopied, true);
    const auto shared = SelectAll(1, true);
    ASSERT_TRUE(IsShared(2));
    ASSERT_EQ(1500u, shared->QtyRows());
    const auto expectSame = [&](uint32_t row, long column) {
        ASSERT_EQ(ReadText(copied.get(), row, column), ReadText(shared.get(), row, column))
            << "row " << row << ", column " << column;
    };
    const auto forwards = [&](long column) {
        for (uint32_t row = 0; row < 1500; row++)
            expectSame(row, column);
    };
    for (uint32_t row = 0; row < 1500; row++) {
        for (long column = 0; column < 6; column++)
            expectSame(row, column);
    }
    for (long column = 5; column >= 0; column--)
        forwards(column);
    for (uint32_t row = 1500; row > 0; row--)
        expectSame(row - 1, 1);
    for (uint32_t row = 0; row + 700 < 1500; row++) {   // two readers of one column
        expectSame(row, 1);
        expectSame(row + 700, 1);
    }
    uint32_t row = 0;
    for (int i = 0; i < 20000; i++) {   // runs of all lengths
        const long column = static_cast<long>(mRandom.Below(6));
        row = mRandom.OneIn(40) ? mRandom.Below(1500) : (row + mRandom.Below(3)) % 1500;
        expectSame(row, column);
        ASSERT_EQ(ShownSource(copied.get(), row), ShownSource(shared.get(), row));
    }
}

TEST_F(SharedResults, RefuseWhatIsNotThere)
{
    Insert(300);
    const auto shared = SelectAll(1);
    ASSERT_TRUE(IsShared(1));
    const struct {
        uint32_t row;
        long column;
        bool isThere;
    } cases[] = {{0, 0, true},    {0, 5, true},   {299, 5, true},        {300, 0, false},
                 {299, 6, false}, {5, -1, false}, {UINT32_MAX, 0, false}};
    for (const auto& c : cases) {
        VelaValue value = I(-77);
        EXPECT_EQ(c.isThere, shared->GetValue(c.row, c.column, &value)) << c.row;
        EXPECT_EQ(c.isThere, Shown(value) != "Integer -77") << c.row;
        EXPECT_EQ(c.row < 300, shared->HasRow(c.row)) << c.row;
    }
    EXPECT_EQ("no source", ShownSource(shared.get(), -1));
    EXPECT_EQ("from 300", ShownSource(shared.get(), 299));
    EXPECT_EQ("no source", ShownSource(shared.get(), 300));
}

TEST_F(SharedResults, AreThoseThatAreLargeAndHoldColumnsAlone)
{
    Insert(2000);
    const auto below = [](int32_t rowID) {
        return std::make_unique<VExprCompare>(ExprField(0, 0), kOpLess, Expr(rowID + 1));
    };
    const auto expect = [&](bool isShared, const char* why,
                            const std::unique_ptr<VelaTempTable>& result) {
        EXPECT_EQ(isShared, IsShared(1)) << why;
        EXPECT_EQ(isShared, IsShared(0)) << why;
        EXPECT_LT(0u, result->QtyRows()) << why;
    };
    (void)SelectAll(kCopied);   // brings all columns into memory
    expect(true, "a quarter of the rows", Select({{0, 1}}, 500, below(500)));
    expect(false, "a row less", Select({{0, 1}}, 499, below(499)));
    expect(false, "fewer than asked for", Select({{0, 1}}, 501, below(500)));
    expect(false, "small as such", SelectAll(ColumnRows::kLeastRows));
    expect(false, "none held any more", SelectAll(kCopied));
    expect(true, "sorted by a column in memory", Select({{0, 1}, {0, 2}}, 1, below(2000), true));
    expect(false, "sorted by a column with nulls", Select({{0, 5}, {0, 1}}, 1, nullptr, true));
    Insert(2500);
    expect(true, "large as such", SelectAll(ColumnRows::kLeastRows));
    mFiles.database->SetColumnMemoryLimit(0);
    expect(false, "without memory for columns", Select({{0, 1}}, 1));
}

TEST_F(SharedResults, JoinHoldsNothingOfATableThatGivesItFewRows)
{
    mFiles.Create("u", kTypes);
    Insert(2000);
    Insert(2000, "u");
    ASSERT_TRUE(mFiles.Commit());
    const auto join = [&](int32_t last) {
        SimpleVector<VelaExprPtr> terms;
        terms.push_back(std::make_unique<VExprCompare>(ExprField(0, 0), kOpEqual, ExprField(1, 1)));
        terms.push_back(std::make_unique<VExprCompare>(ExprField(0, 0), kOpLess, Expr(last + 1)));
        return std::make_unique<VExprAnd>(std::move(terms));
    };
    for (const int32_t last : {100, 300, 2000}) {
        const auto select = [&](size_t least) {
            return Select({{0, 1}, {1, 2}, {1, 0}}, least, join(last), false, {"t", "u"});
        };
        const Texts expected = ShownRows(select(kCopied).get(), 2);
        const auto shared = select(1);
        EXPECT_EQ(last >= 300, IsShared(0)) << expected.size();
        EXPECT_EQ(last >= 300, expected.size() >= 500);
        EXPECT_EQ(expected, ShownRows(shared.get(), 2));
        Run("UPDATE u SET c2 = 'changed', c1 = 1");
        Run("DELETE FROM t WHERE c1 < 500");
        EXPECT_EQ(expected, ShownRows(shared.get(), 2));
        mFiles.Rollback();
        EXPECT_EQ(expected, ShownRows(shared.get(), 2));
    }
}

TEST_F(SharedResults, OnlyWhatIsChangedIsCopied)
{
    Insert(1000);
    ASSERT_TRUE(mFiles.Commit());
    const auto shared = SelectAll(1);
    const auto place = [this](uint32_t column) { return Table()->Columns()->Loaded(column); };
    const ColumnData* numbers = place(1);
    const ColumnData* texts = place(2);
    const Texts expected = ShownRows(shared.get());

    Insert(1000);
    EXPECT_EQ(numbers, place(1)) << "added rows come behind";
    EXPECT_EQ(texts, place(2));
    EXPECT_EQ(2000u, numbers->Count());
    EXPECT_EQ(expected, ShownRows(shared.get()));

    Run("UPDATE t SET c1 = 5 WHERE _rowid = 7");
    EXPECT_NE(numbers, place(1));
    EXPECT_EQ(texts, place(2));
    numbers = place(1);
    Run("UPDATE t SET c1 = 6 WHERE _rowid <= 1000");
    EXPECT_EQ(numbers, place(1)) << "it is the table's own by now";
    EXPECT_EQ(texts, place(2));
    EXPECT_EQ(expected, ShownRows(shared.get()));

    Run("DELETE FROM t WHERE _rowid = 9");
    EXPECT_EQ(numbers, place(1));
    EXPECT_NE(texts, place(2));
    EXPECT_EQ(1999u, numbers->Count());
    EXPECT_EQ(expected, ShownRows(shared.get()));
}

// Beside the changes that the random test makes.
TEST_F(SharedResults, StayWhateverBecomesOfTheTable)
{
    const struct {
        const char* what;
        std::function<void()> change;
    } cases[] = {
        {"a column dropped",
         [this] {
             EXPECT_TRUE(mFiles.Commit());
             Run("ALTER TABLE t DROP COLUMN c1");
         }},
        {"all deleted and committed",
         [this] {
             Run("DELETE FROM t");
             EXPECT_TRUE(mFiles.Commit());
             EXPECT_EQ(0u, RowIDsOf(Table()).size());
         }},
        {"copied into itself", [this] { Run("INSERT INTO t (c1, c2) SELECT c1, c2 FROM t"); }},
        {"committed and opened again",
         [this] {
             Run("UPDATE t SET c2 = 'a longer text than most of them' WHERE c1 > 300");
             EXPECT_TRUE(mFiles.Commit());
             mFiles.Open();
         }},
        {"without memory", [this] { mFiles.database->SetColumnMemoryLimit(0); }},
        {"dropped",
         [this] {
             EXPECT_TRUE(mFiles.Commit());
             Run("DROP TABLE t");
             EXPECT_TRUE(mFiles.Commit());
         }},
        {"closed", [this] { mFiles.database.reset(); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        mFiles.database.reset();
        mDisk.Restore({});
        mFiles.Open();
        mFiles.Create("t", kTypes);
        Insert(500);
        ASSERT_TRUE(mFiles.Commit());
        Insert(100);
        const Texts expected = ShownRows(SelectAll(kCopied).get());
        const Texts sorted = ShownRows(SelectAll(kCopied, true).get());
        const auto first = SelectAll(1);
        const auto second = SelectAll(1, true);
        ASSERT_TRUE(IsShared(1));
        for (uint32_t row = 0; row < 3; row++)   // some values are made ahead
            EXPECT_EQ(0u, ReadText(first.get(), row, 0).find("Integer"));
        c.change();
        EXPECT_EQ(expected, ShownRows(first.get()));
        EXPECT_EQ(sorted, ShownRows(second.get()));
    }
}

TEST_F(SharedResults, ManyAtATimeStayThroughRandomChanges)
{
    struct Kept {
        std::unique_ptr<VelaTempTable> result;
        Texts expected;
    };
    std::deque<Kept> kept;
    Insert(400);
    ASSERT_TRUE(mFiles.Commit());
    for (int step = 0; step < 300 && !HasFailure(); step++) {
        const std::string number = std::to_string(mRandom.Below(1000));
        switch (mRandom.Below(8)) {
            case 0:
                Run("UPDATE t SET c1 = c1 + 1 WHERE c1 < " + number);
                break;
            case 1:
                Run("UPDATE t SET c2 = 'a text longer than most " + number +
                    "', c3 = 0.25 WHERE c1 > " + number);
                break;
            case 2:
                Run("DELETE FROM t WHERE c1 < " + number + " / 20");
                break;
            case 3:
                Run("UPDATE t SET c5 = NULL WHERE c1 = " + number);
                break;
            case 4:
                mRandom.OneIn(2) ? mFiles.Rollback() : mFiles.database->Commit();
                break;
            default:
                Insert(mRandom.Below(20));
        }
        const bool sorted = mRandom.OneIn(2);
        const Texts expected = ShownRows(SelectAll(kCopied, sorted).get());
        kept.push_back({SelectAll(1, sorted), expected});
        if (kept.size() > 6)
            kept.pop_front();
        for (const Kept& each : kept)
            ASSERT_EQ(each.expected, ShownRows(each.result.get())) << "step " << step;
        if (!mRandom.OneIn(10))
            continue;
        // What the table itself reads is what its files and pending changes say.
        const Texts cached = TableText(Table());
        Table()->DropColumns();
        ASSERT_EQ(cached, TableText(Table())) << "step " << step;
    }
}

TEST_F(SharedResults, ColumnMemoryCountsTheCopyInstead)
{
    Insert(3000);
    ASSERT_TRUE(mFiles.Commit());
    mFiles.Open();
    const auto used = [this] { return mFiles.database->Columns().Used(); };
    auto shared = SelectAll(1);
    const uint64_t before = used();
    Run("UPDATE t SET c1 = 1, c3 = 1.5");
    ASSERT_EQ(3000u, SelectAll(1)->QtyRows());
    EXPECT_LE(used(), before + before / 4);
    EXPECT_GE(used(), before / 2);
    Table()->DropColumns();
    EXPECT_LT(used(), 2000u) << "the schema alone: what a result holds is not the table's";
    EXPECT_EQ(3000u, shared->QtyRows());
    mFiles.database.reset();
    shared.reset();
}

}   // namespace vela
