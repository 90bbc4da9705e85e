// The indexes of a stored table: opening, upkeep with every change, and their files at commit.

#include <algorithm>
#include <cstring>
#include <numeric>
#include <utility>

#include "engine/storage/VelaTrans.h"

namespace vela {

namespace {

const char* const kIndexSuffix = ".idx";
constexpr uint32_t kRowsInBatch = 256;

}   // namespace

string VelaTrans::IndexFileName(const string& indexName) const
{
    return mName + "." + indexName + kIndexSuffix;
}

// The indexes that have files. Other tables' files may match the pattern too: of tables whose names have a "." in them, or
// when this one's has a "*".
SimpleVector<string> VelaTrans::FindIndexFiles() const
{
    SimpleVector<string> fileNames;
    mFiles->FindFiles(IndexFileName("*"), &fileNames);
    const size_t around = IndexFileName("").length();
    SimpleVector<string> names;
    for (const string& fileName : fileNames) {
        const string name = fileName.mid(mName.length() + 1, fileName.length() - around);
        if (IndexFileName(name) == fileName && name.View().find('.') == std::string_view::npos)
            names.push_back(name);
    }
    return names;
}

void VelaTrans::OpenIndexes()
{
    NeedFiles();
    SimpleVector<OpenIndex> indexes;
    for (const string& name : FindIndexFiles()) {
        OpenIndex open;
        open.index = std::make_unique<VelaIndex>(name, SimpleVector<uint32_t>());
        open.loaded = false;
        const auto stream = mFiles->OpenFile(IndexFileName(name), false);
        if (stream) {
            stream->SetDamageLog(&mFiles->Damage(), IndexFileName(name));
            open.index->LoadColumns(stream.get());
        }
        if (!open.index->ColumnIDs().empty())
            indexes.push_back(std::move(open));
    }
    mIndexes = std::move(indexes);
    mIndexesOpened = true;
}

VelaIndex* VelaTrans::NeedIndex(OpenIndex& open)
{
    if (open.loaded)
        return open.index.get();
    const string name = open.index->Name();
    const SimpleVector<uint32_t> columnIDs = open.index->ColumnIDs();
    auto index = std::make_unique<VelaIndex>(name, columnIDs);
    std::unique_ptr<RandomAccessMechanism> stream;
    if (!open.forgotten)
        stream = mFiles->OpenFile(IndexFileName(name), false);
    if (stream)
        stream->SetDamageLog(&mFiles->Damage(), IndexFileName(name));
    if (!stream || !index->LoadFromFile(stream.get())) {
        // Its file has gone, is damaged or lacks what is pending; the rows still have the values.
        index = std::make_unique<VelaIndex>(name, columnIDs);
        FillIndex(index.get());
        if (open.forgotten || open.index->IsBehindFile())
            index->MarkUnsaved();
    } else {
        index->AddMissingFrom(*open.index);
    }
    open.index = std::move(index);
    open.loaded = true;
    open.forgotten = false;
    return open.index.get();
}

VelaTrans::OpenIndex* VelaTrans::FindIndex(const string& name)
{
    for (OpenIndex& open : Indexes())
        if (open.index->Name().Compare(name) == 0)
            return &open;
    return nullptr;
}

void VelaTrans::GetIndexNames(SimpleVector<string>& names)
{
    for (const OpenIndex& open : Indexes())
        names.push_back(open.index->Name());
}

SimpleVector<uint32_t> VelaTrans::IndexColumns(const string& name)
{
    const OpenIndex* open = FindIndex(name);
    return open ? open->index->ColumnIDs() : SimpleVector<uint32_t>();
}

bool VelaTrans::AddIndex(const string& name, const SimpleVector<uint32_t>& columnIDs)
{
    if (columnIDs.empty() || FindIndex(name) != nullptr)
        return false;
    OpenIndex open;
    open.index = std::make_unique<VelaIndex>(name, columnIDs);
    open.created = true;
    FillIndex(open.index.get());
    mIndexes.push_back(std::move(open));
    return true;
}

bool VelaTrans::DropIndex(const string& name)
{
    for (size_t i = 0; i < Indexes().size(); i++) {
        if (mIndexes[i].index->Name().Compare(name) != 0)
            continue;
        mDroppedIndexes.MakeRoomForOne();
        if (!mIndexes[i].created)
            mDroppedIndexes.push_back(std::move(mIndexes[i]));
        mIndexes.erase(i);
        return true;
    }
    return false;
}

void VelaTrans::DropIndexesOf(uint32_t columnID)
{
    for (size_t i = Indexes().size(); i > 0; i--)
        if (mIndexes[i - 1].index->PositionOfColumn(columnID) >= 0)
            DropIndex(mIndexes[i - 1].index->Name());
}

// ---- upkeep

void VelaTrans::FillIndex(VelaIndex* index)
{
    TableColumns* columns = Columns();
    std::vector<bool> wanted(static_cast<size_t>(QtyColumns()));
    std::vector<long> numbers;
    for (uint32_t columnID : index->ColumnIDs()) {
        numbers.push_back(FindColumnNumber(columnID));
        if (numbers.back() >= 0)
            wanted[static_cast<size_t>(numbers.back())] = true;
    }
    columns->Prepare(wanted);
    const uint32_t count = columns->RowCount();
    index->Reserve(count);
    StringArena texts;
    std::vector<uint32_t> rows;
    std::vector<VelaValue> batch(kRowsInBatch * numbers.size());
    SimpleVector<VelaValue> values;
    values.resize(numbers.size());
    for (uint32_t first = 0; first < count; first += kRowsInBatch) {
        rows.resize(std::min(kRowsInBatch, count - first));
        std::iota(rows.begin(), rows.end(), first);
        for (size_t i = 0; i < numbers.size(); i++)
            GetKeyValues(numbers[i], rows, &texts, &batch[i], numbers.size());
        for (size_t k = 0; k < rows.size(); k++) {
            for (size_t i = 0; i < values.size(); i++)
                values[i] = std::move(batch[k * values.size() + i]);
            index->Add(values, columns->RowIDs()[rows[k]]);
        }
    }
}

// The values that rows, by their numbers, have in a column, step apart.
void VelaTrans::GetKeyValues(long number, const std::vector<uint32_t>& rows, StringArena* texts,
                             VelaValue* values, size_t step)
{
    TableColumns* columns = Columns();
    if (const ColumnData* data = columns->Loaded(number)) {
        data->GetValues(rows.data(), 1, rows.size(), texts, values, step);
        return;
    }
    for (size_t k = 0; k < rows.size(); k++)
        if (!columns->GetValue(rows[k], number, &values[k * step]))
            values[k * step].SetNull(NullTypeOf(number));
}

VelaDataType VelaTrans::NullTypeOf(long number) const
{
    return number < 0 ? kTypeNone : Column(number)->Type();
}

// The indexes that are still in their files stay there when the files can't have the row.
void VelaTrans::AddRowToIndices(uint32_t rowID)
{
    for (size_t i = 0; i < Indexes().size(); i++) {
        OpenIndex& open = mIndexes[i];
        if (open.loaded || open.forgotten || !open.index->CanAddBehindFile() || !IsNewRow(rowID))
            AddRowToIndex(rowID, i);
        else
            open.index->AddBehindFile(KeyOf(*open.index, rowID), rowID);
    }
}

void VelaTrans::AddRowToIndex(uint32_t rowID, size_t indexNumber)
{
    VelaIndex* index = NeedIndex(mIndexes[indexNumber]);
    const SimpleVector<VelaValue> values = KeyOf(*index, rowID);
    index->Delete(rowID);
    index->Add(values, rowID);
}

SimpleVector<VelaValue> VelaTrans::KeyOf(const VelaIndex& index, uint32_t rowID)
{
    SimpleVector<VelaValue> values;
    values.resize(index.ColumnIDs().size());
    for (size_t i = 0; i < values.size(); i++) {
        const long number = FindColumnNumber(index.ColumnIDs()[i]);
        if (!GetValue(rowID, number, &values[i], false))
            values[i].SetNull(NullTypeOf(number));
    }
    return values;
}

void VelaTrans::RemoveRowFromIndex(uint32_t rowID, size_t indexNumber)
{
    NeedIndex(mIndexes[indexNumber])->Delete(rowID);
}

// ---- files

// Where only entries were added, they are appended; else the whole file is written anew.
bool VelaTrans::WriteIndexFiles(string* error)
{
    for (OpenIndex& open : mIndexes) {
        if (!open.created && !open.index->IsChanged())
            continue;
        string reason;
        open.written = true;
        if (WriteIndexFile(open, &reason))
            continue;
        *error = "Index " + open.index->Name() + " of table " + mName +
                 " could not be written: " + reason;
        return false;
    }
    return true;
}

bool VelaTrans::WriteIndexFile(OpenIndex& open, string* reason)
{
    const string fileName = IndexFileName(open.index->Name());
    const bool append =
        !open.created && open.index->CanAppendToFile() && mFiles->ContainsFile(fileName);
    std::unique_ptr<RandomAccessMechanism> stream;
    if (append || (!open.index->IsBehindFile() && mFiles->CreateFile(fileName)))
        stream = mFiles->OpenFile(fileName, false);
    const SimpleVector<VelaValue> defaults = DefaultsOf(*open.index);
    if (stream && (append ? open.index->AppendToFile(stream.get(), defaults)
                          : open.index->SaveToFile(stream.get(), defaults)))
        return true;
    *reason = stream && stream->ErrorNumber() != 0 ? string(std::strerror(stream->ErrorNumber()))
                                                   : mFiles->ErrorText();
    return false;
}

// What reads in place of a null once it is committed.
SimpleVector<VelaValue> VelaTrans::DefaultsOf(const VelaIndex& index) const
{
    SimpleVector<VelaValue> defaults;
    for (uint32_t columnID : index.ColumnIDs()) {
        const VelaColumnInfo* column = FindColumn(columnID);
        defaults.push_back(column == nullptr ? VelaValue() : column->defaultValue);
    }
    return defaults;
}

bool VelaTrans::DeleteDroppedIndexFiles(string* error)
{
    for (const OpenIndex& dropped : mDroppedIndexes) {
        // An index that was made again under the name has replaced the file already.
        const OpenIndex* again = FindIndex(dropped.index->Name());
        const string fileName = IndexFileName(dropped.index->Name());
        if (again != nullptr || mFiles->DeleteFile(fileName))
            continue;
        *error = "Index file " + fileName + " could not be deleted: " + mFiles->ErrorText();
        return false;
    }
    return true;
}

void VelaTrans::FinishIndexes()
{
    mDroppedIndexes.clear();
    for (OpenIndex& open : mIndexes) {
        if (!open.written)
            continue;
        open.created = false;
        open.written = false;
        if (open.index->IsBehindFile())
            open.index = open.index->Unloaded();
        else
            open.index->ReplaceNulls(DefaultsOf(*open.index));
    }
}

void VelaTrans::CancelIndexes()
{
    for (OpenIndex& open : mIndexes) {
        if (open.written)
            open.index->MarkUnsaved();
        open.written = false;
    }
}

}   // namespace vela
