#pragma once

#include "engine/storage/VelaTable.h"

namespace vela {

// The table _TABLES, which every database has: one column without a name and one row, of row id 1, that holds the text
// "_TABLES". It can't be changed.
class VelaTablesTable : public VelaTable {
public:
    VelaTablesTable();

    [[nodiscard]] const string& TableName() const override { return mName; }
    [[nodiscard]] long QtyColumns() const override { return 1; }
    [[nodiscard]] const VelaColumnInfo* Column(long number) const override
    {
        return number == 0 ? &mColumn : nullptr;
    }
    [[nodiscard]] size_t QtyRows() override { return 1; }
    void GetRowIDs(SimpleVector<uint32_t>* rowIDs) override;
    bool GetValue(uint32_t rowID, long number, VelaValue* value) override;
    void DeleteRow(uint32_t rowID) override;

private:
    string mName;
    VelaColumnInfo mColumn;
};

}   // namespace vela
