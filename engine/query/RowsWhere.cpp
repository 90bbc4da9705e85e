#include "engine/query/RowsWhere.h"

#include "engine/query/RecSetEnumerator.h"
#include "engine/query/VExprField.h"
#include "engine/query/VelaQuery.h"

namespace vela {

namespace {

SimpleVector<uint32_t> RowIDsOf(const RecSetList& rows, TableColumns* columns)
{
    auto rowIDs = SimpleVector<uint32_t>::OfSize(rows.Count());
    for (size_t i = 0; i < rows.Count(); i++) {
        const uint32_t row = rows.At(i).RowID(0);
        rowIDs[i] = columns ? columns->RowIDs()[row] : row;
    }
    return rowIDs;
}

SimpleVector<uint32_t> QueryFirstColumn(VelaDatabase* database, VelaTable* table, VelaExprPtr where)
{
    VelaQuery query(database);
    query.AddTable(table);
    query.AddOutput(std::make_unique<VExprField>(0, 0));
    query.SetWhere(std::move(where));
    const std::unique_ptr<VelaTempTable> result = query.RunQuery();
    auto rowIDs = SimpleVector<uint32_t>::OfSize(result->RowCount());
    VelaValue value;
    for (uint32_t row = 0; row < rowIDs.size(); row++) {
        result->GetValue(row, 0, &value);
        rowIDs[row] = static_cast<uint32_t>(value.GetInteger());
    }
    return rowIDs;
}

}   // namespace

// Row ids need no result table: the record sets name them.
SimpleVector<uint32_t> RowsWhere(VelaDatabase* database, VelaTable* table, VelaExprPtr where)
{
    if (table->Column(0) != &RowIDColumn())
        return QueryFirstColumn(database, table, std::move(where));
    const SimpleVector<VelaTable*> tables = {table};
    RecSetEnumerator recSets(database, tables, where.get(), {});
    RecSetList rows(1);
    recSets.CollectRest(&rows);
    return RowIDsOf(rows, (*recSets.Context().columns)[0]);
}

}   // namespace vela
