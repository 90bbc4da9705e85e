#pragma once

#include <string>
#include <vector>

#include "bench/Answer.h"
#include "bench/BenchData.h"

namespace vela::bench {

// A benchmark that can't go on has no result worth reading: tells why and ends the program with 2.
[[noreturn]] void Die(const std::string& message);

// Peer is one engine with one open database, driven through the engine's own interface. Statements
// are the same text for every engine. Whatever fails ends the program.
class Peer {
public:
    Peer() = default;
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;
    virtual ~Peer() = default;

    // The database in a folder that is there; made when the folder is empty.
    virtual void Open(const std::string& folder) = 0;
    virtual void Close() = 0;

    virtual void Begin() = 0;
    // Returns when the changes are on the device.
    virtual void Commit() = 0;
    virtual void Rollback() = 0;
    // One statement that returns no rows.
    virtual void Execute(const std::string& sql) = 0;
    // Reads every value of every row.
    [[nodiscard]] virtual Answer Query(const std::string& sql, RowOrder order) = 0;
    // The only value of the only row.
    [[nodiscard]] virtual double QueryNumber(const std::string& sql) = 0;

    // The table has a column _rowid that numbers the rows from 1.
    virtual void CreateTable(const std::string& name, const std::string& columns) = 0;
    virtual void DropIndex(const std::string& table, const std::string& index) = 0;
    // Appends rows by the quickest way that takes values instead of text.
    virtual void AddRows(const std::string& table, const std::vector<Row>& rows) = 0;
};

}   // namespace vela::bench
