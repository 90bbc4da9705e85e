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

RowList AllRows(const std::vector<int32_t>& numbers)
{
    return RowList::Range(static_cast<uint32_t>(numbers.size()));
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

TEST(IntegerJoin, GivesTheRowsOfEachRecordSetInOrder)
{
    const std::vector<int32_t> few = {7, -3, 7, 9};
    const std::vector<int32_t> many = {9, 7, 5, 7, -3, 0};
    struct {
        const std::vector<int32_t>& outer;
        const std::vector<int32_t>& inner;
        bool reversed;
        Pairs expected;
    } cases[] = {
        {few, many, false, {{0, 1}, {0, 3}, {1, 4}, {2, 1}, {2, 3}, {3, 0}}},
        {few, many, true, {{0, 3}, {0, 1}, {1, 4}, {2, 3}, {2, 1}, {3, 0}}},
        {many, few, false, {{0, 3}, {1, 0}, {1, 2}, {3, 0}, {3, 2}, {4, 1}}},
        {many, few, true, {{0, 3}, {1, 2}, {1, 0}, {3, 2}, {3, 0}, {4, 1}}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.expected, Join(c.outer, c.inner, AllRows(c.inner), c.reversed));
}

TEST(IntegerJoin, OnlyRowsOfTheListAreJoined)
{
    const RowList rows(LargeVector<uint32_t>{1, 4});
    EXPECT_EQ((Pairs{{0, 1}, {2, 1}}), Join({8, 9, 8}, {8, 8, 9, 9, 7}, rows, false));
}

TEST(IntegerJoin, EmptySidesGiveNothing)
{
    EXPECT_EQ(Pairs(), Join({}, {1, 2}, RowList::Range(2), false));
    EXPECT_EQ(Pairs(), Join({1, 2}, {}, RowList::Range(0), false));
    EXPECT_EQ(Pairs(), Join({}, {}, RowList::Range(0), true));
}

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
             {std::pair{3, 2600}, std::pair{2600, 3}, std::pair{90, 90}, std::pair{90, 91}}) {
            SCOPED_TRACE(testing::Message()
                         << range.first << " " << outerCount << " " << innerCount);
            const auto outer = Numbers(&random, static_cast<size_t>(outerCount), range.first,
                                       range.step, range.kinds);
            const auto inner = Numbers(&random, static_cast<size_t>(innerCount), range.first,
                                       range.step, range.kinds);
            Pairs expected;
            for (uint32_t a = 0; a < outer.size(); a++)
                for (uint32_t b = 0; b < inner.size(); b++)
                    if (outer[a] == inner[b])
                        expected.emplace_back(a, b);
            EXPECT_EQ(expected, Join(outer, inner, AllRows(inner), false));
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
