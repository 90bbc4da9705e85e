#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "bench/Peer.h"

namespace vela::bench {

// The database that another one starts as.
enum class Template {
    kPlain,      // the shop, without an index
    kOneIndex,   // with an index on items (k)
    kIndexed,    // with indexes on items (k), items (name) and owners (id)
    kStar        // the star schema, with an index on the key of each dimension
};

// Stage holds what the workloads of one size need of one engine: databases in folders below its
// own, made when they are first asked for. The folder is removed in the end.
class Stage {
public:
    using PeerMaker = std::function<std::unique_ptr<Peer>()>;

    // rowCount: of items, or of lineorders.
    Stage(PeerMaker makePeer, uint32_t rowCount, std::string folder);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    [[nodiscard]] uint32_t ItemCount() const { return mRowCount; }

    // The open database of a kind that all reading workloads share.
    [[nodiscard]] Peer& Reading(Template origin = Template::kIndexed);
    // An open database of that name, a copy of the template when it is new.
    [[nodiscard]] Peer& Shared(const std::string& name, Template origin);
    [[nodiscard]] std::string FolderOf(const std::string& name) const
    {
        return mFolder + "/" + name;
    }
    // A new database for one run; Discard closes and removes it.
    [[nodiscard]] std::unique_ptr<Peer> OpenEmpty();
    [[nodiscard]] std::unique_ptr<Peer> OpenCopy(Template origin);
    void Discard(std::unique_ptr<Peer> peer);

private:
    [[nodiscard]] std::string NeedTemplate(Template origin);
    void Fill(Peer* peer, Template origin) const;

    PeerMaker mMakePeer;
    uint32_t mRowCount;
    std::string mFolder;
    std::map<std::string, std::unique_ptr<Peer>> mShared;
    std::map<Template, std::string> mTemplates;   // their folders
};

// Fills an empty database with the shop's tables and rows, committed.
void LoadTables(Peer* peer, uint32_t itemCount);
void CreateIndexes(Peer* peer, Template origin);

}   // namespace vela::bench
