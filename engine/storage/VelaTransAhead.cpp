// The rows that a large transaction has inserted go to the record file while it is still running, and leave memory.

#include <utility>

#include "engine/storage/VelaTrans.h"
#include "runtime/ScopeExit.h"

namespace vela {

// The record file of a table that has none yet.
void VelaTrans::OpenFilesAhead()
{
    mRecordStream = mFiles->OpenFileAhead(mName + ".dat");
    if (!mRecordStream)
        return;
    mRecordStream->SetDamageLog(&mFiles->Damage(), mName + ".dat");
    mAhead.Open(mRecordStream.get());
}

// In the commit. The map learns of the rows like that of any other table.
bool VelaTrans::MakeFilesOfRowsAhead()
{
    if (!mFiles->CreateFileAhead(mName + ".dat", mRecordStream.get()) || !mAhead.Take() ||
        !mFiles->CreateFile(mName + ".map"))
        return false;
    mMapStream = mFiles->OpenFile(mName + ".map", false);
    mStorage = std::make_unique<VelaStorage>(mRecordStream.get(), mMapStream.get());
    mStorage->StartWithEmptyMap();
    return true;
}

// The rows that were written last time have had the time since to reach the device: now they are waited for, and leave memory.
// Then those that were added since are written.
void VelaTrans::WriteRowsAhead()
{
    ScopeExit giveUp([this] { mAhead.GiveUp(); });
    if (!LetSafeRowsGo())
        return;
    std::vector<char> room;
    for (size_t i = mAhead.Count(); i < mChangedRows.Count(); i++) {
        const VTChangedRow& change = *mChangedRows.GetItemByIndex(i);
        // Others are not written by a commit as they are now.
        if (!change.IsInsert() || mDeletedRows.Contains(change.RowID()) ||
            !mAhead.Append(change.RowID(), StoredBody(change, &room)))
            return;
    }
    if (!mAhead.EndPiece())
        return;
    mMemoryOfUnsafe = std::exchange(mChangeMemory, RowArena());
    giveUp.Dismiss();
}

// The nulls of a row are not in its record: as long as they are pending, it stays in memory.
bool VelaTrans::LetSafeRowsGo()
{
    const size_t first = mAhead.SafeCount();
    if (!mAhead.Flush())
        return false;
    for (size_t i = first; i < mAhead.SafeCount(); i++) {
        VTChangedRow** change = mChangedRows.FindNode(mChangedRows.GetRowIDByIndex(i));
        *change = (*change)->HasNulls() ? (*change)->CopyTo(&mMemoryOfNulls) : nullptr;
    }
    mMemoryOfUnsafe.Clear();
    return true;
}

bool VelaTrans::IsAhead(uint32_t rowID) const
{
    return mAhead.Count() > 0 && mChangedRows.Contains(rowID) &&
           mChangedRows.OrderOf(rowID) < mAhead.Count();
}

// Before one of them is changed, so that the commit writes what it would have written without them. False: that can't be done, since
// they can't be read; then nothing has changed, and the transaction can only be rolled back.
bool VelaTrans::TakeRowsBack()
{
    RowArena memory;
    std::vector<VTChangedRow*> copies(mChangedRows.Count());
    std::vector<char> body;
    for (size_t i = 0; i < copies.size(); i++) {
        const VTChangedRow* change = mChangedRows.GetItemByIndex(i);
        const uint32_t rowID = mChangedRows.GetRowIDByIndex(i);
        if (change != nullptr) {
            copies[i] = change->CopyTo(&memory);
        } else if (mAhead.ReadBody(i, rowID, &body)) {
            copies[i] = VTChangedRow::Insert(&memory, rowID, {body.data(), body.size()});
        } else {
            mRecordStream->NoteDamage(mAhead.PositionOf(i), DamageKind::kUnreadable);
            mAheadIsLost = true;
            return false;
        }
    }
    for (VTChangedRow* copy : copies)
        *mChangedRows.FindNode(copy->RowID()) = copy;
    mChangeMemory = std::move(memory);
    mMemoryOfUnsafe.Clear();
    mMemoryOfNulls.Clear();
    mCachedRowID = kInvalidRowID;   // it may be one of them
    mAhead.Clear();
    mAhead.GiveUp();
    return true;
}

void VelaTrans::ForgetRowsAhead()
{
    mAhead.Clear();
    mMemoryOfUnsafe.Clear();
    mMemoryOfNulls.Clear();
    mAheadIsLost = false;
}

}   // namespace vela
