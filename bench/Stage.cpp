#include "bench/Stage.h"

#include <algorithm>
#include <filesystem>

#include "bench/StarSchema.h"

namespace vela::bench {

namespace {

namespace fs = std::filesystem;

constexpr uint32_t kBatch = 4096;

const char* NameOf(Template origin)
{
    switch (origin) {
        case Template::kPlain:
            return "plain";
        case Template::kOneIndex:
            return "one-index";
        case Template::kIndexed:
            return "indexed";
        case Template::kStar:
            return "star";
    }
    Die("no such template");
}

}   // namespace

Stage::Stage(PeerMaker makePeer, uint32_t rowCount, std::string folder)
    : mMakePeer(std::move(makePeer)), mRowCount(rowCount), mFolder(std::move(folder))
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

Peer& Stage::Reading(Template origin)
{
    return Shared(std::string("reading-") + NameOf(origin), origin);
}

Peer& Stage::Shared(const std::string& name, Template origin)
{
    std::unique_ptr<Peer>& peer = mShared[name];
    if (!peer) {
        fs::copy(NeedTemplate(origin), FolderOf(name));
        peer = mMakePeer();
        peer->Open(FolderOf(name));
    }
    return *peer;
}

std::unique_ptr<Peer> Stage::OpenEmpty()
{
    fs::create_directory(FolderOf("single"));
    std::unique_ptr<Peer> peer = mMakePeer();
    peer->Open(FolderOf("single"));
    return peer;
}

std::unique_ptr<Peer> Stage::OpenCopy(Template origin)
{
    fs::copy(NeedTemplate(origin), FolderOf("single"));
    std::unique_ptr<Peer> peer = mMakePeer();
    peer->Open(FolderOf("single"));
    return peer;
}

void Stage::Discard(std::unique_ptr<Peer> peer)
{
    peer->Close();
    fs::remove_all(FolderOf("single"));
}

std::string Stage::NeedTemplate(Template origin)
{
    std::string& folder = mTemplates[origin];
    if (!folder.empty())
        return folder;
    folder = FolderOf(std::string("template-") + NameOf(origin));
    if (origin == Template::kOneIndex || origin == Template::kIndexed)
        fs::copy(NeedTemplate(Template::kPlain), folder);
    else
        fs::create_directory(folder);
    const std::unique_ptr<Peer> peer = mMakePeer();
    peer->Open(folder);
    Fill(peer.get(), origin);
    peer->Close();
    return folder;
}

void Stage::Fill(Peer* peer, Template origin) const
{
    if (origin == Template::kStar)
        LoadStarSchema(peer, mRowCount);
    else if (origin == Template::kPlain)
        LoadTables(peer, mRowCount);
    else
        CreateIndexes(peer, origin);
}

void LoadTables(Peer* peer, uint32_t itemCount)
{
    peer->Begin();
    peer->CreateTable("items", kItemColumns);
    peer->CreateTable("owners", kOwnerColumns);
    peer->CreateTable("regions", kRegionColumns);
    for (uint32_t first = 0; first < itemCount; first += kBatch)
        peer->AddRows("items", MakeItemRows(first, std::min(kBatch, itemCount - first), itemCount));
    std::vector<Row> rows;
    for (uint32_t i = 0; i < OwnerCount(itemCount); i++)
        rows.push_back(MakeOwnerRow(i, itemCount));
    peer->AddRows("owners", rows);
    rows.clear();
    for (int32_t i = 0; i < kRegionCount; i++)
        rows.push_back(MakeRegionRow(i));
    peer->AddRows("regions", rows);
    peer->Commit();
}

void CreateIndexes(Peer* peer, Template origin)
{
    peer->Begin();
    peer->Execute("CREATE INDEX by_k ON items (k)");
    if (origin == Template::kIndexed) {
        peer->Execute("CREATE INDEX by_name ON items (name)");
        peer->Execute("CREATE INDEX by_id ON owners (id)");
    }
    peer->Commit();
}

}   // namespace vela::bench
