#pragma once

#include <vector>

#include "engine/query/QueryTerm.h"

namespace vela {

// One level of the nested loops that a query comes to: the table that is bound there, the direction
// in which its rows come, and the terms that are judged there.
struct QueryLevel {
    size_t table = 0;
    bool reversed = false;
    std::vector<QueryTerm> ownTerms;    // refer to this table alone
    std::vector<QueryTerm> joinTerms;   // refer to it and to tables of earlier levels
};

// QueryPlan is what is known of a query before the first row is read.
//
// The described enumeration takes record sets from a stack and asks the WHERE which table to bind
// next. Its answer depends only on which tables are bound, so the order is the same for all rows.
// Rows that are pushed come off the stack in reverse; only those that complete a record set at
// once, at the last level, when the WHERE said that it depends on no other table (or there is
// none), keep their order. Judging a term earlier than that never changes the result: what is FALSE
// stays so.
struct QueryPlan {
    std::vector<QueryTerm> constantTerms;   // refer to no table
    std::vector<QueryLevel> levels;         // one per table
};

// where may be null.
[[nodiscard]] QueryPlan MakeQueryPlan(const VelaExpr* where, size_t tableCount);

}   // namespace vela
