#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vela::shell {

// Which names of tables, columns and indexes statements can say. The dialect knows no quoted
// names: a name is a word.

// Whether name is a word that can be a name: starts with a letter, "_" or "#", goes on without
// the lexer's delimiters, line breaks and quotes, holds none of the bytes that names must not
// have ("." and control characters), and is at most 200 bytes long.
[[nodiscard]] bool IsUsableName(std::string_view name);

// Names made usable: unusable bytes become "_", a name that begins unusably gets "_" in front, an
// empty one becomes "column_" and its number, a name that already stands before it in the list,
// or "_rowid" where reserveRowID is set, gets "_2", "_3" ... behind. Usable, different names stay
// as they are.
[[nodiscard]] std::vector<std::string> UsableNames(const std::vector<std::string>& names,
                                                   bool reserveRowID);

// Whether an expression takes the bare word for something else than a column: a function, a
// literal, FROM, NOT. Such a column has to be called T.name there.
[[nodiscard]] bool NeedsQualifier(std::string_view name);

}   // namespace vela::shell
