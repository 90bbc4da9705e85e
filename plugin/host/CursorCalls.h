#pragma once

#include <optional>
#include <string>
#include <vector>

#include "plugin/host/HostObject.h"
#include "plugin/host/Value.h"

namespace vela::host {

class Host;

enum class Movement { kFirst, kNext, kPrevious, kLast };

// Moves, and sees that all that the cursor then says of its place agrees. True: it stands on a row.
[[nodiscard]] bool Move(Host& host, const CursorObject& cursor, Movement movement);
[[nodiscard]] bool MoveTo(Host& host, const CursorObject& cursor, int32_t row);

[[nodiscard]] int32_t ColumnCount(const CursorObject& cursor);
// Nothing when there is no such column.
[[nodiscard]] std::optional<std::string> ColumnName(Host& host, const CursorObject& cursor,
                                                    int32_t column);
// The number of the first column of that name; -1: none.
[[nodiscard]] int32_t FindColumn(Host& host, const CursorObject& cursor, const std::string& name);
// A value of the current row; Nothing when there is none.
[[nodiscard]] Value ColumnValue(Host& host, const CursorObject& cursor, int32_t column);
// All values of the current row.
[[nodiscard]] std::vector<Value> RowValues(Host& host, const CursorObject& cursor);

}   // namespace vela::host
