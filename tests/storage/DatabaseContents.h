#pragma once

#include <string>
#include <vector>

#include "engine/storage/VelaDatabase.h"

namespace vela {

using Texts = std::vector<std::string>;

// What is to be read in a database: its tables with their columns, defaults, indexes and rows, in order.
[[nodiscard]] Texts Contents(VelaDatabase& database);
// Looks every value of every row up by every index. The first that an index doesn't answer as the record does, for people;
// empty when there is none.
[[nodiscard]] std::string IndexFault(VelaDatabase& database);
// The names of the files that the formats give these tables and indexes, sorted.
[[nodiscard]] Texts DescribedFiles(VelaDatabase& database);

}   // namespace vela
