#pragma once

#include "engine/query/QueryTrace.h"
#include "engine/query/VelaQuery.h"
#include "engine/sql/SQLSelectNode.h"

namespace vela {

// A query that has been run, and what its parts are called in the statement. Everything is borrowed.
struct TracedQuery {
    const VelaQuery& query;
    const SQLSelectNode& node;
    const SQLNames& names;   // of the tables, as the statement says them
    const QueryTrace& trace;
};

// Appends in words, a line each: for every table how its rows were found, with each condition below it; what was done with the
// record sets; how many rows came of it.
void TellQuery(const TracedQuery& traced, size_t resultRows, SimpleVector<string>* lines);

}   // namespace vela
