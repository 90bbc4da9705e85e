#include "engine/query/DistinctRows.h"

#include <gtest/gtest.h>

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
    values.push_back(Text("50"));    // equals the Integer's display form
    values.push_back(Text("050"));   // equals none
    values.push_back(I(50));
    values.push_back(I(100));
    const auto isNew = Feed(values);
    for (size_t i = 0; i < 100; i++)
        EXPECT_TRUE(isNew[i]);
    EXPECT_FALSE(isNew[100]);
    EXPECT_TRUE(isNew[101]);
    EXPECT_FALSE(isNew[102]);
    EXPECT_TRUE(isNew[103]);
}

// A million dates, none equal to any: each look-up must be quick all the same.
TEST(DistinctRows, RowsThatEqualNothingDontPileUp)
{
    const auto isNew = Feed(Values(200000, Date("2020-01-01")));
    for (const bool each : isNew)
        ASSERT_TRUE(each);
}

}   // namespace vela
