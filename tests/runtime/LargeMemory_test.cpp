#include "runtime/LargeMemory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <numeric>

namespace vela::test {

TEST(LargeMemory, EveryByteAskedForIsThereWhateverTheSize)
{
    const size_t page = LargeMemory::kPage;
    for (const size_t bytes :
         {size_t{1}, page / 2 - 1, page / 2, page - 1, page, page + 1, page + 4096,
          page + page / 4 - 1, page + page / 4, 3 * page - 1, 3 * page}) {
        SCOPED_TRACE(bytes);
        auto* memory = static_cast<char*>(LargeMemory::Take(bytes));
        auto* other = static_cast<char*>(LargeMemory::Take(bytes));
        std::memset(memory, 'a', bytes);
        std::memset(other, 'b', bytes);
        EXPECT_EQ('a', memory[0]);
        EXPECT_EQ('a', memory[bytes - 1]);
        LargeMemory::GiveBack(memory, bytes);
        EXPECT_EQ('b', other[0]) << "the other one stays";
        EXPECT_EQ('b', other[bytes - 1]);
        LargeMemory::GiveBack(other, bytes);
    }
}

TEST(LargeMemory, WhatIsNotThereThrowsAsOrdinaryMemoryDoes)
{
    EXPECT_THROW((void)LargeMemory::Take(SIZE_MAX - 1), std::bad_alloc);
    EXPECT_THROW((void)LargeAllocator<uint64_t>().allocate(SIZE_MAX / 8 + 1), std::bad_alloc)
        << "whose size in bytes is 0 again";
}

TEST(LargeVector, GrowsAcrossTheLimitAndKeepsItsElements)
{
    LargeVector<uint32_t> numbers;
    const uint32_t count = 3 * LargeMemory::kPage / sizeof(uint32_t);
    for (uint32_t i = 0; i < count; i++)
        numbers.push_back(i);
    LargeVector<uint32_t> copy(numbers);
    numbers.resize(1);
    numbers.shrink_to_fit();
    ASSERT_EQ(count, copy.size());
    for (uint32_t i = 0; i < count; i++)
        ASSERT_EQ(i, copy[i]);
    EXPECT_EQ(0u, numbers[0]);
}

}   // namespace vela::test
