#include "engine/query/VelaTempTable.h"

#include "engine/query/TempRowSorter.h"
#include "runtime/ScopeExit.h"

namespace vela {

namespace {

constexpr uint32_t kNoSource = 0xFFFFFFFF;

template <class List>
void Permute(List* items, const std::vector<uint32_t>& order)
{
    if (items->empty())
        return;
    List permuted;
    permuted.reserve(items->size());
    for (const uint32_t position : order)
        permuted.push_back((*items)[position]);
    items->swap(permuted);
}

}   // namespace

void VelaTempTable::AddColumn(const string& name, VelaDataType type)
{
    const auto columnID = static_cast<uint32_t>(mColumns.size());
    mColumns.push_back(VelaColumnInfo{name, VelaValue::Null(type), columnID});
}

uint32_t VelaTempTable::AddRow(VelaRow& values, bool takeOwnership, const VelaRecSet* source)
{
    VelaValue* row = NewRow(values.size());
    for (size_t i = 0; i < values.size(); i++)
        row[i] = *values[i];
    if (takeOwnership)
        Discard(values);
    NoteSource(source);
    return static_cast<uint32_t>(mRows.size() - 1);
}

uint32_t VelaTempTable::AddRow(VelaRow& values, bool takeOwnership)
{
    return AddRow(values, takeOwnership, nullptr);
}

VelaValue* VelaTempTable::AppendRow(const VelaRecSet* source)
{
    VelaValue* row = NewRow(mColumns.size());
    NoteSource(source);
    return row;
}

VelaValue* VelaTempTable::AppendRows(size_t count, const uint32_t* sources)
{
    OwnRows();
    const size_t width = mColumns.size();
    VelaValue* values = mValues.Take(count * width);
    for (size_t i = 0; i < count; i++) {
        NoteWidth(width);
        mRows.push_back(values + i * width);
    }
    if (sources)
        NoteSources(count, sources);
    else if (!mSourceNumber.empty())
        mSourceNumber.resize(mRows.size(), kNoSource);
    return values;
}

void VelaTempTable::ReserveRows(size_t count)
{
    OwnRows();
    mValues.Reserve(count, mColumns.size());
    mRows.reserve(mRows.size() + count);
    mSourceRows.reserve(mSourceRows.size() + count * mSourceTables);
    mSourceNumber.reserve(mSourceNumber.size() + count);
}

void VelaTempTable::RemoveLastRow()
{
    OwnRows();
    const size_t width = RowWidth(mRows.size() - 1);
    mValues.GiveBack(width);
    mRows.pop_back();
    if (!mWidths.empty())
        mWidths.pop_back();
    if (mSourceNumber.empty())
        return;
    if (mSourceNumber.back() != kNoSource)
        mSourceRows.resize(mSourceRows.size() - mSourceTables);
    mSourceNumber.pop_back();
}

void VelaTempTable::Sort(const SimpleVector<long>& columns, const SimpleVector<long>& directions)
{
    if (RowCount() < 2 || columns.empty())
        return;
    OwnRows();
    ApplyOrder(TempRowSorter(*this, columns, directions).SortedOrder());
}

void VelaTempTable::SetRows(std::unique_ptr<ColumnRows> rows)
{
    assert(RowCount() == 0);
    assert(rows->Width() == mColumns.size());
    mCommonWidth = mColumns.size();
    mColumnRows = std::move(rows);
}

// As they would be if they had been added one by one. When memory runs out, all is as before.
void VelaTempTable::CopyColumnRows()
{
    std::unique_ptr<ColumnRows> rows = std::move(mColumnRows);
    ScopeExit goBack([&] {
        mRows.clear();
        mSourceRows.clear();
        mSourceNumber.clear();
        mColumnRows = std::move(rows);
    });
    ReserveRows(rows->Count());
    for (size_t row = 0; row < rows->Count(); row++) {
        const VelaRecSet source = rows->Source(row);
        VelaValue* values = AppendRow(&source);
        for (size_t output = 0; output < rows->Width(); output++)
            rows->GetValue(row, output, &values[output]);
    }
    goBack.Dismiss();
}

const VelaColumnInfo* VelaTempTable::Column(long number) const
{
    if (number < 0 || static_cast<size_t>(number) >= mColumns.size())
        return nullptr;
    return &mColumns[static_cast<size_t>(number)];
}

void VelaTempTable::GetRowIDs(SimpleVector<uint32_t>* rowIDs)
{
    rowIDs->resize(RowCount());
    for (size_t row = 0; row < RowCount(); row++)
        (*rowIDs)[row] = static_cast<uint32_t>(row);
}

bool VelaTempTable::GetValue(uint32_t rowID, long number, VelaValue* value)
{
    if (rowID >= RowCount() || number < 0 || static_cast<size_t>(number) >= RowWidth(rowID))
        return false;
    if (mColumnRows)
        mColumnRows->GetValue(rowID, static_cast<size_t>(number), value);
    else
        *value = mRows[rowID][number];
    return true;
}

std::optional<VelaRecSet> VelaTempTable::GetSourceRecSet(long row) const
{
    if (mColumnRows && row >= 0 && static_cast<size_t>(row) < RowCount())
        return mColumnRows->Source(static_cast<size_t>(row));
    if (row < 0 || static_cast<size_t>(row) >= mSourceNumber.size())
        return std::nullopt;
    const uint32_t number = mSourceNumber[static_cast<size_t>(row)];
    if (number == kNoSource)
        return std::nullopt;
    return VelaRecSet(mSourceRows.data() + number * mSourceTables);
}

VelaValue* VelaTempTable::NewRow(size_t width)
{
    OwnRows();
    NoteWidth(width);
    VelaValue* row = mValues.Take(width);
    mRows.push_back(row);
    return row;
}

void VelaTempTable::NoteWidth(size_t width)
{
    if (mRows.empty())
        mCommonWidth = width;
    if (mWidths.empty() && width == mCommonWidth)
        return;
    if (mWidths.empty())
        mWidths.assign(mRows.size(), static_cast<uint32_t>(mCommonWidth));
    mWidths.push_back(static_cast<uint32_t>(width));
}

// Called for every row, after it was added.
void VelaTempTable::NoteSource(const VelaRecSet* source)
{
    if (source == nullptr && mSourceNumber.empty())
        return;
    mSourceNumber.resize(mRows.size(), kNoSource);
    if (source == nullptr)
        return;
    mSourceNumber.pop_back();
    NoteSources(1, source->Rows());
}

// The sources of the count rows added last, the first ones without a note.
void VelaTempTable::NoteSources(size_t count, const uint32_t* sources)
{
    mSourceNumber.resize(mRows.size() - count, kNoSource);
    size_t number = mSourceTables == 0 ? 0 : mSourceRows.size() / mSourceTables;
    for (size_t i = 0; i < count; i++)
        mSourceNumber.push_back(static_cast<uint32_t>(mSourceTables == 0 ? 0 : number++));
    mSourceRows.insert(mSourceRows.end(), sources, sources + count * mSourceTables);
}

void VelaTempTable::ApplyOrder(const std::vector<uint32_t>& order)
{
    Permute(&mRows, order);
    Permute(&mWidths, order);
    Permute(&mSourceNumber, order);
}

}   // namespace vela
