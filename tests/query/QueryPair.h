#pragma once

#include <functional>

#include "engine/query/VelaQuery.h"
#include "tests/query/ReferenceQuery.h"

namespace vela::test {

// One query, for the reference and for VelaQuery, over the same tables and expressions.
struct QueryPair {
    ReferenceQuery reference;
    VelaQuery query{nullptr};
};

// Runs both and expects the same rows with the same values, types, encodings and sources, in the same order; in any order where
// ORDER BY compares what has no order (mixed types, not-a-number).
void ExpectAgreement(QueryPair& pair);

// Calls check(seed) for so many seeds from 1 on, up to the first that fails. VELA_QUERY_SEED and VELA_QUERY_CASES choose
// others, to repeat one or to look further.
void ForEachSeed(uint32_t cases, const std::function<void(uint32_t seed)>& check);

}   // namespace vela::test
