#include "bench/MemoryRun.h"

#include <malloc.h>

#include <filesystem>
#include <fstream>

#include "bench/Stage.h"
#include "bench/VelaPeer.h"
#include "bench/Workload.h"

namespace vela::bench {

namespace {

namespace fs = std::filesystem;

// A line "name:   number kB" of the process's status.
double ReadStatus(const std::string& name)
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kibibytes = 0;
        if (word == name + ":" && status >> kibibytes)
            return kibibytes * 1024;
    }
    Die("/proc/self/status has no " + name);
}

// The peak of a stage begins with what is really in use.
void StartPeak()
{
    malloc_trim(0);
    std::ofstream reset("/proc/self/clear_refs");
    reset << "5" << std::flush;
    if (!reset)
        Die("the peak memory can't be reset");
}

double SizeOfFiles(const std::string& folder)
{
    double bytes = 0;
    for (const auto& entry : fs::directory_iterator(folder))
        bytes += static_cast<double>(entry.file_size());
    return bytes;
}

// Everything that is read in one database while it stays open.
void RunReads(Peer* peer)
{
    (void)peer->Query("SELECT qty, price, name, note, day FROM items WHERE k = 5", RowOrder::kAny);
    (void)peer->Query(
        "SELECT COUNT(*), SUM(k), SUM(grp), SUM(cat), SUM(owner), SUM(qty), SUM(price), "
        "MIN(name), MIN(note), MIN(day) FROM items",
        RowOrder::kAny);
    for (const Workload& workload : Workloads())
        if (workload.sql != nullptr)
            (void)peer->Query(workload.sql, workload.order);
}

}   // namespace

std::vector<MemoryFigure> MeasureMemory(const std::string& folder, uint32_t itemCount)
{
    fs::remove_all(folder);
    fs::create_directories(folder);
    StartPeak();
    const double before = ReadStatus("VmRSS");
    std::vector<MemoryFigure> figures;
    const auto endStage = [&](const char* name) {
        figures.emplace_back(name, ReadStatus("VmHWM") - before);
        StartPeak();
    };

    VelaPeer peer;
    peer.Open(folder);
    LoadTables(&peer, itemCount);
    endStage("insert");
    CreateIndexes(&peer, Template::kOneIndex);
    endStage("create index");
    peer.Close();
    figures.emplace_back("files", SizeOfFiles(folder));
    StartPeak();
    peer.Open(folder);
    RunReads(&peer);
    endStage("open and query");
    peer.Execute("UPDATE items SET qty = qty + 1");
    endStage("update all");
    peer.Commit();
    endStage("commit of update");
    peer.Execute("DELETE FROM items WHERE qty < 50");
    peer.Commit();
    endStage("delete half, commit");
    peer.Close();
    fs::remove_all(folder);
    return figures;
}

}   // namespace vela::bench
