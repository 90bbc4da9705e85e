#include "engine/storage/RowArena.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

namespace vela {

// Pieces of all sizes, larger than any block among them, keep what was put into them.
TEST(RowArena, PiecesAreAlignedAndApart)
{
    std::mt19937 random(1);
    RowArena arena;
    for (int round = 0; round < 3; round++) {
        std::vector<std::pair<char*, size_t>> pieces;
        for (int i = 0; i < 400; i++) {
            const size_t size = 1 + random() % (i % 100 == 0 ? 9 << 20 : 3000);
            char* piece = static_cast<char*>(arena.Take(size, 8));
            ASSERT_EQ(0u, reinterpret_cast<uintptr_t>(piece) % 8);
            std::memset(piece, i, size);
            pieces.emplace_back(piece, size);
        }
        for (size_t i = 0; i < pieces.size(); i++) {
            ASSERT_EQ(static_cast<char>(i), pieces[i].first[0]);
            ASSERT_EQ(static_cast<char>(i), pieces[i].first[pieces[i].second - 1]);
        }
        arena.Clear();
    }
}

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
