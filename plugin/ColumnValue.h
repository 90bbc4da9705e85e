#pragma once

#include "engine/core/VelaValue.h"
#include "plugin/Cursor.h"

namespace vela {

// Values in the host's form and in the engine's.

// The value of a column in the cursor's current row. A text in it is a new one that the caller
// owns. False: value is unchanged; there is no such column or row, the host could not make the
// text, or the column has a type that is none, which the status then tells.
[[nodiscard]] bool GetColumnValue(const dbCursor& cursor, int32_t column, MOXAdbValue* value);

// What a new value for a column is, in the engine's form: dates and times as texts of type String,
// binary values too, NULL of type None. False: the value's type is none.
[[nodiscard]] bool ValueFromHost(const MOXAdbValue& value, VelaValue* result);

}   // namespace vela
