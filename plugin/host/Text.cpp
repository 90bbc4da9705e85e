#include "plugin/host/Text.h"

#include <charconv>
#include <cstdio>
#include <cstring>

namespace vela::host {

namespace {

struct NamedEncoding {
    const char* name;
    uint32_t encoding;
};

constexpr NamedEncoding kNamedEncodings[] = {
    {"utf8", kUTF8},          {"utf16", kUTF16},
    {"ascii", kASCII},        {"latin1", 0x0201},
    {"latin2", 0x0202},       {"latin9", 0x020F},
    {"macroman", 0x0000},     {"macgreek", 0x0006},
    {"maccyrillic", 0x0007},  {"maccentraleurope", 0x001D},
    {"macturkish", 0x0023},   {"maccroatian", 0x0024},
    {"macicelandic", 0x0025}, {"macromanian", 0x0026},
    {"windows1252", 0x0500},  {"windows1250", 0x0501},
    {"windows1251", 0x0502},  {"windows1253", 0x0503},
    {"windows1254", 0x0504},  {"windows1255", 0x0505},
    {"windows1256", 0x0506},  {"windows1257", 0x0507},
    {"windows1258", 0x0508},
};

std::string Hexadecimal(const char* format, unsigned value)
{
    char digits[16];
    std::snprintf(digits, sizeof digits, format, value);
    return digits;
}

void AppendQuotedByte(char byte, std::string* quoted)
{
    switch (byte) {
        case '\n':
            *quoted += "\\n";
            break;
        case '\r':
            *quoted += "\\r";
            break;
        case '\t':
            *quoted += "\\t";
            break;
        case '"':
        case '\\':
        case '{':
            *quoted += '\\';
            *quoted += byte;
            break;
        default:
            if (byte >= 0x20 && byte < 0x7F)
                *quoted += byte;
            else
                *quoted += Hexadecimal("\\x%02X", static_cast<unsigned char>(byte));
    }
}

void AppendQuotedUTF8(std::string_view bytes, std::string* quoted)
{
    while (!bytes.empty()) {
        uint32_t codePoint = 0;
        const size_t length = ReadUTF8(bytes, &codePoint);
        if (length > 1 && codePoint >= 0xA0)
            quoted->append(bytes.substr(0, length));
        else
            for (const char byte : bytes.substr(0, length == 0 ? 1 : length))
                AppendQuotedByte(byte, quoted);
        bytes.remove_prefix(length == 0 ? 1 : length);
    }
}

// One code point of text in the machine's UTF-16. Returns its length in bytes; 0: malformed.
size_t ReadUTF16(std::string_view bytes, uint32_t* codePoint)
{
    uint16_t units[2] = {0, 0};
    if (bytes.size() < 2)
        return 0;
    std::memcpy(units, bytes.data(), bytes.size() < 4 ? 2 : 4);
    *codePoint = units[0];
    if (units[0] < 0xD800 || units[0] > 0xDFFF)
        return 2;
    if (units[0] > 0xDBFF || units[1] < 0xDC00 || units[1] > 0xDFFF)
        return 0;
    *codePoint = 0x10000 + ((units[0] - 0xD800u) << 10) + (units[1] - 0xDC00u);
    return 4;
}

bool ConvertFromUTF16(std::string_view bytes, std::string* utf8)
{
    while (!bytes.empty()) {
        uint32_t codePoint = 0;
        const size_t length = ReadUTF16(bytes, &codePoint);
        if (length == 0)
            return false;
        AppendCodePoint(codePoint, kUTF8, utf8);
        bytes.remove_prefix(length);
    }
    return true;
}

bool IsASCII(std::string_view bytes)
{
    for (const char byte : bytes)
        if (static_cast<unsigned char>(byte) >= 0x80)
            return false;
    return true;
}

}   // namespace

std::optional<uint32_t> EncodingFromName(std::string_view name)
{
    for (const NamedEncoding& named : kNamedEncodings)
        if (name == named.name)
            return named.encoding;
    if (!name.starts_with("0x"))
        return std::nullopt;
    uint32_t encoding = 0;
    const auto [end, error] =
        std::from_chars(name.data() + 2, name.data() + name.size(), encoding, 16);
    if (error != std::errc() || end != name.data() + name.size())
        return std::nullopt;
    return encoding;
}

std::string EncodingName(uint32_t encoding)
{
    for (const NamedEncoding& named : kNamedEncodings)
        if (encoding == named.encoding)
            return named.name;
    return Hexadecimal("0x%04X", encoding);
}

std::string Quote(const Text& text)
{
    std::string quoted;
    std::string utf8;
    if (text.encoding == kUTF8 || (text.encoding == kASCII && IsASCII(text.bytes))) {
        quoted = "\"";
        AppendQuotedUTF8(text.bytes, &quoted);
    } else if (text.encoding == kUTF16 && ConvertFromUTF16(text.bytes, &utf8)) {
        quoted = "utf16\"";
        AppendQuotedUTF8(utf8, &quoted);
    } else {
        quoted = text.encoding == kUTF16 ? "0x0100" : EncodingName(text.encoding);
        quoted += '"';
        for (const char byte : text.bytes)
            AppendQuotedByte(byte, &quoted);
    }
    return quoted + "\"";
}

std::string Quote(std::string_view utf8)
{
    return Quote(Text{std::string(utf8), kUTF8});
}

void AppendCodePoint(uint32_t codePoint, uint32_t encoding, std::string* bytes)
{
    const auto byte = [bytes](uint32_t value) { *bytes += static_cast<char>(value); };
    const auto unit = [bytes](uint32_t value) {
        const auto half = static_cast<uint16_t>(value);
        bytes->append(reinterpret_cast<const char*>(&half), sizeof half);
    };
    if (encoding == kUTF16) {
        if (codePoint >= 0x10000) {
            unit(0xD800 + ((codePoint - 0x10000) >> 10));
            unit(0xDC00 + ((codePoint - 0x10000) & 0x3FF));
        } else {
            unit(codePoint);
        }
    } else if (codePoint < 0x80) {
        byte(codePoint);
    } else if (codePoint < 0x800) {
        byte(0xC0 | codePoint >> 6);
        byte(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        byte(0xE0 | codePoint >> 12);
        byte(0x80 | (codePoint >> 6 & 0x3F));
        byte(0x80 | (codePoint & 0x3F));
    } else {
        byte(0xF0 | codePoint >> 18);
        byte(0x80 | (codePoint >> 12 & 0x3F));
        byte(0x80 | (codePoint >> 6 & 0x3F));
        byte(0x80 | (codePoint & 0x3F));
    }
}

size_t ReadUTF8(std::string_view text, uint32_t* codePoint)
{
    if (text.empty())
        return 0;
    const auto lead = static_cast<unsigned char>(text[0]);
    const size_t length = lead < 0x80 ? 1 : lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (length == 0 || lead > 0xF4 || text.size() < length)
        return 0;
    uint32_t value = length == 1 ? lead : lead & (0x7Fu >> length);
    for (size_t i = 1; i < length; i++) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80)
            return 0;
        value = value << 6 | (next & 0x3F);
    }
    constexpr uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (value < kSmallest[length] || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF))
        return 0;
    *codePoint = value;
    return length;
}

}   // namespace vela::host
