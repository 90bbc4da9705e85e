#include "bench/Stage.h"

#include <algorithm>
#include <filesystem>

#include "bench/SQLitePeer.h"
#include "bench/VelaPeer.h"

namespace vela::bench {

namespace {

namespace fs = std::filesystem;

constexpr uint32_t kBatch = 4096;

}   // namespace

Stage::Stage(Engine engine, uint32_t itemCount, std::string folder, int sqliteCacheMiB)
    : mEngine(engine),
      mItemCount(itemCount),
      mFolder(std::move(folder)),
      mSQLiteCacheMiB(sqliteCacheMiB)
{
    fs::remove_all(mFolder);
    fs::create_directories(mFolder);
}

Stage::~Stage()
{
    mShared.clear();
    std::error_code ignored;
    fs::remove_all(mFolder, ignored);
}

Peer& Stage::Shared(const std::string& name, Template origin)
{
    std::unique_ptr<Peer>& peer = mShared[name];
    if (!peer) {
        fs::copy(NeedTemplate(origin), FolderOf(name));
        peer = MakePeer();
        peer->Open(FolderOf(name));
    }
    return *peer;
}

std::unique_ptr<Peer> Stage::OpenEmpty()
{
    fs::create_directory(FolderOf("single"));
    std::unique_ptr<Peer> peer = MakePeer();
    peer->Open(FolderOf("single"));
    return peer;
}

std::unique_ptr<Peer> Stage::OpenCopy(Template origin)
{
    fs::copy(NeedTemplate(origin), FolderOf("single"));
    std::unique_ptr<Peer> peer = MakePeer();
    peer->Open(FolderOf("single"));
    return peer;
}

void Stage::Discard(std::unique_ptr<Peer> peer)
{
    peer->Close();
    fs::remove_all(FolderOf("single"));
}

std::unique_ptr<Peer> Stage::MakePeer() const
{
    if (mEngine == Engine::kVela)
        return std::make_unique<VelaPeer>();
    return std::make_unique<SQLitePeer>(mSQLiteCacheMiB);
}

std::string Stage::NeedTemplate(Template origin)
{
    std::string& folder = mTemplates[origin];
    if (!folder.empty())
        return folder;
    const bool indexed = origin == Template::kIndexed;
    folder = FolderOf(indexed ? "template-indexed" : "template-plain");
    if (indexed)
        fs::copy(NeedTemplate(Template::kPlain), folder);
    else
        fs::create_directory(folder);
    const std::unique_ptr<Peer> peer = MakePeer();
    peer->Open(folder);
    if (indexed)
        CreateIndexes(peer.get());
    else
        LoadTables(peer.get(), mItemCount);
    peer->Close();
    return folder;
}

void LoadTables(Peer* peer, uint32_t itemCount)
{
    peer->Begin();
    peer->CreateTable("items", kItemColumns);
    peer->CreateTable("owners", kOwnerColumns);
    peer->CreateTable("regions", kRegionColumns);
    for (uint32_t first = 0; first < itemCount; first += kBatch)
        peer->AddItems(MakeItems(first, std::min(kBatch, itemCount - first), itemCount));
    for (uint32_t i = 0; i < OwnerCount(itemCount); i++)
        peer->Execute(InsertOwnerText(i, itemCount));
    for (int32_t i = 0; i < kRegionCount; i++)
        peer->Execute(InsertRegionText(i));
    peer->Commit();
}

void CreateIndexes(Peer* peer)
{
    peer->Begin();
    peer->Execute("CREATE INDEX by_k ON items (k)");
    peer->Execute("CREATE INDEX by_name ON items (name)");
    peer->Execute("CREATE INDEX by_id ON owners (id)");
    peer->Commit();
}

}   // namespace vela::bench
