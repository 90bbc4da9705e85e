#pragma once

#include <memory>
#include <optional>

#include "engine/query/VelaTempTable.h"
#include "plugin/DatabaseHandle.h"

// One result of a query on its way through the host: the rows, the row it stands on, and where each
// row came from.
//
// It owns its result table, which needs the database no more; the database may be closed and its
// handle may go while the cursor lives. Rows and columns count from 0.
struct dbCursor {
public:
    // Where a result column comes from. The column is known by its id, since its number may change
    // while the cursor is open.
    struct Source {
        bool isComputed = true;   // the rest has no meaning then
        size_t table = 0;         // index in SourceTables()
        uint32_t columnID = 0;
    };

    // handle, which has an open database, gets the status of edits as long as it is there.
    // tableNames and sourceColumns are what VelaSQLQuery tells of the rows' sources; empty when
    // nothing is known.
    dbCursor(dbDatabase* handle, std::unique_ptr<vela::VelaTable> result,
             const vela::SimpleVector<vela::string>& tableNames,
             const vela::SimpleVector<long>& sourceColumns);
    ~dbCursor();
    dbCursor(const dbCursor&) = delete;
    dbCursor& operator=(const dbCursor&) = delete;

    [[nodiscard]] int32_t ColumnCount() const;
    [[nodiscard]] bool HasColumn(int32_t column) const;
    // The column's name; for one without, a text that tells its number.
    [[nodiscard]] vela::string ColumnName(int32_t column) const;
    // The type of a column of a table; of a computed one, that of its value in the first row, when
    // there is one. None for a column that is not there.
    [[nodiscard]] vela::VelaDataType ColumnType(int32_t column) const;

    [[nodiscard]] int32_t RowCount() const;
    // -1 before the first row, RowCount() after the last.
    [[nodiscard]] int32_t CurrentRow() const { return mCurrent; }
    // A row before the first or after the last becomes the one next to it. True when the cursor
    // stands on a row afterwards.
    bool MoveTo(int64_t row);
    [[nodiscard]] bool IsOnRow() const { return mCurrent >= 0 && mCurrent < RowCount(); }
    // A value of the current row. False: there is no such column, no current row, or the row was
    // deleted.
    [[nodiscard]] bool GetValue(int32_t column, vela::VelaValue* value) const;

    // For edits. The database that made the cursor; null when it was closed.
    [[nodiscard]] vela::VelaDatabase* Database() const;
    // That database's handle and its status; null when the handle is gone.
    [[nodiscard]] dbDatabase* Handle() const { return mHandle; }
    [[nodiscard]] vela::VelaStatus* Status() const;
    // The names of the tables of the FROM list, in order.
    [[nodiscard]] const vela::SimpleVector<vela::string>& SourceTables() const
    {
        return mTableNames;
    }
    [[nodiscard]] const Source& SourceOf(int32_t column) const;
    // The rows of the source tables that made the current row; none for a row of groups.
    [[nodiscard]] std::optional<vela::VelaRecSet> SourceRows() const;
    // Whether the cursor stands on a row that was not deleted through it.
    [[nodiscard]] bool IsOnLiveRow() const;
    void NoteCurrentRowDeleted();

    // To be called when a handle's database is closed and when the handle goes.
    static void DatabaseClosed(const dbDatabase* handle);
    static void HandleEnded(const dbDatabase* handle);

private:
    void FindSources(const vela::SimpleVector<long>& sourceColumns);

    // All cursors that are open, of all databases.
    static dbCursor* sFirst;
    dbCursor* mPrevious = nullptr;
    dbCursor* mNext = nullptr;

    std::unique_ptr<vela::VelaTable> mTable;
    vela::VelaTempTable* mResult;   // the same as a table of results; null when it is none
    int32_t mCurrent = -1;
    vela::SimpleVector<uint32_t> mRowIDs;   // kInvalidRowID for deleted rows
    dbDatabase* mHandle;
    bool mDatabaseIsOpen = true;
    vela::SimpleVector<vela::string> mTableNames;
    vela::SimpleVector<Source> mSources;   // one per column
};

namespace vela {

// The record that is registered for cursors.
extern const MOXAdbCursorDefinition kCursorDefinition;

}   // namespace vela
