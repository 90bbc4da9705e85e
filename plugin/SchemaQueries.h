#pragma once

#include <memory>

#include "plugin/Cursor.h"

namespace vela {

// Queries whose rows go to the host. Each leaves its status in the handle, which has an open
// database, and gives null when there is nothing to walk.

// The rows of a SELECT; also when there are none.
[[nodiscard]] std::unique_ptr<dbCursor> RunQuery(dbDatabase* handle, const string& sql);

// The tables but _schema: TableName.
[[nodiscard]] std::unique_ptr<dbCursor> QueryTables(dbDatabase* handle);
// The columns of a table: ColumnName, FieldType, IsPrimary, NotNull, Length. The name is pasted
// into the statement as it is.
[[nodiscard]] std::unique_ptr<dbCursor> QueryFields(dbDatabase* handle, const string& tableName);
// The indexes of a table: IndexName. Null for a table that is not open.
[[nodiscard]] std::unique_ptr<dbCursor> QueryIndexes(dbDatabase* handle, const string& tableName);

}   // namespace vela
