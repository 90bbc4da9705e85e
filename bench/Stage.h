#pragma once

#include <map>
#include <memory>
#include <string>

#include "bench/Peer.h"

namespace vela::bench {

enum class Engine { kVela, kSQLite };

// The database that another one starts as: all tables without an index, or with indexes on
// items (k), items (name) and owners (id).
enum class Template { kPlain, kIndexed };

// Stage holds what the workloads of one size need of one engine: databases in folders below its
// own, made when they are first asked for. The folder is removed in the end.
class Stage {
public:
    Stage(Engine engine, uint32_t itemCount, std::string folder, int sqliteCacheMiB);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    [[nodiscard]] uint32_t ItemCount() const { return mItemCount; }

    // The open database that all reading workloads share.
    [[nodiscard]] Peer& Reading() { return Shared("reading", Template::kIndexed); }
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
    [[nodiscard]] std::unique_ptr<Peer> MakePeer() const;
    [[nodiscard]] std::string NeedTemplate(Template origin);

    Engine mEngine;
    uint32_t mItemCount;
    std::string mFolder;
    int mSQLiteCacheMiB;
    std::map<std::string, std::unique_ptr<Peer>> mShared;
    std::map<Template, std::string> mTemplates;   // their folders
};

// Fills an empty database: tables and rows, committed.
void LoadTables(Peer* peer, uint32_t itemCount);
void CreateIndexes(Peer* peer);

}   // namespace vela::bench
