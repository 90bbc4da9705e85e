// What the host calls on its cursors, and the record that tells it.

#include "plugin/ColumnValue.h"
#include "plugin/Cursor.h"
#include "plugin/CursorEdit.h"
#include "plugin/Door.h"
#include "plugin/HostText.h"
#include "plugin/SessionSentry.h"

namespace vela {

namespace {

void VelaCursorClose(dbCursor* cursor)
{
    delete cursor;
}

int32_t VelaCursorColumnCount(dbCursor* cursor)
{
    return cursor ? cursor->ColumnCount() : 0;
}

MOXAstring VelaCursorColumnName(dbCursor* cursor, int32_t column)
{
    if (!cursor || !cursor->HasColumn(column))
        return nullptr;
    return Door(cursor->Handle(), MOXAstring(),
                [&] { return TextToHost(cursor->ColumnName(column)); });
}

int32_t VelaCursorColumnType(dbCursor* cursor, int32_t column)
{
    if (!cursor)
        return kTypeNone;
    return Door(cursor->Handle(), int32_t{kTypeNone},
                [&] { return static_cast<int32_t>(cursor->ColumnType(column)); });
}

MOXAbool VelaCursorColumnValue(dbCursor* cursor, int32_t column, MOXAdbValue* value)
{
    if (!value)
        return 0;
    *value = MOXAdbValue();
    value->isNull = 1;
    if (!cursor)
        return 0;
    const auto get = [&] { return GetColumnValue(*cursor, column, value); };
    return Door(cursor->Handle(), false, get) ? 1 : 0;
}

int32_t VelaCursorRowCount(dbCursor* cursor)
{
    return cursor ? cursor->RowCount() : 0;
}

MOXAbool MoveTo(dbCursor* cursor, int64_t row)
{
    return cursor && cursor->MoveTo(row) ? 1 : 0;
}

MOXAbool VelaCursorFirst(dbCursor* cursor)
{
    return MoveTo(cursor, 0);
}

MOXAbool VelaCursorNext(dbCursor* cursor)
{
    return MoveTo(cursor, cursor ? int64_t{cursor->CurrentRow()} + 1 : 0);
}

MOXAbool VelaCursorPrevious(dbCursor* cursor)
{
    return MoveTo(cursor, cursor ? int64_t{cursor->CurrentRow()} - 1 : 0);
}

MOXAbool VelaCursorLast(dbCursor* cursor)
{
    return MoveTo(cursor, cursor ? int64_t{cursor->RowCount()} - 1 : 0);
}

MOXAbool VelaCursorMove(dbCursor* cursor, int32_t row)
{
    return MoveTo(cursor, row);
}

int32_t VelaCursorCurrentRow(dbCursor* cursor)
{
    return cursor ? cursor->CurrentRow() : -1;
}

// A result without rows has its end before its first row too.
MOXAbool VelaCursorAtEnd(dbCursor* cursor)
{
    return !cursor || cursor->RowCount() == 0 || cursor->CurrentRow() == cursor->RowCount() ? 1 : 0;
}

MOXAbool VelaCursorDelete(dbCursor* cursor)
{
    if (!cursor)
        return 0;
    const SessionSentry sentry;
    return Door(cursor->Handle(), false, [&] { return DeleteCursorRow(cursor); }) ? 1 : 0;
}

MOXAbool VelaCursorUpdate(dbCursor* cursor, const MOXAdbChange* changes, int32_t count)
{
    if (!cursor)
        return 0;
    const SessionSentry sentry;
    const auto update = [&] { return UpdateCursorRow(*cursor, changes, count); };
    return Door(cursor->Handle(), false, update) ? 1 : 0;
}

}   // namespace

constinit const MOXAdbCursorDefinition kCursorDefinition = {
    .version = MOXA_INTERFACE_VERSION,
    .reserved = 0,
    .closeCursor = VelaCursorClose,
    .columnCount = VelaCursorColumnCount,
    .columnName = VelaCursorColumnName,
    .columnType = VelaCursorColumnType,
    .columnValue = VelaCursorColumnValue,
    .rowCount = VelaCursorRowCount,
    .firstRow = VelaCursorFirst,
    .nextRow = VelaCursorNext,
    .previousRow = VelaCursorPrevious,
    .lastRow = VelaCursorLast,
    .moveToRow = VelaCursorMove,
    .currentRow = VelaCursorCurrentRow,
    .atEnd = VelaCursorAtEnd,
    .deleteRow = VelaCursorDelete,
    .updateRow = VelaCursorUpdate,
};

}   // namespace vela
