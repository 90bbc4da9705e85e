#include "engine/query/VelaUpdate.h"

#include <gtest/gtest.h>

#include "engine/query/VExprCompare.h"
#include "engine/query/VelaTempTable.h"
#include "tests/query/ExprTesting.h"
#include "tests/query/MemoryTable.h"

namespace vela {

namespace {

using test::MemoryTable;
using Notes = std::vector<std::string>;

}   // namespace

// tests/sql/update has what statements can say.
TEST(VelaUpdate, ConstantIsComputedOnceAndGoesToEveryRowInOrder)
{
    for (const bool byColumns : {false, true}) {
        MemoryTable table("t");
        table.AddColumn("a", kTypeInteger).Row(3, {I(30)}).Row(1, {I(10)}).Row(2, {std::nullopt});
        if (byColumns)
            table.OfferColumns();
        int evaluations = 0;
        VelaUpdate update(nullptr, &table);
        update.AddTarget(*table.Column(1),
                         Scripted({.flag = true, .left = {I(8)}, .evaluations = &evaluations}));
        EXPECT_TRUE(update.RunUpdate());
        EXPECT_EQ((Notes{"3: 1=8", "1: 1=8", "2: 1=8"}), table.updates);
        EXPECT_EQ(1, evaluations);
    }
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
