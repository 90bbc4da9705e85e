#pragma once

#include <vector>

#include "engine/storage/VelaDatabase.h"
#include "shell/Output.h"

namespace vela::shell {

// Scripts that rebuild tables in another database. What the dialect can't say is told in a
// comment where it would stand.

// The open stored tables without the schema, in the database's order. Good until its next
// rollback or schema change.
[[nodiscard]] std::vector<VelaTrans*> UserTables(VelaDatabase& database);

// CREATE TABLE and CREATE INDEX statements.
void WriteSchemaScript(const std::vector<VelaTrans*>& tables, Output* output);

// The same with all rows, under their row ids, between them, and a COMMIT at the end. Rows
// changed in the open transaction are written as they now read.
void WriteDumpScript(const std::vector<VelaTrans*>& tables, Output* output);

}   // namespace vela::shell
