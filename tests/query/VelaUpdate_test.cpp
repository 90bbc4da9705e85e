#include "engine/query/VelaUpdate.h"

#include <gtest/gtest.h>

#include "engine/query/VExprCompare.h"
#include "engine/query/VExprMath.h"
#include "engine/query/VelaTempTable.h"
#include "tests/query/ExprTesting.h"
#include "tests/query/MemoryTable.h"

namespace vela {

namespace {

using test::MemoryTable;
using Notes = std::vector<std::string>;

// Rows 3, 1, 2; column 2 of row 2 can't be read.
class VelaUpdateTest : public testing::TestWithParam<bool> {
protected:
    void SetUp() override
    {
        table.AddColumn("a", kTypeInteger).AddColumn("b", kTypeInteger);
        table.Row(3, {I(30), I(300)});
        table.Row(1, {I(10), I(100)});
        table.Row(2, {I(20), std::nullopt});
        if (GetParam())
            table.OfferColumns();
    }
    const VelaColumnInfo& Column(long number) { return *table.Column(number); }
    static VelaExprPtr Plus(uint32_t column, int number)
    {
        return std::make_unique<VExprMath>(ExprField(0, column), '+', Expr(number));
    }
    static VelaExprPtr Above(uint32_t column, int number)
    {
        return std::make_unique<VExprCompare>(ExprField(0, column), kOpGreater, Expr(number));
    }

    MemoryTable table{"t"};
    VelaUpdate update{nullptr, &table};
};

}   // namespace

INSTANTIATE_TEST_SUITE_P(RowsAndColumns, VelaUpdateTest, testing::Bool(),
                         [](const auto& kind) { return kind.param ? "columns" : "rows"; });

TEST_P(VelaUpdateTest, ConstantIsComputedOnceAndGoesToEveryRowInOrder)
{
    int evaluations = 0;
    auto scripted = std::make_unique<ScriptedExpr>();
    scripted->flag = true;
    scripted->left = {I(8)};
    scripted->evaluations = &evaluations;
    update.AddTarget(Column(1), std::move(scripted));
    EXPECT_TRUE(update.RunUpdate());
    EXPECT_EQ((Notes{"3: 1=8", "1: 1=8", "2: 1=8"}), table.updates);
    EXPECT_EQ(1, evaluations);
}

TEST_P(VelaUpdateTest, ValueOfTheRowIsComputedForEach)
{
    update.AddTarget(Column(1), Plus(1, 1));
    update.AddTarget(Column(2), Plus(1, 2));   // sees the row as it was, not the first target's
    EXPECT_TRUE(update.RunUpdate());
    EXPECT_EQ((Notes{"3: 1=31 2=32", "1: 1=11 2=12", "2: 1=21 2=22"}), table.updates);
}

TEST_P(VelaUpdateTest, ValueThatCantBeComputedStopsAtItsRow)
{
    update.AddTarget(Column(1), Plus(2, 1));
    EXPECT_FALSE(update.RunUpdate());
    EXPECT_EQ((Notes{"3: 1=301", "1: 1=101"}), table.updates) << "row 2 and what follows stays";
}

TEST_P(VelaUpdateTest, WithoutValueTheColumnGetsItsDefault)
{
    VelaColumnInfo column = Column(1);
    column.defaultValue = I(77);
    update.AddTarget(column, nullptr);
    update.AddTarget(Column(2), nullptr);
    update.SetWhere(Above(1, 25));
    EXPECT_TRUE(update.RunUpdate());
    EXPECT_EQ((Notes{"3: 1=77 2=NULL"}), table.updates);
}

TEST_P(VelaUpdateTest, NoRowAndNothingToSetAreNoFailures)
{
    EXPECT_TRUE(update.RunUpdate());
    update.AddTarget(Column(1), Plus(2, 1));
    update.SetWhere(Above(1, 99));
    EXPECT_TRUE(update.RunUpdate());
    EXPECT_TRUE(table.updates.empty());
}

TEST(VelaUpdate, NeedsATable)
{
    VelaUpdate update(nullptr, nullptr);
    EXPECT_FALSE(update.RunUpdate());
    update.AddTarget(RowIDColumn(), Expr(1));
    EXPECT_FALSE(update.RunUpdate());
}

// Column 0 of a result table is a column like any other: its values name the rows.
TEST(VelaUpdate, WhereColumnZeroIsNoRowIDItsValuesNameTheRows)
{
    class Result : public VelaTempTable {
    public:
        bool UpdateRow(uint32_t rowID, VelaRow&, bool) override
        {
            updated.push_back(rowID);
            return true;
        }
        std::vector<uint32_t> updated;
    };
    Result table;
    table.AddColumn("number", kTypeInteger);
    for (const int32_t number : {7, 2, 9})
        table.AppendRow(nullptr)[0] = VelaValue::Integer(number);
    VelaUpdate update(nullptr, &table);
    update.AddTarget(*table.Column(0), Expr(1));
    update.SetWhere(std::make_unique<VExprCompare>(ExprField(0, 0), kOpGreater, Expr(5)));
    EXPECT_TRUE(update.RunUpdate());
    EXPECT_EQ((std::vector<uint32_t>{7, 9}), table.updated);
}

}   // namespace vela
