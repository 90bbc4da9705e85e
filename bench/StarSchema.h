#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/Answer.h"
#include "bench/Peer.h"

namespace vela::bench {

// The Star Schema Benchmark: orders of a trading house, one row of lineorder for each line of an
// order, and the four dimensions customer, supplier, part and dates. Tables, columns, ranges of
// values and queries are those of the published description (O'Neil, O'Neil, Chen: Star Schema
// Benchmark, revision 3); the values are drawn by a generator of our own, the same in each run.
// Prices are in cents; all sums fit into a double exactly.
//
//   lineorder  N rows, of scale times 6,000,000; orders have 1 to 7 lines
//   customer   N / 200
//   supplier   N / 3,000
//   part       N / 30 up to scale 1; then 200,000 * (1 + log2 scale)
//   dates      the days of 1992 to 1998
//
// Cities are taken in turn by suppliers and customers, so that small scales have some in each.

// One of the 13, in words that all engines understand: BETWEEN and IN are said with comparisons.
struct StarQuery {
    const char* name;
    const char* sql;
    // kAny where rows may tie on all that they are sorted by.
    RowOrder order;
};

[[nodiscard]] const std::vector<StarQuery>& StarQueries();

[[nodiscard]] uint32_t LineorderCount(double scale);

// Fills an empty database: tables, rows, and an index on the key of each dimension; committed.
void LoadStarSchema(Peer* peer, uint32_t lineorderCount);

}   // namespace vela::bench
