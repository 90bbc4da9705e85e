#pragma once

#include <string_view>

#include "runtime/String.h"

namespace vela {

struct StringChunk;

// StringArena makes strings whose bytes lie side by side in chunks of memory, for results with many short texts: a string
// costs no allocation of its own. The strings are like any others and outlive the arena. A chunk's memory is given back when
// the last string in it goes, so that a single one kept holds up to kChunkSize bytes.
class StringArena {
public:
    static constexpr size_t kChunkSize = 16384;   // bytes

    StringArena() = default;
    StringArena(const StringArena&) = delete;
    StringArena& operator=(const StringArena&) = delete;
    ~StringArena();

    // A string of these bytes. Long ones get memory of their own.
    [[nodiscard]] string Make(std::string_view text, TextEncoding encoding);

private:
    void StartChunk();

    StringChunk* mChunk = nullptr;
    size_t mUsed = 0;   // bytes of the chunk
};

}   // namespace vela
