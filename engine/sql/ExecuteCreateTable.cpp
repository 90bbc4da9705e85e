#include "engine/sql/SQLCreateTableNode.h"
#include "engine/sql/StatementChecks.h"
#include "engine/sql/StatementExecutors.h"

namespace vela {

namespace {

bool CheckNames(const SQLCreateTableNode& node, VelaStatus* status)
{
    if (!CheckNewName(node.mTableName, status))
        return false;
    for (const auto& column : node.mColumns) {
        if (!CheckNewName(column->mName, status))
            return false;
    }
    return true;
}

bool FindTypes(const SQLCreateTableNode& node, SimpleVector<VelaDataType>* types,
               VelaStatus* status)
{
    for (const auto& column : node.mColumns) {
        VelaDataType type = kTypeNone;
        if (!TypeCodeFromName(column->mTypeName, &type, status))
            return false;
        types->push_back(type);
    }
    return true;
}

}   // namespace

void ExecuteCreateTable(const SQLCreateTableNode& node, VelaDatabase& database, VelaStatus* status)
{
    if (database.FindOpenTable(node.mTableName.View()) >= 0) {
        FailTableExists(node.mTableName, status);
        return;
    }
    SimpleVector<VelaDataType> types;
    if (!CheckNames(node, status) || !FindTypes(node, &types, status))
        return;

    VelaSchema* schema = database.Schema();
    database.BeginSchemaChange();
    for (size_t i = 0; i < node.mColumns.size(); i++) {
        const uint32_t columnID = static_cast<uint32_t>(i) + 1;
        schema->AddSchemaRow(node.mTableName.ToString(), columnID,
                             node.mColumns[i]->mName.ToString(), types[i], 0, true, "");
    }
    std::unique_ptr<VelaTable> table = schema->CreateTable(node.mTableName.ToString());
    if (table)
        database.AddOpenTable(std::move(table));
    else
        Fail(status, kVEInternalSQLError, "");
    database.EndSchemaChange();
}

}   // namespace vela
