#include "engine/query/DistinctRows.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "tests/query/ExprTesting.h"

namespace vela {

namespace {

using Values = std::vector<VelaValue>;

// Adds rows of one column as a query does; whether each was new.
std::vector<bool> Feed(const Values& values)
{
    VelaTempTable table;
    table.AddColumn("c", kTypeNone);
    DistinctRows distinctRows(table);
    std::vector<bool> isNew;
    for (const VelaValue& value : values) {
        table.AppendRow(nullptr)[0] = value;
        isNew.push_back(distinctRows.IsNew());
        if (!isNew.back())
            table.RemoveLastRow();
    }
    return isNew;
}

}   // namespace

TEST(DistinctRows, MixingTypesLaterStillFindsTheRowsBefore)
{
    Values values;
    for (int i = 0; i < 100; i++)
        values.push_back(I(i));
    std::vector<bool> expected(100, true);
    values.insert(values.end(), {Text("50"), Text("050"), I(50), I(100)});
    // The first text equals an Integer's display form, the second one none.
    expected.insert(expected.end(), {false, true, false, true});
    EXPECT_EQ(expected, Feed(values));
}

// Every value twice and more, of one type at a time, against asking all rows before.
TEST(DistinctRows, AgreesWithComparingAllRows)
{
    std::mt19937 random(5);
    const Values pools[] = {
        {I(1), I(2), Null(kTypeInteger), B(true), I(0)},
        {Text("a"), Text("b"), Text(""), Text("NULL"), Null(kTypeString), Binary("a")},
        {D(1), D(0.0), D(-0.0), D(std::numeric_limits<double>::quiet_NaN())},
        {Date("2020-01-01"), Date("2020-01-02"), Date("1"), Date("DATE 1"), Null(kTypeDate)},
        {I(1), Text("1"), D(1), Date("1"), Null(kTypeNone)},
    };
    for (int repeat = 0; repeat < 200; repeat++) {
        VelaTempTable table;
        table.AddColumn("a", kTypeNone);
        table.AddColumn("b", kTypeNone);
        DistinctRows distinctRows(table);
        const Values& first = pools[random() % std::size(pools)];
        const Values& second = pools[random() % std::size(pools)];
        for (int i = 0; i < 40; i++) {
            VelaValue* row = table.AppendRow(nullptr);
            row[0] = first[random() % first.size()];
            row[1] = second[random() % second.size()];
            bool isNew = true;
            for (size_t j = 0; j + 1 < table.RowCount(); j++) {
                const VelaValue* other = table.RowValues(j);
                isNew = isNew && !(row[0].Equals(other[0]) && row[1].Equals(other[1]));
            }
            ASSERT_EQ(isNew, distinctRows.IsNew())
                << Shown(row[0]) << ", " << Shown(row[1]) << ", seed 5, repeat " << repeat;
            if (!isNew)
                table.RemoveLastRow();
        }
    }
}

// A million dates, none equal to any: each look-up must be quick all the same.
TEST(DistinctRows, RowsThatEqualNothingDontPileUp)
{
    EXPECT_EQ(std::vector<bool>(200000, true), Feed(Values(200000, Date("2020-01-01"))));
}

}   // namespace vela
