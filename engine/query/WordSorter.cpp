#include "engine/query/WordSorter.h"

#include <algorithm>
#include <cstring>

#include "runtime/ByteOrder.h"

namespace vela {

namespace {

constexpr size_t kWordSize = 8;
constexpr size_t kLengthWord = SIZE_MAX;

// Entries whose words at all earlier stages are equal.
struct Run {
    size_t begin;
    size_t end;
    SortStage stage;
};

void SortRun(SortEntry* begin, SortEntry* end, SortStage stage, const SortWords& words)
{
    for (SortEntry* entry = begin; entry < end; entry++)
        entry->word = words.Word(entry->item, stage);
    std::sort(begin, end, [](const SortEntry& a, const SortEntry& b) {
        return a.word != b.word ? a.word < b.word : a.item < b.item;
    });
}

// Adds the runs within a sorted one that have another stage to go.
void AddEqualRuns(const Run& sorted, const std::vector<SortEntry>& entries, const SortWords& words,
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
    std::vector<SortEntry> entries(count);
    for (uint32_t item = 0; item < count; item++)
        entries[item].item = item;
    std::vector<Run> waiting = {{0, count, SortStage()}};
    while (!waiting.empty()) {
        const Run run = waiting.back();
        waiting.pop_back();
        SortRun(entries.data() + run.begin, entries.data() + run.end, run.stage, words);
        AddEqualRuns(run, entries, words, &waiting);
    }
    std::vector<uint32_t> order;
    order.reserve(count);
    for (const SortEntry& entry : entries)
        order.push_back(entry.item);
    return order;
}

}   // namespace vela
