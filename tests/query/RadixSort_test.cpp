#include "engine/query/RadixSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace vela::test {

namespace {

// Words that differ in some of their bits only.
std::vector<SortEntry> MakeEntries(std::mt19937_64* random, size_t count, uint64_t bits)
{
    const uint64_t common = (*random)();
    std::vector<SortEntry> entries;
    for (size_t i = 0; i < count; i++)
        entries.push_back(
            {((*random)() & bits) | (common & ~bits), static_cast<uint32_t>(3 * i + 7)});
    return entries;
}

}   // namespace

TEST(RadixSort, SortsByWordAndKeepsTheOrderOfEqualOnes)
{
    std::mt19937_64 random(1);
    for (const size_t count : {0u, 1u, 2u, 47u, 48u, 49u, 50u, 300u, 3000u, 40000u}) {
        for (const uint64_t bits :
             {uint64_t{0}, uint64_t{1}, uint64_t{1} << 63, uint64_t{0x8000000000000001},
              uint64_t{0x7FF}, uint64_t{0xFFF}, uint64_t{0xFFFFF} << 20, UINT64_MAX}) {
            SCOPED_TRACE(testing::Message() << count << " entries, bits " << std::hex << bits);
            std::vector<SortEntry> entries = MakeEntries(&random, count, bits);
            std::vector<SortEntry> expected = entries;
            std::stable_sort(
                expected.begin(), expected.end(),
                [](const SortEntry& a, const SortEntry& b) { return a.word < b.word; });
            std::vector<SortEntry> scratch(count);
            RadixSort(entries.data(), count, scratch.data());
            for (size_t i = 0; i < count; i++) {
                ASSERT_EQ(expected[i].word, entries[i].word) << i;
                ASSERT_EQ(expected[i].item, entries[i].item) << i;
            }
        }
    }
}

TEST(RadixSort, OneFarOffWordDoesNotDisturbTheOthers)
{
    std::vector<SortEntry> entries;
    for (uint32_t i = 0; i < 1000; i++)
        entries.push_back({1000 - i, i});
    entries[500].word = UINT64_MAX;
    std::vector<SortEntry> scratch(entries.size());
    RadixSort(entries.data(), entries.size(), scratch.data());
    EXPECT_EQ(1u, entries[0].word);
    EXPECT_EQ(999u, entries[0].item);
    EXPECT_EQ(1000u, entries[998].word);
    EXPECT_EQ(500u, entries[999].item);
}

}   // namespace vela::test
