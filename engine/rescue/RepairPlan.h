#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "engine/rescue/DatabaseFiles.h"
#include "engine/rescue/DatabaseRepair.h"
#include "engine/rescue/SchemaRows.h"

namespace vela {

// RepairPlan is what a first pass over a damaged table finds: which records are to be saved, and
// what the table's columns are. Memory: 12 bytes for each row.
struct RepairPlan {
    std::vector<SchemaRow> columns;    // in order; complete, each id once
    std::vector<uint32_t> positions;   // of the records to save, ascending
    uint32_t lastUsedRowID = 0;
    uint32_t lastUsedColumnID = 0;
    std::map<std::string, std::vector<uint32_t>> indexes;   // the column ids of those to make anew
};

// Plans how a table is saved, and says in *table what can't be.
[[nodiscard]] RepairPlan PlanTableRepair(VelaFileAccess* files, const TableFiles& tableFiles,
                                         const SchemaRows& schema, RescueWatch* watch,
                                         RepairedTable* table);

}   // namespace vela
