#include "engine/query/VExprField.h"
#include "engine/query/VelaQuery.h"
#include "engine/sql/SQLDeleteNode.h"
#include "engine/sql/StatementChecks.h"
#include "engine/sql/StatementExecutors.h"

namespace vela {

namespace {

void DeleteAllRows(VelaTable* table)
{
    SimpleVector<uint32_t> rowIDs;
    table->GetRowIDs(&rowIDs);
    for (const uint32_t rowID : rowIDs)
        table->DeleteRow(rowID);
}

// The rows are all chosen before the first one is deleted.
void DeleteRowsWhere(VelaExprPtr where, VelaTable* table, VelaDatabase& database)
{
    VelaQuery query(&database);
    query.AddTable(table);
    query.AddOutput(std::make_unique<VExprField>(0, 0));   // _rowid
    query.SetWhere(std::move(where));
    const std::unique_ptr<VelaTempTable> result = query.RunQuery();
    SimpleVector<uint32_t> resultRows;
    result->GetRowIDs(&resultRows);
    VelaValue rowID;
    for (const uint32_t resultRow : resultRows) {
        if (result->GetValue(resultRow, 0, &rowID))
            table->DeleteRow(static_cast<uint32_t>(rowID.GetInteger()));
    }
}

}   // namespace

void ExecuteDelete(const SQLDeleteNode& node, VelaDatabase& database, VelaStatus* status)
{
    VelaTable* table = nullptr;
    if (!FindOpenTable(database, node.mTableName, &table, status))
        return;
    if (!node.mWhere) {
        DeleteAllRows(table);
        return;
    }
    VelaExprPtr where = node.mWhere->ConvertToVelaExpr({node.mTableName}, {table}, status);
    if (where && where->Valid())
        DeleteRowsWhere(std::move(where), table, database);
}

}   // namespace vela
