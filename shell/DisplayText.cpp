#include "shell/DisplayText.h"

#include <utf8proc.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace vela::shell {

namespace {

bool IsPlainASCII(char byte)
{
    return byte >= ' ' && byte <= '~';
}

// Line and paragraph separators, and the marks that begin or end an embedding of another direction.
bool LeavesItsPlace(utf8proc_int32_t codePoint)
{
    const utf8proc_category_t category = utf8proc_category(codePoint);
    return category == UTF8PROC_CATEGORY_CC || category == UTF8PROC_CATEGORY_ZL ||
           category == UTF8PROC_CATEGORY_ZP || (codePoint >= 0x202A && codePoint <= 0x202E) ||
           (codePoint >= 0x2066 && codePoint <= 0x2069);
}

std::string EscapedForm(const char* format, unsigned number)
{
    char form[16];
    std::snprintf(form, sizeof form, format, number);
    return form;
}

std::string EscapedCodePoint(utf8proc_int32_t codePoint)
{
    switch (codePoint) {
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            return EscapedForm(codePoint < 0x80 ? "\\x%02x" : "\\u{%x}",
                               static_cast<unsigned>(codePoint));
    }
}

// Bytes in the character at the start of text; 0 when they are not UTF-8.
size_t NextCodePoint(std::string_view text, utf8proc_int32_t* codePoint)
{
    const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
    const size_t longest = text.size() < 4 ? text.size() : 4;
    const utf8proc_ssize_t size =
        utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(longest), codePoint);
    return size > 0 ? static_cast<size_t>(size) : 0;
}

size_t LengthOfASCII(std::string_view text)
{
    size_t length = 0;
    for (uint64_t eight = 0; length + sizeof eight <= text.size(); length += sizeof eight) {
        std::memcpy(&eight, text.data() + length, sizeof eight);
        if ((eight & 0x8080808080808080u) != 0)
            break;
    }
    while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80)
        length++;
    return length;
}

}   // namespace

size_t AppendShown(std::string_view text, std::string* shown, size_t* columns)
{
    if (IsPlainASCII(text[0])) {
        *shown += text[0];
        *columns = 1;
        return 1;
    }
    utf8proc_int32_t codePoint = 0;
    const size_t size = NextCodePoint(text, &codePoint);
    std::string escaped;
    if (size == 0)
        escaped = EscapedForm("\\x%02x", static_cast<unsigned char>(text[0]));
    else if (LeavesItsPlace(codePoint))
        escaped = EscapedCodePoint(codePoint);
    if (!escaped.empty()) {
        *shown += escaped;
        *columns = escaped.size();
        return size == 0 ? 1 : size;
    }
    *shown += text.substr(0, size);
    const int width = utf8proc_charwidth(codePoint);
    *columns = width > 0 ? static_cast<size_t>(width) : 0;
    return size;
}

std::string ShownText(std::string_view text, size_t* columns)
{
    std::string shown;
    shown.reserve(text.size());
    size_t total = 0;
    while (!text.empty()) {
        size_t width = 0;
        text.remove_prefix(AppendShown(text, &shown, &width));
        total += width;
    }
    if (columns)
        *columns = total;
    return shown;
}

bool IsValidUtf8(std::string_view text)
{
    for (;;) {
        text.remove_prefix(LengthOfASCII(text));
        if (text.empty())
            return true;
        utf8proc_int32_t codePoint = 0;
        const size_t size = NextCodePoint(text, &codePoint);
        if (size == 0)
            return false;
        text.remove_prefix(size);
    }
}

}   // namespace vela::shell
