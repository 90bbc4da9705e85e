#pragma once

#include <map>
#include <string>
#include <vector>

#include "engine/storage/VelaFileAccess.h"

namespace vela {

// The files of one table, as far as they are there.
struct TableFiles {
    bool hasRecords = false;            // T.dat
    bool hasMap = false;                // T.map
    std::vector<std::string> indexes;   // the I of T.I.idx, sorted
};

// DatabaseFiles sorts the files of a database by the tables that their names name. Whether the
// tables exist is not asked.
struct DatabaseFiles {
    std::map<std::string, TableFiles> tables;
    std::vector<std::string> others;   // names that no file of a table has, sorted
};
[[nodiscard]] DatabaseFiles ListDatabaseFiles(const VelaFileAccess& files);

[[nodiscard]] std::string RecordFileName(const std::string& table);
[[nodiscard]] std::string MapFileName(const std::string& table);
[[nodiscard]] std::string IndexFileName(const std::string& table, const std::string& index);

}   // namespace vela
