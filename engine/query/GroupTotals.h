#pragma once

#include <vector>

#include "engine/query/RecSetGrouper.h"
#include "engine/query/VExprAggregate.h"
#include "engine/query/VExprField.h"
#include "engine/query/VelaTempTable.h"
#include "runtime/StringArena.h"

namespace vela {

// GroupTotals makes the result rows of a grouped query whose outputs are columns, COUNT(*), and aggregates of columns of
// numbers in memory without nulls: each aggregate is added up for all groups in one pass over the record sets, which stay
// where they are. The rows are those that evaluating the outputs on each group would make; a group's numbers are taken in
// the order of its record sets.
class GroupTotals {
public:
    [[nodiscard]] static bool Serves(const std::vector<VelaExprPtr>& outputs,
                                     const VelaEvalContext& context);

    // Adds up. All is borrowed; the grouper has found the groups of the list.
    GroupTotals(const std::vector<VelaExprPtr>& outputs, const VelaEvalContext& context,
                const RecSetList& list, const RecSetGrouper& grouper);
    // Appends a row for each of the groups, in that order.
    void Append(const std::vector<uint32_t>& groups, VelaTempTable* result);

private:
    // Of an output that is an aggregate of a column. What its function doesn't need is empty.
    struct Totals {
        const ColumnData* column = nullptr;
        size_t table = 0;
        LargeVector<int64_t> integers;   // sums by group
        LargeVector<double> doubles;     // sums by group
        LargeVector<uint32_t>
            extremes;   // by group, the row of the first smallest or largest number
    };

    void AppendSome(const uint32_t* groups, size_t count, VelaTempTable* result);
    void FillColumn(const VExprField& field, const uint32_t* groups, size_t count,
                    VelaValue* values);
    void AddUp(const VExprAggregate& aggregate, Totals* totals) const;
    template <class Take>
    void ForEachRow(size_t table, const Take& take) const;
    template <class Number>
    void FindExtremes(const LargeVector<Number>& numbers, bool smallest, Totals* totals) const;
    [[nodiscard]] VelaValue Result(const VExprAggregate& aggregate, const Totals& totals,
                                   uint32_t group) const;

    const std::vector<VelaExprPtr>& mOutputs;
    const VelaEvalContext& mContext;
    const RecSetList& mList;
    const RecSetGrouper& mGrouper;
    std::vector<Totals> mTotals;   // by output
    std::vector<uint32_t> mRows;   // of some groups' first record sets
    StringArena mTexts;
};

}   // namespace vela
