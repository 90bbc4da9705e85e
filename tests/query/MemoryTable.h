#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "engine/storage/TableColumns.h"
#include "engine/storage/VelaTable.h"
#include "tests/core/TestValues.h"

namespace vela::test {

// A cell of a MemoryTable; without a value GetValue of it fails.
using Cell = std::optional<VelaValue>;

// MemoryTable is a table for tests: rows with any row ids in any order, cells of any type, cells
// that can't be read. Column 0 is _rowid. It counts what is asked of it.
class MemoryTable : public VelaTable {
public:
    explicit MemoryTable(const char* name);
    ~MemoryTable() override;

    // Column ids are 1, 2, 3 ...
    MemoryTable& AddColumn(const char* name, VelaDataType type);
    // One cell for each column but _rowid.
    MemoryTable& Row(uint32_t rowID, std::vector<Cell> cells);
    // From now on, Columns() answers.
    MemoryTable& OfferColumns();
    // From now on, FindRowsByIndex answers for that column, while all cells can be read and have
    // its type.
    MemoryTable& OfferIndex(long number);

    [[nodiscard]] const string& TableName() const override { return mName; }
    [[nodiscard]] long QtyColumns() const override { return static_cast<long>(mInfos.size()) + 1; }
    [[nodiscard]] const VelaColumnInfo* Column(long number) const override;
    [[nodiscard]] size_t QtyRows() override { return mRows.size(); }
    void GetRowIDs(SimpleVector<uint32_t>* rowIDs) override;
    [[nodiscard]] bool HasRow(uint32_t rowID) override { return mRows.count(rowID) > 0; }
    bool GetValue(uint32_t rowID, long number, VelaValue* value) override;
    // Writes the values and notes "rowID: column id=text ..." in updates.
    bool UpdateRow(uint32_t rowID, VelaRow& values, bool takeOwnership) override;
    void DeleteRow(uint32_t) override {}
    bool FindRowsByIndex(long number, const VelaValue& key,
                         SimpleVector<uint32_t>* rowIDs) override;
    [[nodiscard]] TableColumns* Columns() override;

    std::vector<std::string> updates;
    int rowIDCalls = 0;
    int columnsCalls = 0;
    int indexCalls = 0;

private:
    class MemoryColumns;

    string mName;
    std::vector<VelaColumnInfo> mInfos;
    std::vector<uint32_t> mOrder;
    std::map<uint32_t, std::vector<Cell>> mRows;
    bool mOffersColumns = false;
    std::set<long> mIndexes;
    std::unique_ptr<MemoryColumns> mColumns;
};

}   // namespace vela::test
