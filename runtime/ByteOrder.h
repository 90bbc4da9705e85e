#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace vela {

// Big-endian numbers in memory, at any alignment. The caller answers for the room behind the
// pointer.

inline uint32_t LoadBigEndian32(const void* from)
{
    uint32_t number;
    std::memcpy(&number, from, sizeof number);
    return std::endian::native == std::endian::little ? __builtin_bswap32(number) : number;
}

inline uint64_t LoadBigEndian64(const void* from)
{
    uint64_t number;
    std::memcpy(&number, from, sizeof number);
    return std::endian::native == std::endian::little ? __builtin_bswap64(number) : number;
}

inline void StoreBigEndian32(void* to, uint32_t number)
{
    if (std::endian::native == std::endian::little)
        number = __builtin_bswap32(number);
    std::memcpy(to, &number, sizeof number);
}

inline void StoreBigEndian64(void* to, uint64_t number)
{
    if (std::endian::native == std::endian::little)
        number = __builtin_bswap64(number);
    std::memcpy(to, &number, sizeof number);
}

}   // namespace vela
