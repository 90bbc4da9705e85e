#pragma once

#include "engine/core/VelaValue.h"

namespace vela {

// Values and names as they stand in a generated statement.

// Whether the parser reads the name as one word that stands for itself.
[[nodiscard]] bool IsPlainName(const string& name);

// Appends a literal that gives the value back, byte for byte, under that escape character ('\0':
// none). value is an Integer, a Boolean, a Double, a String or a null. False: nothing is appended;
// no literal stands for the value: nulls (NULL becomes a value of the column's type when it is
// stored), texts with a NUL byte, where a statement ends, not-a-number, infinities and minus zero,
// and any text while the escape character is the quote.
[[nodiscard]] bool AppendLiteral(const VelaValue& value, char escape, string* statement);

}   // namespace vela
