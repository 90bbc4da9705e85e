#include "engine/query/RadixSort.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>
#include <vector>

namespace vela {

namespace {

// Up to so many entries are sorted by comparing.
constexpr size_t kFew = 48;
// Of the bits that one pass looks at; their counters stay in the nearest cache.
constexpr int kMostBits = 11;

// Entries that are equal in the bits looked at so far.
struct Part {
    size_t begin;
    size_t count;
};

void SortFew(SortEntry* begin, SortEntry* end)
{
    std::sort(begin, end, [](const SortEntry& a, const SortEntry& b) {
        return a.word != b.word ? a.word < b.word : a.item < b.item;
    });
}

uint64_t DifferingBits(const SortEntry* entries, size_t count)
{
    uint64_t bits = 0;
    for (size_t i = 1; i < count; i++)
        bits |= entries[i].word ^ entries[0].word;
    return bits;
}

class RadixSorter {
public:
    RadixSorter(SortEntry* entries, SortEntry* scratch) : mEntries(entries), mScratch(scratch) {}

    void Sort(size_t count)
    {
        Add({0, count});
        while (!mWaiting.empty()) {
            const Part part = mWaiting.back();
            mWaiting.pop_back();
            Split(part);
        }
    }

private:
    void Add(const Part& part)
    {
        if (part.count > kFew)
            mWaiting.push_back(part);
        else
            SortFew(mEntries + part.begin, mEntries + part.begin + part.count);
    }

    // Sorts the part by the first bits in which it differs, and leaves what has more bits to go waiting.
    void Split(const Part& part)
    {
        SortEntry* entries = mEntries + part.begin;
        const uint64_t differing = DifferingBits(entries, part.count);
        if (differing == 0)
            return;
        const auto width = static_cast<int>(std::bit_width(differing));
        const auto countWidth = static_cast<int>(std::bit_width(part.count));
        const int bits = std::min({width, kMostBits, countWidth - 2});
        const int shift = width - bits;
        const size_t mask = (size_t{1} << bits) - 1;
        const auto digitOf = [shift, mask](const SortEntry& entry) {
            return static_cast<size_t>(entry.word >> shift) & mask;
        };
        std::fill_n(mEnds.begin(), mask + 1, size_t{0});
        for (size_t i = 0; i < part.count; i++)
            mEnds[digitOf(entries[i])]++;
        size_t start = 0;
        for (size_t digit = 0; digit <= mask; digit++)
            start += std::exchange(mEnds[digit], start);
        for (size_t i = 0; i < part.count; i++)
            mScratch[mEnds[digitOf(entries[i])]++] = entries[i];
        std::copy_n(mScratch, part.count, entries);
        for (size_t digit = 0; shift > 0 && digit <= mask; digit++) {
            const size_t begin = digit == 0 ? 0 : mEnds[digit - 1];
            if (mEnds[digit] - begin > 1)
                Add({part.begin + begin, mEnds[digit] - begin});
        }
    }

    SortEntry* mEntries;
    SortEntry* mScratch;
    std::vector<Part> mWaiting;
    std::array<size_t, size_t{1} << kMostBits> mEnds{};   // by digit, where its entries end
};

}   // namespace

void RadixSort(SortEntry* entries, size_t count, SortEntry* scratch)
{
    if (count <= kFew)
        SortFew(entries, entries + count);
    else
        RadixSorter(entries, scratch).Sort(count);
}

}   // namespace vela
