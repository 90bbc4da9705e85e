#include "plugin/host/Command.h"
#include "plugin/host/EngineCalls.h"
#include "plugin/host/Session.h"

namespace vela::host {

namespace {

// "as NAME" at the end of a line. Nothing: stops the program.
std::optional<std::string> ReadAs(Session& session, const ProgramLine& line, size_t index)
{
    if (index + 2 == line.tokens.size() && line.tokens[index].Word() == "as")
        return session.ReadName(line, index + 1);
    session.report.Stop("\"as NAME\" is wanted at the end");
    return std::nullopt;
}

// Names a cursor that came from a call; the result is true when one came.
void TakeCursor(Session& session, const std::string& name, CursorObject* cursor)
{
    if (cursor != nullptr)
        session.names.Set(name, static_cast<HostObject*>(cursor));
    session.SetLast(cursor == nullptr ? Value(Nothing()) : Value(true));
}

// The calls that take a text and give a cursor.
using CursorCall = CursorObject* (*)(Host&, const DatabaseObject&, const Value&);

void RunCursorCall(Session& session, const ProgramLine& line, CursorCall call)
{
    size_t index = 2;
    DatabaseObject* database = session.ReadDatabase(line, 1);
    const std::optional<Operand> operand = session.ReadValue(line, &index);
    const std::optional<std::string> name = ReadAs(session, line, index);
    if (database == nullptr || !operand || !name)
        return;
    session.names.Remove(*name);
    TakeCursor(session, *name, call(session.host, *database, operand->value));
}

// select DATABASE SQL as NAME, and so on
void RunSelect(Session& session, const ProgramLine& line)
{
    RunCursorCall(session, line, Select);
}

void RunFields(Session& session, const ProgramLine& line)
{
    RunCursorCall(session, line, FieldSchema);
}

void RunIndexes(Session& session, const ProgramLine& line)
{
    RunCursorCall(session, line, IndexSchema);
}

void RunTables(Session& session, const ProgramLine& line)
{
    DatabaseObject* database = session.ReadDatabase(line, 1);
    const std::optional<std::string> name = ReadAs(session, line, 2);
    if (database == nullptr || !name)
        return;
    session.names.Remove(*name);
    TakeCursor(session, *name, TableSchema(session.host, *database));
}

// execute DATABASE SQL
void RunExecute(Session& session, const ProgramLine& line)
{
    size_t index = 2;
    DatabaseObject* database = session.ReadDatabase(line, 1);
    const std::optional<Operand> sql = session.ReadValue(line, &index);
    if (database != nullptr && sql)
        Execute(session.host, *database, sql->value);
}

// close NAME: a database, which goes on being an object, or a cursor, which is gone then
void RunClose(Session& session, const ProgramLine& line)
{
    const auto name = session.ReadName(line, 1);
    if (!name)
        return;
    const Value* value = session.names.Find(*name);
    auto* const* object = value == nullptr ? nullptr : std::get_if<HostObject*>(value);
    if (object != nullptr && dynamic_cast<CursorObject*>(*object) != nullptr)
        session.names.Remove(*name);
    else if (DatabaseObject* database = session.FindDatabase(*name))
        Close(database);
}

// Takes over what a data-source call says.
void TakeMessage(Session& session, bool succeeded, MOXAstring text)
{
    session.message = Nothing();
    if (text != nullptr)
        session.message = session.host.strings.Take(text);
    if (succeeded && text != nullptr)
        session.host.complaints.Add("a message with a success");
}

// design NAME [silently]
void RunDesign(Session& session, const ProgramLine& line)
{
    const auto name = session.ReadName(line, 1);
    const bool isSilent = line.tokens.size() > 2;
    if (!name)
        return;
    const MOXAdataSourceInterfaceProc run = session.host.registrations.Interface(*name);
    if (run == nullptr) {
        session.report.Fail("there is no data-source interface " + *name);
        return;
    }
    MOXAstring text = nullptr;
    const bool succeeded = run(isSilent ? nullptr : &text) != 0;
    TakeMessage(session, succeeded, text);
    session.SetLast(succeeded);
}

// source NAME KIND VALUE: a data source as if it had been added
void RunSource(Session& session, const ProgramLine& line)
{
    const auto name = session.ReadName(line, 1);
    const auto kind = session.ReadName(line, 2);
    size_t index = 3;
    const std::optional<Operand> data = session.ReadValue(line, &index);
    if (name && kind && data)
        session.host.dataSources[*name] = {*kind, PastedText(data->value)};
}

// open NAME as DATABASE
void RunOpen(Session& session, const ProgramLine& line)
{
    const auto sourceName = session.ReadName(line, 1);
    const auto name = ReadAs(session, line, 2);
    if (!sourceName || !name)
        return;
    const auto source = session.host.dataSources.find(*sourceName);
    if (source == session.host.dataSources.end()) {
        session.report.Fail("there is no data source " + *sourceName);
        return;
    }
    const DataSource& found = source->second;
    const MOXAopenDataSourceProc open = session.host.registrations.SourceKind(found.kind);
    if (open == nullptr) {
        session.report.Fail("nothing opens data sources of the kind " + found.kind);
        return;
    }
    session.names.Remove(*name);
    MOXAstring text = nullptr;
    const MOXAdbDatabase reference =
        open(found.data.data(), static_cast<int32_t>(found.data.size()), &text);
    auto* database = session.host.objects.Find<DatabaseObject>(reference, "returning");
    TakeMessage(session, database != nullptr, text);
    if (database != nullptr)
        session.names.Set(*name, static_cast<HostObject*>(database));
    session.SetLast(database == nullptr ? Value(Nothing()) : Value(true));
}

}   // namespace

const std::vector<Command>& EngineCommands()
{
    static const std::vector<Command> commands = {
        {"execute", 3, 3, RunExecute, "execute DATABASE SQL"},
        {"select", 5, 5, RunSelect, "select DATABASE SQL as CURSOR"},
        {"tables", 4, 4, RunTables, "tables DATABASE as CURSOR"},
        {"fields", 5, 5, RunFields, "fields DATABASE TABLE as CURSOR"},
        {"indexes", 5, 5, RunIndexes, "indexes DATABASE TABLE as CURSOR"},
        {"close", 2, 2, RunClose, "close DATABASE | close CURSOR"},
        {"design", 2, 3, RunDesign, "design INTERFACE [silently]"},
        {"source", 4, 4, RunSource, "source NAME KIND VALUE"},
        {"open", 4, 4, RunOpen, "open SOURCE as DATABASE"},
    };
    return commands;
}

}   // namespace vela::host
