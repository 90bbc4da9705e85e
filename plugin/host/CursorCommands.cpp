#include <iostream>

#include "plugin/host/Command.h"
#include "plugin/host/CursorCalls.h"
#include "plugin/host/DatabaseValue.h"
#include "plugin/host/Session.h"

namespace vela::host {

namespace {

void RunMovement(Session& session, const ProgramLine& line, Movement movement)
{
    if (const CursorObject* cursor = session.ReadCursor(line, 1))
        session.SetLast(Move(session.host, *cursor, movement));
}

void RunFirst(Session& session, const ProgramLine& line)
{
    RunMovement(session, line, Movement::kFirst);
}

void RunNext(Session& session, const ProgramLine& line)
{
    RunMovement(session, line, Movement::kNext);
}

void RunPrevious(Session& session, const ProgramLine& line)
{
    RunMovement(session, line, Movement::kPrevious);
}

void RunLast(Session& session, const ProgramLine& line)
{
    RunMovement(session, line, Movement::kLast);
}

// move CURSOR ROW
void RunMove(Session& session, const ProgramLine& line)
{
    const CursorObject* cursor = session.ReadCursor(line, 1);
    const std::optional<int32_t> row = session.ReadNumber(line, 2);
    if (cursor != nullptr && row)
        session.SetLast(MoveTo(session.host, *cursor, *row));
}

// A column by its name or, as it stands, by its number. Nothing, with a failure: no such name.
std::optional<int32_t> ReadColumn(Session& session, const CursorObject& cursor,
                                  const ProgramLine& line, size_t index)
{
    const std::optional<std::string> name = session.ReadName(line, index);
    if (!name)
        return std::nullopt;
    const std::optional<Value> number = line.tokens[index].kind == Token::Kind::kWord
                                            ? ValueFromWord(*name)
                                            : std::optional<Value>();
    if (number && std::holds_alternative<int32_t>(*number))
        return std::get<int32_t>(*number);
    const int32_t column = FindColumn(session.host, cursor, *name);
    if (column >= 0)
        return column;
    session.report.Fail("there is no column " + *name);
    return std::nullopt;
}

// value CURSOR COLUMN
void RunValue(Session& session, const ProgramLine& line)
{
    const CursorObject* cursor = session.ReadCursor(line, 1);
    if (cursor == nullptr)
        return;
    if (const auto column = ReadColumn(session, *cursor, line, 2))
        session.SetLast(ColumnValue(session.host, *cursor, *column));
}

// update CURSOR [COLUMN VALUE ...]
void RunUpdate(Session& session, const ProgramLine& line)
{
    const CursorObject* cursor = session.ReadCursor(line, 1);
    if (cursor == nullptr)
        return;
    RowChanges changes(session.host);
    for (size_t index = 2; index < line.tokens.size();) {
        const auto column = ReadColumn(session, *cursor, line, index++);
        if (!column)
            return;
        const std::optional<Operand> operand = session.ReadValue(line, &index);
        if (!operand)
            return;
        if (!changes.Add(*column, operand->value)) {
            session.report.Fail("no row can hold " + Describe(operand->value));
            return;
        }
    }
    session.SetLast(
        cursor->Calls().updateRow(cursor->Cursor(), changes.Changes(), changes.Count()) != 0);
}

// delete CURSOR
void RunDelete(Session& session, const ProgramLine& line)
{
    if (const CursorObject* cursor = session.ReadCursor(line, 1))
        session.SetLast(cursor->Calls().deleteRow(cursor->Cursor()) != 0);
}

// show CURSOR: all rows, for people. The cursor then stands at its end.
void RunShow(Session& session, const ProgramLine& line)
{
    const CursorObject* cursor = session.ReadCursor(line, 1);
    if (cursor == nullptr)
        return;
    for (int32_t column = 0; column < ColumnCount(*cursor); column++)
        std::cout << (column == 0 ? "" : " | ")
                  << ColumnName(session.host, *cursor, column).value_or("");
    std::cout << '\n';
    for (bool isOnRow = Move(session.host, *cursor, Movement::kFirst); isOnRow;
         isOnRow = Move(session.host, *cursor, Movement::kNext)) {
        std::string row;
        for (const Value& value : RowValues(session.host, *cursor))
            row += (row.empty() ? "" : " | ") + Describe(value);
        std::cout << row << '\n';
    }
}

}   // namespace

const std::vector<Command>& CursorCommands()
{
    static const std::vector<Command> commands = {
        {"first", 2, 2, RunFirst, "first CURSOR"},
        {"next", 2, 2, RunNext, "next CURSOR"},
        {"previous", 2, 2, RunPrevious, "previous CURSOR"},
        {"last", 2, 2, RunLast, "last CURSOR"},
        {"move", 3, 3, RunMove, "move CURSOR ROW"},
        {"value", 3, 3, RunValue, "value CURSOR COLUMN"},
        {"update", 2, kAnyNumber, RunUpdate, "update CURSOR [COLUMN VALUE ...]"},
        {"delete", 2, 2, RunDelete, "delete CURSOR"},
        {"show", 2, 2, RunShow, "show CURSOR"},
    };
    return commands;
}

}   // namespace vela::host
