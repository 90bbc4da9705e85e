#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vela {

// One code point of UTF-8 text.
struct DecodedCodePoint {
    char32_t codePoint;
    size_t size;   // bytes it takes; 0: the text is empty or starts with something malformed
};

// The code point at the start of text. Over-long forms, surrogates and numbers above U+10FFFF are
// not well-formed.
[[nodiscard]] DecodedCodePoint DecodeUTF8(std::string_view text);

// Writes codePoint, which must not be above U+10FFFF, to bytes, which has room for four. Returns
// how many it wrote.
size_t EncodeUTF8(char32_t codePoint, char* bytes);

}   // namespace vela
