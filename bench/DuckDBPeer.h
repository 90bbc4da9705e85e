#pragma once

#include <map>

#include "bench/DuckDBLibrary.h"
#include "bench/Peer.h"

namespace vela::bench {

// DuckDB on one file of a folder, with one thread and its own settings otherwise: its commits are on
// the device when they return. Rows are added by its appender; results are read chunk by chunk.
class DuckDBPeer : public Peer {
public:
    // library must outlive this.
    explicit DuckDBPeer(const DuckDBLibrary& library) : mLibrary(library) {}
    ~DuckDBPeer() override { Close(); }

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
    // Only for tables that this object has filled alone since it was opened: it numbers their rows.
    void AddRows(const std::string& table, const std::vector<Row>& rows) override;

private:
    using Handle = DuckDBLibrary::Handle;

    // The caller destroys it.
    [[nodiscard]] DuckDBLibrary::Result Run(const std::string& sql);
    void Check(int result, const std::string& what) const;
    void Append(Handle appender, const Cell& cell) const;
    void DigestChunk(Handle chunk, const std::vector<DuckDBLibrary::Type>& types,
                     AnswerDigest* digest) const;

    const DuckDBLibrary& mLibrary;
    Handle mDatabase = nullptr;
    Handle mConnection = nullptr;
    std::map<std::string, int32_t> mRowCounts;
};

}   // namespace vela::bench
