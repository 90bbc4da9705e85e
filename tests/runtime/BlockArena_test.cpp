#include "runtime/BlockArena.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace vela {
namespace {

bool IsInside(const BlockArena& arena, const void* piece)
{
    const char* start = reinterpret_cast<const char*>(&arena);
    const char* place = static_cast<const char*>(piece);
    return place >= start && place < start + sizeof arena;
}

TEST(BlockArena, FirstPiecesLieInsideItself)
{
    BlockArena arena;
    const void* all = arena.Allocate(BlockArena::kFirstBlock, 1);
    EXPECT_TRUE(IsInside(arena, all));
    EXPECT_FALSE(IsInside(arena, arena.Allocate(1, 1))) << "full to the last byte";
    BlockArena other;
    EXPECT_FALSE(IsInside(other, other.Allocate(BlockArena::kFirstBlock + 1, 1)));
    EXPECT_TRUE(IsInside(other, other.Allocate(1, 1)))
        << "one that doesn't fit leaves the room to others";
}

// Pieces of all sizes and alignments: each is aligned, none overlaps another, and what is written stays.
TEST(BlockArena, PiecesAreAlignedAndApart)
{
    struct Piece {
        char* bytes;
        size_t size;
    };
    BlockArena arena;
    std::vector<Piece> pieces;
    for (size_t i = 0; i < 3000; i++) {
        const size_t alignment = size_t{1} << (i % 5);
        const size_t size = i % 100 == 99 ? i * 50 : i % 41;
        char* bytes = static_cast<char*>(arena.Allocate(size, alignment));
        ASSERT_EQ(0u, reinterpret_cast<uintptr_t>(bytes) % alignment) << "piece " << i;
        std::memset(bytes, static_cast<int>(i % 251), size);
        pieces.push_back({bytes, size});
    }
    for (size_t i = 0; i < pieces.size(); i++) {
        const char expected = static_cast<char>(i % 251);
        const auto isExpected = [expected](char byte) { return byte == expected; };
        ASSERT_TRUE(std::all_of(pieces[i].bytes, pieces[i].bytes + pieces[i].size, isExpected))
            << "piece " << i;
    }
}

TEST(BlockArena, SizesBeyondAllMemoryThrowAndLeaveItUsable)
{
    BlockArena arena;
    auto* before = arena.Make<int>(5);
    for (const size_t size :
         {SIZE_MAX, SIZE_MAX - 1, SIZE_MAX - 8, SIZE_MAX - 15, SIZE_MAX / 2, SIZE_MAX / 4 + 1})
        EXPECT_THROW((void)arena.Allocate(size, 8), std::bad_alloc) << size;
    EXPECT_EQ(5, *before);
    EXPECT_EQ(7, *arena.Make<int>(7));
}

TEST(BlockArena, OnlyTheLastPieceIsLengthened)
{
    BlockArena arena;
    char* first = static_cast<char*>(arena.Allocate(10, 1));
    EXPECT_TRUE(arena.Lengthen(first + 10, 5));
    char* second = static_cast<char*>(arena.Allocate(10, 1));
    EXPECT_EQ(first + 15, second) << "behind the lengthened one";
    EXPECT_FALSE(arena.Lengthen(first + 15 - 1, 1)) << "not its end";
    EXPECT_TRUE(arena.Lengthen(second + 10, BlockArena::kFirstBlock - 25))
        << "to the end of the block";
    EXPECT_FALSE(arena.Lengthen(second + BlockArena::kFirstBlock - 15, 1)) << "beyond it";
    EXPECT_FALSE(arena.Lengthen(second + BlockArena::kFirstBlock - 15, SIZE_MAX));
}

}   // namespace
}   // namespace vela
