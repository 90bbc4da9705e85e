#include "bench/Workload.h"

#include <algorithm>

#include "bench/FileCache.h"
#include "bench/SQLitePeer.h"
#include "bench/StarSchema.h"

namespace vela::bench {

namespace {

constexpr uint32_t kBatch = 4096;
constexpr uint32_t kPointReads = 1000;
constexpr uint32_t kPointUpdates = 1000;
constexpr uint32_t kCommits = 20;
constexpr uint32_t kReopenings = 5;

const char* const kItemsCheck =
    "SELECT COUNT(*), SUM(_rowid), SUM(k), SUM(qty), SUM(price), MIN(name), MAX(day) FROM items";
const char* const kSumOfQty = "SELECT SUM(qty) FROM items";
const char* const kCount = "SELECT COUNT(*) FROM items";

// A number that an engine must come to as it is.
Answer AnswerOf(double number)
{
    AnswerDigest digest(RowOrder::kAny);
    digest.AddNumber(number);
    digest.EndRow();
    return digest.Result();
}

Answer Sum(const Answer& a, const Answer& b)
{
    return {a.rows + b.rows, a.digest + b.digest};
}

// The items that point workloads go for, by number; scattered, the same for every engine.
std::vector<uint32_t> ChosenItems(const Stage& stage, uint32_t count)
{
    std::vector<uint32_t> numbers;
    for (uint32_t i = 0; i < count; i++)
        numbers.push_back(
            static_cast<uint32_t>(Scatter(uint64_t{7} << 32 | i) % stage.ItemCount()));
    return numbers;
}

Answer RunQueries(Peer& peer, const std::vector<std::string>& texts, Stopwatch& watch)
{
    Answer answer;
    watch.Start();
    for (const std::string& text : texts)
        answer = Sum(answer, peer.Query(text, RowOrder::kAny));
    watch.Stop();
    return answer;
}

// ---- inserting

// addBatch adds count items from the first-th on.
template <class AddBatch>
Answer BulkInsert(Stage& stage, Stopwatch& watch, const AddBatch& addBatch)
{
    std::unique_ptr<Peer> peer = stage.OpenEmpty();
    peer->Begin();
    peer->CreateTable("items", kItemColumns);
    peer->Commit();
    watch.Start();
    peer->Begin();
    watch.Stop();
    for (uint32_t first = 0; first < stage.ItemCount(); first += kBatch) {
        const uint32_t count = std::min(kBatch, stage.ItemCount() - first);
        addBatch(*peer, first, count);
    }
    watch.Start();
    peer->Commit();
    watch.Stop();
    const Answer answer = peer->Query(kItemsCheck, RowOrder::kAny);
    stage.Discard(std::move(peer));
    return answer;
}

Answer InsertValues(Stage& stage, Stopwatch& watch)
{
    return BulkInsert(stage, watch, [&](Peer& peer, uint32_t first, uint32_t count) {
        const std::vector<Row> rows = MakeItemRows(first, count, stage.ItemCount());
        watch.Start();
        peer.AddRows("items", rows);
        watch.Stop();
    });
}

Answer InsertTexts(Stage& stage, Stopwatch& watch)
{
    return BulkInsert(stage, watch, [&](Peer& peer, uint32_t first, uint32_t count) {
        std::vector<std::string> texts;
        for (uint32_t i = first; i < first + count; i++)
            texts.push_back(InsertItemText(MakeItem(i, stage.ItemCount())));
        watch.Start();
        for (const std::string& text : texts)
            peer.Execute(text);
        watch.Stop();
    });
}

Answer CommitRows(Stage& stage, Stopwatch& watch, Peer& peer)
{
    const double before = peer.QueryNumber(kCount);
    for (uint32_t i = 0; i < kCommits; i++) {
        const std::string text = InsertItemText(MakeItem(i, stage.ItemCount()));
        watch.Start();
        peer.Begin();
        peer.Execute(text);
        peer.Commit();
        watch.Stop();
    }
    return AnswerOf(peer.QueryNumber(kCount) - before);
}

Answer SmallCommits(Stage& stage, Stopwatch& watch)
{
    return CommitRows(stage, watch, stage.Shared("commits", Template::kPlain));
}

Answer SmallCommitsOneIndex(Stage& stage, Stopwatch& watch)
{
    return CommitRows(stage, watch, stage.Shared("commits-one-index", Template::kOneIndex));
}

Answer SmallCommitsIndexed(Stage& stage, Stopwatch& watch)
{
    return CommitRows(stage, watch, stage.Shared("commits-indexed", Template::kIndexed));
}

// ---- point reads

std::string RowIDText(uint32_t item)
{
    return "SELECT k, name, price FROM items WHERE _rowid = " + std::to_string(item + 1);
}

Answer ReadByRowID(Stage& stage, Stopwatch& watch)
{
    std::vector<std::string> texts;
    for (uint32_t item : ChosenItems(stage, kPointReads))
        texts.push_back(RowIDText(item));
    return RunQueries(stage.Reading(), texts, watch);
}

Answer ReadByInteger(Stage& stage, Stopwatch& watch)
{
    std::vector<std::string> texts;
    for (uint32_t item : ChosenItems(stage, kPointReads))
        texts.push_back("SELECT qty, name, price FROM items WHERE k = " +
                        std::to_string(ItemKey(item, stage.ItemCount())));
    return RunQueries(stage.Reading(), texts, watch);
}

Answer ReadByString(Stage& stage, Stopwatch& watch)
{
    std::vector<std::string> texts;
    for (uint32_t item : ChosenItems(stage, kPointReads))
        texts.push_back("SELECT k, qty, price FROM items WHERE name = '" +
                        ItemName(item, stage.ItemCount()) + "'");
    return RunQueries(stage.Reading(), texts, watch);
}

// keyOf gives the parameter for an item's number.
template <class KeyOf>
Answer ReadPrepared(Stage& stage, Stopwatch& watch, const std::string& sql, const KeyOf& keyOf)
{
    using Key = decltype(keyOf(0u));
    std::vector<Key> keys;
    for (uint32_t item : ChosenItems(stage, kPointReads))
        keys.push_back(keyOf(item));
    auto& peer = static_cast<SQLitePeer&>(stage.Reading());
    peer.Prepare(sql);
    AnswerDigest digest(RowOrder::kAny);
    watch.Start();
    for (const Key& key : keys)
        peer.ReadBound(key, &digest);
    watch.Stop();
    return digest.Result();
}

Answer ReadByRowIDPrepared(Stage& stage, Stopwatch& watch)
{
    return ReadPrepared(stage, watch, "SELECT k, name, price FROM items WHERE _rowid = ?",
                        [](uint32_t item) { return int64_t{item} + 1; });
}

Answer ReadByIntegerPrepared(Stage& stage, Stopwatch& watch)
{
    return ReadPrepared(
        stage, watch, "SELECT qty, name, price FROM items WHERE k = ?",
        [&stage](uint32_t item) { return int64_t{ItemKey(item, stage.ItemCount())}; });
}

Answer ReadByStringPrepared(Stage& stage, Stopwatch& watch)
{
    return ReadPrepared(stage, watch, "SELECT k, qty, price FROM items WHERE name = ?",
                        [&stage](uint32_t item) { return ItemName(item, stage.ItemCount()); });
}

// ---- changing

// The table is the same after each run but for qty, which grows by one.
Answer UpdateAll(Stage& stage, Stopwatch& watch)
{
    Peer& peer = stage.Shared("changing", Template::kIndexed);
    const double before = peer.QueryNumber(kSumOfQty);
    watch.Start();
    peer.Begin();
    peer.Execute("UPDATE items SET qty = qty + 1");
    peer.Commit();
    watch.Stop();
    return AnswerOf(peer.QueryNumber(kSumOfQty) - before);
}

Answer UpdateByRowID(Stage& stage, Stopwatch& watch)
{
    Peer& peer = stage.Shared("changing", Template::kIndexed);
    const double before = peer.QueryNumber(kSumOfQty);
    std::vector<std::string> texts;
    for (uint32_t item : ChosenItems(stage, kPointUpdates))
        texts.push_back("UPDATE items SET qty = qty + 1 WHERE _rowid = " +
                        std::to_string(item + 1));
    peer.Begin();
    watch.Start();
    for (const std::string& text : texts)
        peer.Execute(text);
    watch.Stop();
    const double after = peer.QueryNumber(kSumOfQty);
    peer.Rollback();
    return AnswerOf(after - before);
}

Answer RollbackUpdate(Stage& stage, Stopwatch& watch)
{
    Peer& peer = stage.Shared("changing", Template::kIndexed);
    const double before = peer.QueryNumber(kSumOfQty);
    peer.Begin();
    peer.Execute("UPDATE items SET qty = qty + 1");
    watch.Start();
    peer.Rollback();
    watch.Stop();
    return AnswerOf(peer.QueryNumber(kSumOfQty) - before);
}

Answer DeleteHalfOf(Stage& stage, Stopwatch& watch, Template origin)
{
    std::unique_ptr<Peer> peer = stage.OpenCopy(origin);
    (void)peer->Query(kItemsCheck, RowOrder::kAny);   // what is needed first is not counted
    watch.Start();
    peer->Begin();
    peer->Execute("DELETE FROM items WHERE qty < 50");
    peer->Commit();
    watch.Stop();
    const Answer answer = peer->Query(kItemsCheck, RowOrder::kAny);
    stage.Discard(std::move(peer));
    return answer;
}

Answer DeleteHalf(Stage& stage, Stopwatch& watch)
{
    return DeleteHalfOf(stage, watch, Template::kPlain);
}

Answer DeleteHalfIndexed(Stage& stage, Stopwatch& watch)
{
    return DeleteHalfOf(stage, watch, Template::kIndexed);
}

// On a database that was just opened; the index is dropped again.
Answer CreateIndexOn(Stage& stage, Stopwatch& watch, const std::string& column,
                     const std::string& key)
{
    Peer& peer = stage.Shared("create-index", Template::kPlain);
    peer.Close();
    peer.Open(stage.FolderOf("create-index"));
    watch.Start();
    peer.Begin();
    peer.Execute("CREATE INDEX made ON items (" + column + ")");
    peer.Commit();
    watch.Stop();
    const Answer answer =
        peer.Query("SELECT k, name FROM items WHERE " + column + " = " + key, RowOrder::kAny);
    peer.Begin();
    peer.DropIndex("items", "made");
    peer.Commit();
    return answer;
}

Answer CreateIntegerIndex(Stage& stage, Stopwatch& watch)
{
    return CreateIndexOn(stage, watch, "k", "77");
}

Answer CreateStringIndex(Stage& stage, Stopwatch& watch)
{
    return CreateIndexOn(stage, watch, "name", "'" + ItemName(77, stage.ItemCount()) + "'");
}

// ---- opening

Answer OpenAndQuery(Stage& stage, Stopwatch& watch, const std::string& sql, bool cold = false)
{
    Peer& peer = stage.Shared("opening", Template::kIndexed);
    peer.Close();
    if (cold)
        DropFromCache(stage.FolderOf("opening"));
    watch.Start();
    peer.Open(stage.FolderOf("opening"));
    const Answer answer = peer.Query(sql, RowOrder::kAny);
    watch.Stop();
    return answer;
}

Answer OpenAndReadSome(Stage& stage, Stopwatch& watch, bool cold)
{
    Answer answer;
    for (uint32_t item : ChosenItems(stage, kReopenings))
        answer = Sum(answer, OpenAndQuery(stage, watch, RowIDText(item), cold));
    return answer;
}

Answer OpenAndReadOne(Stage& stage, Stopwatch& watch)
{
    return OpenAndReadSome(stage, watch, false);
}

Answer OpenAndReadOneCold(Stage& stage, Stopwatch& watch)
{
    return OpenAndReadSome(stage, watch, true);
}

Answer OpenAndAggregate(Stage& stage, Stopwatch& watch)
{
    return OpenAndQuery(stage, watch, "SELECT SUM(qty), COUNT(qty), AVG(price) FROM items");
}

// A SELECT on the reading database.
Workload Select(const char* name, const char* sql, RowOrder order = RowOrder::kAny)
{
    return {.name = name, .sql = sql, .order = order, .warmUp = true};
}

// kPointReads of them.
Workload Read(const char* name, WorkloadRun run, WorkloadRun runPrepared)
{
    return {.name = name,
            .sql = nullptr,
            .run = run,
            .runPrepared = runPrepared,
            .operations = kPointReads,
            .warmUp = true};
}

Workload Do(const char* name, WorkloadRun run, uint32_t operations = 1)
{
    return {.name = name, .sql = nullptr, .run = run, .operations = operations};
}

// kCommits of them.
Workload Commit(const char* name, WorkloadRun run)
{
    return {.name = name, .sql = nullptr, .run = run, .operations = kCommits, .withWAL = true};
}

}   // namespace

const std::vector<Workload>& Workloads()
{
    static const std::vector<Workload> workloads = {
        Do("bulk insert, values", InsertValues),
        // DuckDB takes some hundred microseconds for each statement.
        {.name = "bulk insert, texts", .sql = nullptr, .run = InsertTexts, .withDuckDB = false},
        Commit("commit of one row", SmallCommits),
        Commit("commit of one row, an index", SmallCommitsOneIndex),
        Commit("commit of one row, 2 indexes", SmallCommitsIndexed),
        Read("read by row id", ReadByRowID, ReadByRowIDPrepared),
        Read("read by indexed integer", ReadByInteger, ReadByIntegerPrepared),
        Read("read by indexed string", ReadByString, ReadByStringPrepared),
        Select("COUNT", kCount),
        Select("filter by equality, no index", "SELECT k, name FROM items WHERE owner = 5"),
        Select("filter keeping 1 %", "SELECT k, name, price FROM items WHERE price < 100.0"),
        Select("all rows, 4 columns", "SELECT k, name, price, day FROM items", RowOrder::kFixed),
        Select("SUM, COUNT, AVG", "SELECT SUM(qty), COUNT(qty), AVG(price) FROM items"),
        Select("LIKE '%word%'", "SELECT COUNT(*) FROM items WHERE note LIKE '%saffron%'"),
        Select("GROUP BY, 7 groups", "SELECT grp, COUNT(*), SUM(qty) FROM items GROUP BY grp"),
        Select("GROUP BY, N/10 groups",
               "SELECT owner, COUNT(*), SUM(qty) FROM items GROUP BY owner"),
        Select("join, aggregate",
               "SELECT COUNT(*), SUM(i.qty) FROM items i, owners o "
               "WHERE i.owner = o.id AND o.region = 3"),
        Select("join, aggregate, no index",
               "SELECT COUNT(*), SUM(i.qty) FROM items i, owners o "
               "WHERE i.owner = o.code AND o.region = 3"),
        Select("join, N/2 rows",
               "SELECT i.k, i.name, o.city FROM items i, owners o "
               "WHERE i.owner = o.id AND i.qty < 50"),
        Select("join of three tables",
               "SELECT COUNT(*), SUM(i.qty) FROM items i, owners o, regions r "
               "WHERE i.owner = o.id AND o.region = r.id AND r.title = 'region 3'"),
        Select("ORDER BY string", "SELECT name, k FROM items ORDER BY name", RowOrder::kFixed),
        Select("ORDER BY integer DESC", "SELECT k, qty FROM items ORDER BY k DESC",
               RowOrder::kFixed),
        Select("DISTINCT, 1,000 values", "SELECT DISTINCT cat FROM items"),
        Do("update all, commit", UpdateAll),
        Do("update by row id", UpdateByRowID, kPointUpdates),
        Do("delete half, commit", DeleteHalf),
        Do("delete half, commit, 2 indexes", DeleteHalfIndexed),
        Do("rollback of update all", RollbackUpdate),
        Do("create index on integer, commit", CreateIntegerIndex),
        Do("create index on string, commit", CreateStringIndex),
        Do("open, read by row id", OpenAndReadOne, kReopenings),
        Do("open, read by row id, cold", OpenAndReadOneCold, kReopenings),
        Do("open, SUM, COUNT, AVG", OpenAndAggregate),
    };
    return workloads;
}

const std::vector<Workload>& StarWorkloads()
{
    static const std::vector<Workload> workloads = [] {
        std::vector<Workload> made;
        for (const StarQuery& query : StarQueries())
            made.push_back({.name = query.name,
                            .sql = query.sql,
                            .order = query.order,
                            .database = Template::kStar,
                            .warmUp = true});
        return made;
    }();
    return workloads;
}

Answer RunWorkload(const Workload& workload, Stage& stage, Stopwatch& watch)
{
    if (workload.sql == nullptr)
        return workload.run(stage, watch);
    Peer& peer = stage.Reading(workload.database);
    watch.Start();
    const Answer answer = peer.Query(workload.sql, workload.order);
    watch.Stop();
    return answer;
}

}   // namespace vela::bench
