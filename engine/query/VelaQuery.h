#pragma once

#include <memory>
#include <vector>

#include "engine/query/RecSetList.h"
#include "engine/query/VelaExpr.h"
#include "engine/query/VelaTempTable.h"

namespace vela {

class RecSetEnumerator;
struct QueryTrace;

// VelaQuery is one SELECT: it is filled with the statement's parts, then run.
//
// It owns its expressions. The database (handed to expressions, may be null) and the tables are
// borrowed and must outlive it. Expressions name a table by its number, in the order of AddTable.
// The rows come in the order of QueryPlan.h, after ORDER BY in that of TempRowSorter.h.
//
// With an aggregate among the outputs it is an aggregate query: without GROUP BY it gives exactly
// one row, over all record sets; HAVING and DISTINCT are then not looked at. With GROUP BY it gives
// a row for each group whose HAVING leaves a value that isn't 0, in the order of RecSetGrouper.h.
// Without an aggregate GROUP BY and HAVING are not looked at.
class VelaQuery {
public:
    explicit VelaQuery(VelaDatabase* database) : mDatabase(database) {}
    VelaQuery(const VelaQuery&) = delete;
    VelaQuery& operator=(const VelaQuery&) = delete;

    void AddTable(VelaTable* table) { mTables.push_back(table); }
    // A result column: named by the expression's name, else its description; of the expression's
    // type.
    void AddOutput(VelaExprPtr output) { mOutputs.push_back(std::move(output)); }
    // Makes room for so many outputs in all.
    void ReserveOutputs(size_t count) { mOutputs.reserve(count); }
    void SetWhere(VelaExprPtr where) { mWhere = std::move(where); }
    void AddGroupBy(VelaExprPtr column) { mGroupBy.push_back(std::move(column)); }
    void SetHaving(VelaExprPtr having) { mHaving = std::move(having); }
    // column is a result column's number; direction +1 (ascending) or -1. In key order.
    void AddSortKey(long column, long direction);
    void SetDistinct(bool distinct) { mDistinct = distinct; }
    // From how many rows on a result of columns alone shares them with the tables (ColumnRows).
    void SetLeastSharedRows(size_t rows) { mLeastSharedRows = rows; }

    // Runs the query; may be called again. Never null. The rows of a plain query know their source,
    // the row ids that they come from, one per table; those of an aggregate query have none.
    // Expressions that can't be computed make UNKNOWN values or rejected rows, never a failure.
    // trace, which may be null, is told how the record sets were found.
    [[nodiscard]] std::unique_ptr<VelaTempTable> RunQuery(QueryTrace* trace = nullptr);

    // The tables, for translating expressions.
    [[nodiscard]] const SimpleVector<VelaTable*>& Tables() const { return mTables; }
    [[nodiscard]] const std::vector<VelaExprPtr>& Outputs() const { return mOutputs; }
    // How many combinations of rows, complete or not, all runs together looked at.
    [[nodiscard]] uint64_t RecSetsConsidered() const { return mRecSetsConsidered; }

private:
    [[nodiscard]] std::unique_ptr<VelaTempTable> MakeResultTable() const;
    [[nodiscard]] std::vector<const VelaExpr*> OutputExprs() const;
    [[nodiscard]] bool IsAggregateQuery() const;
    [[nodiscard]] bool AddPlainRows(RecSetEnumerator* recSets, VelaTempTable* result) const;
    [[nodiscard]] bool AddFieldRows(const VelaEvalContext& context, RecSetList* list,
                                    VelaTempTable* result) const;
    [[nodiscard]] bool SortRecSets(const VelaEvalContext& context, RecSetList* list) const;
    void AddDistinctRows(const VelaEvalContext& recSets, const RecSetList& list,
                         VelaTempTable* result) const;
    void AddRow(const VelaEvalContext& context, std::vector<uint32_t>* rowIDs,
                VelaTempTable* result) const;
    void AddAggregateRows(RecSetEnumerator* recSets, VelaTempTable* result) const;
    [[nodiscard]] bool CountsOnly() const;
    void AddCountRow(RecSetEnumerator* recSets, VelaTempTable* result) const;
    void AddGroupRows(const VelaEvalContext& context, RecSetList* list,
                      VelaTempTable* result) const;
    [[nodiscard]] bool HavingKeeps(const VelaEvalContext& context) const;
    void EvaluateOutputs(const VelaEvalContext& context, VelaValue* row) const;

    VelaDatabase* mDatabase;
    SimpleVector<VelaTable*> mTables;
    std::vector<VelaExprPtr> mOutputs;
    VelaExprPtr mWhere;   // may be null
    std::vector<VelaExprPtr> mGroupBy;
    VelaExprPtr mHaving;   // may be null
    SimpleVector<long> mSortColumns;
    SimpleVector<long> mSortDirections;
    bool mDistinct = false;
    size_t mLeastSharedRows = ColumnRows::kLeastRows;
    uint64_t mRecSetsConsidered = 0;
};

}   // namespace vela
