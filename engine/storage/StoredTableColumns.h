#pragma once

#include <memory>
#include <vector>

#include "engine/storage/ColumnMemory.h"
#include "engine/storage/RecordFormat.h"
#include "engine/storage/RowMap.h"
#include "engine/storage/TableColumns.h"
#include "engine/storage/VTChangedRow.h"

namespace vela {

class VelaTrans;

// StoredTableColumns is the column-wise form of a stored table: the list of its rows, and those columns that were asked
// for, filled in one pass over the record file with the pending changes laid over. The rows are listed by the first pass.
// Later changes are told to it and keep it current; what can't be kept so is dropped and read again when it is next needed.
//
// Columns and the list may be shared. Rows that are added go into what is shared, behind all that others read there; any other
// change is made in a copy.
class StoredTableColumns : public TableColumns {
public:
    // Reads nothing yet. table owns this object.
    explicit StoredTableColumns(VelaTrans* table);
    ~StoredTableColumns() override;

    // Columns are kept as far as memory, which is borrowed, has room for them. Without it there is no limit.
    void SetMemory(ColumnMemory* memory);

    [[nodiscard]] uint32_t RowCount() override
    {
        if (!mRowsKnown)
            ListRows();
        return static_cast<uint32_t>(mRowIDs->size());
    }
    [[nodiscard]] const uint32_t* RowIDs() override
    {
        if (!mRowsKnown)
            ListRows();
        return mRowIDs->data();
    }
    [[nodiscard]] uint32_t RowNumberOf(uint32_t rowID) override;
    [[nodiscard]] const ColumnData* Load(long number) override;
    [[nodiscard]] const ColumnData* Loaded(long number) const override;
    [[nodiscard]] std::shared_ptr<const ColumnData> Share(long number) override;
    [[nodiscard]] std::shared_ptr<const RowIDList> ShareRowIDs() override;
    void Prepare(const std::vector<bool>& numbers) override;
    bool GetValue(uint32_t row, long number, VelaValue* value) override;

    // For whoever has a row id, without making or reading anything: whether the row is known to be there, and its value when
    // the column is in memory. False also when that can't be told quickly.
    [[nodiscard]] bool ListsRow(uint32_t rowID);
    bool GetLoadedValue(uint32_t rowID, long number, VelaValue* value);

    // Takes in what was deleted, and counts the memory anew after many changes; called before the object is handed out.
    void Refresh();
    // What changed, after it did.
    void RowAdded(const VTChangedRow& change);
    void RowUpdated(const VTChangedRow& change);
    void RowDeleted(uint32_t rowID);
    // Takes in what was deleted; before the table forgets its deletions.
    void Settle();
    // All pending changes are in the files now, and no row has moved there.
    void ChangesCommitted();
    // Forgets everything.
    void Drop();

private:
    struct Column {
        std::shared_ptr<ColumnData> data;   // null when it isn't in memory
        uint32_t id = 0;
        uint32_t asked = 0;     // values asked for one by one
        bool refused = false;   // can't be had as ColumnData, as things are
        size_t memory = 0;      // bytes, as counted last
    };

    [[nodiscard]] uint32_t NumberOf(uint32_t columnID) const;
    void ListRows();
    [[nodiscard]] bool FindsRowsQuickly() const
    {
        return mRowsKnown && mDeletedNumbers.empty() && (mAscending || mNumbersKnown);
    }
    void LoadAsked(uint32_t times);
    void LoadColumns(const std::vector<uint32_t>& wanted);
    size_t AppendStoredRows(const std::vector<uint32_t>& numbers);
    [[nodiscard]] std::vector<std::pair<uint32_t, uint32_t>> WantedOf(
        const std::vector<uint32_t>& numbers) const;
    size_t AppendRowsAhead(size_t rows, const std::vector<uint32_t>& numbers);
    size_t AppendInsertedRows(size_t rows, const std::vector<uint32_t>& numbers);
    void AppendInsertedRow(const VTChangedRow& change, const std::vector<uint32_t>& numbers);
    bool AppendFromChange(const VTChangedRow& change, uint32_t number);
    void AppendMissing(uint32_t number);
    void AppendField(uint32_t number, const RecordField& field);
    void Refuse(uint32_t number);
    void CountAllMemory();
    void CountMemory(uint32_t number);
    [[nodiscard]] bool HasRoomFor(uint32_t number, size_t rows);
    void RemoveDeletedRows();
    [[nodiscard]] bool IsLoaded(size_t number) const { return mColumns[number].data != nullptr; }
    // Of a column that is being loaded and has not been refused.
    [[nodiscard]] bool HasFewer(size_t number, size_t rows) const
    {
        return IsLoaded(number) && mColumns[number].data->Count() < rows;
    }

    VelaTrans* mTable;
    ColumnMemory* mMemory = nullptr;
    bool mRowsKnown = false;
    bool mListing = false;                // the pass that is under way lists the rows
    std::shared_ptr<RowIDList> mRowIDs;   // null while the rows are not known
    bool mAscending = true;               // mRowIDs
    RowMap<uint32_t> mNumbers;            // row id to number, when they don't ascend
    bool mNumbersKnown = false;
    uint32_t mLastNumber = 0;   // what RowNumberOf found last
    std::vector<uint32_t> mDeletedNumbers;
    std::vector<Column> mColumns;   // by column number, 0 unused
    size_t mUncounted = 0;          // bytes of changes since the memory was counted
};

}   // namespace vela
