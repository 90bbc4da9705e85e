#include "engine/storage/RowArena.h"

#include <gtest/gtest.h>

namespace vela {

TEST(RowArena, TellsWhenMostOfItIsDropped)
{
    RowArena arena;
    for (int i = 0; i < 40; i++) {
        EXPECT_NE(nullptr, arena.Take(100 * 1024, 4));
        EXPECT_FALSE(arena.IsWastingMemory());
        if (i % 2 == 1)
            arena.Drop(90 * 1024);
    }
    for (int i = 0; i < 5; i++)
        arena.Drop(100 * 1024);
    EXPECT_TRUE(arena.IsWastingMemory());
    arena.Clear();
    EXPECT_FALSE(arena.IsWastingMemory());
}

}   // namespace vela
