#pragma once

#include <string_view>

#include "runtime/String.h"

namespace vela {

struct StringChunk;

// StringArena makes strings whose bytes lie side by side in chunks of memory, for results with many short texts: a string
// costs no allocation of its own. The strings are like any others and outlive the arena. A chunk's memory is given back when
// the last string in it goes. A single one kept holds a chunk: kFirstChunk bytes, or as much as all chunks before it, which
// is at most kLargestChunk.
class StringArena {
public:
    static constexpr size_t kFirstChunk = 16384;               // bytes
    static constexpr size_t kLargestChunk = size_t{1} << 22;   // bytes

    StringArena() = default;
    StringArena(const StringArena&) = delete;
    StringArena& operator=(const StringArena&) = delete;
    ~StringArena();

    // A string of these bytes. Long ones get memory of their own.
    [[nodiscard]] string Make(std::string_view text, TextEncoding encoding);

private:
    void StartChunk();

    StringChunk* mChunk = nullptr;
    size_t mUsed = 0;        // bytes of the chunk
    size_t mSize = 0;        // of the chunk
    size_t mAllChunks = 0;   // bytes that were taken so far
};

}   // namespace vela
