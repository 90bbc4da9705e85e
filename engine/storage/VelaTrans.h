#pragma once

#include <memory>

#include "engine/storage/RowMap.h"
#include "engine/storage/VTChangedRow.h"
#include "engine/storage/VelaFileAccess.h"
#include "engine/storage/VelaTable.h"

namespace vela {

class StoredTableColumns;
class VelaIndex;
class VelaStorage;

// VelaTrans is an open stored table with its open transaction: inserts, updates and deletes stay in memory, visible to
// readers of this object, until Commit writes them to the record file or Rollback drops them.
//
// Files of a table T: T.dat (records), T.map (row positions), T.<index>.idx for each index. The first 8 bytes of the record
// file's metadata are the last used row id and the last used column id, two unsigned 32-bit numbers in the machine's own byte
// order.
class VelaTrans : public VelaTable {
public:
    enum class Files { kExisting, kNew };

    // Opens the table's files, which must be there; columns are filled in afterwards, by the schema. With kNew it has none
    // until Commit. files is borrowed for the object's life.
    VelaTrans(VelaFileAccess* files, const string& name, Files state);
    ~VelaTrans() override;

    [[nodiscard]] const string& TableName() const override { return mName; }
    [[nodiscard]] long QtyColumns() const override { return static_cast<long>(mColumns.size()) + 1; }
    [[nodiscard]] const VelaColumnInfo* Column(long number) const override;
    [[nodiscard]] size_t QtyRows() override;
    void GetRowIDs(SimpleVector<uint32_t>* rowIDs) override;
    bool GetValue(uint32_t rowID, long number, VelaValue* value) override { return GetValue(rowID, number, value, true); }
    // Without useIndexes the answer comes from the pending change or the record alone.
    bool GetValue(uint32_t rowID, long number, VelaValue* value, bool useIndexes);
    uint32_t AddRow(VelaRow& values, bool takeOwnership) override;
    bool UpdateRow(uint32_t rowID, VelaRow& values, bool takeOwnership) override;
    void DeleteRow(uint32_t rowID) override;
    // False when there is an index of that name or no column.
    bool AddIndex(const string& name, const SimpleVector<uint32_t>& columnIDs) override;
    void GetIndexNames(SimpleVector<string>& names) const override;
    [[nodiscard]] bool HasRow(uint32_t rowID) override;
    bool FindRowsByIndex(long number, const VelaValue& key, SimpleVector<uint32_t>* rowIDs) override;
    [[nodiscard]] TableColumns* Columns() override;
    [[nodiscard]] VelaTrans* AsStoredTable() override { return this; }

    // The index leaves the open ones; its file goes at Commit, Rollback brings it back. False when there is none.
    bool DropIndex(const string& name);
    // The column ids of an index in key order; empty when there is no such index.
    [[nodiscard]] SimpleVector<uint32_t> IndexColumns(const string& name) const;
    // Drops every index that has this column.
    void DropIndexesOf(uint32_t columnID);

    // Writes all pending changes. False: something could not be written, *error says what, and the changes stay pending.
    bool Commit(string* error);
    // Drops all pending changes.
    void Rollback();
    [[nodiscard]] bool HasChangesToCommit() const;
    // Whether anything at all is pending, created and dropped indexes and missing files included.
    [[nodiscard]] bool IsTouched() const;
    // Whether a row of this id is pending, indexed or stored; a deleted row still counts.
    [[nodiscard]] bool ContainsRow(uint32_t rowID);
    [[nodiscard]] uint32_t NextUnusedRowID() const { return mLastUsedRowID + 1; }
    [[nodiscard]] uint32_t NextUnusedColumnID() const { return mLastUsedColumnID + 1; }
    // The row id that AddRow handed out last.
    [[nodiscard]] uint32_t LastRowID() const { return mLastRowID; }
    // Coerces the value to the type of the column that its id names; of an unknown id it stays as it is.
    void CoerceToCorrectType(VelaValueWithID* value) const;
    // Removes the table's files.
    bool DeleteStorage();

protected:
    void LoadMetadata();

    VelaFileAccess* mFiles;
    string mName;
    SimpleVector<VelaColumnInfo> mColumns;
};

}  // namespace vela
