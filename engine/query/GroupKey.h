#pragma once

#include <string>
#include <vector>

#include "engine/query/VelaExpr.h"

namespace vela {

// GroupKey makes the key by which GROUP BY puts record sets into groups: for each column an
// Integer's 4 bytes in memory order, or any other value's string form, one after another without
// separators. ("ab" and "c" are the key of "a" and "bc".)
class GroupKey {
public:
    // Both are borrowed. Of context, the current record set is not looked at.
    GroupKey(const std::vector<VelaExprPtr>& columns, const VelaEvalContext& context);

    // The one column that makes the key, when it is in memory as Integers without nulls: *table is whose it is. Else null.
    [[nodiscard]] const ColumnData* IntegerColumn(size_t* table) const;
    // The key of a record set, good until the next call.
    [[nodiscard]] std::string_view Of(const VelaRecSet& recSet);

private:
    void Append(const VelaExpr& column);
    [[nodiscard]] bool AppendInPlace(const VelaExpr& column);

    const std::vector<VelaExprPtr>& mColumns;
    VelaEvalContext mContext;
    std::string mKey;
};

}   // namespace vela
