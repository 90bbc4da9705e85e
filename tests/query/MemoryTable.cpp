#include "tests/query/MemoryTable.h"

#include <algorithm>

namespace vela::test {

// Row numbers over a MemoryTable. A column with a cell that can't be read can't be loaded.
class MemoryTable::MemoryColumns : public TableColumns {
public:
    explicit MemoryColumns(MemoryTable* table) : mTable(table), mData(table->mInfos.size()) {}

    [[nodiscard]] uint32_t RowCount() override
    {
        return static_cast<uint32_t>(mTable->mOrder.size());
    }
    [[nodiscard]] const uint32_t* RowIDs() override { return mTable->mOrder.data(); }
    [[nodiscard]] uint32_t RowNumberOf(uint32_t rowID) override
    {
        const auto& order = mTable->mOrder;
        const auto found = std::find(order.begin(), order.end(), rowID);
        return found == order.end() ? kInvalidRowID : static_cast<uint32_t>(found - order.begin());
    }
    [[nodiscard]] const ColumnData* Load(long number) override
    {
        if (number < 1 || number >= mTable->QtyColumns())
            return nullptr;
        std::shared_ptr<ColumnData>& data = mData[static_cast<size_t>(number - 1)];
        if (!data)
            data = Read(number);
        return data.get();
    }
    [[nodiscard]] const ColumnData* Loaded(long number) const override
    {
        const bool isThere = number >= 1 && number < mTable->QtyColumns();
        return isThere ? mData[static_cast<size_t>(number - 1)].get() : nullptr;
    }
    [[nodiscard]] std::shared_ptr<const ColumnData> Share(long number) override
    {
        return Loaded(number) ? mData[static_cast<size_t>(number - 1)] : nullptr;
    }
    [[nodiscard]] std::shared_ptr<const RowIDList> ShareRowIDs() override
    {
        return std::make_shared<RowIDList>(mTable->mOrder.begin(), mTable->mOrder.end());
    }
    void Prepare(const std::vector<bool>& numbers) override
    {
        for (size_t number = 1; number < numbers.size(); number++) {
            if (numbers[number])
                (void)Load(static_cast<long>(number));
        }
    }
    bool GetValue(uint32_t row, long number, VelaValue* value) override
    {
        return row < RowCount() && mTable->GetValue(RowIDs()[row], number, value);
    }

private:
    // Null when a cell can't be read.
    std::shared_ptr<ColumnData> Read(long number)
    {
        auto data = std::make_shared<ColumnData>();
        data->Start(mTable->Column(number)->Type());
        for (uint32_t row = 0; row < RowCount(); row++) {
            VelaValue value;
            if (!GetValue(row, number, &value) || !data->Append(value))
                return nullptr;
        }
        return data;
    }

    MemoryTable* mTable;
    std::vector<std::shared_ptr<ColumnData>> mData;
};

MemoryTable::MemoryTable(const char* name) : mName(name) {}

MemoryTable::~MemoryTable() = default;

MemoryTable& MemoryTable::AddColumn(const char* name, VelaDataType type)
{
    mInfos.push_back({name, Null(type), static_cast<uint32_t>(mInfos.size() + 1)});
    return *this;
}

MemoryTable& MemoryTable::Row(uint32_t rowID, std::vector<Cell> cells)
{
    mOrder.push_back(rowID);
    mRows[rowID] = std::move(cells);
    return *this;
}

MemoryTable& MemoryTable::OfferColumns()
{
    mOffersColumns = true;
    return *this;
}

MemoryTable& MemoryTable::OfferIndex(long number)
{
    mIndexes.insert(number);
    return *this;
}

const VelaColumnInfo* MemoryTable::Column(long number) const
{
    if (number == 0)
        return &RowIDColumn();
    if (number < 0 || number >= QtyColumns())
        return nullptr;
    return &mInfos[static_cast<size_t>(number - 1)];
}

void MemoryTable::GetRowIDs(SimpleVector<uint32_t>* rowIDs)
{
    rowIDCalls++;
    rowIDs->clear();
    for (const uint32_t rowID : mOrder)
        rowIDs->push_back(rowID);
}

bool MemoryTable::GetValue(uint32_t rowID, long number, VelaValue* value)
{
    if (number < 0 || number >= QtyColumns())
        return false;
    if (number == 0) {
        value->SetInteger(static_cast<int32_t>(rowID));
        return true;
    }
    const auto found = mRows.find(rowID);
    if (found == mRows.end() || !found->second[static_cast<size_t>(number - 1)])
        return false;
    *value = *found->second[static_cast<size_t>(number - 1)];
    return true;
}

bool MemoryTable::UpdateRow(uint32_t rowID, VelaRow& values, bool)
{
    std::string note = std::to_string(rowID) + ":";
    for (const VelaValueWithID* value : values) {
        const string text = value->GetString();
        note += " " + std::to_string(value->ColumnID()) + "=" + std::string(text.View());
        if (value->ColumnID() != 0)
            mRows[rowID][value->ColumnID() - 1] = *value;
    }
    mColumns.reset();   // good until the next change
    updates.push_back(note);
    return true;
}

bool MemoryTable::FindRowsByIndex(long number, const VelaValue& key, SimpleVector<uint32_t>* rowIDs)
{
    indexCalls++;
    rowIDs->clear();
    if (mIndexes.count(number) == 0 || key.IsNull() || key.GetType() != Column(number)->Type())
        return false;
    const bool isText = IsTextBacked(key.GetType());
    for (const uint32_t rowID : mOrder) {
        VelaValue value;
        if (!GetValue(rowID, number, &value) || value.GetType() != key.GetType()) {
            rowIDs->clear();
            return false;
        }
        if (value.IsNull())
            continue;
        if (isText ? value.TextView() == key.TextView() : value.GetDouble() == key.GetDouble())
            rowIDs->push_back(rowID);
    }
    return true;
}

TableColumns* MemoryTable::Columns()
{
    columnsCalls++;
    if (!mOffersColumns)
        return nullptr;
    if (!mColumns)
        mColumns = std::make_unique<MemoryColumns>(this);
    return mColumns.get();
}

}   // namespace vela::test
