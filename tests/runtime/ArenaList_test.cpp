#include "runtime/ArenaList.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <numeric>

namespace vela {
namespace {

uint64_t SumOf(const ArenaList<uint64_t>& list)
{
    return std::accumulate(list.begin(), list.end(), uint64_t{0});
}

TEST(ArenaList, KeepsItsItemsWhileItGrows)
{
    for (const bool othersGrowToo : {false, true}) {
        BlockArena arena;
        ArenaList<uint64_t> list, other;
        EXPECT_TRUE(list.empty());
        uint64_t sum = 0;
        for (uint64_t i = 1; i <= 5000; i++) {
            list.Add(&arena, i);
            if (othersGrowToo)
                other.Add(&arena, i * 1000000);
            sum += i;
            ASSERT_EQ(i, list.size());
            ASSERT_EQ(i, list.back());
            ASSERT_EQ(sum, SumOf(list)) << i;
        }
        EXPECT_EQ(othersGrowToo ? sum * 1000000 : 0, SumOf(other));
        EXPECT_EQ(17u, list[16]);
    }
}

TEST(ArenaList, AnItemOfTheListItselfCanBeAdded)
{
    BlockArena arena;
    ArenaList<uint64_t> list;
    list.Add(&arena, 3);
    for (int i = 0; i < 100; i++)
        list.Add(&arena, list[0]);
    EXPECT_EQ(303u, SumOf(list));
}

TEST(ArenaList, ReservedRoomIsUsed)
{
    BlockArena arena;
    ArenaList<uint64_t> list;
    list.Reserve(&arena, 9);
    (void)arena.Make<char>('x');
    const uint64_t* first = list.begin();
    for (uint64_t i = 1; i <= 9; i++)
        list.Add(&arena, i);
    EXPECT_EQ(first, list.begin());
    list.Reserve(&arena, 5);
    EXPECT_EQ(first, list.begin()) << "fewer than there are";
    EXPECT_THROW(list.Reserve(&arena, SIZE_MAX / 2), std::bad_alloc);
    EXPECT_EQ(45u, SumOf(list));
}

}   // namespace
}   // namespace vela
