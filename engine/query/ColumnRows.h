#pragma once

#include <memory>
#include <vector>

#include "engine/query/RecSetList.h"
#include "engine/query/VelaExpr.h"

namespace vela {

// ColumnRows holds the rows of a large result whose outputs are columns in memory as the record sets that made them: 4 bytes
// a row for each table. The columns it shares with the tables (TableColumns::Share), and a value is made when it is read. The
// rows stay what they are whatever becomes of the tables; as long as they live, a table that changes rows of a column copies
// that column first.
//
// Who reads a column row after row gets values that were made ahead, some hundred at a time.
class ColumnRows {
public:
    // Fewer rows are better copied than tied to columns.
    static constexpr size_t kLeastRows = 4096;

    // The rows that evaluating the outputs on each record set of the list would make; takes the list over. Null, and the
    // list as it was, unless there are at least leastRows of them and a quarter as many as each table has that is read
    // through columns (a small result would make changes of a large table copy its columns), and unless all outputs are
    // columns in memory.
    [[nodiscard]] static std::unique_ptr<ColumnRows> Share(const std::vector<VelaExprPtr>& outputs,
                                                           const VelaEvalContext& context,
                                                           size_t leastRows, RecSetList* list);

    [[nodiscard]] size_t Count() const { return mRecSets.Count(); }
    [[nodiscard]] size_t Width() const { return mOutputs.size(); }
    // The value of an output in a row; both are there. Throws bad_alloc when there is no memory for
    // it; it can be read later then.
    void GetValue(size_t row, size_t output, VelaValue* value)
    {
        Output& from = mOutputs[output];
        if (row - from.start < from.made)
            *value = from.values[row - from.start];
        else
            MakeValue(row, &from, value);
    }
    // The row ids that a row comes from, one per table. Good until the next call.
    [[nodiscard]] VelaRecSet Source(size_t row);

private:
    struct Output {
        size_t table;
        std::shared_ptr<const ColumnData> column;   // null for _rowid
        // The values of the rows from start to start + made - 1.
        size_t start = 0;
        size_t made = 0;
        std::vector<VelaValue> values{};
    };

    explicit ColumnRows(size_t tables) : mRecSets(tables), mSource(tables) {}
    [[nodiscard]] static bool IsWorthSharing(const RecSetList& list, const VelaEvalContext& context,
                                             size_t leastRows);
    [[nodiscard]] bool ShareRowIDs(const VelaEvalContext& context);
    [[nodiscard]] bool ShareColumn(const VelaExpr& output, const VelaEvalContext& context);
    void MakeValue(size_t row, Output* output, VelaValue* value);
    void MakeAhead(size_t row, Output* output);
    [[nodiscard]] uint32_t RowIDOf(size_t row, size_t table) const;

    RecSetList mRecSets;
    // One per table; null where the record sets name the rows by row id.
    std::vector<std::shared_ptr<const RowIDList>> mRowIDs;
    std::vector<Output> mOutputs;
    std::vector<uint32_t> mSource;   // the one told last
};

}   // namespace vela
