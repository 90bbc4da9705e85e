#pragma once

#include "engine/core/VelaStatus.h"
#include "engine/sql/SQLText.h"
#include "engine/storage/VelaDatabase.h"

namespace vela {

// The checks that several kinds of statement make, with the messages they share. Each returns
// whether the check passed; when it didn't, status, unless null, says why.

// Sets position to that of the open table of exactly that name.
bool FindOpenTable(VelaDatabase& database, const SQLText& name, size_t* position,
                   VelaStatus* status);
// The same for the table itself.
bool FindOpenTable(VelaDatabase& database, const SQLText& name, VelaTable** table,
                   VelaStatus* status);

// The id of the first column of exactly that name, which _rowid is too; -1 when there is none.
// position, when not null, receives its number.
[[nodiscard]] int64_t FindColumnID(const VelaTable& table, std::string_view name, long* position);

// The type that a type name stands for, in any case.
bool TypeCodeFromName(const SQLText& name, VelaDataType* type, VelaStatus* status);

// Refuses the name of a new table, column or index when it could not be part of a file name or
// would be ambiguous in a qualified one: with "/", "." or a control character in it, or longer than
// 200 bytes.
bool CheckNewName(const SQLText& name, VelaStatus* status);

// "Error: Table t not found." and its like. They return false.
bool FailTableNotFound(const SQLText& name, VelaStatus* status);
bool FailTableExists(const SQLText& name, VelaStatus* status);
bool FailTableInTransaction(const SQLText& name, VelaStatus* status);
bool FailColumnNotFound(const SQLText& name, VelaStatus* status);
bool FailColumnExists(const SQLText& name, VelaStatus* status);

}   // namespace vela
