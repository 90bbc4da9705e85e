#pragma once

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

}   // namespace vela::test
