#include "runtime/UTF8.h"

namespace vela {

namespace {

constexpr DecodedCodePoint kMalformed = {0, 0};

// How a first byte starts a code point of two to four bytes.
struct LeadByte {
    uint32_t mask;    // bits of the first byte that tell the form ...
    uint32_t mark;    // ... and what they are
    uint32_t least;   // smallest code point that needs so many bytes
    size_t size;
};
constexpr LeadByte kLeadBytes[] = {
    {0xE0, 0xC0, 0x80, 2}, {0xF0, 0xE0, 0x800, 3}, {0xF8, 0xF0, 0x10000, 4}};

DecodedCodePoint DecodeForm(std::string_view text, const LeadByte& form)
{
    if (text.size() < form.size)
        return kMalformed;
    uint32_t number = static_cast<unsigned char>(text[0]) & ~form.mask & 0xFFu;
    for (size_t i = 1; i < form.size; i++) {
        const uint32_t byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0) != 0x80)
            return kMalformed;
        number = number << 6 | (byte & 0x3F);
    }
    const bool isSurrogate = number >= 0xD800 && number <= 0xDFFF;
    if (number < form.least || number > 0x10FFFF || isSurrogate)
        return kMalformed;
    return {static_cast<char32_t>(number), form.size};
}

}   // namespace

DecodedCodePoint DecodeUTF8(std::string_view text)
{
    if (text.empty())
        return kMalformed;
    const uint32_t first = static_cast<unsigned char>(text[0]);
    if (first < 0x80)
        return {static_cast<char32_t>(first), 1};
    for (const LeadByte& form : kLeadBytes) {
        if ((first & form.mask) == form.mark)
            return DecodeForm(text, form);
    }
    return kMalformed;
}

size_t EncodeUTF8(char32_t codePoint, char* bytes)
{
    const uint32_t number = static_cast<uint32_t>(codePoint);
    if (number < 0x80) {
        bytes[0] = static_cast<char>(number);
        return 1;
    }
    const size_t size = number < 0x800 ? 2 : number < 0x10000 ? 3 : 4;
    const LeadByte& form = kLeadBytes[size - 2];
    for (size_t i = size - 1; i > 0; i--)
        bytes[i] = static_cast<char>(0x80 | (number >> 6 * (size - 1 - i) & 0x3F));
    bytes[0] = static_cast<char>(form.mark | number >> 6 * (size - 1));
    return size;
}

}   // namespace vela
