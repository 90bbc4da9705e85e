#pragma once

#include <cstdint>
#include <vector>

#include "engine/query/VelaExpr.h"

namespace vela {

// How a condition was applied.
enum class TermUse : uint8_t {
    kNamesRows,    // it named the rows, by row id or through an index
    kOverColumn,   // one pass over the column as it lies in memory
    kRowByRow,     // evaluated for each row that was left
    kHash          // a hash table over its column gave the rows worth evaluating it for
};

struct TermTrace {
    const VelaExpr* expr;   // the query's
    TermUse use;
};

// How the rows of one table were found.
struct LevelTrace {
    enum class Way : uint8_t {
        kUnread,      // no row of it was needed
        kAllRows,     // the whole table
        kNamedRows,   // those that a condition named
        kLookedUpEach   // those that a condition named, anew for each combination of rows of the tables before
    };

    size_t table = 0;
    bool reversed = false;   // from the last row to the first
    Way way = Way::kUnread;
    uint32_t keyColumn = 0;   // kNamedRows, kLookedUpEach: whose value named the rows; 0 is _rowid
    uint32_t rowsKept =
        0;   // by the conditions on this table alone; of kLookedUpEach, the last time
    std::vector<TermTrace> terms;
};

// QueryTrace takes down what a running query does to find its record sets, for people who want to know where its time goes.
// The levels come in the order in which the tables are bound.
struct QueryTrace {
    std::vector<const VelaExpr*> constantTerms;   // judged once, before any row
    std::vector<LevelTrace> levels;
};

}   // namespace vela
