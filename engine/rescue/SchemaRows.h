#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "engine/core/VelaValue.h"
#include "engine/rescue/RescueWatch.h"
#include "engine/storage/VelaFileAccess.h"

namespace vela {

// One row of _schema: a column of a table, as its record describes it.
struct SchemaRow {
    bool live =
        false;   // else deleted: what was described before a change, or a column that was dropped
    uint32_t rowID = 0;
    int64_t position = 0;   // of the record
    string table;
    uint32_t columnID = 0;
    string name;
    VelaDataType type = kTypeNone;   // None: the record has no type code that is one
    int32_t length = 0;
    bool notNull = true;
    string defaultText;
    bool hasDefault = false;   // a default text, perhaps an empty one
    bool isComplete = false;   // table, column id, name and type are there, each of its kind
};

// SchemaRows is what can be read of the record file of _schema.
struct SchemaRows {
    std::vector<SchemaRow> rows;   // in file order; of several live ones under one row id the last
    bool isWhole = false;          // the file is there, and no byte of it was passed over
    std::vector<std::string>
        tables;   // with live rows, in order of first appearance, without _schema

    std::map<std::string, std::vector<SchemaRow>> columns;   // the live rows by table, in order

    std::map<std::string, std::set<uint32_t>>
        onceDescribed;   // column ids of deleted rows by table

    // Whether a deleted row describes the column: it was dropped, or its row changed later.
    [[nodiscard]] bool WasDescribed(const std::string& table, uint32_t columnID) const;
    // The live columns of a table, in order; none of a table that has no rows.
    [[nodiscard]] const std::vector<SchemaRow>& ColumnsOf(const std::string& table) const;
};
[[nodiscard]] SchemaRows ReadSchemaRows(VelaFileAccess* files, RescueWatch* watch);

// What a row reads where its record lacks the column.
[[nodiscard]] VelaValue DefaultOf(const SchemaRow& column);

}   // namespace vela
