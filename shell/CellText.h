#pragma once

#include <string>
#include <string_view>

#include "engine/core/VelaValue.h"

namespace vela::shell {

// A text's bytes for people and programs, who read UTF-8. A text stored in another encoding is
// converted, when nothing is lost by that; a text tagged UTF-8 or ASCII, or with a tag that
// nobody knows, has its bytes as they are.
struct Utf8Text {
    string text;
    bool isValid;   // the bytes are UTF-8
};
[[nodiscard]] Utf8Text TextAsUtf8(const string& text);

// The stored text of a text-backed value. A Binary is never valid text.
[[nodiscard]] Utf8Text TextAsUtf8(const VelaValue& value);

// A value as a cell of CSV: stored texts as they are, other values as the engine writes them. Not
// for nulls.
[[nodiscard]] string CellText(const VelaValue& value);

// A double so that it can't be taken for an integer: the engine's text, with ".0" behind an
// integral number.
[[nodiscard]] std::string DoubleWithPoint(double number);

// Two lower-case hexadecimal digits for each byte.
[[nodiscard]] std::string HexText(std::string_view bytes);

}   // namespace vela::shell
