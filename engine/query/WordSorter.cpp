#include "engine/query/WordSorter.h"

#include <algorithm>
#include <cstring>

#include "runtime/ByteOrder.h"
#include "runtime/LargeMemory.h"

namespace vela {

namespace {

constexpr size_t kWordSize = 8;
constexpr size_t kLengthWord = SIZE_MAX;
constexpr uint64_t kSignBit = uint64_t{1} << 63;

// Entries whose words at all earlier stages are equal.
struct Run {
    size_t begin;
    size_t end;
    SortStage stage;
};

// Adds the runs within a sorted one that have another stage to go.
void AddEqualRuns(const Run& sorted, const LargeVector<SortEntry>& entries, const SortWords& words,
                  std::vector<Run>* waiting)
{
    for (size_t begin = sorted.begin; begin < sorted.end;) {
        size_t end = begin + 1;
        while (end < sorted.end && entries[end].word == entries[begin].word)
            end++;
        SortStage stage = sorted.stage;
        if (end - begin > 1 &&
            words.GoToNextStage(&stage, entries.data() + begin, entries.data() + end))
            waiting->push_back({begin, end, stage});
        begin = end;
    }
}

}   // namespace

// The sign bit would otherwise put the negative numbers last.
uint64_t IntegerWord(int32_t number)
{
    return static_cast<uint32_t>(number) ^ 0x80000000u;
}

// The bits of a double order like the number once negative ones are complemented. Adding 0.0 makes
// -0.0 the 0.0 that it equals.
uint64_t DoubleWord(double number)
{
    const double normal = number + 0.0;
    uint64_t bits;
    std::memcpy(&bits, &normal, sizeof bits);
    return (bits & kSignBit) != 0 ? ~bits : bits | kSignBit;
}

uint64_t TextWord(std::string_view text, size_t word)
{
    if (word == kLengthWord)
        return text.size();
    const size_t start = word * kWordSize;
    if (start >= text.size())
        return 0;
    char bytes[kWordSize] = {};
    std::memcpy(bytes, text.data() + start, std::min(kWordSize, text.size() - start));
    return LoadBigEndian64(bytes);
}

bool GoToNextTextWord(size_t* word, size_t shortest, size_t longest)
{
    if (*word == kLengthWord)
        return false;
    if (longest > (*word + 1) * kWordSize) {
        ++*word;
        return true;
    }
    *word = kLengthWord;
    return shortest != longest;
}

std::vector<uint32_t> SortByWords(uint32_t count, const SortWords& words)
{
    LargeVector<SortEntry> entries(count);
    LargeVector<SortEntry> scratch(count);
    for (uint32_t item = 0; item < count; item++)
        entries[item].item = item;
    std::vector<Run> waiting = {{0, count, SortStage()}};
    while (!waiting.empty()) {
        const Run run = waiting.back();
        waiting.pop_back();
        words.SetWords(entries.data() + run.begin, entries.data() + run.end, run.stage);
        RadixSort(entries.data() + run.begin, run.end - run.begin, scratch.data());
        AddEqualRuns(run, entries, words, &waiting);
    }
    std::vector<uint32_t> order;
    order.reserve(count);
    for (const SortEntry& entry : entries)
        order.push_back(entry.item);
    return order;
}

}   // namespace vela
