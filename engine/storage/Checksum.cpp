#include "engine/storage/Checksum.h"

#include <array>

namespace vela {

namespace {

constexpr uint32_t kPolynomial = 0x82F63B78;
constexpr size_t kSlices = 4;

using Table = std::array<std::array<uint32_t, 256>, kSlices>;

// Table k: what a byte does to the checksum when k more bytes follow it.
constexpr Table MakeTable()
{
    Table table{};
    for (uint32_t byte = 0; byte < 256; byte++) {
        uint32_t sum = byte;
        for (int bit = 0; bit < 8; bit++)
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? kPolynomial : 0);
        table[0][byte] = sum;
    }
    for (size_t slice = 1; slice < kSlices; slice++)
        for (uint32_t byte = 0; byte < 256; byte++) {
            const uint32_t sum = table[slice - 1][byte];
            table[slice][byte] = (sum >> 8) ^ table[0][sum & 0xFF];
        }
    return table;
}

constexpr Table kTable = MakeTable();

}   // namespace

uint32_t Checksum(uint32_t before, const void* bytes, size_t count)
{
    const unsigned char* from = static_cast<const unsigned char*>(bytes);
    uint32_t sum = ~before;
    for (; count >= kSlices; count -= kSlices, from += kSlices) {
        sum ^= static_cast<uint32_t>(from[0]) | static_cast<uint32_t>(from[1]) << 8 |
               static_cast<uint32_t>(from[2]) << 16 | static_cast<uint32_t>(from[3]) << 24;
        sum = kTable[3][sum & 0xFF] ^ kTable[2][(sum >> 8) & 0xFF] ^ kTable[1][(sum >> 16) & 0xFF] ^
              kTable[0][sum >> 24];
    }
    for (; count > 0; count--, from++)
        sum = (sum >> 8) ^ kTable[0][(sum ^ *from) & 0xFF];
    return ~sum;
}

}   // namespace vela
