#pragma once

#include <memory>
#include <vector>

#include "engine/storage/AheadRows.h"
#include "engine/storage/RowMap.h"
#include "engine/storage/RowSet.h"
#include "engine/storage/StoredTableColumns.h"
#include "engine/storage/VTChangedRow.h"
#include "engine/storage/VelaFileAccess.h"
#include "engine/storage/VelaIndex.h"
#include "engine/storage/VelaStorage.h"
#include "engine/storage/VelaTable.h"

namespace vela {

// VelaTrans is an open stored table with its open transaction: inserts, updates and deletes stay in memory, visible to
// readers of this object, until a commit writes them to the record file or Rollback drops them. Of a large transaction the
// first inserted rows lie in the record file instead, where nobody else sees them; results and files are the same.
//
// Files of a table T: T.dat (records), T.map (row positions), T.<index>.idx for each index. The first 8 bytes of the record
// file's metadata are the last used row id and the last used column id, two unsigned 32-bit numbers in the machine's own byte
// order.
class VelaTrans : public VelaTable {
public:
    enum class Files { kExisting, kNew };

    // Of a table whose files are there; columns are filled in afterwards, by the schema. The files are opened when something
    // of them is first needed, the indexes likewise. With kNew it has none until Commit. files is borrowed for the object's
    // life.
    VelaTrans(VelaFileAccess* files, const string& name, Files state);
    ~VelaTrans() override;

    [[nodiscard]] const string& TableName() const override { return mName; }
    [[nodiscard]] long QtyColumns() const override
    {
        return static_cast<long>(mColumns.size()) + 1;
    }
    [[nodiscard]] const VelaColumnInfo* Column(long number) const override;
    [[nodiscard]] long FindColumnNamed(std::string_view name) const override;
    [[nodiscard]] size_t QtyRows() override;
    void GetRowIDs(SimpleVector<uint32_t>* rowIDs) override;
    bool GetValue(uint32_t rowID, long number, VelaValue* value) override
    {
        return GetValue(rowID, number, value, true);
    }
    // Without useIndexes the answer comes from the pending change or the record alone.
    bool GetValue(uint32_t rowID, long number, VelaValue* value, bool useIndexes);
    uint32_t AddRow(VelaRow& values, bool takeOwnership) override;
    bool UpdateRow(uint32_t rowID, VelaRow& values, bool takeOwnership) override;
    void DeleteRow(uint32_t rowID) override;
    // False when there is an index of that name or no column.
    bool AddIndex(const string& name, const SimpleVector<uint32_t>& columnIDs) override;
    void GetIndexNames(SimpleVector<string>& names) override;
    [[nodiscard]] bool HasRow(uint32_t rowID) override;
    bool FindRowsByIndex(long number, const VelaValue& key,
                         SimpleVector<uint32_t>* rowIDs) override;
    [[nodiscard]] TableColumns* Columns() override;
    // What Columns() keeps in memory counts there, and is limited by it; borrowed.
    void SetColumnMemory(ColumnMemory* memory) { mRows->SetMemory(memory); }
    // Gives the memory of the columns back; they are read again when they are next needed.
    void DropColumns() { mRows->Drop(); }
    [[nodiscard]] VelaTrans* AsStoredTable() override { return this; }

    // The index leaves the open ones; its file goes at Commit, Rollback brings it back. False when there is none.
    bool DropIndex(const string& name);
    // The column ids of an index in key order; empty when there is no such index.
    [[nodiscard]] SimpleVector<uint32_t> IndexColumns(const string& name);
    // Drops every index that has this column.
    void DropIndexesOf(uint32_t columnID);

    // Opens what a commit of the pending changes will need; before the files' commit begins.
    void PrepareCommit();
    // A commit has two phases, over all tables of a database, inside a commit of the files. First each table writes its
    // pending changes, which stay pending. False: something could not be written; *error says what.
    [[nodiscard]] bool WriteCommit(string* error);
    // Then, when the files' commit has succeeded: they are pending no more.
    void FinishCommit();
    // Or when it has failed, here or elsewhere, and the files have gone back.
    void CancelCommit();
    // Drops all pending changes.
    void Rollback();
    // The same for its rows alone.
    void ForgetChanges();
    [[nodiscard]] bool HasChangesToCommit() const;
    // Whether anything at all is pending, created and dropped indexes and missing files included.
    [[nodiscard]] bool IsTouched() const;
    // Whether a row of this id is pending, indexed or stored; a deleted row still counts.
    [[nodiscard]] bool ContainsRow(uint32_t rowID);
    [[nodiscard]] uint32_t NextUnusedRowID();
    [[nodiscard]] uint32_t NextUnusedColumnID();
    // The row id that AddRow handed out last; of a table as it was opened, the last used one.
    [[nodiscard]] uint32_t LastRowID();
    void ForgetLastRowID() { mLastRowID = mLastUsedRowID; }
    // Whether the table was created and not committed since: it has no files yet.
    [[nodiscard]] bool HasNewFiles() const { return mNewFiles; }
    // Coerces the value to the type of the column that its id names; of an unknown id it stays as it is.
    void CoerceToCorrectType(VelaValueWithID* value) const;
    // Removes the table's files.
    bool DeleteStorage();

    // After memory has run out in the middle of anything but a commit: everything that only repeats the files and the pending
    // changes is forgotten, since it may be half-built, and made anew when it is next needed. Pending changes stay. Takes no
    // memory.
    void ForgetCaches();
    // How many times a row was added, updated or deleted.
    [[nodiscard]] uint64_t RowChangeCount() const { return mRowChanges; }

protected:
    friend class StoredTableColumns;
    friend class VelaSchema;

    // An index with what the open transaction knows of it.
    struct OpenIndex {
        std::unique_ptr<VelaIndex> index;
        bool created = false;   // in this transaction: it has no file
        bool loaded = true;     // else its entries are still in its file, unread
        bool forgotten =
            false;   // not loaded, and its file lacks pending changes: the rows have the entries
        bool written = false;   // by the commit that is under way
    };

    void LoadMetadata();
    bool SaveMetadata();

    // Open what is still closed. Everything that looks at stored rows, the last used numbers or the indexes goes through these.
    void NeedFiles()
    {
        if (!mFilesOpened)
            OpenTable();
    }
    // Null when the record file can't be opened, or is still to be made.
    [[nodiscard]] VelaStorage* Storage()
    {
        NeedFiles();
        return mStorage.get();
    }
    [[nodiscard]] SimpleVector<OpenIndex>& Indexes()
    {
        if (!mIndexesOpened)
            OpenIndexes();
        return mIndexes;
    }
    void OpenTable();
    bool OpenFiles();
    void CloseFiles();
    bool MakeNewFiles(string* error);
    void UnmakeNewFiles();
    bool DeleteFiles();
    void OpenFilesAhead();
    bool MakeFilesOfRowsAhead();
    [[nodiscard]] SimpleVector<string> FindIndexFiles() const;
    void OpenIndexes();
    VelaIndex* NeedIndex(OpenIndex& open);
    string IndexFileName(const string& indexName) const;
    OpenIndex* FindIndex(const string& name);

    [[nodiscard]] const VelaColumnInfo* FindColumn(uint32_t columnID) const;
    // A row with some of its values coerced, and these values.
    struct CoercedRow {
        VelaRow values;
        std::vector<std::unique_ptr<VelaValueWithID>> copies;
    };
    const VelaRow& CoerceRow(const VelaRow& values, CoercedRow* room) const;
    uint32_t AddCoercedRow(const VelaRow& values);
    void ChangeRow(uint32_t rowID, const VelaRow& values, const std::vector<bool>& touched);

    void AddRowToIndices(uint32_t rowID);
    [[nodiscard]] SimpleVector<VelaValue> KeyOf(const VelaIndex& index, uint32_t rowID);
    // Whether no row of this id was there at the last commit, as can be told without loading the map.
    [[nodiscard]] bool IsNewRow(uint32_t rowID)
    {
        return rowID > mStoredLastRowID && mStorage && mStorage->IsNewest(rowID);
    }
    void AddRowToIndex(uint32_t rowID, size_t indexNumber);
    void RemoveRowFromIndex(uint32_t rowID, size_t indexNumber);
    void FillIndex(VelaIndex* index);
    void GetKeyValues(long number, const std::vector<uint32_t>& rows, StringArena* texts,
                      VelaValue* values, size_t step);
    [[nodiscard]] VelaDataType NullTypeOf(long number) const;
    [[nodiscard]] SimpleVector<VelaValue> DefaultsOf(const VelaIndex& index) const;
    bool WriteIndexFiles(string* error);
    bool WriteIndexFile(OpenIndex& open, string* reason);
    bool DeleteDroppedIndexFiles(string* error);
    void FinishIndexes();
    void CancelIndexes();

    [[nodiscard]] uint32_t FreeRowID();
    [[nodiscard]] bool IsInserted(uint32_t rowID) const;
    bool ReadRecord(uint32_t rowID);
    bool ReadRowAhead(uint32_t rowID);
    [[nodiscard]] std::string_view CachedBody() const
    {
        return {mCachedBody.data(), mCachedBody.size()};
    }
    bool GetIndexedValue(uint32_t rowID, const VelaColumnInfo& column, VelaValue* value);
    bool WriteRecords();
    bool WriteChanges();
    bool WriteChange(const VTChangedRow& change);
    bool AddRowAhead(size_t number);
    bool WriteInsert(const VTChangedRow& change);
    bool ReserveRoom();
    bool FailCommit(string* error);
    void DropChange(const VTChangedRow& change);
    void WriteRowsAhead();
    bool LetSafeRowsGo();
    static std::string_view StoredBody(const VTChangedRow& change, std::vector<char>* room);
    [[nodiscard]] bool IsAhead(uint32_t rowID) const;
    bool TakeRowsBack();
    void ForgetRowsAhead();
    [[nodiscard]] uint64_t TableOrderOf(uint32_t rowID);

    VelaFileAccess* mFiles;
    string mName;
    SimpleVector<VelaColumnInfo> mColumns;   // without column 0
    uint32_t mLastRowID = 0;                 // the last one that AddRow handed out
    uint32_t mLastUsedRowID = 0;
    uint32_t mStoredLastRowID = 0;   // as the last commit has left it
    uint32_t mLastUsedColumnID = 0;

    std::unique_ptr<RandomAccessMechanism> mRecordStream;
    std::unique_ptr<RandomAccessMechanism> mMapStream;
    std::unique_ptr<VelaStorage> mStorage;
    bool mNewFiles;
    bool mFilesOpened;       // or there are none
    bool mIndexesOpened;     // their heads
    bool mOpening = false;   // the files, right now
    // Of the commit that is under way: something was written; records have moved, or read otherwise than before.
    bool mWritten = false;
    bool mMoved = false;

    RowArena mChangeMemory;
    // In one of these memories; null for an inserted row without nulls whose record is ahead, and safe there. The list keeps the
    // order in which rows were first changed.
    RowMap<VTChangedRow*> mChangedRows;
    AheadRows mAhead;            // the first of mChangedRows
    RowArena mMemoryOfUnsafe;    // of those that are not safe yet
    RowArena mMemoryOfNulls;     // of the safe ones that have nulls
    bool mAheadIsLost = false;   // safe ones could not be read
    RowSet mDeletedRows;
    SimpleVector<OpenIndex> mIndexes;
    SimpleVector<OpenIndex> mDroppedIndexes;   // in this transaction

    uint64_t mRowChanges = 0;
    uint32_t mCachedRowID =
        kInvalidRowID;   // the row whose record was read last, as far as that could be read
    std::vector<char> mCachedBody;
    std::unique_ptr<StoredTableColumns> mRows;
};

}   // namespace vela
