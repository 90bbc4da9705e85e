#pragma once

#include <cstdint>

#include "engine/core/VelaValue.h"

namespace vela {

// One column of a table, as the schema describes it.
struct VelaColumnInfo {
    string name;
    VelaValue
        defaultValue;   // has the column's declared type; null of that type when there is no default
    uint32_t columnID = 0;   // unique within the table, never reused; 0 is _rowid

    [[nodiscard]] VelaDataType Type() const { return defaultValue.GetType(); }
};

// The descriptor of column 0 of every stored table: "_rowid", Integer, id 0. One for the whole process.
[[nodiscard]] const VelaColumnInfo& RowIDColumn();

}   // namespace vela
