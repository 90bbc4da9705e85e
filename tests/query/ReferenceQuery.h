#pragma once

#include <string>
#include <vector>

#include "engine/query/VelaExpr.h"

namespace vela::test {

// A SELECT as plain data. Borrows expressions and tables.
struct ReferenceQuery {
    SimpleVector<VelaTable*> tables;
    std::vector<const VelaExpr*> outputs;
    const VelaExpr* where = nullptr;
    std::vector<const VelaExpr*> groupBy;
    const VelaExpr* having = nullptr;
    std::vector<long> sortColumns;
    std::vector<long> sortDirections;
    bool distinct = false;
};

struct ReferenceRow {
    std::vector<VelaValue> values;
    bool hasSource = false;
    std::vector<uint32_t> source;   // row ids
};

// The described algorithm, word by word: a stack of record sets, a quadratic DISTINCT, groups by
// sorted key strings. Too slow for anything but tests, and too simple to be wrong.
// The sort is an insertion sort, so rows equal on all keys keep their order.
std::vector<ReferenceRow> RunReference(const ReferenceQuery& query);

}   // namespace vela::test
