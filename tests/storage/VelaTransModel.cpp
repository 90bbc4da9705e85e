#include "tests/storage/VelaTransModel.h"

#include <algorithm>

#include "engine/storage/RecordFormat.h"
#include "engine/storage/VelaTable.h"
#include "tests/storage/StorageTesting.h"

namespace vela {

namespace {

// A column that is null is taken out wherever it is named.
VelaTransModel::Values WithoutNullColumns(const VelaTransModel::Values& values)
{
    VelaTransModel::Values present;
    for (const auto& item : values)
        if (std::none_of(values.begin(), values.end(), [&item](const auto& other) {
                return other.first == item.first && other.second.IsNull();
            }))
            present.push_back(item);
    return present;
}

// The first value of a column; null when there is none.
template <class V>
auto FindValue(V& values, uint32_t columnID) -> decltype(&values[0].second)
{
    for (auto& [id, value] : values)
        if (id == columnID)
            return &value;
    return nullptr;
}

// Each of changes in turn replaces the value of its column, or is appended.
void Merge(VelaTransModel::Values* values, const VelaTransModel::Values& changes)
{
    for (const auto& [columnID, value] : changes) {
        if (VelaValue* old = FindValue(*values, columnID))
            *old = value;
        else
            values->emplace_back(columnID, value);
    }
}

}   // namespace

const VelaTransModel::Column* VelaTransModel::FindColumn(uint32_t columnID) const
{
    static const Column kRowID{0, VelaValue::Null(kTypeInteger)};
    if (columnID == 0)
        return &kRowID;
    for (const Column& column : mColumns)
        if (column.columnID == columnID)
            return &column;
    return nullptr;
}

void VelaTransModel::Coerce(Values* values) const
{
    for (auto& [columnID, value] : *values)
        if (const Column* column = FindColumn(columnID))
            value.CoerceToType(column->defaultValue.GetType());
}

const VelaTransModel::Change* VelaTransModel::FindChange(uint32_t rowID) const
{
    for (const Change& change : mChanges)
        if (change.rowID == rowID)
            return &change;
    return nullptr;
}

VelaTransModel::Change* VelaTransModel::FindChange(uint32_t rowID)
{
    return const_cast<Change*>(std::as_const(*this).FindChange(rowID));
}

bool VelaTransModel::IsDeleted(uint32_t rowID) const
{
    return std::find(mDeletions.begin(), mDeletions.end(), rowID) != mDeletions.end();
}

const VelaTransModel::Record* VelaTransModel::FindRecord(uint32_t rowID) const
{
    const auto found = mPositions.find(rowID);
    return found == mPositions.end() ? nullptr : &mRecords[found->second];
}

uint32_t VelaTransModel::AddRow(Values values)
{
    Coerce(&values);
    uint32_t rowID = NextUnusedRowID();
    for (const auto& [columnID, value] : values) {
        if (columnID != 0)
            continue;
        rowID = static_cast<uint32_t>(value.GetInteger());
        if (ContainsRow(rowID))
            return kInvalidRowID;
    }
    mChanges.push_back({rowID, true, values});
    for (Index& index : mIndexes)
        AddToIndex(&index, rowID);
    mLastUsedRowID = std::max(mLastUsedRowID, rowID);
    mLastRowID = rowID;
    return rowID;
}

void VelaTransModel::UpdateRow(uint32_t rowID, Values values)
{
    std::vector<Index*> touched;
    for (Index& index : mIndexes)
        for (uint32_t columnID : index.columnIDs)
            if (FindValue(values, columnID) && (touched.empty() || touched.back() != &index))
                touched.push_back(&index);
    Coerce(&values);
    if (Change* change = FindChange(rowID)) {
        Merge(&change->values, values);
    } else {
        mChanges.push_back({rowID, false, {}});
        Merge(&mChanges.back().values, values);   // a column named twice has its last value
    }
    for (Index* index : touched)
        AddToIndex(index, rowID);
}

void VelaTransModel::DeleteRow(uint32_t rowID)
{
    mDeletions.push_back(rowID);
    std::erase_if(mChanges, [rowID](const Change& c) { return c.rowID == rowID; });
    for (Index& index : mIndexes)
        index.entries.erase(rowID);
}

bool VelaTransModel::ContainsRow(uint32_t rowID) const
{
    for (const Index& index : mIndexes)
        if (index.entries.count(rowID))
            return true;
    return FindChange(rowID) != nullptr || FindRecord(rowID) != nullptr;
}

bool VelaTransModel::GetValue(uint32_t rowID, size_t number, bool useIndexes,
                              VelaValue* value) const
{
    const Column& column = mColumns[number - 1];
    if (const Change* change = FindChange(rowID)) {
        if (const VelaValue* held = FindValue(change->values, column.columnID)) {
            *value = *held;
            return true;
        }
    }
    if (useIndexes) {
        for (const Index& index : mIndexes) {
            const auto place =
                std::find(index.columnIDs.begin(), index.columnIDs.end(), column.columnID);
            const auto entry = index.entries.find(rowID);
            if (place == index.columnIDs.end() || entry == index.entries.end())
                continue;
            *value = entry->second[static_cast<size_t>(place - index.columnIDs.begin())];
            return true;
        }
    }
    const Record* record = FindRecord(rowID);
    if (record == nullptr)
        return false;
    const VelaValue* stored = FindValue(record->values, column.columnID);
    *value = stored ? *stored : column.defaultValue;
    value->CoerceToType(column.defaultValue.GetType());
    return true;
}

std::vector<uint32_t> VelaTransModel::GetRowIDs() const
{
    std::vector<uint32_t> rowIDs;
    for (const Record& record : mRecords)
        if (record.live && !IsDeleted(record.rowID))
            rowIDs.push_back(record.rowID);
    for (const Change& change : mChanges)
        if (change.isInsert && !IsDeleted(change.rowID))
            rowIDs.push_back(change.rowID);
    return rowIDs;
}

std::vector<uint32_t> VelaTransModel::RowsWith(size_t number, const VelaValue& key) const
{
    std::vector<uint32_t> rows;
    for (uint32_t rowID : GetRowIDs()) {
        VelaValue value;
        if (GetValue(rowID, number, false, &value) && !value.IsNull() &&
            value.GetType() == key.GetType() &&
            (IsTextBacked(key.GetType()) ? value.TextView() == key.TextView()
                                         : value.GetDouble() == key.GetDouble()))
            rows.push_back(rowID);
    }
    return rows;
}

// ---- indexes

void VelaTransModel::AddToIndex(Index* index, uint32_t rowID) const
{
    std::vector<VelaValue> entry;
    for (uint32_t columnID : index->columnIDs) {
        VelaValue value;
        for (size_t number = 1; number <= mColumns.size(); number++) {
            if (mColumns[number - 1].columnID != columnID)
                continue;
            if (!GetValue(rowID, number, false, &value))
                value.SetNull(mColumns[number - 1].defaultValue.GetType());
        }
        entry.push_back(value);
    }
    index->entries[rowID] = entry;
}

bool VelaTransModel::AddIndex(const std::string& name, const std::vector<uint32_t>& columnIDs)
{
    for (const Index& index : mIndexes)
        if (index.name == name)
            return false;
    mIndexes.push_back({name, columnIDs, {}});
    for (uint32_t rowID : GetRowIDs())
        AddToIndex(&mIndexes.back(), rowID);
    return true;
}

bool VelaTransModel::DropIndex(const std::string& name)
{
    return std::erase_if(mIndexes, [&name](const Index& i) { return i.name == name; }) > 0;
}

// ---- the end of a transaction

void VelaTransModel::AppendRecord(uint32_t rowID, const Values& values)
{
    mPositions[rowID] = mRecords.size();
    mMapList.push_back(rowID);
    mRecords.push_back({true, rowID, values, CalcSchemaAndDataSize(TestRow(values))});
}

void VelaTransModel::UpdateRecord(Record* record, const Values& changes)
{
    Values merged = record->values;
    Merge(&merged, changes);
    merged = WithoutNullColumns(merged);
    if (CalcSchemaAndDataSize(TestRow(merged)) > record->space) {
        record->live = false;
        AppendRecord(record->rowID, merged);
        return;
    }
    record->live = true;
    record->values = merged;
}

void VelaTransModel::Commit()
{
    for (const Change& change : mChanges) {
        if (change.isInsert)
            AppendRecord(change.rowID, WithoutNullColumns(change.values));
        else if (const auto found = mPositions.find(change.rowID); found != mPositions.end())
            UpdateRecord(&mRecords[found->second], change.values);
    }
    for (uint32_t rowID : mDeletions)
        if (const auto found = mPositions.find(rowID); found != mPositions.end())
            mRecords[found->second].live = false;
    mChanges.clear();
    mDeletions.clear();
    mSavedLastUsedRowID = mLastUsedRowID;
    for (Index& index : mIndexes)
        for (auto& [rowID, entry] : index.entries)
            for (size_t i = 0; i < entry.size(); i++)
                if (entry[i].IsNull())
                    entry[i] = FindColumn(index.columnIDs[i])->defaultValue;
    mSavedIndexes = mIndexes;
}

void VelaTransModel::Rollback()
{
    mChanges.clear();
    mDeletions.clear();
    mIndexes = mSavedIndexes;
    LoadMetadata();
}

void VelaTransModel::LoadMetadata()
{
    mLastUsedRowID = mSavedLastUsedRowID;
    if (mLastUsedRowID == 0)
        for (uint32_t rowID : GetRowIDs())
            mLastUsedRowID = std::max(mLastUsedRowID, rowID);
}

void VelaTransModel::Reopen(bool withMap)
{
    Rollback();
    mLastRowID = mLastUsedRowID;
    if (withMap)
        return;
    mMapList.clear();
    mPositions.clear();
    for (size_t i = 0; i < mRecords.size(); i++) {
        if (!mRecords[i].live)
            continue;
        mMapList.push_back(mRecords[i].rowID);
        mPositions[mRecords[i].rowID] = i;
    }
}

}   // namespace vela
