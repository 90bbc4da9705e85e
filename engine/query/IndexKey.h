#pragma once

#include <optional>

#include "engine/storage/VelaTable.h"

namespace vela {

// From a comparison "column = value" to what finds the rows for which it is true without reading
// others. Each is empty where that can't be told for certain; then there may be such rows all the
// same.

// The row id, where column is _rowid. The sides don't matter.
[[nodiscard]] std::optional<uint32_t> RowIDEqualTo(const VelaValue& value);

// The key, of the column's type, that exactly those rows hold. Never one that a null could equal (0
// and "NULL" in the comparison's eyes) when the table may hold nulls.
[[nodiscard]] std::optional<VelaValue> IndexKeyEqualTo(VelaTable* table, long column,
                                                       bool columnIsLeft, const VelaValue& value);

}   // namespace vela
