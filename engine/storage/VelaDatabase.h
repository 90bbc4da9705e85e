#pragma once

#include <memory>

#include "engine/core/OutOfMemory.h"
#include "engine/core/VelaStatus.h"
#include "engine/storage/ColumnMemory.h"
#include "engine/storage/VelaFileAccess.h"
#include "engine/storage/VelaSchema.h"
#include "engine/storage/VelaTable.h"

namespace vela {

class CommitFileAccess;

// VelaDatabase is one open database: its schema, its open tables, the tables dropped in the open transaction, the clock
// texts and the file access, all of which it owns.
//
// There is one implicit transaction: every change stays pending until Commit or Rollback. Destroying the object drops what
// is pending; callers that close a database commit first.
//
// Out of memory (OutOfMemory.h) is caught by Enter, around statements, and by the constructor, IsValid, Commit, Rollback,
// and the two operations on schema data; it ends these and nothing else. Everything else lets it pass, for the caller's
// own Enter.
class VelaDatabase {
public:
    // Opens the schema on the files, and with it every table that the schema names. A database without schema rows gets the
    // seven self-describing ones as pending rows. What fails is told by OpenErrorText and IsValid.
    explicit VelaDatabase(std::unique_ptr<VelaFileAccess> files);
    ~VelaDatabase();
    VelaDatabase(const VelaDatabase&) = delete;
    VelaDatabase& operator=(const VelaDatabase&) = delete;

    // Why the files can't be used at all, for people; empty when they can.
    [[nodiscard]] string OpenErrorText() const;
    // True when the schema could be opened and has at least one column and one row.
    [[nodiscard]] bool IsValid();

    // Runs a step that reads or changes the database, a statement above all; every such step from outside goes through
    // here. Steps don't nest. False: memory ran out, and status (null, or good until the step is over) says so. The step
    // stands where that happened: it has changed some rows or none, each of them whole, and what was pending before is
    // pending still, as after any failure. The exception is a change of the schema that was made in part: then
    // everything that was pending is dropped, as Rollback does, and the state is kVETransactionLost.
    template <class Step>
    bool Enter(VelaStatus* status, Step&& step)
    {
        const bool done = CatchOutOfMemory([&] {
            NeedTables();
            std::forward<Step>(step)();
        });
        if (!done)
            EndOutOfMemory(status);
        return done;
    }
    // The same for callers that have caught it by themselves. Takes no memory that it must have.
    void EndOutOfMemory(VelaStatus* status);
    // Around the part of a statement that changes the schema in several steps, which are one change.
    void BeginSchemaChange();
    void EndSchemaChange() { mChangingSchema = false; }

    // Writes every pending change of every table, all or nothing (docs/durability.md). Returns nothing; when it failed
    // (disk full, I/O error, out of memory), LastCommitFailed() says so, nothing is written, the changes stay pending, and Commit can be
    // called again or Rollback.
    void Commit();
    // Drops every pending change: rows, schema, indexes and dropped tables are as after the last commit. Table objects may be
    // replaced: pointers into OpenTables() are void afterwards. When memory runs out they are opened anew when they are next needed.
    void Rollback();
    // Whether a table was dropped or has pending rows. Created and dropped indexes alone don't count.
    [[nodiscard]] bool TransactionInProgress();

    // Whether the last Commit has failed, and why, for people. False before the first Commit.
    [[nodiscard]] bool LastCommitFailed() const { return mCommitFailed; }
    [[nodiscard]] const string& CommitErrorText() const { return mCommitError; }

    // "SCHEMADA" followed by the bytes of the schema's record file; empty, with status set, when that can't be given.
    [[nodiscard]] string GetSchemaData(VelaStatus* status);
    // Replaces the schema by what GetSchemaData once gave. When a check fails, nothing is changed.
    void ReplaceSchemaData(const string& data, VelaStatus* status);

    // How many bytes of columns may be kept in memory, for all tables together; ColumnMemory::DefaultLimit() at first. It
    // counts what is kept between statements, not what a statement needs while it runs.
    void SetColumnMemoryLimit(uint64_t bytes);
    [[nodiscard]] const ColumnMemory& Columns() const { return mColumnMemory; }
    // Before each statement. When the columns of earlier ones have left the last one too little room, they go.
    void StartStatement()
    {
        if (mColumnMemory.WasShort())
            DropColumns();
    }

    // What could not be read of the files so far; it grows while statements read.
    [[nodiscard]] const DamageLog& Damage() const;

    // Takes the local time into the three clock texts: "2026-11-21", "09:05:00", and both with a blank between.
    void UpdateClock();
    [[nodiscard]] const string& CurrentDate() const { return mCurrentDate; }
    [[nodiscard]] const string& CurrentTime() const { return mCurrentTime; }
    [[nodiscard]] const string& CurrentTimestamp() const { return mCurrentTimestamp; }

    // The open tables; element 0 is the schema. Owned by the database, good until Rollback or ReplaceSchemaData, or until
    // memory runs out.
    [[nodiscard]] SimpleVector<VelaTable*>& OpenTables()
    {
        NeedTables();
        return mOpenTables;
    }
    [[nodiscard]] VelaSchema* Schema();
    // The position of the open table of exactly that name; -1 when there is none. First match wins.
    [[nodiscard]] long FindOpenTable(std::string_view name);
    // Takes a table object into the open tables.
    void AddOpenTable(std::unique_ptr<VelaTable> table);
    // Moves an open table to the dropped ones: its files go at the next Commit, Rollback brings it back. Rows that are pending in it
    // are gone.
    void MoveToDropped(size_t position);

    // The row id that the open table of that name handed out last; false when there is none of that name.
    [[nodiscard]] bool LastRowID(const string& tableName, uint32_t* rowID);

    // The option that SET ESCAPE sets: empty, or one byte.
    [[nodiscard]] const string& EscapeOption() const { return mEscapeOption; }
    void SetEscapeOption(const string& value) { mEscapeOption = value; }

    [[nodiscard]] CommitFileAccess* Files() { return mFiles.get(); }

private:
    void CloseTables();
    void DropColumns();
    void OpenSchemaAndTables();
    void NeedTables()
    {
        if (mOpenTables.empty())
            OpenTablesAnew();
    }
    void OpenTablesAnew();
    void RollBackTables();
    void FinishCommit();
    void ReloadAllTables();
    void ReloadTouchedTables();
    bool CommitTables();
    bool BeginCommit();
    bool WriteTables();
    [[nodiscard]] string ReadSchemaData(VelaStatus* status);
    void ReplaceSchema(const string& data, VelaStatus* status);
    bool ReplaceSchemaFile(std::string_view bytes);

    ColumnMemory mColumnMemory;
    SimpleVector<VelaTable*> mOpenTables;
    SimpleVector<VelaTable*> mDroppedTables;
    string mCurrentDate;
    string mCurrentTime;
    string mCurrentTimestamp;
    string mEscapeOption;
    bool mCommitFailed = false;
    string mCommitError;
    string mOutOfMemoryText;   // made while there is memory for it
    bool mChangingSchema = false;
    uint64_t mSchemaRowsBefore = 0;             // row changes of the schema when that began
    std::unique_ptr<CommitFileAccess> mFiles;   // null when memory ran out while opening
};

}   // namespace vela
