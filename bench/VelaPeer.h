#pragma once

#include <memory>

#include "bench/Peer.h"
#include "engine/storage/VelaDatabase.h"

namespace vela::bench {

// Vela on a folder. Rows are added through VelaTable::AddRow, statements run by VelaSQLExecute and
// VelaSQLQuery, results read by VelaTable::GetValue.
class VelaPeer : public Peer {
public:
    void Open(const std::string& folder) override;
    void Close() override { mDatabase.reset(); }

    void Begin() override {}   // a transaction begins by itself
    void Commit() override;
    void Rollback() override { mDatabase->Rollback(); }
    void Execute(const std::string& sql) override;
    [[nodiscard]] Answer Query(const std::string& sql, RowOrder order) override;
    [[nodiscard]] double QueryNumber(const std::string& sql) override;

    void CreateTable(const std::string& name, const std::string& columns) override;
    void DropIndex(const std::string& table, const std::string& index) override;
    void AddRows(const std::string& table, const std::vector<Row>& rows) override;

private:
    [[nodiscard]] std::unique_ptr<VelaTable> Select(const std::string& sql);

    std::unique_ptr<VelaDatabase> mDatabase;
};

}   // namespace vela::bench
