#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vela::bench {

// A figure by name, in bytes.
using MemoryFigure = std::pair<std::string, double>;

// Takes a Vela database of that many items, with one index on them, through its life in a folder
// that is not there yet and is removed in the end, and tells the process's peak memory during each
// stage of it, beside what the process held before. "files" is the size of the database's files
// when it is loaded. Meant for a process that does nothing else.
[[nodiscard]] std::vector<MemoryFigure> MeasureMemory(const std::string& folder,
                                                      uint32_t itemCount);

}   // namespace vela::bench
