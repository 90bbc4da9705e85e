#include "engine/query/RowsWhere.h"
#include "engine/sql/SQLDeleteNode.h"
#include "engine/sql/StatementChecks.h"
#include "engine/sql/StatementExecutors.h"

namespace vela {

namespace {

// The rows are all chosen before the first one is deleted.
void DeleteRows(const SimpleVector<uint32_t>& rowIDs, VelaTable* table)
{
    for (const uint32_t rowID : rowIDs)
        table->DeleteRow(rowID);
}

SimpleVector<uint32_t> AllRows(VelaTable* table)
{
    SimpleVector<uint32_t> rowIDs;
    table->GetRowIDs(&rowIDs);
    return rowIDs;
}

}   // namespace

void ExecuteDelete(const SQLDeleteNode& node, VelaDatabase& database, VelaStatus* status)
{
    VelaTable* table = nullptr;
    if (!FindOpenTable(database, node.mTableName, &table, status))
        return;
    if (!node.mWhere) {
        DeleteRows(AllRows(table), table);
        return;
    }
    VelaExprPtr where = node.mWhere->ConvertToVelaExpr({node.mTableName}, {table}, status);
    if (where && where->Valid())
        DeleteRows(RowsWhere(&database, table, std::move(where)), table);
}

}   // namespace vela
