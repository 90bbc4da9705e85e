#pragma once

#include "engine/query/VelaExpr.h"

namespace vela {

// The row ids of the rows of a table that a WHERE lets through, in the order in which a SELECT over the table gives them. Where
// column 0 is not the row id, its values, as Integers, are taken for such. database may be null.
[[nodiscard]] SimpleVector<uint32_t> RowsWhere(VelaDatabase* database, VelaTable* table,
                                               VelaExprPtr where);

}   // namespace vela
