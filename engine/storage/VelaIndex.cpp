#include "engine/storage/VelaIndex.h"

#include <bit>
#include <cstring>
#include <functional>
#include <string_view>
#include <vector>

#include "engine/storage/RecordFormat.h"
#include "engine/storage/RecordScanner.h"

namespace vela {

namespace {

constexpr size_t kWriteBlock = size_t{1} << 18;

// Values that are the same key hash alike: numbers by value, with one zero for doubles; texts by their bytes.
size_t HashKey(const VelaValue& value)
{
    if (value.IsNull())
        return 0;
    if (IsTextBacked(value.GetType()))
        return std::hash<std::string_view>()(value.TextView());
    uint64_t bits = static_cast<uint32_t>(value.GetInteger());
    if (value.GetType() == kTypeDouble)
        bits = std::bit_cast<uint64_t>(value.GetDouble() + 0.0);
    bits *= 0x9E3779B97F4A7C15u;
    return static_cast<size_t>(bits ^ bits >> 32);
}

bool SameKey(const VelaValue& a, const VelaValue& b)
{
    if (a.IsNull() || b.IsNull() || a.GetType() != b.GetType())
        return false;
    if (IsTextBacked(a.GetType()))
        return a.TextView() == b.TextView();
    if (a.GetType() == kTypeDouble)
        return a.GetDouble() == b.GetDouble();
    return a.GetInteger() == b.GetInteger();
}

// What an entry's value of a type is compared with in VelaValue::Equals, as a value of that type. False when that can't be
// said as one: doubles are compared by payload.
bool EqualsOperand(const VelaValue& given, VelaDataType type, VelaValue* operand)
{
    if (given.IsNull())
        return false;
    if (IsTextBacked(type))
        operand->SetText(type, given.GetString());
    else if (type == kTypeInteger)
        operand->SetInteger(given.GetInteger());
    else
        return false;
    return true;
}

}   // namespace

bool VelaIndexEntry::Matches(const SimpleVector<VelaValue>& values) const
{
    for (size_t i = 0; i < mCount; i++)
        if (i >= values.size() || !mValues[i].Equals(values[i]))
            return false;
    return true;
}

VelaIndex::VelaIndex(const string& name, const SimpleVector<uint32_t>& columnIDs)
    : mName(name), mColumnIDs(columnIDs)
{}

long VelaIndex::PositionOfColumn(uint32_t columnID) const
{
    for (size_t i = 0; i < mColumnIDs.size(); i++)
        if (mColumnIDs[i] == columnID)
            return static_cast<long>(i);
    return -1;
}

VelaIndexEntry VelaIndex::EntryAt(size_t position)
{
    const uint32_t rowID = mEntries.GetRowIDByIndex(position);
    return {SlotValues(mEntries.GetItemByIndex(position)), mColumnIDs.size(), rowID};
}

void VelaIndex::Reserve(size_t entries)
{
    mValues.reserve(entries * mColumnIDs.size());
    mSlotRows.reserve(entries);
}

void VelaIndex::Add(const SimpleVector<VelaValue>& values, uint32_t rowID)
{
    mChanged = true;   // first: an index that is changed in part is one that has changed
    const uint32_t slot = NewSlot();
    for (size_t i = 0; i < mColumnIDs.size(); i++)
        SlotValues(slot)[i] = values[i];
    AddEntry(rowID, slot);
}

void VelaIndex::AddBehindFile(const SimpleVector<VelaValue>& values, uint32_t rowID)
{
    mBehindFile = true;
    Add(values, rowID);
}

std::unique_ptr<VelaIndex> VelaIndex::Unloaded() const
{
    auto index = std::make_unique<VelaIndex>(mName, mColumnIDs);
    index->mFileHasEntries = mBehindFile;   // a loaded one may have lost them all
    return index;
}

void VelaIndex::AddMissingFrom(VelaIndex& other)
{
    SimpleVector<VelaValue> values;
    values.resize(mColumnIDs.size());
    for (size_t position = 0; position < other.Count(); position++) {
        const VelaIndexEntry entry = other.EntryAt(position);
        if (Contains(entry.RowID()))
            continue;
        for (size_t i = 0; i < values.size(); i++)
            values[i] = entry.Value(i);
        Add(values, entry.RowID());
    }
}

void VelaIndex::AddEntry(uint32_t rowID, uint32_t slot)
{
    const VelaValue* values = SlotValues(slot);
    for (size_t i = 0; i < mColumnIDs.size(); i++)
        mHasNulls = mHasNulls || values[i].IsNull();
    NoteType(values[0]);
    mSlotRows[slot] = rowID;
    mEntries.Append(rowID, slot);
    if (mHashed)
        Link(slot);
}

uint32_t VelaIndex::NewSlot()
{
    if (!mFreeSlots.empty()) {
        const uint32_t slot = mFreeSlots.back();
        mFreeSlots.pop_back();
        return slot;
    }
    const uint32_t slot = static_cast<uint32_t>(mSlotRows.size());
    mSlotRows.push_back(kInvalidRowID);
    for (size_t i = 0; i < mColumnIDs.size(); i++)
        mValues.push_back(VelaValue());
    if (mHashed) {
        mNext.push_back(0);
        mPrevious.push_back(0);
    }
    return slot;
}

void VelaIndex::Delete(uint32_t rowID)
{
    const uint32_t* found = mEntries.FindNode(rowID);
    if (found == nullptr)
        return;
    const uint32_t slot = *found;
    mChanged = true;
    if (mHashed)
        Unlink(slot);
    mEntries.RemoveItem(rowID);
    for (size_t i = 0; i < mColumnIDs.size(); i++)
        SlotValues(slot)[i] = VelaValue();
    mFreeSlots.push_back(slot);
    mEntriesInFile = 0;
}

uint32_t VelaIndex::Lookup(const SimpleVector<VelaValue>& values)
{
    VelaValue operand;
    NeedHash();
    if (mMixedTypes || values.empty() || !EqualsOperand(values[0], mKeyType, &operand)) {
        for (size_t i = 0; i < Count(); i++)
            if (EntryAt(i).Matches(values))
                return EntryAt(i).RowID();
        return kInvalidRowID;
    }
    for (uint32_t next = BucketOf(operand); next != 0; next = mNext[next - 1]) {
        const VelaIndexEntry entry(SlotValues(next - 1), mColumnIDs.size(), mSlotRows[next - 1]);
        if (entry.Matches(values))
            return entry.RowID();
    }
    return kInvalidRowID;
}

bool VelaIndex::GetColumnValue(uint32_t rowID, uint32_t columnID, VelaValue* value) const
{
    const long position = PositionOfColumn(columnID);
    if (position < 0)
        return false;
    const uint32_t* slot = mEntries.FindNode(rowID);
    if (slot == nullptr)
        return false;
    *value = SlotValues(*slot)[position];
    return true;
}

bool VelaIndex::FindRows(const VelaValue& key, SimpleVector<uint32_t>* rowIDs)
{
    NeedHash();
    if (mMixedTypes || (mKeyType != key.GetType() && mKeyType != kTypeNone))
        return false;
    for (uint32_t next = BucketOf(key); next != 0; next = mNext[next - 1])
        if (SameKey(SlotValues(next - 1)[0], key))
            rowIDs->push_back(mSlotRows[next - 1]);
    return true;
}

void VelaIndex::ReplaceNulls(const SimpleVector<VelaValue>& defaults)
{
    if (!mHasNulls)
        return;
    mHasNulls = false;
    mHashed = false;
    for (size_t position = 0; position < Count(); position++) {
        VelaValue* values = SlotValues(mEntries.GetItemByIndex(position));
        for (size_t i = 0; i < mColumnIDs.size(); i++)
            if (values[i].IsNull())
                values[i] = defaults[i];
        NoteType(values[0]);
    }
}

void VelaIndex::LoadColumns(RandomAccessMechanism* stream)
{
    mColumnIDs.clear();
    mFileHasEntries = false;
    RecordScanner scanner(stream);
    while (scanner.Next()) {
        if (!scanner.Header().live)
            continue;
        RecordReader reader(scanner.Body());
        RecordField field;
        while (reader.Next(&field))
            mColumnIDs.push_back(field.columnID);
        mFileHasEntries = scanner.Header().rowID != kInvalidRowID;
        if (reader.IsDamaged()) {   // some of them can't be read
            mColumnIDs.clear();
            stream->NoteDamage(scanner.Position(), DamageKind::kBody);
        }
        return;
    }
}

bool VelaIndex::LoadFromFile(RandomAccessMechanism* stream)
{
    LoadColumns(stream);
    if (mColumnIDs.empty())
        return false;
    bool whole = true;
    bool plain = true;   // the file holds the entries and nothing else
    StringArena texts;
    RecordScanner scanner(stream);
    while (scanner.Next()) {
        const uint32_t rowID = scanner.Header().rowID;
        if (!scanner.Header().live || rowID == kInvalidRowID || mEntries.Contains(rowID)) {
            plain = false;
            continue;
        }
        if (Count() == 0)   // entries are mostly as long as the first one
            Reserve(static_cast<size_t>(stream->GetLength()) /
                    (kRecordHeaderSize + scanner.Body().size()));
        const uint32_t slot = NewSlot();
        bool exact = false;
        if (ReadEntry(scanner.Body(), slot, &texts, &exact)) {
            AddEntry(rowID, slot);
            plain = plain && exact;
        } else {
            mFreeSlots.push_back(slot);
            whole = false;
            stream->NoteDamage(scanner.Position(), DamageKind::kIndexEntry);
        }
    }
    whole = whole && !scanner.Failed();
    mEntriesInFile = plain && whole ? Count() : 0;
    mChanged = false;
    return whole;
}

// False when the record isn't one of the index's columns. exact: it has no slack.
bool VelaIndex::ReadEntry(std::string_view body, uint32_t slot, StringArena* texts, bool* exact)
{
    RecordReader reader(body);
    if (reader.Count() != mColumnIDs.size())
        return false;
    RecordField field;
    for (size_t i = 0; i < mColumnIDs.size(); i++) {
        if (!reader.Next(&field) || field.columnID != mColumnIDs[i])
            return false;
        DecodeField(field, texts, &SlotValues(slot)[i]);
    }
    *exact = reader.EndsExactly();
    return true;
}

bool VelaIndex::SaveToFile(RandomAccessMechanism* stream, const SimpleVector<VelaValue>& defaults)
{
    mEntriesBefore = mEntriesInFile;
    if (!stream->SetLength(kMetadataSize) || !stream->SeekFromStart(kMetadataSize))
        return false;
    const bool written =
        Count() == 0 ? WriteColumnRecord(stream) : WriteEntries(stream, 0, defaults);
    if (!written)
        return false;
    mEntriesInFile = Count();
    mChanged = false;
    return true;
}

bool VelaIndex::AppendToFile(RandomAccessMechanism* stream, const SimpleVector<VelaValue>& defaults)
{
    const int64_t length = stream->GetLength();
    const size_t first = mBehindFile ? 0 : mEntriesInFile;
    mEntriesBefore = first;
    mEntriesInFile = 0;
    if (!stream->SeekFromStart(length) || !WriteEntries(stream, first, defaults) ||
        !stream->FlushToDisk()) {
        stream->SetLength(length);
        return false;
    }
    mEntriesInFile = Count();
    mChanged = false;
    return true;
}

void VelaIndex::Forget()
{
    mEntries.RemoveAll();
    mValues.clear();
    mSlotRows.clear();
    mFreeSlots.clear();
    mBehindFile = false;
    mEntriesInFile = 0;
    mEntriesBefore = 0;
    mHashed = false;
    mChanged = true;
}

void VelaIndex::MarkUnsaved()
{
    mEntriesInFile = mEntriesBefore;
    mChanged = true;
}

bool VelaIndex::WriteEntries(RandomAccessMechanism* stream, size_t first,
                             const SimpleVector<VelaValue>& defaults)
{
    SimpleVector<VelaValueWithID> values;
    VelaRow row;
    values.resize(mColumnIDs.size());
    for (size_t i = 0; i < mColumnIDs.size(); i++) {
        values[i].SetColumnID(mColumnIDs[i]);
        row.push_back(&values[i]);
    }
    std::vector<char> block;
    for (size_t position = first; position < Count(); position++) {
        const VelaIndexEntry entry = EntryAt(position);
        for (size_t i = 0; i < mColumnIDs.size(); i++)
            values[i].SetValue(i < defaults.size() && entry.Value(i).IsNull() ? defaults[i]
                                                                              : entry.Value(i));
        AppendRecord(&block, entry.RowID(), row);
        if (block.size() < kWriteBlock && position + 1 < Count())
            continue;
        if (!stream->WriteData(block.data(), static_cast<int>(block.size())))
            return false;
        block.clear();
    }
    return true;
}

bool VelaIndex::WriteColumnRecord(RandomAccessMechanism* stream)
{
    std::vector<VelaValueWithID> zeros;
    for (uint32_t columnID : mColumnIDs)
        zeros.emplace_back(VelaValue::Integer(0), columnID);
    VelaRow row;
    for (VelaValueWithID& zero : zeros)
        row.push_back(&zero);
    std::vector<char> record;
    AppendRecord(&record, kInvalidRowID, row);
    return stream->WriteData(record.data(), static_cast<int>(record.size()));
}

void VelaIndex::NoteType(const VelaValue& value)
{
    if (value.IsNull())
        return;
    if (mKeyType == kTypeNone)
        mKeyType = value.GetType();
    if (mKeyType != value.GetType())
        mMixedTypes = true;
}

void VelaIndex::NeedHash()
{
    if (mHashed && Count() <= mBuckets.size())
        return;
    mHashed = false;   // until it is
    mBuckets.assign(std::bit_ceil(Count() * 2 + 16), 0);
    mNext.resize(mSlotRows.size());
    mPrevious.resize(mSlotRows.size());
    mHashed = true;
    for (size_t position = 0; position < Count(); position++)
        Link(mEntries.GetItemByIndex(position));
}

uint32_t& VelaIndex::BucketOf(const VelaValue& value)
{
    return mBuckets[HashKey(value) & (mBuckets.size() - 1)];
}

void VelaIndex::Link(uint32_t slot)
{
    uint32_t& bucket = BucketOf(SlotValues(slot)[0]);
    mNext[slot] = 0;
    if (bucket == 0) {
        bucket = slot + 1;
        mPrevious[slot] = slot + 1;
        return;
    }
    const uint32_t first = bucket - 1;
    const uint32_t last = mPrevious[first] - 1;
    mNext[last] = slot + 1;
    mPrevious[slot] = last + 1;
    mPrevious[first] = slot + 1;
}

void VelaIndex::Unlink(uint32_t slot)
{
    uint32_t& bucket = BucketOf(SlotValues(slot)[0]);
    const uint32_t next = mNext[slot];
    const uint32_t previous = mPrevious[slot];
    if (bucket == slot + 1) {
        bucket = next;
        if (next != 0)
            mPrevious[next - 1] = previous;   // the last one
        return;
    }
    mNext[previous - 1] = next;
    if (next != 0)
        mPrevious[next - 1] = previous;
    else
        mPrevious[bucket - 1] = previous;
}

}   // namespace vela
