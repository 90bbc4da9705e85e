#pragma once

#include <cstdint>

namespace vela::host {

// Bytes that the process, the plug-in included, has allocated and not freed. Exact, so that a few
// lost bytes per query show; 0 where the allocator can't tell, as under valgrind, which finds what
// is lost in its own way.
[[nodiscard]] int64_t MemoryInUse();

}   // namespace vela::host
