#pragma once

#include <optional>

#include "engine/query/RowList.h"
#include "engine/storage/VelaTable.h"

namespace vela {

// The rows, by row id, for which "column = value" is true (or the other way round), found by row id
// or through an index, without listing or loading the table. Empty when it can't be told that way.
[[nodiscard]] std::optional<RowList> LookUpRows(VelaTable* table, long column, bool columnIsLeft,
                                                const VelaValue& value);

}   // namespace vela
