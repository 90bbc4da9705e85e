#pragma once

#include "plugin/Cursor.h"

namespace vela {

// Changes of stored rows through the rows of a result. Both run generated statements that pick the
// row by its row id, and leave the outcome in the status of the cursor's database, when that is
// still there. False: nothing was changed.

// Sets columns of the current row to new values, each in the table that it comes from.
[[nodiscard]] bool UpdateCursorRow(const dbCursor& cursor, const MOXAdbChange* changes,
                                   int32_t count);

// Deletes the row that the current row was made from: in the table of the first column that is not
// computed, or the first table when all are. The cursor's row is without values from then on.
[[nodiscard]] bool DeleteCursorRow(dbCursor* cursor);

}   // namespace vela
