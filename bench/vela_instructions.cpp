// vela_instructions: a handful of workloads of a known size, for Valgrind's callgrind.
//
//   valgrind --tool=callgrind --instr-atstart=no vela_instructions FOLDER
//
// Only what is measured is counted, and dumped under the workload's name: scripts/instructions reads
// the dumps. FOLDER, which must not exist yet, holds the database, and is removed in the end. Without
// callgrind nothing is counted; the answers are still checked. Exit status 2: one is wrong.

#include <valgrind/callgrind.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "bench/VelaPeer.h"

namespace vela::bench {
namespace {

namespace fs = std::filesystem;

constexpr uint32_t kItems = 10000;
constexpr uint32_t kReads = 1000;
constexpr uint32_t kInserts = 2000;
constexpr uint32_t kCommits = 10;
constexpr int32_t kRegion = 3;

// Counts the instructions of what work does, under that name.
template <class Work>
void Count(const char* name, const Work& work)
{
    CALLGRIND_START_INSTRUMENTATION;
    work();
    CALLGRIND_STOP_INSTRUMENTATION;
    CALLGRIND_DUMP_STATS_AT(name);
}

void Expect(const char* name, double expected, double found)
{
    if (expected != found)
        Die(std::string(name) + ": expected " + std::to_string(expected) + ", found " +
            std::to_string(found));
}

void Load(VelaPeer* peer)
{
    peer->CreateTable("items", kItemColumns);
    peer->CreateTable("owners", kOwnerColumns);
    peer->AddRows("items", MakeItemRows(0, kItems, kItems));
    std::vector<Row> owners;
    for (uint32_t i = 0; i < OwnerCount(kItems); i++)
        owners.push_back(MakeOwnerRow(i, kItems));
    peer->AddRows("owners", owners);
    peer->Commit();
    peer->Execute("CREATE INDEX by_k ON items (k)");
    peer->Commit();
}

// ---- the workloads; what they must come to is worked out from the data alone

void InsertTexts(VelaPeer* peer)
{
    std::vector<std::string> texts;
    for (uint32_t i = 0; i < kInserts; i++)
        texts.push_back(InsertItemText(MakeItem(i, kItems)));
    Count("2,000 rows inserted by text, with an index", [&] {
        for (const std::string& text : texts)
            peer->Execute(text);
    });
    Expect("rows inserted", kItems + kInserts, peer->QueryNumber("SELECT COUNT(*) FROM items"));
    peer->Rollback();
}

void ReadPoints(VelaPeer* peer)
{
    std::vector<std::string> texts;
    for (uint32_t i = 0; i < kReads; i++)
        texts.push_back("SELECT qty, name, price FROM items WHERE k = " +
                        std::to_string(Scatter(i) % kItems));
    for (const std::string& text : texts)   // what is loaded by and by is not counted
        (void)peer->Query(text, RowOrder::kAny);
    uint64_t rows = 0;
    Count("1,000 rows read by an indexed integer", [&] {
        for (const std::string& text : texts)
            rows += peer->Query(text, RowOrder::kAny).rows;
    });
    Expect("rows read by k", kReads, static_cast<double>(rows));
}

void Aggregate(VelaPeer* peer)
{
    double expected = 0;
    for (uint32_t i = 0; i < kItems; i++)
        expected += MakeItem(i, kItems).qty;
    const std::string sql = "SELECT SUM(qty) FROM items";
    double first = 0, second = 0;
    Count("SUM of 10,000 integers, read from the files", [&] { first = peer->QueryNumber(sql); });
    Count("SUM of 10,000 integers, once more", [&] { second = peer->QueryNumber(sql); });
    Expect("SUM", expected, first);
    Expect("SUM once more", expected, second);
}

void Join(VelaPeer* peer)
{
    std::vector<bool> wanted(OwnerCount(kItems));
    for (uint32_t i = 0; i < OwnerCount(kItems); i++) {
        const Row owner = MakeOwnerRow(i, kItems);
        wanted[static_cast<size_t>(std::get<int32_t>(owner[0]))] =
            std::get<int32_t>(owner[3]) == kRegion;
    }
    double expected = 0;
    for (uint32_t i = 0; i < kItems; i++) {
        const Item item = MakeItem(i, kItems);
        expected += wanted[static_cast<size_t>(item.owner)] ? item.qty : 0;
    }
    const std::string sql =
        "SELECT SUM(i.qty) FROM items i, owners o WHERE i.owner = o.id AND o.region = " +
        std::to_string(kRegion);
    double found = 0;
    Count("join of 10,000 rows with 1,000, SUM", [&] { found = peer->QueryNumber(sql); });
    Expect("join", expected, found);
}

void Sort(VelaPeer* peer)
{
    std::vector<std::string> names;
    for (uint32_t i = 0; i < kItems; i++)
        names.push_back(ItemName(i, kItems));
    std::sort(names.begin(), names.end());
    AnswerDigest expected(RowOrder::kFixed);
    for (const std::string& name : names) {
        expected.AddText(name);
        expected.EndRow();
    }
    Answer found;
    Count("10,000 rows in the order of a string",
          [&] { found = peer->Query("SELECT name FROM items ORDER BY name", RowOrder::kFixed); });
    if (found != expected.Result())
        Die("ORDER BY: the rows or their order are wrong");
}

void CommitRows(VelaPeer* peer)
{
    std::vector<std::string> texts;
    for (uint32_t i = 0; i <= kCommits; i++)
        texts.push_back(InsertItemText(MakeItem(i, kItems)));
    peer->Execute(texts.back());
    peer->Commit();   // what is needed first is not counted
    texts.pop_back();
    Count("10 rows inserted and committed, with an index", [&] {
        for (const std::string& text : texts) {
            peer->Execute(text);
            peer->Commit();
        }
    });
    Expect("rows committed", kItems + 1 + kCommits,
           peer->QueryNumber("SELECT COUNT(*) FROM items"));
}

void UpdateAll(VelaPeer* peer)
{
    const std::string sum = "SELECT SUM(qty) FROM items";
    const double before = peer->QueryNumber(sum);
    const double rows = peer->QueryNumber("SELECT COUNT(*) FROM items");
    Count("10,000 rows updated and committed", [&] {
        peer->Execute("UPDATE items SET qty = qty + 1");
        peer->Commit();
    });
    Expect("SUM after the update", before + rows, peer->QueryNumber(sum));
}

void RunAll(const std::string& folder)
{
    VelaPeer peer;
    peer.Open(folder);
    Load(&peer);
    peer.Close();
    peer.Open(folder);
    Aggregate(&peer);   // first, because it wants to read the files
    ReadPoints(&peer);
    Join(&peer);
    Sort(&peer);
    InsertTexts(&peer);
    CommitRows(&peer);
    UpdateAll(&peer);
}

}   // namespace
}   // namespace vela::bench

int main(int argc, char** argv)
{
    if (argc != 2 || !std::filesystem::create_directory(argv[1])) {
        std::fprintf(stderr, "usage: vela_instructions FOLDER (which must not exist yet)\n");
        return 2;
    }
    vela::bench::RunAll(argv[1]);
    std::filesystem::remove_all(argv[1]);
    return 0;
}
