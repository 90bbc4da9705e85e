#pragma once

#include <memory>
#include <string>

#include "engine/storage/VelaDatabase.h"
#include "shell/Options.h"

namespace vela::shell {

// Opens the database that options name. With options.create a missing one is made, its schema
// committed at once, so that what a failing first script leaves is an empty database; else a
// folder must be there that holds a schema, and nothing is created. Null: it can't be opened, and
// *problem says why, for people, with a hint where there is one.
[[nodiscard]] std::unique_ptr<VelaDatabase> OpenDatabase(const Options& options,
                                                         std::string* problem);

// Whether anything waits to be committed: rows, dropped tables, created or dropped indexes.
[[nodiscard]] bool HasOpenChanges(VelaDatabase& database);

// An open stored table, the schema included; null when there is none of exactly that name.
[[nodiscard]] VelaTrans* FindStoredTable(VelaDatabase& database, const std::string& name);

}   // namespace vela::shell
