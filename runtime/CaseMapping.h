#pragma once

#include <string_view>

#include "runtime/String.h"

namespace vela {

enum class LetterCase { kLower, kUpper };

// text with its letters in one case, tagged as before.
//
// UTF-8: each code point maps to one code point, in a fixed locale of the C library, whatever
// locale the process has set; where that locale can't be had, ASCII letters alone map. Bytes that
// are not UTF-8 stay as they are. The result may be longer or shorter than the text in bytes.
// UTF-16: units that are ASCII letters. Every other encoding: bytes that are ASCII letters. A text
// without a letter to change comes back shared.
[[nodiscard]] string MapCase(const string& text, LetterCase letterCase);

[[nodiscard]] constexpr char ToLowerASCII(char byte)
{
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
}
[[nodiscard]] constexpr char ToUpperASCII(char byte)
{
    return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - ('a' - 'A')) : byte;
}

}   // namespace vela
