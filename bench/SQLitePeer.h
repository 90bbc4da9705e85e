#pragma once

#include <sqlite3.h>

#include <string_view>

#include "bench/Peer.h"

namespace vela::bench {

// SQLite on one file of a folder, with the settings that promise what Vela's commits promise: every
// commit flushed to the device (synchronous=FULL). LIKE is case-sensitive, as it is in Vela.
class SQLitePeer : public Peer {
public:
    // What its user gets, and a write-ahead log.
    enum class Journal { kRollback, kWAL };

    // cacheMiB: the page cache; 0 leaves SQLite's own default, 2 MB.
    SQLitePeer(Journal journal, int cacheMiB) : mJournal(journal), mCacheMiB(cacheMiB) {}
    ~SQLitePeer() override { Close(); }

    void Open(const std::string& folder) override;
    void Close() override;

    void Begin() override { Execute("BEGIN"); }
    void Commit() override { Execute("COMMIT"); }
    void Rollback() override { Execute("ROLLBACK"); }
    void Execute(const std::string& sql) override;
    [[nodiscard]] Answer Query(const std::string& sql, RowOrder order) override;
    [[nodiscard]] double QueryNumber(const std::string& sql) override;

    void CreateTable(const std::string& name, const std::string& columns) override;
    void DropIndex(const std::string& table, const std::string& index) override;
    void AddRows(const std::string& table, const std::vector<Row>& rows) override;

    // Prepares a SELECT with one parameter and keeps it until the next one or Close; then runs it.
    void Prepare(const std::string& sql);
    void ReadBound(int64_t key, AnswerDigest* digest);
    void ReadBound(std::string_view key, AnswerDigest* digest);

private:
    [[nodiscard]] sqlite3_stmt* Compile(const std::string& sql);
    void Check(int result, const std::string& what);
    void ReadRows(sqlite3_stmt* statement, const std::string& what, AnswerDigest* digest);

    Journal mJournal;
    int mCacheMiB;
    sqlite3* mDatabase = nullptr;
    sqlite3_stmt* mPrepared = nullptr;
};

}   // namespace vela::bench
