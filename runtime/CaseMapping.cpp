#include "runtime/CaseMapping.h"

#include <locale.h>
#include <wctype.h>

#include "runtime/UTF8.h"

namespace vela {

namespace {

// The one locale in which all letters map, made when it is first needed.
locale_t gMappingLocale = nullptr;

locale_t MappingLocale()
{
    if (!gMappingLocale)
        gMappingLocale = newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(nullptr));
    return gMappingLocale;
}

// Runs when the code is unloaded or the process ends, after the destructors of all static objects:
// texts may be mapped in those.
__attribute__((destructor(101))) void FreeMappingLocale()
{
    if (gMappingLocale)
        freelocale(gMappingLocale);
    gMappingLocale = nullptr;
}

char MapASCII(char byte, LetterCase letterCase)
{
    return letterCase == LetterCase::kLower ? ToLowerASCII(byte) : ToUpperASCII(byte);
}

char32_t MapCodePoint(char32_t codePoint, LetterCase letterCase)
{
    if (codePoint < 0x80)
        return static_cast<char32_t>(MapASCII(static_cast<char>(codePoint), letterCase));
    const locale_t locale = MappingLocale();
    if (!locale)
        return codePoint;
    const wint_t letter = static_cast<wint_t>(codePoint);
    const wint_t mapped =
        letterCase == LetterCase::kLower ? towlower_l(letter, locale) : towupper_l(letter, locale);
    return mapped > 0x10FFFF ? codePoint : static_cast<char32_t>(mapped);
}

bool IsASCII(std::string_view text)
{
    unsigned char all = 0;
    for (const char byte : text)
        all = static_cast<unsigned char>(all | static_cast<unsigned char>(byte));
    return all < 0x80;
}

string MapASCIILetters(const string& text, LetterCase letterCase)
{
    const std::string_view bytes = text.View();
    size_t at = 0;
    while (at < bytes.size() && MapASCII(bytes[at], letterCase) == bytes[at])
        at++;
    if (at == bytes.size())
        return text;
    string result = text;
    char* changed = result.MutableBytes();
    for (; at < bytes.size(); at++)
        changed[at] = MapASCII(changed[at], letterCase);
    return result;
}

string MapUTF16(const string& text, LetterCase letterCase)
{
    string result = text;
    for (size_t at = 0; at + 1 < text.length(); at += 2) {
        char16_t unit;
        std::memcpy(&unit, text.CString() + at, sizeof unit);
        if (unit >= 0x80)
            continue;
        const char mapped = MapASCII(static_cast<char>(unit), letterCase);
        if (mapped == static_cast<char>(unit))
            continue;
        unit = static_cast<char16_t>(mapped);
        std::memcpy(result.MutableBytes() + at, &unit, sizeof unit);
    }
    return result;
}

string MapUTF8(const string& text, LetterCase letterCase)
{
    string result("", 0, text.Encoding());
    std::string_view rest = text.View();
    while (!rest.empty()) {
        const DecodedCodePoint letter = DecodeUTF8(rest);
        if (letter.size == 0) {
            result += rest[0];
            rest.remove_prefix(1);
            continue;
        }
        char bytes[4];
        result +=
            std::string_view(bytes, EncodeUTF8(MapCodePoint(letter.codePoint, letterCase), bytes));
        rest.remove_prefix(letter.size);
    }
    return result;
}

}   // namespace

string MapCase(const string& text, LetterCase letterCase)
{
    if (text.Encoding() == kEncodingUTF16)
        return MapUTF16(text, letterCase);
    if (text.Encoding() != kEncodingUTF8 || IsASCII(text.View()))
        return MapASCIILetters(text, letterCase);
    return MapUTF8(text, letterCase);
}

}   // namespace vela
