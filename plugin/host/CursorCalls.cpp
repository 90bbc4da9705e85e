#include "plugin/host/CursorCalls.h"

#include "plugin/host/DatabaseValue.h"
#include "plugin/host/Host.h"

namespace vela::host {

namespace {

// What currentRow, rowCount and atEnd must say after a movement with that result.
void CheckPlace(Host& host, const CursorObject& cursor, bool isOnRow)
{
    const int32_t row = cursor.Calls().currentRow(cursor.Cursor());
    const int32_t count = cursor.Calls().rowCount(cursor.Cursor());
    const bool isAtEnd = cursor.Calls().atEnd(cursor.Cursor()) != 0;
    if (row < -1 || row > count || isOnRow != (row >= 0 && row < count) ||
        isAtEnd != (row == count || count == 0))
        host.complaints.Add("a cursor of " + std::to_string(count) + " rows says that it stands " +
                            (isOnRow ? "on row " : "on no row, row ") + std::to_string(row) +
                            (isAtEnd ? ", at its end" : ", not at its end"));
}

MOXAbool CallMovement(const CursorObject& cursor, Movement movement)
{
    const MOXAdbCursorDefinition& calls = cursor.Calls();
    switch (movement) {
        case Movement::kFirst:
            return calls.firstRow(cursor.Cursor());
        case Movement::kNext:
            return calls.nextRow(cursor.Cursor());
        case Movement::kPrevious:
            return calls.previousRow(cursor.Cursor());
        case Movement::kLast:
            return calls.lastRow(cursor.Cursor());
    }
    return 0;
}

}   // namespace

bool Move(Host& host, const CursorObject& cursor, Movement movement)
{
    const bool isOnRow = CallMovement(cursor, movement) != 0;
    CheckPlace(host, cursor, isOnRow);
    return isOnRow;
}

bool MoveTo(Host& host, const CursorObject& cursor, int32_t row)
{
    const bool isOnRow = cursor.Calls().moveToRow(cursor.Cursor(), row) != 0;
    CheckPlace(host, cursor, isOnRow);
    return isOnRow;
}

int32_t ColumnCount(const CursorObject& cursor)
{
    return cursor.Calls().columnCount(cursor.Cursor());
}

std::optional<std::string> ColumnName(Host& host, const CursorObject& cursor, int32_t column)
{
    const MOXAstring name = cursor.Calls().columnName(cursor.Cursor(), column);
    if (name == nullptr)
        return std::nullopt;
    return host.strings.Take(name).bytes;
}

int32_t FindColumn(Host& host, const CursorObject& cursor, const std::string& name)
{
    const int32_t count = ColumnCount(cursor);
    for (int32_t column = 0; column < count; column++)
        if (ColumnName(host, cursor, column) == name)
            return column;
    return -1;
}

Value ColumnValue(Host& host, const CursorObject& cursor, int32_t column)
{
    MOXAdbValue stored = {-1, -1, {-1}};
    if (cursor.Calls().columnValue(cursor.Cursor(), column, &stored) != 0)
        return FromDatabaseValue(host, stored);
    if (stored.type != kMOXATypeNone || stored.isNull != 1)
        host.complaints.Add("a column without a value has stored one");
    return Nothing();
}

std::vector<Value> RowValues(Host& host, const CursorObject& cursor)
{
    std::vector<Value> values;
    const int32_t count = ColumnCount(cursor);
    values.reserve(static_cast<size_t>(count > 0 ? count : 0));
    for (int32_t column = 0; column < count; column++)
        values.push_back(ColumnValue(host, cursor, column));
    return values;
}

}   // namespace vela::host
