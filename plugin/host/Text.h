#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vela::host {

// Bytes with the tag that says how they are to be read. The host never converts a text: it hands
// over and compares bytes and tag.
struct Text {
    std::string bytes;
    uint32_t encoding = 0;

    bool operator==(const Text& other) const = default;
};

constexpr uint32_t kASCII = 0x0600;
constexpr uint32_t kUTF16 = 0x0100;   // two bytes per unit, in the machine's byte order
constexpr uint32_t kUTF8 = 0x08000100;

// The tag that programs call name: "utf8", "utf16", "ascii", "latin1", "macroman", "windows1252"
// and so on (docs/plugin-host.md lists them), or a number such as "0x0201". Nothing for another.
[[nodiscard]] std::optional<uint32_t> EncodingFromName(std::string_view name);
// The reverse; a tag without a name is written as a hexadecimal number.
[[nodiscard]] std::string EncodingName(uint32_t encoding);

// A text as programs write it: latin1"K\xF8benhavn". Plain quotes stand for ASCII and UTF-8.
[[nodiscard]] std::string Quote(const Text& text);
[[nodiscard]] std::string Quote(std::string_view utf8);

// Appends a code point, below 0x110000, as UTF-8 or, for kUTF16, as one or two units.
void AppendCodePoint(uint32_t codePoint, uint32_t encoding, std::string* bytes);

// Reads one code point of UTF-8 from the start of text. Returns its length in bytes; 0 when the
// bytes there are not UTF-8, or text is empty.
[[nodiscard]] size_t ReadUTF8(std::string_view text, uint32_t* codePoint);

}   // namespace vela::host
