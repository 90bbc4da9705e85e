#include "engine/storage/ColumnMemory.h"

#include <unistd.h>

#include <algorithm>

namespace vela {

uint64_t ColumnMemory::DefaultLimit()
{
    constexpr uint64_t kUnknownMachine = uint64_t{1} << 30;
    constexpr uint64_t kLargestIn32Bits = uint64_t{512} << 20;
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    const uint64_t machine = pages > 0 && pageSize > 0
                                 ? static_cast<uint64_t>(pages) * static_cast<uint64_t>(pageSize)
                                 : kUnknownMachine;
    return sizeof(void*) == 4 ? std::min(machine / 4, kLargestIn32Bits) : machine / 4;
}

bool ColumnMemory::HasRoomFor(uint64_t bytes)
{
    const bool fits = bytes <= mLimit && mUsed <= mLimit - bytes;
    if (!fits)
        mWasShort = true;
    return fits;
}

}   // namespace vela
