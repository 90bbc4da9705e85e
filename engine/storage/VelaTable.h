#pragma once

#include <cstdint>
#include <string_view>

#include "engine/core/VelaValueWithID.h"
#include "engine/storage/VelaColumnInfo.h"
#include "runtime/SimpleVector.h"

namespace vela {

class TableColumns;
class VelaTrans;

// No row: also the answer of AddRow when a row was refused.
constexpr uint32_t kInvalidRowID = 0xFFFFFFFF;

// A row on its way between the layers: values, each tagged with the id of its column.
using VelaRow = SimpleVector<VelaValueWithID*>;

// VelaTable is what queries and statements know of a table: columns by number, rows by row id. Stored tables (VelaTrans),
// result tables (VelaTempTable) and the special table _TABLES implement it.
class VelaTable {
public:
    VelaTable() = default;
    VelaTable(const VelaTable&) = delete;
    VelaTable& operator=(const VelaTable&) = delete;
    virtual ~VelaTable() = default;

    [[nodiscard]] virtual const string& TableName() const = 0;
    [[nodiscard]] virtual long QtyColumns() const = 0;
    // The descriptor of a column, owned by the table; null when number is not in 0 .. QtyColumns() - 1.
    [[nodiscard]] virtual const VelaColumnInfo* Column(long number) const = 0;
    // The number of the first column with that id; -1 when there is none.
    [[nodiscard]] virtual long FindColumnNumber(uint32_t columnID) const;
    // The number of the first column of exactly that name; -1 when there is none.
    [[nodiscard]] virtual long FindColumnNamed(std::string_view name) const;
    // May count a changed row twice; the exact set is what GetRowIDs gives.
    [[nodiscard]] virtual size_t QtyRows() = 0;
    // Replaces the list by the row ids in table order.
    virtual void GetRowIDs(SimpleVector<uint32_t>* rowIDs) = 0;
    // False when there is no such row or column, or the row can't be read; value is then unchanged.
    virtual bool GetValue(uint32_t rowID, long number, VelaValue* value) = 0;

    // The row id of the new row, or kInvalidRowID when the table refuses it. With takeOwnership the table takes the values
    // and empties the list, also when it refuses; else it copies them. The defaults refuse.
    virtual uint32_t AddRow(VelaRow& values, bool takeOwnership);
    virtual bool UpdateRow(uint32_t rowID, VelaRow& values, bool takeOwnership);
    virtual void DeleteRow(uint32_t rowID) = 0;
    virtual bool AddIndex(const string& name, const SimpleVector<uint32_t>& columnIDs);
    // Appends the names of the indexes.
    virtual void GetIndexNames(SimpleVector<string>& names);

    // Whether GetRowIDs would list this row; for a stored table without listing them all.
    [[nodiscard]] virtual bool HasRow(uint32_t rowID);
    // Replaces the list by the row ids, in table order, of the rows whose column holds key (same bytes of text, equal
    // number; no nulls), from an index. False when no index serves; then the list is empty. key has the column's type.
    virtual bool FindRowsByIndex(long number, const VelaValue& key, SimpleVector<uint32_t>* rowIDs);

    // The rows column by column, for reading many of them; null when the table has no such form. Owned by the table, good
    // until its next change.
    [[nodiscard]] virtual TableColumns* Columns() { return nullptr; }
    // This table when it is a stored one, else null.
    [[nodiscard]] virtual VelaTrans* AsStoredTable() { return nullptr; }

protected:
    // What a refusing table does with a row it was given to keep.
    static void Discard(VelaRow& values);
};

}   // namespace vela
