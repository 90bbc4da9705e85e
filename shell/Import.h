#pragma once

#include <string>

#include "shell/Session.h"

namespace vela::shell {

// Adds the rows of a CSV file, or of a TSV file when its name ends with .tsv or .tab, to a table.
// The file's first line names the columns; a column "_rowid" gives the row ids.
//
// A table that is missing is made, its columns called and typed for what the file holds. For an
// existing one the names are looked up; a column that the file lacks is left out of every row, as
// is one whose field is empty and bare.
//
// All of the file is checked before a row is added: when a line is malformed, has too many or too
// few fields, or a field that its column's type can't hold, the first of these are reported and
// nothing is changed. The rows are committed at once, unless changes were open before: then they
// belong to these. Prints how many rows came and how fast.
//
// False: it failed, which has been reported for where.
[[nodiscard]] bool ImportFile(Session& session, const SourcePlace& where, const std::string& path,
                              const std::string& tableName);

}   // namespace vela::shell
