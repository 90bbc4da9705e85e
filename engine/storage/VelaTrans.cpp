#include "engine/storage/VelaTrans.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "engine/storage/BodyMerge.h"
#include "engine/storage/RecordFormat.h"
#include "runtime/ScopeExit.h"

namespace vela {

namespace {

// The first bytes of the record file's metadata block.
struct TableMetadata {
    uint32_t lastUsedRowID;
    uint32_t lastUsedColumnID;
};

bool Touches(const VelaIndex& index, const VelaRow& values)
{
    return std::any_of(values.begin(), values.end(), [&index](const VelaValueWithID* value) {
        return index.PositionOfColumn(value->ColumnID()) >= 0;
    });
}

}   // namespace

VelaTrans::VelaTrans(VelaFileAccess* files, const string& name, Files state)
    : mFiles(files),
      mName(name),
      mNewFiles(state == Files::kNew),
      mFilesOpened(mNewFiles),
      mIndexesOpened(mNewFiles),
      mRows(new StoredTableColumns(this))
{
    if (mNewFiles)
        OpenFilesAhead();
}

VelaTrans::~VelaTrans() = default;

void VelaTrans::OpenTable()
{
    mFilesOpened = true;
    mOpening = true;
    OpenFiles();
    LoadMetadata();
    mLastRowID = mLastUsedRowID;
    mOpening = false;
}

bool VelaTrans::OpenFiles()
{
    mRecordStream = mFiles->OpenFile(mName + ".dat", false);
    if (!mRecordStream) {
        mFiles->Damage().Note(std::string((mName + ".dat").View()), 0, DamageKind::kMissing);
        return false;
    }
    mRecordStream->SetDamageLog(&mFiles->Damage(), mName + ".dat");
    mMapStream = mFiles->OpenFile(mName + ".map", !mFiles->IsReadOnly());
    mStorage = std::make_unique<VelaStorage>(mRecordStream.get(), mMapStream.get());
    mAhead.Open(mRecordStream.get());
    return true;
}

const VelaColumnInfo* VelaTrans::Column(long number) const
{
    if (number == 0)
        return &RowIDColumn();
    if (number < 0 || number > static_cast<long>(mColumns.size()))
        return nullptr;
    return &mColumns[static_cast<size_t>(number) - 1];
}

// Every name in every statement comes here: nothing is called for a column that it isn't.
long VelaTrans::FindColumnNamed(std::string_view name) const
{
    const char first = name.empty() ? '\0' : name[0];
    if (first == '_' && name == RowIDColumn().name.View())
        return 0;
    const auto hasName = [name, first](const VelaColumnInfo& column) {
        return column.name.length() == name.size() && *column.name.CString() == first &&
               column.name.View() == name;
    };
    const auto found = std::find_if(mColumns.begin(), mColumns.end(), hasName);
    return found == mColumns.end() ? -1 : 1 + static_cast<long>(found - mColumns.begin());
}

// ---- reading

size_t VelaTrans::QtyRows()
{
    VelaStorage* storage = Storage();
    if (!storage && !mNewFiles)
        return 0;
    return (storage ? storage->QtyRows() : 0) + mChangedRows.Count();
}

void VelaTrans::GetRowIDs(SimpleVector<uint32_t>* rowIDs)
{
    TableColumns* columns = Columns();
    rowIDs->clear();
    rowIDs->resize(columns->RowCount());
    if (columns->RowCount() != 0)
        std::memcpy(rowIDs->data(), columns->RowIDs(), columns->RowCount() * sizeof(uint32_t));
}

TableColumns* VelaTrans::Columns()
{
    NeedFiles();
    mRows->Refresh();
    return mRows.get();
}

bool VelaTrans::GetValue(uint32_t rowID, long number, VelaValue* value, bool useIndexes)
{
    const VelaColumnInfo* column = Column(number);
    if (column == nullptr)
        return false;
    if (number == 0) {
        value->SetInteger(static_cast<int32_t>(rowID));
        return true;
    }
    const VTChangedRow* change = mChangedRows.Count() == 0 ? nullptr : mChangedRows.GetItem(rowID);
    if (change != nullptr && change->GetValue(column->columnID, column->Type(), value))
        return true;
    if (mRows->GetLoadedValue(rowID, number, value) ||
        (useIndexes && GetIndexedValue(rowID, *column, value)))
        return true;
    RecordField field;
    if (IsInserted(rowID)) {
        if (!ReadRowAhead(rowID) || !FindField(CachedBody(), column->columnID, &field))
            return false;
        DecodeField(field, value);
        return true;
    }
    if (!ReadRecord(rowID))
        return false;
    if (FindField(CachedBody(), column->columnID, &field)) {
        DecodeField(field, value);
        value->CoerceToType(column->Type());
    } else {
        *value = column->defaultValue;
    }
    return true;
}

// Whether the row is pending as an inserted one.
bool VelaTrans::IsInserted(uint32_t rowID) const
{
    VTChangedRow* const* change =
        mChangedRows.Count() == 0 ? nullptr : mChangedRows.FindNode(rowID);
    return change != nullptr && (*change == nullptr || (*change)->IsInsert());
}

// Entries that are still in their file are not fetched for this: the record answers the same.
bool VelaTrans::GetIndexedValue(uint32_t rowID, const VelaColumnInfo& column, VelaValue* value)
{
    for (OpenIndex& open : mIndexes) {
        VelaValue held;
        const bool answers = open.loaded || open.index->IsBehindFile();
        if (!answers || !open.index->GetColumnValue(rowID, column.columnID, &held))
            continue;
        if (held.IsNull()) {
            value->SetNull(column.Type());
            return true;
        }
        // An entry that was made when the column had another type lacks what that type lost of the record.
        if (held.GetType() != column.Type())
            continue;
        *value = std::move(held);
        return true;
    }
    return false;
}

// Values that can't be read are taken for missing ones, and their place is noted.
bool VelaTrans::ReadRecord(uint32_t rowID)
{
    if (mCachedRowID == rowID && rowID != kInvalidRowID)
        return true;
    std::string_view body;
    VelaStorage* storage = Storage();
    if (!storage || !storage->GoToRowID(rowID, false))
        return false;
    if (!storage->ReadBody(&body)) {
        body = {};
        mRecordStream->NoteDamage(storage->Position(), DamageKind::kUnreadable);
    } else if (!IsWholeBody(body)) {
        mRecordStream->NoteDamage(storage->Position(), DamageKind::kBody);
    }
    mCachedBody.assign(body.begin(), body.end());
    mCachedRowID = rowID;
    return true;
}

// False: the row isn't ahead, or can't be read, which is noted.
bool VelaTrans::ReadRowAhead(uint32_t rowID)
{
    if (!IsAhead(rowID) || mChangedRows.GetItem(rowID) != nullptr)
        return false;
    if (mCachedRowID == rowID)
        return true;
    mCachedRowID = kInvalidRowID;
    const size_t number = mChangedRows.OrderOf(rowID);
    if (!mAhead.ReadBody(number, rowID, &mCachedBody)) {
        mRecordStream->NoteDamage(mAhead.PositionOf(number), DamageKind::kUnreadable);
        return false;
    }
    mCachedRowID = rowID;
    return true;
}

bool VelaTrans::ContainsRow(uint32_t rowID)
{
    if (mChangedRows.Contains(rowID))
        return true;
    for (OpenIndex& open : mIndexes)
        if (open.loaded && open.index->Contains(rowID))
            return true;
    return Storage() && mStorage->GoToRowID(rowID, false);
}

bool VelaTrans::HasRow(uint32_t rowID)
{
    if (mDeletedRows.Contains(rowID))
        return false;
    if (IsInserted(rowID) || mRows->ListsRow(rowID))
        return true;
    return Storage() && mStorage->GoToRowID(rowID, false) && mStorage->IsLive();
}

// Rows of the file by their place in it, then the inserted ones by their place in the transaction.
uint64_t VelaTrans::TableOrderOf(uint32_t rowID)
{
    if (IsInserted(rowID))
        return uint64_t{1} << 32 | mChangedRows.OrderOf(rowID);
    uint32_t position = 0;
    return Storage() && mStorage->FindPosition(rowID, &position) ? position : 0;
}

bool VelaTrans::FindRowsByIndex(long number, const VelaValue& key, SimpleVector<uint32_t>* rowIDs)
{
    rowIDs->clear();
    const VelaColumnInfo* column = Column(number);
    if (number < 1 || column == nullptr || key.IsNull() || key.GetType() != column->Type())
        return false;
    for (OpenIndex& open : Indexes()) {
        if (open.index->ColumnIDs()[0] != column->columnID ||
            !NeedIndex(open)->FindRows(key, rowIDs))
            continue;
        std::vector<std::pair<uint64_t, uint32_t>> found;
        for (uint32_t rowID : *rowIDs)
            if (HasRow(rowID))
                found.emplace_back(rowIDs->size() == 1 ? 0 : TableOrderOf(rowID), rowID);
        std::sort(found.begin(), found.end());
        rowIDs->clear();
        for (const auto& [order, rowID] : found)
            rowIDs->push_back(rowID);
        return true;
    }
    return false;
}

// ---- changing

const VelaColumnInfo* VelaTrans::FindColumn(uint32_t columnID) const
{
    if (columnID == RowIDColumn().columnID)
        return &RowIDColumn();
    for (const VelaColumnInfo& column : mColumns)
        if (column.columnID == columnID)
            return &column;
    return nullptr;
}

void VelaTrans::CoerceToCorrectType(VelaValueWithID* value) const
{
    if (const VelaColumnInfo* column = FindColumn(value->ColumnID()))
        value->CoerceToType(column->Type());
}

// The row with each value in its column's type: values itself when they have it, else a list with copies of those that had
// another one, both in room.
const VelaRow& VelaTrans::CoerceRow(const VelaRow& values, CoercedRow* room) const
{
    for (size_t i = 0; i < values.size(); i++) {
        // Rows mostly have a value for each column, in order.
        const bool isInOrder = i < mColumns.size() && mColumns[i].columnID == values[i]->ColumnID();
        const VelaColumnInfo* column = isInOrder ? &mColumns[i] : FindColumn(values[i]->ColumnID());
        if (column == nullptr || column->Type() == values[i]->GetType())
            continue;
        if (room->values.empty())
            room->values = values;
        room->copies.push_back(std::make_unique<VelaValueWithID>(*values[i]));
        room->copies.back()->CoerceToType(column->Type());
        room->values[i] = room->copies.back().get();
    }
    return room->values.empty() ? values : room->values;
}

uint32_t VelaTrans::NextUnusedRowID()
{
    NeedFiles();
    return mLastUsedRowID + 1;
}

uint32_t VelaTrans::NextUnusedColumnID()
{
    NeedFiles();
    return mLastUsedColumnID + 1;
}

uint32_t VelaTrans::LastRowID()
{
    NeedFiles();
    return mLastRowID;
}

// The next unused row id; kInvalidRowID when they are used up. In a file that tells too low a last used row id, it may
// belong to a row that has a pending change.
uint32_t VelaTrans::FreeRowID()
{
    NeedFiles();
    while (mLastUsedRowID < kInvalidRowID && mChangedRows.Contains(NextUnusedRowID()))
        mLastUsedRowID++;
    return mLastUsedRowID < kInvalidRowID ? NextUnusedRowID() : kInvalidRowID;
}

uint32_t VelaTrans::AddRow(VelaRow& values, bool takeOwnership)
{
    const ScopeExit discard([&] {
        if (takeOwnership)
            Discard(values);
    });
    return AddCoercedRow(values);
}

uint32_t VelaTrans::AddCoercedRow(const VelaRow& values)
{
    if (mAhead.IsWorthwhile(mChangeMemory.Taken()))
        WriteRowsAhead();
    CoercedRow room;
    const VelaRow& row = CoerceRow(values, &room);
    uint32_t rowID = FreeRowID();
    bool refused = false;
    for (const VelaValueWithID* value : row) {
        if (value->ColumnID() != 0)
            continue;
        rowID = static_cast<uint32_t>(value->GetInteger());
        refused = refused || ContainsRow(rowID);
    }
    if (refused || rowID == kInvalidRowID)
        return kInvalidRowID;
    VTChangedRow* const change =
        VTChangedRow::Create(&mChangeMemory, rowID, VTChangedRow::kInsert, row);
    mChangedRows.Append(rowID, change);
    ScopeExit undo([&] { mChangedRows.TakeBack(rowID); });
    mRows->RowAdded(*change);
    AddRowToIndices(rowID);
    undo.Dismiss();
    mRowChanges++;
    mLastUsedRowID = std::max(mLastUsedRowID, rowID);
    mLastRowID = rowID;
    return rowID;
}

bool VelaTrans::UpdateRow(uint32_t rowID, VelaRow& values, bool takeOwnership)
{
    const ScopeExit discard([&] {
        if (takeOwnership)
            Discard(values);
    });
    if (IsAhead(rowID) && !TakeRowsBack())
        return false;
    std::vector<bool> touched(Indexes().size());
    for (size_t i = 0; i < mIndexes.size(); i++) {
        touched[i] = Touches(*mIndexes[i].index, values);
        if (touched[i])
            RemoveRowFromIndex(rowID, i);
    }
    if (mCachedRowID == rowID)
        mCachedRowID = kInvalidRowID;
    ChangeRow(rowID, values, touched);
    return true;
}

// Notes the new values of a row as its pending change, merged into the one that it may have already, which is kept until
// the indexes touched have the row again.
void VelaTrans::ChangeRow(uint32_t rowID, const VelaRow& values, const std::vector<bool>& touched)
{
    CoercedRow room;
    const VelaRow& row = CoerceRow(values, &room);
    VTChangedRow** pending = mChangedRows.FindNode(rowID);
    VTChangedRow* const before = pending != nullptr ? *pending : nullptr;
    VTChangedRow* const change =
        before != nullptr ? before->UpdateValues(&mChangeMemory, row)
                          : VTChangedRow::Create(&mChangeMemory, rowID, VTChangedRow::kUpdate, row);
    if (before != nullptr)
        *pending = change;
    else
        mChangedRows.Append(rowID, change);
    ScopeExit undo([&] {
        if (before != nullptr)
            *mChangedRows.FindNode(rowID) = before;
        else
            mChangedRows.TakeBack(rowID);
    });
    mRows->RowUpdated(*change);
    for (size_t i = 0; i < mIndexes.size(); i++)
        if (touched[i])
            AddRowToIndex(rowID, i);
    undo.Dismiss();
    mRowChanges++;
    if (before != nullptr)
        DropChange(*before);
}

void VelaTrans::DeleteRow(uint32_t rowID)
{
    NeedFiles();
    if (IsAhead(rowID) && !TakeRowsBack())
        return;
    mRows->RowDeleted(rowID);
    mChangedRows.PrepareRemoval(rowID);
    const bool isNew = mDeletedRows.Insert(rowID);
    ScopeExit undo([&] {
        if (isNew)
            mDeletedRows.Remove(rowID);
    });
    for (size_t i = 0; i < Indexes().size(); i++)
        RemoveRowFromIndex(rowID, i);
    undo.Dismiss();
    mRowChanges++;
    if (const VTChangedRow* pending = mChangedRows.GetItem(rowID)) {
        mChangedRows.RemoveItem(rowID);
        DropChange(*pending);
    }
}

// A change that is no longer among the pending ones. When most of their memory is such changes, the others move; those that are
// ahead lie elsewhere.
void VelaTrans::DropChange(const VTChangedRow& change)
{
    mChangeMemory.Drop(change.Size());
    if (!mChangeMemory.IsWastingMemory())
        return;
    RowArena memory;
    std::vector<VTChangedRow*> copies;
    copies.reserve(mChangedRows.Count() - mAhead.Count());
    for (size_t i = mAhead.Count(); i < mChangedRows.Count(); i++)
        copies.push_back(mChangedRows.GetItemByIndex(i)->CopyTo(&memory));
    for (VTChangedRow* copy : copies)
        *mChangedRows.FindNode(copy->RowID()) = copy;
    mChangeMemory = std::move(memory);
}

// ---- metadata

void VelaTrans::LoadMetadata()
{
    TableMetadata metadata{0, 0};
    string block;
    if (mStorage && mStorage->ReadMetadata(&block))
        std::memcpy(&metadata, block.CString(), sizeof metadata);
    mLastUsedRowID = metadata.lastUsedRowID;
    mLastUsedColumnID = metadata.lastUsedColumnID;
    if (mLastUsedRowID == 0) {
        mRows->Refresh();
        for (uint32_t row = 0; row < mRows->RowCount(); row++)
            mLastUsedRowID = std::max(mLastUsedRowID, mRows->RowIDs()[row]);
        mRows->Drop();
    }
    mStoredLastRowID = mLastUsedRowID;
    for (const VelaColumnInfo& column : mColumns)
        mLastUsedColumnID = std::max(mLastUsedColumnID, column.columnID);
}

bool VelaTrans::SaveMetadata()
{
    const TableMetadata metadata{mLastUsedRowID, mLastUsedColumnID};
    return mStorage->WriteMetadata(
        string(reinterpret_cast<const char*>(&metadata), sizeof metadata, kEncodingASCII));
}

// ---- the end of a transaction

bool VelaTrans::HasChangesToCommit() const
{
    return mChangedRows.Count() > 0 || mDeletedRows.Count() > 0;
}

bool VelaTrans::IsTouched() const
{
    if (mNewFiles || HasChangesToCommit() || !mDroppedIndexes.empty())
        return true;
    // An index that was only mended, because its file was damaged, waits for a commit that can write.
    return !mFiles->IsReadOnly() &&
           std::any_of(mIndexes.begin(), mIndexes.end(), [](const OpenIndex& open) {
               return open.created || open.index->IsChanged();
           });
}

void VelaTrans::PrepareCommit()
{
    if (!IsTouched())
        return;
    NeedFiles();
    for (OpenIndex& open : mIndexes)
        if (open.forgotten || (open.index->IsBehindFile() &&
                               !mFiles->ContainsFile(IndexFileName(open.index->Name()))))
            NeedIndex(open);
}

bool VelaTrans::WriteCommit(string* error)
{
    if (!IsTouched()) {
        if (mStorage && !mFiles->IsReadOnly())
            mStorage->RenewMap();
        return true;
    }
    mWritten = true;
    mMoved = false;
    if (mNewFiles && !MakeNewFiles(error))
        return false;
    if (!Storage()) {
        *error = "The record file " + mName + ".dat is missing or can't be opened.";
        return false;
    }
    if (mAheadIsLost) {
        *error = "Rows of table " + mName + " that were inserted could not be read again.";
        return false;
    }
    if (!WriteRecords())
        return FailCommit(error);
    return WriteIndexFiles(error) && DeleteDroppedIndexFiles(error);
}

bool VelaTrans::WriteRecords()
{
    return ReserveRoom() && WriteChanges() && SaveMetadata() && mStorage->FlushToDisk();
}

void VelaTrans::FinishCommit()
{
    if (!mWritten)
        return;
    mWritten = false;
    mNewFiles = false;
    mStoredLastRowID = mLastUsedRowID;
    ForgetChanges();
    if (mMoved)
        mRows->Drop();
    else
        mRows->ChangesCommitted();
    FinishIndexes();
}

void VelaTrans::CancelCommit()
{
    mWritten = false;
    mAhead.CommitWasCancelled();
    if (mNewFiles)
        UnmakeNewFiles();
    if (mStorage)
        mStorage->StreamsWentBack();
    CancelIndexes();
}

bool VelaTrans::FailCommit(string* error)
{
    if (mStorage && mStorage->IsFull())
        *error = "Table " + mName + " would grow past 4 GiB.";
    else
        *error = "Table " + mName + " could not be written: " +
                 (mStorage ? mStorage->ErrorText() : mFiles->ErrorText());
    return false;
}

// Files of an earlier table of this name, or left behind by something else, have no part in this one.
bool VelaTrans::MakeNewFiles(string* error)
{
    const bool made = mAhead.Count() > 0 ? DeleteFiles() && MakeFilesOfRowsAhead()
                                         : DeleteStorage() && mFiles->CreateFile(mName + ".dat") &&
                                               mFiles->CreateFile(mName + ".map") && OpenFiles();
    return made || FailCommit(error);
}

// After a commit that has failed.
void VelaTrans::UnmakeNewFiles()
{
    if (mAhead.Count() == 0) {
        CloseFiles();
        return;
    }
    mStorage.reset();
    mMapStream.reset();
}

// Asks for the room that the inserted rows take before anything is changed: the usual way for a disk to be full. Those that are
// ahead have theirs.
bool VelaTrans::ReserveRoom()
{
    int64_t bytes = 0;
    size_t rows = mAhead.Count();
    for (size_t i = mAhead.Count(); i < mChangedRows.Count(); i++) {
        const VTChangedRow* change = mChangedRows.GetItemByIndex(i);
        if (!change->IsInsert())
            continue;
        bytes += static_cast<int64_t>(kRecordHeaderSize + change->Body().size());
        rows++;
    }
    if (rows == 0)
        return true;
    // A map that must be built is, before the rows that are ahead are in the file: it learns of them later.
    const int64_t mapSize = mStorage->MapFileSize(rows);
    return mAhead.Take() && mRecordStream->Reserve(mRecordStream->GetLength() + bytes) &&
           (!mMapStream || mMapStream->Reserve(mapSize));
}

bool VelaTrans::WriteChanges()
{
    for (size_t i = 0; i < mChangedRows.Count(); i++)
        if (i < mAhead.Count() ? !AddRowAhead(i) : !WriteChange(*mChangedRows.GetItemByIndex(i)))
            return false;
    return mDeletedRows.ForEach([this](uint32_t rowID) {
        return !mStorage->GoToRowID(rowID, false) || mStorage->DeleteRecord();
    });
}

bool VelaTrans::AddRowAhead(size_t number)
{
    const uint32_t rowID = mChangedRows.GetRowIDByIndex(number);
    const uint32_t position = mAhead.PositionOf(number);
    const VTChangedRow* change = mChangedRows.GetItemByIndex(number);
    if (change != nullptr && change->HasNulls())
        mMoved = true;   // as in WriteChange
    return IsNewRow(rowID) ? mStorage->AddNewestRecord(rowID, position)
                           : mStorage->AddRecord(rowID, position);
}

bool VelaTrans::WriteChange(const VTChangedRow& change)
{
    if (change.HasNulls())
        mMoved = true;   // what read as null reads as the default from now on
    if (change.IsInsert())
        return WriteInsert(change);
    if (!mStorage->GoToRowID(change.RowID(), false))
        return true;
    if (!mStorage->IsLive())
        mMoved = true;   // an update brings the row back
    const uint32_t position = mStorage->Position();
    if (!mStorage->UpdateBody(change.Body()))
        return false;
    if (mStorage->Position() != position)
        mMoved = true;
    return true;
}

// The body that an inserted row has in its record, without nulls.
std::string_view VelaTrans::StoredBody(const VTChangedRow& change, std::vector<char>* room)
{
    if (!change.HasNulls())
        return change.Body();
    CopyWithoutNulls(change.Body(), room);
    return {room->data(), room->size()};
}

bool VelaTrans::WriteInsert(const VTChangedRow& change)
{
    std::vector<char> room;
    const std::string_view body = StoredBody(change, &room);
    return IsNewRow(change.RowID()) ? mStorage->AddNewestBody(change.RowID(), body)
                                    : mStorage->AddNewBody(change.RowID(), body);
}

void VelaTrans::ForgetChanges()
{
    mRows->Settle();
    ForgetRowsAhead();
    mChangedRows.Presize(1000);
    mChangeMemory.Clear();
    mDeletedRows.Clear();
    mCachedRowID = kInvalidRowID;
}

void VelaTrans::Rollback()
{
    if (!mFilesOpened)
        return;
    for (OpenIndex& dropped : mDroppedIndexes)
        mIndexes.push_back(std::move(dropped));
    mDroppedIndexes.clear();
    for (size_t i = mIndexes.size(); i > 0; i--)
        if (mIndexes[i - 1].created)
            mIndexes.erase(i - 1);
    // The files have every index as it was. One that was dropped has missed what happened since.
    for (OpenIndex& open : mIndexes) {
        if (!open.index->IsChanged())
            continue;
        open.index = open.index->Unloaded();
        open.loaded = false;
        open.forgotten = false;
    }
    mRows->Drop();
    ForgetChanges();
    LoadMetadata();
}

void VelaTrans::ForgetCaches()
{
    mRows->Drop();
    mCachedRowID = kInvalidRowID;
    for (OpenIndex& open : mIndexes) {
        if (!open.created && !open.index->IsChanged())
            continue;   // it is whole
        open.index->Forget();
        open.loaded = false;
        open.forgotten = true;
    }
    if (mStorage)
        mStorage->StreamsWentBack();
    if (!mOpening)
        return;
    mOpening = false;
    mFilesOpened = false;
    CloseFiles();
}

void VelaTrans::CloseFiles()
{
    mAhead.Close();
    mStorage.reset();
    mRecordStream.reset();
    mMapStream.reset();
}

bool VelaTrans::DeleteStorage()
{
    CloseFiles();
    return DeleteFiles();
}

bool VelaTrans::DeleteFiles()
{
    SimpleVector<string> names;
    names.push_back(mName + ".dat");
    names.push_back(mName + ".map");
    for (const string& indexName : FindIndexFiles())
        names.push_back(IndexFileName(indexName));
    bool deleted = true;
    for (const string& name : names)
        deleted = (!mFiles->ContainsFile(name) || mFiles->DeleteFile(name)) && deleted;
    return deleted;
}

}   // namespace vela
