#pragma once

#include <string>

#include "plugin/host/HostObject.h"
#include "plugin/host/Value.h"

namespace vela::host {

class Host;

// Calls of the engine on a database that has been set up.
//
// A query's cursor, whose reference is the caller's; null when none came.
[[nodiscard]] CursorObject* Select(Host& host, const DatabaseObject& database, const Value& sql);
[[nodiscard]] CursorObject* TableSchema(Host& host, const DatabaseObject& database);
[[nodiscard]] CursorObject* FieldSchema(Host& host, const DatabaseObject& database,
                                        const Value& table);
[[nodiscard]] CursorObject* IndexSchema(Host& host, const DatabaseObject& database,
                                        const Value& table);
void Execute(Host& host, const DatabaseObject& database, const Value& sql);
void Close(DatabaseObject* database);
[[nodiscard]] int32_t LastErrorCode(const DatabaseObject& database);
// A text, or Nothing.
[[nodiscard]] Value LastErrorText(Host& host, const DatabaseObject& database);

}   // namespace vela::host
