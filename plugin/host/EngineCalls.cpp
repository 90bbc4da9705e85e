#include "plugin/host/EngineCalls.h"

#include <optional>

#include "plugin/host/Host.h"

namespace vela::host {

namespace {

// A text for the time of a call; a value that is no text is passed as no string at all.
class OptionalString {
public:
    OptionalString(Host& host, const Value& value)
    {
        if (const auto* text = std::get_if<Text>(&value))
            mString.emplace(host.strings, *text);
    }
    [[nodiscard]] MOXAstring Get() const { return mString ? mString->Get() : nullptr; }

private:
    std::optional<StringArgument> mString;
};

CursorObject* AsCursor(Host& host, MOXAdbCursor cursor)
{
    return host.objects.Find<CursorObject>(cursor, "returning");
}

}   // namespace

CursorObject* Select(Host& host, const DatabaseObject& database, const Value& sql)
{
    const OptionalString text(host, sql);
    return AsCursor(host, database.Engine()->directSQLSelect(database.Database(), text.Get()));
}

CursorObject* TableSchema(Host& host, const DatabaseObject& database)
{
    return AsCursor(host, database.Engine()->tableSchema(database.Database()));
}

CursorObject* FieldSchema(Host& host, const DatabaseObject& database, const Value& table)
{
    const OptionalString text(host, table);
    return AsCursor(host, database.Engine()->fieldSchema(database.Database(), text.Get()));
}

CursorObject* IndexSchema(Host& host, const DatabaseObject& database, const Value& table)
{
    const OptionalString text(host, table);
    return AsCursor(host, database.Engine()->indexSchema(database.Database(), text.Get()));
}

void Execute(Host& host, const DatabaseObject& database, const Value& sql)
{
    const OptionalString text(host, sql);
    database.Engine()->directSQLExecute(database.Database(), text.Get());
}

void Close(DatabaseObject* database)
{
    database->Engine()->closeDatabase(database->Database());
    database->SetIsConnected(false);
}

int32_t LastErrorCode(const DatabaseObject& database)
{
    return database.Engine()->lastErrorCode(database.Database());
}

Value LastErrorText(Host& host, const DatabaseObject& database)
{
    const MOXAstring text = database.Engine()->lastErrorString(database.Database());
    return text == nullptr ? Value(Nothing()) : Value(host.strings.Take(text));
}

}   // namespace vela::host
