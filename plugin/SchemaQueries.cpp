#include "plugin/SchemaQueries.h"

#include "engine/sql/VelaSQL.h"

namespace vela {

std::unique_ptr<dbCursor> RunQuery(dbDatabase* handle, const string& sql)
{
    SimpleVector<string> tableNames;
    SimpleVector<long> sourceColumns;
    std::unique_ptr<VelaTable> result =
        VelaSQLQuery(sql, *handle->database, &handle->status, &tableNames, nullptr, &sourceColumns);
    if (!result)
        return nullptr;
    return std::make_unique<dbCursor>(handle, std::move(result), tableNames, sourceColumns);
}

std::unique_ptr<dbCursor> QueryTables(dbDatabase* handle)
{
    return RunQuery(handle, "select unique TableName from _schema where TableName <> '_schema'");
}

std::unique_ptr<dbCursor> QueryFields(dbDatabase* handle, const string& tableName)
{
    return RunQuery(handle,
                    "select ColumnName, TypeCode as FieldType, false as IsPrimary, NotNull, Length "
                    "from _schema where TableName='" +
                        tableName + "'");
}

std::unique_ptr<dbCursor> QueryIndexes(dbDatabase* handle, const string& tableName)
{
    const long position = handle->database->FindOpenTable(tableName);
    if (position < 0) {
        Fail(&handle->status, kVETableNotFound, "Error: Table " + tableName + " not found.");
        return nullptr;
    }
    SimpleVector<string> names;
    handle->database->OpenTables()[static_cast<size_t>(position)]->GetIndexNames(names);
    auto result = std::make_unique<VelaTempTable>();
    result->AddColumn("IndexName", kTypeString);
    for (const string& name : names)
        *result->AppendRow(nullptr) = VelaValue::String(name);
    handle->status = VelaStatus();
    return std::make_unique<dbCursor>(handle, std::move(result), SimpleVector<string>(),
                                      SimpleVector<long>());
}

}   // namespace vela
