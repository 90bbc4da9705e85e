#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/storage/VelaTable.h"

namespace vela {

// VelaRecSet is one combination of rows across the tables of a query: one row per table, in the order of the table list;
// kInvalidRowID stands for a table whose row is not chosen yet. It is a view: the rows belong to whoever made it.
//
// A row is named by its row id; inside a running query, for tables that are read through TableColumns, by its row number
// there (see VelaEvalContext).
class VelaRecSet {
public:
    VelaRecSet() = default;
    explicit VelaRecSet(const uint32_t* rows) : mRows(rows) {}

    [[nodiscard]] uint32_t RowID(size_t table) const { return mRows[table]; }
    [[nodiscard]] const uint32_t* Rows() const { return mRows; }

private:
    const uint32_t* mRows = nullptr;
};

// A list of record sets that lie one after another; also a view.
class VelaRecSetGroup {
public:
    VelaRecSetGroup(const uint32_t* rows, size_t count, size_t tables)
        : mRows(rows), mCount(count), mTables(tables)
    {}

    [[nodiscard]] size_t Count() const { return mCount; }
    [[nodiscard]] VelaRecSet At(size_t index) const { return VelaRecSet(mRows + index * mTables); }
    // All rows, record set after record set.
    [[nodiscard]] const uint32_t* Rows() const { return mRows; }
    [[nodiscard]] uint32_t RowID(size_t index, size_t table) const
    {
        return mRows[index * mTables + table];
    }

private:
    const uint32_t* mRows;
    size_t mCount;
    size_t mTables;
};

}   // namespace vela
