#include "plugin/host/MemoryInUse.h"

#include <malloc.h>

#include <cstddef>

// Offered by the address sanitizer, whose allocator stands in for the C library's.
extern "C" __attribute__((weak)) size_t
__sanitizer_get_current_allocated_bytes();   // NOLINT(bugprone-reserved-identifier)

namespace vela::host {

int64_t MemoryInUse()
{
    if (__sanitizer_get_current_allocated_bytes != nullptr)
        return static_cast<int64_t>(__sanitizer_get_current_allocated_bytes());
    const struct mallinfo2 info = mallinfo2();
    return static_cast<int64_t>(info.uordblks) + static_cast<int64_t>(info.hblkhd);
}

}   // namespace vela::host
