// vela_bench: Vela and SQLite side by side.
//
//   vela_bench [--sizes=N,N...] [--folder=FOLDER] [--sqlite_cache_mib=N] [--memory] [--benchmark_...]
//
// Benchmarks are named WORKLOAD/ENGINE/N. Databases are made in FOLDER, which should lie on the
// kind of device that databases lie on. With --memory Vela's peak memory is measured instead.
// Exit status 1: the engines' answers differ.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <sstream>

#include "bench/MemoryRun.h"
#include "bench/Workload.h"

namespace vela::bench {

void Die(const std::string& message)
{
    std::fprintf(stderr, "vela_bench: %s\n", message.c_str());
    std::exit(2);
}

namespace {

struct Options {
    std::vector<uint32_t> sizes = {10000, 100000, 1000000};
    std::string folder = "bench-data";
    int sqliteCacheMiB = 0;
    bool memory = false;
};

// The rest of an argument that starts with name; null for another one.
const char* ValueOf(const char* argument, const char* name)
{
    const size_t length = std::strlen(name);
    return std::strncmp(argument, name, length) == 0 ? argument + length : nullptr;
}

std::vector<uint32_t> ParseSizes(const std::string& text)
{
    std::vector<uint32_t> sizes;
    std::istringstream list(text);
    for (std::string word; std::getline(list, word, ',');) {
        const long size = std::strtol(word.c_str(), nullptr, 10);
        if (size < 100 || size > 100000000)
            Die("a size is a number from 100 to 100000000, not " + word);
        sizes.push_back(static_cast<uint32_t>(size));
    }
    return sizes;
}

// Of what Google Benchmark left.
Options ParseOptions(int argc, char** argv)
{
    Options options;
    for (int i = 1; i < argc; i++) {
        if (const char* sizes = ValueOf(argv[i], "--sizes="))
            options.sizes = ParseSizes(sizes);
        else if (const char* folder = ValueOf(argv[i], "--folder="))
            options.folder = folder;
        else if (const char* cache = ValueOf(argv[i], "--sqlite_cache_mib="))
            options.sqliteCacheMiB = std::atoi(cache);
        else if (std::strcmp(argv[i], "--memory") == 0)
            options.memory = true;
        else
            Die(std::string("unknown option ") + argv[i]);
    }
    return options;
}

// Answers keeps the first answer to each workload of each size; all others must be equal.
class Answers {
public:
    bool Agree(const std::string& workload, const Answer& answer)
    {
        const auto [known, isNew] = mFirst.emplace(workload, answer);
        if (isNew || known->second == answer)
            return true;
        std::fprintf(stderr, "vela_bench: %s: %llu rows (digest %llx) and %llu rows (%llx)\n",
                     workload.c_str(), Print(known->second.rows), Print(known->second.digest),
                     Print(answer.rows), Print(answer.digest));
        mDiffer = true;
        return false;
    }
    [[nodiscard]] bool Differ() const { return mDiffer; }

private:
    static unsigned long long Print(uint64_t number) { return number; }

    std::map<std::string, Answer> mFirst;
    bool mDiffer = false;
};

// One engine at one size.
struct Contestant {
    std::unique_ptr<Stage> stage;
    std::set<std::string> warm;   // workloads that it has run once
};

void Measure(benchmark::State& state, const Workload& workload, Contestant& contestant,
             Answers& answers)
{
    Stage& stage = *contestant.stage;
    Stopwatch untimed;
    if (workload.warmUp && contestant.warm.insert(workload.name).second)
        (void)RunWorkload(workload, stage, untimed);
    const std::string key = workload.name + ("/" + std::to_string(stage.ItemCount()));
    while (state.KeepRunning()) {
        Stopwatch watch;
        const Answer answer = RunWorkload(workload, stage, watch);
        state.SetIterationTime(watch.Seconds());
        if (!answers.Agree(key, answer))
            state.SkipWithError("the answers differ");
    }
    state.counters["operations"] = workload.operations;
}

void Register(const Workload& workload, const char* engine, Contestant* contestant,
              Answers* answers)
{
    const std::string name = std::string(workload.name) + "/" + engine + "/" +
                             std::to_string(contestant->stage->ItemCount());
    benchmark::RegisterBenchmark(name.c_str(),
                                 [workload, contestant, answers](benchmark::State& state) {
                                     Measure(state, workload, *contestant, *answers);
                                 })
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
}

void RegisterAll(Contestant* vela, Contestant* sqlite, Answers* answers)
{
    for (Workload workload : Workloads()) {
        Register(workload, "vela", vela, answers);
        Register(workload, "sqlite", sqlite, answers);
        if (workload.runPrepared == nullptr)
            continue;
        workload.run = workload.runPrepared;
        Register(workload, "sqlite_prepared", sqlite, answers);
    }
}

int RunWorkloads(const Options& options)
{
    Answers answers;
    std::vector<std::unique_ptr<Contestant>> contestants;
    const auto add = [&](Engine engine, uint32_t size, const char* name) {
        contestants.push_back(std::make_unique<Contestant>());
        contestants.back()->stage = std::make_unique<Stage>(
            engine, size, options.folder + "/" + name + "-" + std::to_string(size),
            options.sqliteCacheMiB);
        return contestants.back().get();
    };
    for (const uint32_t size : options.sizes) {
        Contestant* vela = add(Engine::kVela, size, "vela");
        RegisterAll(vela, add(Engine::kSQLite, size, "sqlite"), &answers);
    }
    benchmark::RunSpecifiedBenchmarks();
    return answers.Differ() ? 1 : 0;
}

int RunMemory(const Options& options)
{
    for (const uint32_t size : options.sizes) {
        const std::string folder = options.folder + "/memory-" + std::to_string(size);
        benchmark::RegisterBenchmark(
            ("memory/vela/" + std::to_string(size)).c_str(),
            [folder, size](benchmark::State& state) {
                for (auto _ : state)
                    for (const auto& [name, bytes] : MeasureMemory(folder, size))
                        state.counters[name] = bytes;
            })
            ->Iterations(1);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

}   // namespace
}   // namespace vela::bench

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    const vela::bench::Options options = vela::bench::ParseOptions(argc, argv);
    const int result =
        options.memory ? vela::bench::RunMemory(options) : vela::bench::RunWorkloads(options);
    benchmark::Shutdown();
    return result;
}
