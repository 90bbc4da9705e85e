#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "engine/storage/VelaDatabase.h"
#include "tests/storage/MemoryFileAccess.h"

namespace vela {

// What the targets that read a damaged database have in common: a good database, and edits to its
// files that an input describes.

using Files = std::map<std::string, std::string>;

// A small database of two tables, t and u, and two indexes, with rows of several types, some of them
// deleted and moved.
[[nodiscard]] const Files& GoodFiles();

// The good files with the edits that the bytes describe, 6 bytes each, 64 at most: which file, what
// to do, where (2 bytes), and 2 bytes to do it with.
[[nodiscard]] Files DamagedFiles(const uint8_t* data, size_t size);

// Reads every value of every table.
void ReadTables(VelaDatabase* database);

}   // namespace vela
