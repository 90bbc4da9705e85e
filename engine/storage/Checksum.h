#pragma once

#include <cstddef>
#include <cstdint>

namespace vela {

// CRC-32C (Castagnoli, reflected polynomial 0x82F63B78) of the bytes, carried on from the checksum of those before them;
// 0 to begin with. Of "123456789": 0xE3069283.
[[nodiscard]] uint32_t Checksum(uint32_t before, const void* bytes, size_t count);

}   // namespace vela
