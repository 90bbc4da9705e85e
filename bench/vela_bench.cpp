// vela_bench: Vela, SQLite and, when its library is given, DuckDB side by side.
//
//   vela_bench [--sizes=N,N...] [--ssb=SCALE] [--folder=FOLDER] [--sqlite_cache_mib=N]
//              [--duckdb=LIBRARY] [--only=REGEX] [--json=FILE] [--shuffle] [--memory] [--benchmark_...]
//
// Benchmarks are named WORKLOAD/ENGINE/N; --only takes those whose names match. Databases are made in
// FOLDER, which should lie on the kind of device that databases lie on. With --ssb the workloads are
// the queries of the Star Schema Benchmark, at a scale of 0.001 to 100; with --memory Vela's peak
// memory is measured instead. One workload follows the other, and its engines take turns; with
// --shuffle all workloads take turns. Results go to FILE, or are printed.
// Exit status 1: the engines' answers differ.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <memory>
#include <regex>
#include <set>
#include <sstream>

#include "bench/DuckDBPeer.h"
#include "bench/MemoryRun.h"
#include "bench/SQLitePeer.h"
#include "bench/StarSchema.h"
#include "bench/VelaPeer.h"
#include "bench/Workload.h"

namespace vela::bench {

namespace {

struct Options {
    std::vector<uint32_t> sizes = {10000, 100000, 1000000};
    std::string folder = "bench-data";
    int sqliteCacheMiB = 0;
    std::string duckDB;       // its library; empty: it is left out
    std::string only = ".";   // a regular expression
    std::string json;         // a file for the results; empty: they are printed
    bool shuffle = false;
    bool starSchema = false;   // sizes are numbers of lineorders
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

uint32_t ParseScale(const char* text)
{
    const double scale = std::strtod(text, nullptr);
    if (!(scale >= 0.001 && scale <= 100))
        Die(std::string("a scale is a number from 0.001 to 100, not ") + text);
    return LineorderCount(scale);
}

std::string CheckedRegex(const char* text)
{
    try {
        (void)std::regex(text);
    } catch (const std::regex_error&) {
        Die(std::string("--only wants a regular expression, not ") + text);
    }
    return text;
}

// Of what Google Benchmark left.
Options ParseOptions(int argc, char** argv)
{
    Options options;
    for (int i = 1; i < argc; i++) {
        if (const char* sizes = ValueOf(argv[i], "--sizes="))
            options.sizes = ParseSizes(sizes);
        else if (const char* scale = ValueOf(argv[i], "--ssb=")) {
            options.sizes = {ParseScale(scale)};
            options.starSchema = true;
        } else if (const char* library = ValueOf(argv[i], "--duckdb="))
            options.duckDB = library;
        else if (const char* folder = ValueOf(argv[i], "--folder="))
            options.folder = folder;
        else if (const char* cache = ValueOf(argv[i], "--sqlite_cache_mib="))
            options.sqliteCacheMiB = std::atoi(cache);
        else if (const char* only = ValueOf(argv[i], "--only="))
            options.only = CheckedRegex(only);
        else if (const char* json = ValueOf(argv[i], "--json="))
            options.json = json;
        else if (std::strcmp(argv[i], "--shuffle") == 0)
            options.shuffle = true;
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
    // 0 when the workload has not been run.
    [[nodiscard]] uint64_t RowsOf(const std::string& workload) { return mFirst[workload].rows; }
    [[nodiscard]] bool Differ() const { return mDiffer; }

private:
    static unsigned long long Print(uint64_t number) { return number; }

    std::map<std::string, Answer> mFirst;
    bool mDiffer = false;
};

// One engine at one size.
struct Contestant {
    std::string name;
    std::unique_ptr<Stage> stage;
    std::set<std::string> warm;   // workloads that it has run once
};

void Measure(benchmark::State& state, const Workload& workload, int place, Contestant& contestant,
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
    state.counters["place"] = place;
    state.counters["operations"] = workload.operations;
    state.counters["rows"] = static_cast<double>(answers.RowsOf(key));
}

// All engines at one size.
class Contest {
public:
    // duckDB may be null. It and answers must outlive this.
    Contest(uint32_t size, const Options& options, const DuckDBLibrary* duckDB, Answers* answers)
        : mSize(size), mFolder(options.folder), mOnly(options.only), mAnswers(answers)
    {
        using Journal = SQLitePeer::Journal;
        const int cache = options.sqliteCacheMiB;
        Join(&mVela, "vela", [] { return std::make_unique<VelaPeer>(); });
        Join(&mSQLite, "sqlite",
             [cache] { return std::make_unique<SQLitePeer>(Journal::kRollback, cache); });
        Join(&mSQLiteWAL, "sqlite_wal",
             [cache] { return std::make_unique<SQLitePeer>(Journal::kWAL, cache); });
        if (duckDB != nullptr)
            Join(&mDuckDB, "duckdb", [duckDB] { return std::make_unique<DuckDBPeer>(*duckDB); });
    }

    // Of the workload, which has that place in the table, what is asked for. False: nothing is.
    bool Register(Workload workload, int place)
    {
        const size_t before = mRegistered;
        Register(workload, place, mVela.name, &mVela);
        Register(workload, place, mSQLite.name, &mSQLite);
        if (workload.withWAL)
            Register(workload, place, mSQLiteWAL.name, &mSQLiteWAL);
        if (workload.withDuckDB && mDuckDB.stage)
            Register(workload, place, mDuckDB.name, &mDuckDB);
        if (workload.runPrepared != nullptr) {
            workload.run = workload.runPrepared;
            Register(workload, place, "sqlite_prepared", &mSQLite);
        }
        return mRegistered > before;
    }

private:
    void Register(const Workload& workload, int place, const std::string& engine,
                  Contestant* contestant)
    {
        const std::string name = workload.name + ("/" + engine) + "/" + std::to_string(mSize);
        if (!std::regex_search(name, mOnly))
            return;
        mRegistered++;
        const auto measure = [workload, place, contestant, this](benchmark::State& state) {
            Measure(state, workload, place, *contestant, *mAnswers);
        };
        benchmark::RegisterBenchmark(name.c_str(), measure)
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
    }
    void Join(Contestant* contestant, const std::string& name, Stage::PeerMaker makePeer)
    {
        const std::string folder = mFolder + "/" + name + "-" + std::to_string(mSize);
        contestant->name = name;
        contestant->stage = std::make_unique<Stage>(std::move(makePeer), mSize, folder);
    }

    uint32_t mSize;
    std::string mFolder;
    std::regex mOnly;
    size_t mRegistered = 0;
    Answers* mAnswers;
    Contestant mVela, mSQLite, mSQLiteWAL, mDuckDB;   // without a stage: takes no part
};

// The results of several runs as one.
class JSONFile : public benchmark::JSONReporter {
public:
    explicit JSONFile(const std::string& name) : mFile(name)
    {
        if (!mFile)
            Die("can't write " + name);
        SetOutputStream(&mFile);
    }
    bool ReportContext(const Context& context) override
    {
        const bool isFirst = !mBegun;
        mBegun = true;
        return !isFirst || JSONReporter::ReportContext(context);
    }
    void Finalize() override {}   // of one run
    void End()
    {
        if (mBegun)
            JSONReporter::Finalize();
    }

private:
    std::ofstream mFile;
    bool mBegun = false;
};

int RunWorkloads(const Options& options)
{
    Answers answers;
    std::unique_ptr<const DuckDBLibrary> duckDB;
    if (!options.duckDB.empty()) {
        duckDB = std::make_unique<DuckDBLibrary>(DuckDBLibrary::Load(options.duckDB));
        benchmark::AddCustomContext("duckdb", duckDB->library_version());
    }
    std::unique_ptr<JSONFile> file;
    if (!options.json.empty())
        file = std::make_unique<JSONFile>(options.json);
    // The library's own serves one run only.
    benchmark::ConsoleReporter console(benchmark::ConsoleReporter::OO_None);
    benchmark::BenchmarkReporter* const reporter =
        file ? static_cast<benchmark::BenchmarkReporter*>(file.get()) : &console;
    const auto runRegistered = [reporter] {
        benchmark::RunSpecifiedBenchmarks(reporter, ".");
        benchmark::ClearRegisteredBenchmarks();
    };
    bool any = false;
    std::vector<std::unique_ptr<Contest>> contests;
    for (const uint32_t size : options.sizes) {
        contests.push_back(std::make_unique<Contest>(size, options, duckDB.get(), &answers));
        int place = 0;
        for (const Workload& workload : options.starSchema ? StarWorkloads() : Workloads()) {
            const bool isAskedFor = contests.back()->Register(workload, place++);
            any = any || isAskedFor;
            if (isAskedFor && !options.shuffle)
                runRegistered();
        }
    }
    if (!any)
        std::fprintf(stderr, "bench: no name among these workloads matches %s\n",
                     options.only.c_str());
    else if (options.shuffle)
        runRegistered();
    if (file)
        file->End();
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
