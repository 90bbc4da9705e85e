#pragma once

#include <string>
#include <vector>

#include "bench/Stage.h"
#include "bench/Stopwatch.h"

namespace vela::bench {

// Does one run of a workload, with the watch running during the part that counts, and returns what
// came out of it, which must be the same for every engine and every run.
using WorkloadRun = Answer (*)(Stage& stage, Stopwatch& watch);

// Workload is one line of the table.
struct Workload {
    const char* name;
    const char* sql;   // a SELECT to be run on a reading database; null: run says what to do
    RowOrder order = RowOrder::kAny;
    Template database = Template::kIndexed;   // what sql reads
    WorkloadRun run = nullptr;
    WorkloadRun runPrepared = nullptr;   // with SQLite's prepared statements; may be null
    uint32_t operations = 1;             // in one run: times are given for one of them
    bool warmUp = false;                 // run once before it counts: it reads what stays open
    bool withWAL = false;                // also with SQLite's write-ahead log
    bool withDuckDB = true;              // when its library is at hand
};

// In the order of the table.
[[nodiscard]] const std::vector<Workload>& Workloads();
// The Star Schema Benchmark's queries.
[[nodiscard]] const std::vector<Workload>& StarWorkloads();

[[nodiscard]] Answer RunWorkload(const Workload& workload, Stage& stage, Stopwatch& watch);

}   // namespace vela::bench
