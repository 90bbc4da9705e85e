#pragma once

#include <functional>

#include "engine/query/QueryTerm.h"
#include "engine/query/RowList.h"
#include "engine/storage/TableColumns.h"

namespace vela {

// Judges a term for one row of its table by evaluating it.
using RowJudge = std::function<bool(uint32_t row)>;

// Applies a term to rows of its one table by going over the column as it lies in memory, without
// making values: "column op constant" and "column LIKE constant", or NOT of these, where the column
// holds numbers or texts and types meet in a simple way. Rows are row numbers in columns. judge is
// asked about null values.
// False: the term or the column is of another kind; rows are as they were.
[[nodiscard]] bool FilterByColumn(const QueryTerm& term, VelaDatabase* database,
                                  TableColumns* columns, const RowJudge& judge, RowList* rows);

}   // namespace vela
