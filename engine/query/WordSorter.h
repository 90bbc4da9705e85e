#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/query/RadixSort.h"

namespace vela {

// Which part of the keys a sort looks at: a word of a key column.
struct SortStage {
    size_t key = 0;
    size_t word = 0;
};

// SortWords gives the sort keys of items as numbers, 8 bytes at a time: the item that comes first
// has the smaller word at the first stage where two items differ.
class SortWords {
public:
    virtual ~SortWords() = default;

    // Sets the words of the items from begin to end - 1 to those of the stage.
    virtual void SetWords(SortEntry* begin, SortEntry* end, SortStage stage) const = 0;
    // Goes to the next stage at which the items from begin to end - 1, whose words were equal so
    // far, may differ. False: there is none.
    [[nodiscard]] virtual bool GoToNextStage(SortStage* stage, const SortEntry* begin,
                                             const SortEntry* end) const = 0;
};

// Numbers in the order of the keys. -0.0 equals 0.0; not-a-number lands beyond the infinities.
[[nodiscard]] uint64_t IntegerWord(int32_t number);
[[nodiscard]] uint64_t DoubleWord(double number);
// For keys that are byte strings, as string::Compare orders them: the bytes by 8, with zeros behind
// the last, and at the end the length, which tells apart what the zeros made equal.
[[nodiscard]] uint64_t TextWord(std::string_view text, size_t word);
// The word after word in texts of which the longest and the shortest have these lengths. False:
// there is none.
[[nodiscard]] bool GoToNextTextWord(size_t* word, size_t shortest, size_t longest);

// The items from 0 to count - 1 in the order of their words; equal ones in their own order. Each
// word is fetched once for each item that it is needed for, in the order in which the items lie
// then: keys that lie anywhere in memory are visited few times. 32 bytes an item beside the result.
[[nodiscard]] std::vector<uint32_t> SortByWords(uint32_t count, const SortWords& words);

}   // namespace vela
