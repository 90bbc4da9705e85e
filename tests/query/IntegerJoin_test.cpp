#include "engine/query/IntegerJoin.h"

#include <gtest/gtest.h>

#include <random>

namespace vela::test {

namespace {

using Pairs = std::vector<std::pair<uint32_t, uint32_t>>;

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

Pairs Join(const std::vector<int32_t>& outer, const std::vector<int32_t>& inner,
           const RowList& rows, bool reversed)
{
    const RecSetList list = OuterOf(outer.size());
    const LargeVector<int32_t> keys(outer.begin(), outer.end());
    const ColumnData column = ColumnOf(inner);
    RecSetList result(2);
    EXPECT_TRUE(IntegerJoin(list, keys, 1, column, rows, reversed).Append(SIZE_MAX, &result));
    Pairs pairs;
    for (size_t i = 0; i < result.Count(); i++)
        pairs.emplace_back(result.At(i).RowID(0), result.At(i).RowID(1));
    return pairs;
}

std::vector<int32_t> Numbers(std::mt19937* random, size_t count, int32_t first, uint32_t step,
                             uint32_t kinds)
{
    std::vector<int32_t> numbers;
    for (size_t i = 0; i < count; i++)
        numbers.push_back(static_cast<int32_t>(static_cast<uint32_t>(first) +
                                               step * static_cast<uint32_t>((*random)() % kinds)));
    return numbers;
}

}   // namespace

TEST(IntegerJoin, AgreesWithComparingAllPairs)
{
    struct {
        int32_t first;
        uint32_t step;
        uint32_t kinds;
    } ranges[] = {
        {0, 1, 100},         {-50, 1, 3000}, {INT32_MIN, 65537, 60000}, {INT32_MAX - 9, 1, 10},
        {-5, 2000000011, 3}, {3, 0, 1}};
    std::mt19937 random(1);
    for (const auto& range : ranges) {
        for (const auto& [outerCount, innerCount] :
             {std::pair{3u, 2600u}, std::pair{2600u, 3u}, std::pair{90u, 90u}, std::pair{90u, 91u},
              std::pair{0u, 2u}, std::pair{2u, 0u}}) {
            SCOPED_TRACE(testing::Message()
                         << range.first << " " << outerCount << " " << innerCount);
            const auto outer = Numbers(&random, outerCount, range.first, range.step, range.kinds);
            const auto inner = Numbers(&random, innerCount, range.first, range.step, range.kinds);
            for (const bool reversed : {false, true}) {
                RowList rows = RowList::Range(innerCount);
                if (random() % 2 == 0)
                    rows.Retain([&random](uint32_t) { return random() % 2 == 0; });
                Pairs expected;
                for (uint32_t i = 0; i < outerCount; i++) {
                    for (uint32_t k = 0; k < rows.Count(); k++) {
                        const uint32_t row = rows.At(reversed ? rows.Count() - 1 - k : k);
                        if (outer[i] == inner[row])
                            expected.emplace_back(i, row);
                    }
                }
                EXPECT_EQ(expected, Join(outer, inner, rows, reversed));
            }
        }
    }
}

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
