#include "engine/query/VelaUpdate.h"

#include "engine/sql/SQLUpdateNode.h"
#include "engine/sql/StatementChecks.h"
#include "engine/sql/StatementExecutors.h"

namespace vela {

namespace {

// The column to set: the last one of that name, unlike everywhere else. Null when there is none.
const VelaColumnInfo* FindLastColumn(const VelaTable& table, std::string_view name)
{
    for (long number = table.QtyColumns() - 1; number >= 0; number--) {
        const VelaColumnInfo* column = table.Column(number);
        if (column && column->name.View() == name)
            return column;
    }
    return nullptr;
}

// Adds the item of that index in the SET list.
bool AddTarget(const SQLUpdateNode& node, size_t index, const SQLNames& names,
               const SQLTables& tables, VelaUpdate* update, VelaStatus* status)
{
    const VelaColumnInfo* column = FindLastColumn(*tables[0], node.mColumns[index].View());
    if (!column)
        return FailColumnNotFound(node.mColumns[index], status);
    const SQLScalarExpNode& value = *node.mValues[index];
    if (value.IsKeywordDefault()) {
        update->AddTarget(*column, nullptr);
        return true;
    }
    VelaExprPtr expr = value.ConvertToVelaExpr(names, tables, status);
    if (!expr)
        return Fail(status, kVEDataException,
                    "Error: Couldn't evaluate " + value.Description() + ".");
    update->AddTarget(*column, std::move(expr));
    return true;
}

}   // namespace

void ExecuteUpdate(const SQLUpdateNode& node, VelaDatabase& database, VelaStatus* status)
{
    VelaTable* table = nullptr;
    if (!FindOpenTable(database, node.mTableName, &table, status))
        return;
    const SQLNames names = {node.mTableName};
    const SQLTables tables = {table};
    VelaUpdate update(&database, table);
    for (size_t i = 0; i < node.mColumns.size(); i++) {
        if (!AddTarget(node, i, names, tables, &update, status))
            return;
    }
    if (node.mWhere) {
        VelaExprPtr where = node.mWhere->ConvertToVelaExpr(names, tables, status);
        if (!where || !where->Valid())
            return;
        update.SetWhere(std::move(where));
    }
    if (!update.RunUpdate())
        Fail(status, kVEDynamicSQLError, "Error: UPDATE failed.");
}

}   // namespace vela
