#include "plugin/DatabaseEngine.h"

#include "plugin/Door.h"
#include "plugin/HostServices.h"
#include "plugin/HostText.h"
#include "plugin/SchemaQueries.h"
#include "plugin/SessionSentry.h"

namespace vela {

namespace {

// The first seven characters of a statement that is a query.
constexpr std::string_view kSelect = "select ";

// The host's object around a cursor, which is the host's to close; null when there is no cursor.
MOXAdbCursor CursorToHost(std::unique_ptr<dbCursor> cursor)
{
    if (!cursor)
        return nullptr;
    const MOXAdbCursor object = MOXAdbCursorFromDBCursor(cursor.get(), &kCursorDefinition);
    if (object)
        static_cast<void>(cursor.release());
    return object;
}

// Runs a query that gives a cursor, with all that an entry from the host needs around it.
template <class Query>
MOXAdbCursor Enter(dbDatabase* handle, Query query)
{
    if (!handle || !handle->database)
        return nullptr;
    const SessionSentry sentry;
    return Door(handle, MOXAdbCursor(), [&] { return CursorToHost(query()); });
}

void VelaDatabaseClose(dbDatabase* handle)
{
    if (!handle)
        return;
    const SessionSentry sentry;
    Door(handle, [&] { CloseDatabase(handle); });
}

MOXAdbCursor VelaGetTableSchema(dbDatabase* handle)
{
    return Enter(handle, [&] { return QueryTables(handle); });
}

MOXAdbCursor VelaGetFieldSchema(dbDatabase* handle, MOXAstring tableName)
{
    return Enter(handle, [&] { return QueryFields(handle, StatementFromHost(tableName)); });
}

MOXAdbCursor VelaDatabaseDirectSQLSelect(dbDatabase* handle, MOXAstring sql)
{
    return Enter(handle, [&]() -> std::unique_ptr<dbCursor> {
        const string statement = StatementFromHost(sql);
        if (!EqualsIgnoringCase(statement.View().substr(0, kSelect.size()), kSelect)) {
            ExecuteStatement(handle, statement);
            return nullptr;
        }
        handle->database->UpdateClock();
        return RunQuery(handle, statement);
    });
}

void VelaDatabaseDirectSQLExecute(dbDatabase* handle, MOXAstring sql)
{
    if (!handle || !handle->database)
        return;
    const SessionSentry sentry;
    Door(handle, [&] { ExecuteStatement(handle, StatementFromHost(sql)); });
}

MOXAdbCursor VelaGetIndexSchema(dbDatabase* handle, MOXAstring tableName)
{
    return Enter(handle, [&] { return QueryIndexes(handle, StatementFromHost(tableName)); });
}

int32_t VelaDatabaseLastErrorCode(dbDatabase* handle)
{
    if (!handle)
        return 0;
    const VelaState state = handle->status.State();
    if (state == kVEStateSuccess || state == kVEStateNoData)
        return 0;
    constexpr size_t kClassSize = 2;
    const std::string_view stateClass(state, kClassSize);
    int32_t code = 0;
    for (const char digit : stateClass) {
        if (digit < '0' || digit > '9')
            break;
        code = code * 10 + (digit - '0');
    }
    return code;
}

MOXAstring VelaDatabaseLastErrorString(dbDatabase* handle)
{
    if (!handle)
        return nullptr;
    MOXAstring text = nullptr;
    const bool told = Door(nullptr, false, [&] {
        const string description = handle->status.Description();
        if (!description.empty())
            text = TextToHost(description + " [" + handle->status.State() + "]");
        return true;
    });
    return told ? text : OutOfMemoryToHost();
}

void VelaDatabaseRelease(dbDatabase* handle)
{
    if (!handle)
        return;
    const SessionSentry sentry;
    Door(nullptr, [&] { EndHandle(handle); });
    delete handle;
}

}   // namespace

constinit const MOXAdbEngineDefinition kDatabaseEngine = {
    .version = MOXA_INTERFACE_VERSION,
    .reserved = 0,
    .fieldTypeNames = "Integer,VarChar,Boolean,Date,Time,Timestamp,Double,Binary",
    .closeDatabase = VelaDatabaseClose,
    .tableSchema = VelaGetTableSchema,
    .fieldSchema = VelaGetFieldSchema,
    .directSQLSelect = VelaDatabaseDirectSQLSelect,
    .directSQLExecute = VelaDatabaseDirectSQLExecute,
    .indexSchema = VelaGetIndexSchema,
    .lastErrorCode = VelaDatabaseLastErrorCode,
    .lastErrorString = VelaDatabaseLastErrorString,
    .releaseDatabase = VelaDatabaseRelease,
};

}   // namespace vela
