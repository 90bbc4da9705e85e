#include "engine/query/IntegerJoin.h"

#include <gtest/gtest.h>

namespace vela::test {

namespace {

// A list of record sets of two tables, of which the first has the rows 0, 1, 2 ..., and the second is not bound.
RecSetList OuterOf(size_t count)
{
    RecSetList list(2);
    for (uint32_t row = 0; row < count; row++) {
        const uint32_t rows[] = {row, kInvalidRowID};
        list.Add(rows);
    }
    return list;
}

ColumnData ColumnOf(const std::vector<int32_t>& numbers)
{
    ColumnData column;
    column.Start(kTypeInteger);
    for (const int32_t number : numbers)
        EXPECT_TRUE(column.Append(VelaValue::Integer(number)));
    return column;
}

}   // namespace

// That it joins what is to be joined, and in which order, VelaQueryColumns_test and VelaQueryRandom_test show.
TEST(IntegerJoin, StopsBeyondTheLimitAndLeavesTheResultAlone)
{
    for (const auto& [outerCount, innerCount] : {std::pair{100, 50}, std::pair{50, 100}}) {
        const RecSetList outer = OuterOf(static_cast<size_t>(outerCount));
        const LargeVector<int32_t> keys(static_cast<size_t>(outerCount), 1);
        const ColumnData column =
            ColumnOf(std::vector<int32_t>(static_cast<size_t>(innerCount), 1));
        const RowList rows = RowList::Range(static_cast<uint32_t>(innerCount));
        const IntegerJoin join(outer, keys, 1, column, rows, false);
        RecSetList result = OuterOf(1);
        EXPECT_FALSE(join.Append(4999, &result));
        ASSERT_EQ(1u, result.Count());
        EXPECT_EQ(kInvalidRowID, result.At(0).RowID(1));
        EXPECT_TRUE(join.Append(5000, &result));
        EXPECT_EQ(5001u, result.Count());
    }
}

}   // namespace vela::test
