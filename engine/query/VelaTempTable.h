#pragma once

#include <cassert>
#include <memory>
#include <optional>
#include <vector>

#include "engine/query/ColumnRows.h"
#include "engine/query/ValueBlocks.h"
#include "engine/query/VelaRecSet.h"
#include "engine/storage/VelaTable.h"
#include "runtime/LargeMemory.h"

namespace vela {

// VelaTempTable is a table in memory: the result of a SELECT. Its row ids are the row positions, 0
// to QtyRows() - 1. Readers can't change it (UpdateRow refuses, DeleteRow does nothing); whoever
// fills it adds columns first, then rows.
//
// A row may remember its source: the record set, of row ids, that produced it. Values lie in blocks
// that never move, 16 bytes each; a row costs 8 bytes beside them, and 4 for each table of its
// source and 4 for the source itself. Or the rows are those of a ColumnRows, which makes values when
// they are read; the first change of the table then makes rows of its own of them.
class VelaTempTable : public VelaTable {
public:
    // sourceTables: how many tables the source record sets of its rows cover.
    explicit VelaTempTable(size_t sourceTables = 0) : mSourceTables(sourceTables) {}

    // The column's id is its number.
    void AddColumn(const string& name, VelaDataType type);
    // Appends a row of copies of the values, in the order of the list; their column ids are not
    // looked at. The row has as many values as the list. source may be null. The new row's
    // position.
    uint32_t AddRow(VelaRow& values, bool takeOwnership, const VelaRecSet* source);
    // The same without a source.
    uint32_t AddRow(VelaRow& values, bool takeOwnership) override;
    // Appends a row of null values of type None, one per column, to be filled in place; the values
    // stay where they are until the table dies or RemoveLastRow takes the row.
    VelaValue* AppendRow(const VelaRecSet* source);
    // The same for count rows at once, at least one, which lie one after another. sources: the record sets, one for each
    // row; each covers as many tables as the sources of this table do. Null: they have none.
    VelaValue* AppendRows(size_t count, const uint32_t* sources);
    // Makes room for count rows that AppendRows or AppendRow will add, with sources.
    void ReserveRows(size_t count);
    // Takes back the row added last, which must be there, before any Sort.
    void RemoveLastRow();
    // Sorts the rows by the columns, in key order; a direction is +1 (ascending) or -1. Rows equal
    // on all keys keep their order. See TempRowSorter for how values compare. Keys of columns that
    // are not there are passed over.
    void Sort(const SimpleVector<long>& columns, const SimpleVector<long>& directions);
    // Gives the table, which has no rows yet, these ones, with as many values as it has columns.
    void SetRows(std::unique_ptr<ColumnRows> rows);

    // Empty: a result has no name.
    [[nodiscard]] const string& TableName() const override { return mName; }
    [[nodiscard]] long QtyColumns() const override { return static_cast<long>(mColumns.size()); }
    [[nodiscard]] const VelaColumnInfo* Column(long number) const override;
    [[nodiscard]] size_t QtyRows() override { return RowCount(); }
    void GetRowIDs(SimpleVector<uint32_t>* rowIDs) override;
    [[nodiscard]] bool HasRow(uint32_t rowID) override { return rowID < RowCount(); }
    // Throws bad_alloc when there is no memory for a value that is only made now.
    bool GetValue(uint32_t rowID, long number, VelaValue* value) override;
    void DeleteRow(uint32_t) override {}

    // The row ids that produced the row, one per source table; none when the row has no source or
    // there is no such row. Good until the next row is added or the next source asked for.
    [[nodiscard]] std::optional<VelaRecSet> GetSourceRecSet(long row) const;

    [[nodiscard]] size_t RowCount() const
    {
        return mColumnRows ? mColumnRows->Count() : mRows.size();
    }
    // The values of a row that was added here, and how many they are. Good as long as the table. Rows of a ColumnRows
    // have no values that lie anywhere: GetValue gives them.
    [[nodiscard]] const VelaValue* RowValues(size_t row) const
    {
        assert(!mColumnRows);
        return mRows[row];
    }
    [[nodiscard]] size_t RowWidth(size_t row) const
    {
        return mWidths.empty() ? mCommonWidth : mWidths[row];
    }

private:
    void OwnRows()
    {
        if (mColumnRows)
            CopyColumnRows();
    }
    void CopyColumnRows();
    VelaValue* NewRow(size_t width);
    void NoteWidth(size_t width);
    void NoteSource(const VelaRecSet* source);
    void NoteSources(size_t count, const uint32_t* sources);
    void ApplyOrder(const std::vector<uint32_t>& order);

    string mName;
    SimpleVector<VelaColumnInfo> mColumns;
    std::unique_ptr<ColumnRows> mColumnRows;   // all rows, or null

    ValueBlocks mValues;
    LargeVector<VelaValue*> mRows;
    size_t mCommonWidth = 0;   // of every row while mWidths is empty
    std::vector<uint32_t>
        mWidths;   // one per row, from the first row on that differs from those before it

    size_t mSourceTables;
    LargeVector<uint32_t> mSourceRows;     // the sources one after another
    LargeVector<uint32_t> mSourceNumber;   // which of them a row has; empty while no row has one
};

}   // namespace vela
