#include "engine/query/VExprField.h"

#include <gtest/gtest.h>

#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

// Two tables: of the rows 7 and 3 with two columns, and of the rows 5 and 6 with one; that of row 6
// can't be read.
struct TwoTables {
    TwoTables()
    {
        first.AddColumn("a", kTypeInteger).AddColumn("b", kTypeString);
        first.Row(7, {I(1), Text("a")});
        first.Row(3, {Null(kTypeInteger), Text("b")}).OfferColumns();
        second.AddColumn("c", kTypeDate).Row(5, {Date("1994-07-09")}).Row(6, {std::nullopt});
    }

    test::MemoryTable first{"first"};
    test::MemoryTable second{"second"};
    SimpleVector<VelaTable*> tables{&first, &second};
};

TEST(VExprField, Evaluate_ReadsTheCurrentRow)
{
    TwoTables data;
    struct {
        uint32_t rows[2];
        uint32_t table;
        uint32_t column;
        const char* outcome;
        const char* why;
    } cases[] = {
        {{3, 5}, 0, 2, "String b", "another row"},
        {{3, 5}, 0, 1, "NULL Integer", "NULL is a value"},
        {{kInvalidRowID, 5}, 0, 1, "UNKNOWN", "no row is chosen"},
        {{8, 5}, 0, 1, "UNKNOWN", "no such row"},
        {{7, 5}, 0, 3, "UNKNOWN", "no such column"},
        {{7, 5}, 0, 0xFFFFFFFF, "UNKNOWN", "a column number that is negative in 32 bits"},
        {{7, 5}, 1, 1, "Date 1994-07-09", "the second table"},
        {{7, 6}, 1, 1, "UNKNOWN", "the table can't give the value"},
        {{7, 5}, 2, 1, "UNKNOWN", "no such table"},
        {{7, 5}, 0xFFFFFFFF, 1, "UNKNOWN", "no such table by far"},
    };
    for (const auto& c : cases) {
        const VelaRecSet recSet(c.rows);
        VelaEvalContext context;
        context.recSet = &recSet;
        context.tables = &data.tables;
        EXPECT_EQ(c.outcome, Outcome(VExprField(c.table, c.column), context)) << c.why;
    }
}

TEST(VExprField, ColumnInPlace_OnlyForBoundRowsOfColumnsInMemory)
{
    OneTable data({kTypeString, kTypeNone}, {{Text("a"), VelaValue()}, {Text("b"), VelaValue()}});
    uint32_t row = 0;
    EXPECT_EQ(nullptr, VExprField(0, 1).ColumnInPlace(data.Row(1), &row)) << "read by row id";
    const VelaEvalContext context = data.RowInColumns(1);
    const ColumnData* texts = VExprField(0, 1).ColumnInPlace(context, &row);
    ASSERT_NE(nullptr, texts);
    EXPECT_EQ("b", texts->Text(row));
    EXPECT_EQ(nullptr, VExprField(0, 2).ColumnInPlace(context, &row)) << "no plain form";
    EXPECT_EQ(nullptr, VExprField(0, 3).ColumnInPlace(context, &row)) << "no such column";
    EXPECT_EQ(nullptr, VExprField(1, 1).ColumnInPlace(context, &row)) << "no such table";
    for (const uint32_t other : {kInvalidRowID, 2u}) {   // none, and one past the last
        const VelaRecSet recSet(&other);
        VelaEvalContext without = context;
        without.recSet = &recSet;
        EXPECT_EQ(nullptr, VExprField(0, 1).ColumnInPlace(without, &row)) << other;
    }
}

TEST(VExprField, TypeIsDeclaredAndTheTableIsWantedWhileItIsUnbound)
{
    TwoTables data;
    EXPECT_EQ(kTypeString, VExprField(0, 2).GetType(data.tables));
    EXPECT_EQ(kTypeDate, VExprField(1, 1).GetType(data.tables));
    EXPECT_EQ(kTypeNone, VExprField(0, 3).GetType(data.tables)) << "no such column";
    EXPECT_EQ(kTypeNone, VExprField(2, 1).GetType(data.tables)) << "no such table";
    const uint32_t rows[] = {kInvalidRowID, 5, kInvalidRowID};
    const VelaRecSet recSet(rows);
    EXPECT_EQ("0 single", Choice(VExprField(0, 0), recSet));
    EXPECT_EQ("-1 single", Choice(VExprField(1, 0), recSet));
    EXPECT_EQ("2 single", Choice(VExprField(2, 0), recSet));
}

}   // namespace
}   // namespace vela
