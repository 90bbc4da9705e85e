#include "engine/sql/SQLAlterTableNode.h"
#include "engine/sql/StatementChecks.h"
#include "engine/sql/StatementExecutors.h"

namespace vela {

namespace {

// The numbers of the schema table's columns that ALTER TABLE reads and writes.
struct SchemaColumns {
    long tableName;
    long columnName;
    long columnID;
    long typeCode;
};

bool FindSchemaColumns(const VelaSchema& schema, SchemaColumns* columns, VelaStatus* status)
{
    if (FindColumnID(schema, "TableName", &columns->tableName) >= 0 &&
        FindColumnID(schema, "ColumnName", &columns->columnName) >= 0 &&
        FindColumnID(schema, "ColumnID", &columns->columnID) >= 0 &&
        FindColumnID(schema, "TypeCode", &columns->typeCode) >= 0)
        return true;
    return Fail(status, kVEInternalSQLError,
                "Internal Error: Couldn't find column data in schema.");
}

bool ColumnHolds(VelaSchema* schema, uint32_t rowID, long column, const SQLText& text)
{
    VelaValue value;
    return schema->GetValue(rowID, column, &value) && value.TextView() == text.View();
}

// The schema row of a column; kInvalidRowID when the table has no such column.
uint32_t FindSchemaRow(VelaSchema* schema, const SchemaColumns& columns, const SQLText& tableName,
                       const SQLText& columnName)
{
    SimpleVector<uint32_t> rowIDs;
    schema->GetRowIDs(&rowIDs);
    for (const uint32_t rowID : rowIDs) {
        if (ColumnHolds(schema, rowID, columns.tableName, tableName) &&
            ColumnHolds(schema, rowID, columns.columnName, columnName))
            return rowID;
    }
    return kInvalidRowID;
}

void UpdateSchemaRow(VelaSchema* schema, uint32_t rowID, long column, const VelaValue& value)
{
    VelaValueWithID update(value, schema->Column(column)->columnID);
    VelaRow row{&update};
    schema->UpdateRow(rowID, row, false);
}

// What the actions work on. row is kInvalidRowID when the table lacks the column.
struct Alteration {
    const SQLAlterTableNode& node;
    VelaSchema* schema;
    VelaTrans* table;
    SchemaColumns columns;
    uint32_t row;
};

bool ColumnIsThere(const Alteration& alteration, VelaStatus* status)
{
    return alteration.row != kInvalidRowID ||
           FailColumnNotFound(alteration.node.mColumn->mName, status);
}

// The actions return whether they changed the schema.

bool AddColumn(const Alteration& alteration, VelaStatus* status)
{
    const SQLAlterTableNode& node = alteration.node;
    if (alteration.row != kInvalidRowID)
        return FailColumnExists(node.mColumn->mName, status);
    VelaDataType type = kTypeNone;
    if (!CheckNewName(node.mColumn->mName, status) ||
        !TypeCodeFromName(node.mColumn->mTypeName, &type, status))
        return false;
    alteration.schema->AddSchemaRow(node.mTableName.ToString(),
                                    alteration.table->NextUnusedColumnID(),
                                    node.mColumn->mName.ToString(), type, 0, true, "");
    return true;
}

bool DropColumn(const Alteration& alteration, VelaStatus* status)
{
    constexpr long kFewestColumns = 2;   // _rowid and one other
    if (!ColumnIsThere(alteration, status))
        return false;
    if (alteration.table->QtyColumns() <= kFewestColumns)
        return Fail(status, kVEDynamicSQLError, "Error: Can't drop the only column in a table.");
    VelaValue columnID;
    alteration.schema->GetValue(alteration.row, alteration.columns.columnID, &columnID);
    alteration.schema->DeleteRow(alteration.row);
    alteration.table->DropIndexesOf(static_cast<uint32_t>(columnID.GetInteger()));
    return true;
}

bool RenameColumn(const Alteration& alteration, VelaStatus* status)
{
    const SQLText& newName = alteration.node.mNewName;
    if (!ColumnIsThere(alteration, status) || !CheckNewName(newName, status))
        return false;
    UpdateSchemaRow(alteration.schema, alteration.row, alteration.columns.columnName,
                    VelaValue::String(newName.ToString()));
    return true;
}

bool ModifyColumn(const Alteration& alteration, VelaStatus* status)
{
    VelaDataType type = kTypeNone;
    if (!ColumnIsThere(alteration, status) ||
        !TypeCodeFromName(alteration.node.mColumn->mTypeName, &type, status))
        return false;
    UpdateSchemaRow(alteration.schema, alteration.row, alteration.columns.typeCode,
                    VelaValue::Integer(type));
    return true;
}

bool Alter(const Alteration& alteration, VelaStatus* status)
{
    switch (alteration.node.mAction) {
        case SQLAlterTableNode::kAddColumn:
            return AddColumn(alteration, status);
        case SQLAlterTableNode::kDropColumn:
            return DropColumn(alteration, status);
        case SQLAlterTableNode::kRenameColumn:
            return RenameColumn(alteration, status);
        case SQLAlterTableNode::kModifyColumn:
            return ModifyColumn(alteration, status);
        case SQLAlterTableNode::kSetDefault:
        case SQLAlterTableNode::kDropDefault:
        case SQLAlterTableNode::kRenameTable:
            break;
    }
    return Fail(status, kVEFeatureNotSupported, "");
}

// The open table that the statement names, when it may be altered.
bool FindTable(const SQLAlterTableNode& node, VelaDatabase& database, size_t* position,
               VelaStatus* status)
{
    if (node.mTableName.EqualsIgnoringCase(kSchemaTableName))
        return Fail(status, kVEDynamicSQLError,
                    "Error: ALTER TABLE is invalid for the _schema table.  Nice try though.");
    if (!FindOpenTable(database, node.mTableName, position, status))
        return false;
    const VelaTrans* table = database.OpenTables()[*position]->AsStoredTable();
    if (!table)
        return FailTableNotFound(node.mTableName, status);
    if (table->HasChangesToCommit())
        return FailTableInTransaction(node.mTableName, status);
    if (!node.mColumn && node.mAction != SQLAlterTableNode::kRenameTable)
        return Fail(status, kVEColumnNotFound, "Column name unspecified.");
    return true;
}

void Reload(VelaDatabase& database, size_t position)
{
    SimpleVector<VelaTable*>& tables = database.OpenTables();
    VelaTrans* table = tables[position]->AsStoredTable();
    tables[position] = nullptr;   // it is going
    database.Schema()->ReloadTable(&table);
    if (table)
        tables[position] = table;
    else
        tables.erase(position);
}

}   // namespace

void ExecuteAlterTable(const SQLAlterTableNode& node, VelaDatabase& database, VelaStatus* status)
{
    size_t position = 0;
    if (!FindTable(node, database, &position, status))
        return;
    Alteration alteration{node,
                          database.Schema(),
                          database.OpenTables()[position]->AsStoredTable(),
                          {},
                          kInvalidRowID};
    if (!FindSchemaColumns(*alteration.schema, &alteration.columns, status))
        return;
    if (node.mColumn)
        alteration.row = FindSchemaRow(alteration.schema, alteration.columns, node.mTableName,
                                       node.mColumn->mName);
    database.BeginSchemaChange();
    if (Alter(alteration, status))
        Reload(database, position);
    database.EndSchemaChange();
}

}   // namespace vela
