#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "runtime/ByteOrder.h"

namespace vela {

// The first 8 bytes of a text as a number that orders like them, with zeros behind a shorter text.
// Texts that it makes equal must still be compared as a whole.
[[nodiscard]] inline uint64_t TextPrefix(std::string_view text)
{
    char bytes[8] = {};
    std::memcpy(bytes, text.data(), text.size() < 8 ? text.size() : 8);
    return LoadBigEndian64(bytes);
}

}   // namespace vela
