#include "plugin/CursorEdit.h"

#include <vector>

#include "engine/sql/VelaSQL.h"
#include "plugin/ColumnValue.h"
#include "plugin/SQLText.h"
#include "runtime/NumberText.h"

namespace vela {

namespace {

// One column of a stored table and what it is to become.
struct ColumnChange {
    const VelaColumnInfo* column;
    VelaValue value;
    bool isWritten = false;
};

// All changes of one stored row.
struct RowChange {
    VelaTable* table;
    uint32_t rowID;
    std::vector<ColumnChange> columns;
};

// What an edit calls itself in messages.
const char* const kUpdate = "VelaCursorUpdate";
const char* const kDelete = "VelaCursorDelete";

bool FailEdit(const dbCursor& cursor, const char* edit, const char* reason)
{
    return Fail(cursor.Status(), kVEInvalidParameter, string(edit) + ": " + reason);
}

bool FailRow(const dbCursor& cursor, const char* edit)
{
    return FailEdit(cursor, edit, "invalid cursor row or no DB");
}

// The stored rows behind the current row; false, with the status set, when there are none to edit.
bool FindSourceRows(const dbCursor& cursor, const char* edit, VelaRecSet* rows)
{
    if (!cursor.Database() || !cursor.IsOnLiveRow())
        return FailRow(cursor, edit);
    if (cursor.SourceTables().empty())
        return FailEdit(cursor, edit, "no source tables");
    const std::optional<VelaRecSet> sources = cursor.SourceRows();
    if (!sources)
        return FailEdit(cursor, edit, "no source record set");
    *rows = *sources;
    return true;
}

// The open table of that index in the FROM list, which still has the row.
bool FindSourceTable(const dbCursor& cursor, const char* edit, size_t index, uint32_t rowID,
                     VelaTable** table)
{
    VelaDatabase& database = *cursor.Database();
    const string& name = cursor.SourceTables()[index];
    const long position = database.FindOpenTable(name);
    if (position < 0)
        return Fail(cursor.Status(), kVETableNotFound, "Error: Table " + name + " not found.");
    *table = database.OpenTables()[static_cast<size_t>(position)];
    return (*table)->HasRow(rowID) || FailRow(cursor, edit);
}

char EscapeOf(const VelaDatabase& database)
{
    const string& option = database.EscapeOption();
    return option.empty() ? '\0' : option.CString()[0];
}

// The end of a generated statement. Row ids beyond the signed range are negative Integers in SQL.
string WhereRowID(uint32_t rowID)
{
    return " WHERE _rowid=" + IntegerText(static_cast<int32_t>(rowID));
}

bool Run(const dbCursor& cursor, const string& statement)
{
    VelaStatus status;
    VelaSQLExecute(statement, *cursor.Database(), &status);
    const bool succeeded = status.State() == kVEStateSuccess;
    if (cursor.Status())
        *cursor.Status() = status;
    return succeeded;
}

// ---- update

// Takes one change of the host into the row of the table that its column comes from.
bool AddChange(const dbCursor& cursor, const VelaRecSet& rows, const MOXAdbChange& change,
               std::vector<RowChange>* rowChanges)
{
    if (!cursor.HasColumn(change.column) || cursor.SourceOf(change.column).isComputed)
        return FailEdit(cursor, kUpdate, "no source tables");
    const dbCursor::Source& source = cursor.SourceOf(change.column);
    const uint32_t rowID = rows.RowID(source.table);
    VelaTable* table = nullptr;
    if (!FindSourceTable(cursor, kUpdate, source.table, rowID, &table))
        return false;
    const VelaColumnInfo* column = table->Column(table->FindColumnNumber(source.columnID));
    if (!column)
        return Fail(cursor.Status(), kVEColumnNotFound, string());
    VelaValue value;
    if (!ValueFromHost(change.value, &value))
        return Fail(cursor.Status(), kVEDataException, string());

    for (RowChange& row : *rowChanges) {
        if (row.table == table && row.rowID == rowID) {
            row.columns.push_back({column, value});
            return true;
        }
    }
    rowChanges->push_back({table, rowID, {{column, value}}});
    return true;
}

// Whether a SET list that names the column means this one: a name that two columns have means the
// last of them.
bool CanBeNamed(const VelaTable& table, const VelaColumnInfo* column)
{
    if (!IsPlainName(column->name))
        return false;
    for (long number = table.QtyColumns() - 1; number >= 0; number--) {
        const VelaColumnInfo* other = table.Column(number);
        if (other->name == column->name)
            return other == column;
    }
    return false;
}

// Appends "column=literal" when a statement of that encoding can hold it.
bool AppendAssignment(const VelaTable& table, const ColumnChange& change, char escape,
                      TextEncoding encoding, string* list)
{
    const bool fits =
        !IsTextBacked(change.value.GetType()) || change.value.TextEncodingTag() == encoding;
    string literal;
    if (!fits || !CanBeNamed(table, change.column) ||
        !AppendLiteral(change.value, escape, &literal))
        return false;
    if (!list->empty())
        *list += ',';
    *list += change.column->name.View();
    *list += '=';
    *list += literal.View();
    return true;
}

// Writes all changes that a statement of that encoding can hold.
bool RunUpdate(const dbCursor& cursor, TextEncoding encoding, RowChange* row)
{
    const char escape = EscapeOf(*cursor.Database());
    string list;
    for (ColumnChange& change : row->columns) {
        if (!change.isWritten)
            change.isWritten = AppendAssignment(*row->table, change, escape, encoding, &list);
    }
    if (list.empty())
        return true;
    string statement("UPDATE ", encoding);
    statement += row->table->TableName().View();
    statement += " SET ";
    statement += list.View();
    statement += WhereRowID(row->rowID).View();
    return Run(cursor, statement);
}

// Writes what no statement can hold as a statement would: by handing the values to the table.
void WriteRest(RowChange* row)
{
    std::vector<VelaValueWithID> values;
    values.reserve(row->columns.size());
    VelaRow list;
    for (const ColumnChange& change : row->columns) {
        if (change.isWritten)
            continue;
        values.emplace_back(change.value, change.column->columnID);
        if (change.value.IsNull())
            values.back().SetNull(change.column->Type());
        list.push_back(&values.back());
    }
    if (!list.empty())
        row->table->UpdateRow(row->rowID, list, false);
}

// A text keeps its encoding in a statement of that encoding, so that each has one of its own.
bool WriteRow(const dbCursor& cursor, RowChange* row)
{
    if (IsPlainName(row->table->TableName())) {
        for (const ColumnChange& change : row->columns) {
            if (!change.isWritten && !RunUpdate(cursor, change.value.TextEncodingTag(), row))
                return false;
        }
    }
    WriteRest(row);
    return true;
}

}   // namespace

bool UpdateCursorRow(const dbCursor& cursor, const MOXAdbChange* changes, int32_t count)
{
    VelaRecSet rows;
    if (!FindSourceRows(cursor, kUpdate, &rows))
        return false;
    if (count < 0 || (count > 0 && !changes))
        return FailEdit(cursor, kUpdate, "no source tables");
    std::vector<RowChange> rowChanges;
    for (int32_t i = 0; i < count; i++) {
        if (!AddChange(cursor, rows, changes[i], &rowChanges))
            return false;
    }
    if (cursor.Status())
        *cursor.Status() = VelaStatus();
    for (RowChange& row : rowChanges) {
        if (!WriteRow(cursor, &row))
            return false;
    }
    return true;
}

bool DeleteCursorRow(dbCursor* cursor)
{
    VelaRecSet rows;
    if (!FindSourceRows(*cursor, kDelete, &rows))
        return false;
    size_t source = 0;
    for (int32_t column = cursor->ColumnCount() - 1; column >= 0; column--) {
        if (!cursor->SourceOf(column).isComputed)
            source = cursor->SourceOf(column).table;
    }
    const uint32_t rowID = rows.RowID(source);
    VelaTable* table = nullptr;
    if (!FindSourceTable(*cursor, kDelete, source, rowID, &table))
        return false;
    if (IsPlainName(table->TableName())) {
        if (!Run(*cursor, "DELETE FROM " + table->TableName() + WhereRowID(rowID)))
            return false;
    } else {
        table->DeleteRow(rowID);
        *cursor->Status() = VelaStatus();
    }
    cursor->NoteCurrentRowDeleted();
    return true;
}

}   // namespace vela
