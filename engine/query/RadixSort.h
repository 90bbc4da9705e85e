#pragma once

#include <cstddef>
#include <cstdint>

namespace vela {

// An item and the number that it is sorted by.
struct SortEntry {
    uint64_t word;
    uint32_t item;
};

// Sorts count entries, whose items ascend, by their words; those of equal words keep their order. scratch has room for as
// many. Each pass looks at the first bits in which the entries differ, so that its cost goes with these, not with the
// width of the words.
void RadixSort(SortEntry* entries, size_t count, SortEntry* scratch);

}   // namespace vela
