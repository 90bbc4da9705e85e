#pragma once

#include <vector>

#include "engine/query/RecSetList.h"
#include "engine/query/VExprField.h"
#include "engine/query/VelaTempTable.h"

namespace vela {

// FieldRows makes the result rows of a query whose outputs are columns, without DISTINCT: column by column, many rows at a
// time, from the columns in memory. The rows are those that evaluating the outputs on each record set would make.
class FieldRows {
public:
    // Whether every output is a column.
    [[nodiscard]] static bool Serves(const std::vector<VelaExprPtr>& outputs);

    // Borrows the outputs, which it serves, and the context of the record sets.
    FieldRows(const std::vector<VelaExprPtr>& outputs, const VelaEvalContext& context);
    // Appends a row for each record set of the list.
    void Append(const RecSetList& list, VelaTempTable* result);

private:
    void AppendSome(const VelaRecSetGroup& some, VelaTempTable* result);
    void NameSources(const VelaRecSetGroup& some);
    void FillColumn(const VExprField& field, const VelaRecSetGroup& some, VelaValue* values);

    std::vector<const VExprField*> mFields;
    const VelaEvalContext& mContext;
    StringArena mTexts;
    std::vector<uint32_t> mSources;   // row ids of some record sets
};

}   // namespace vela
