#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "engine/core/VelaValueWithID.h"
#include "engine/storage/RandomAccessMechanism.h"
#include "engine/storage/RowMap.h"
#include "runtime/LargeMemory.h"
#include "runtime/StringArena.h"

namespace vela {

// One entry of an index, as a view: the key values of a row in index-column order. Good until the index changes.
class VelaIndexEntry {
public:
    VelaIndexEntry(const VelaValue* values, size_t count, uint32_t rowID)
        : mValues(values), mCount(count), mRowID(rowID)
    {}

    [[nodiscard]] uint32_t RowID() const { return mRowID; }
    [[nodiscard]] const VelaValue& Value(size_t position) const { return mValues[position]; }
    // Whether every value of the entry Equals the given one at its position. An entry without values matches everything.
    [[nodiscard]] bool Matches(const SimpleVector<VelaValue>& values) const;

private:
    const VelaValue* mValues;
    size_t mCount;
    uint32_t mRowID;
};

// VelaIndex is a multi-column index of a stored table: the key values of every row, in memory, in insertion order.
//
// Its file holds one record per entry, under the entry's row id, with one value per index column; an index without entries
// has instead one record under row id 0xFFFFFFFF with an Integer 0 for each column, so that the column list survives.
// Formats: RecordFormat.h. A hash over the first key column is built when entries are first searched by value.
class VelaIndex {
public:
    VelaIndex(const string& name, const SimpleVector<uint32_t>& columnIDs);

    [[nodiscard]] const string& Name() const { return mName; }
    [[nodiscard]] const SimpleVector<uint32_t>& ColumnIDs() const { return mColumnIDs; }
    // The position of a column in the key; -1 when it isn't indexed.
    [[nodiscard]] long PositionOfColumn(uint32_t columnID) const;
    [[nodiscard]] bool IsChanged() const { return mChanged; }
    [[nodiscard]] size_t Count() const { return mEntries.Count(); }
    [[nodiscard]] bool Contains(uint32_t rowID) const { return mEntries.Contains(rowID); }
    // By position in insertion order.
    [[nodiscard]] VelaIndexEntry EntryAt(size_t position);

    // Makes room for so many entries at once.
    void Reserve(size_t entries);
    // Appends the entry of a row, which has none yet. values are as many as the columns.
    void Add(const SimpleVector<VelaValue>& values, uint32_t rowID);
    // Removes the entry of a row, if it has one; the row map finds it, whatever its values are.
    void Delete(uint32_t rowID);
    // The row of the first entry, in insertion order, that matches; kInvalidRowID when none does.
    [[nodiscard]] uint32_t Lookup(const SimpleVector<VelaValue>& values);
    // False when the column isn't indexed or the row has no entry.
    bool GetColumnValue(uint32_t rowID, uint32_t columnID, VelaValue* value) const;
    // Appends the rows whose first key value has the same type as key and the same number or bytes; nulls never do. False
    // when the entries can't be searched this way, because their first values have several types.
    bool FindRows(const VelaValue& key, SimpleVector<uint32_t>* rowIDs);
    // Puts the default of its column in place of every null.
    void ReplaceNulls(const SimpleVector<VelaValue>& defaults);

    // Reads columns and entries from a file of the above form; entries of a row that has one already are passed over. False:
    // the file is damaged, and entries may be missing. An index that ends without columns is not one.
    [[nodiscard]] bool LoadFromFile(RandomAccessMechanism* stream);
    // Reads the columns alone, from the first record.
    void LoadColumns(RandomAccessMechanism* stream);
    // Adds an entry as Add does while those of the file are not in memory; the row has none there. AppendToFile then appends
    // all entries; the index knows of no others. Only where LoadColumns has found that the file has entries.
    void AddBehindFile(const SimpleVector<VelaValue>& values, uint32_t rowID);
    [[nodiscard]] bool CanAddBehindFile() const { return mFileHasEntries; }
    [[nodiscard]] bool IsBehindFile() const { return mBehindFile; }
    // The same index with its entries in the file, where they now are, or are again as they were.
    [[nodiscard]] std::unique_ptr<VelaIndex> Unloaded() const;
    // Adds the entries of an index of the same columns for rows that have none.
    void AddMissingFrom(VelaIndex& other);

    // Writes all entries to an empty stream, with the defaults of the columns, where given, in place of nulls. False when
    // writing failed; the index is then still marked as changed.
    bool SaveToFile(RandomAccessMechanism* stream, const SimpleVector<VelaValue>& defaults = {});
    // Whether the file that was loaded or saved last only lacks entries at its end, and then: appends them.
    [[nodiscard]] bool CanAppendToFile() const { return mBehindFile || mEntriesInFile > 0; }
    // False when writing failed: the file is as it was, if it could be cut again, and must be saved whole next time.
    bool AppendToFile(RandomAccessMechanism* stream, const SimpleVector<VelaValue>& defaults = {});
    // Drops all entries, to be marked as changed; they are to be added anew. Takes no memory.
    void Forget();
    // What was saved or appended last has not come to stay: the file is again as it was before.
    void MarkUnsaved();

private:
    void AddEntry(uint32_t rowID, uint32_t slot);
    [[nodiscard]] uint32_t NewSlot();
    bool ReadEntry(std::string_view body, uint32_t slot, StringArena* texts, bool* exact);
    bool WriteEntries(RandomAccessMechanism* stream, size_t first,
                      const SimpleVector<VelaValue>& defaults);
    bool WriteColumnRecord(RandomAccessMechanism* stream);

    // The hash over the first key values. Entries of a bucket are chained in insertion order; the first one's mPrevious is
    // the last.
    void NeedHash();
    void NoteType(const VelaValue& value);
    void Link(uint32_t slot);
    void Unlink(uint32_t slot);
    [[nodiscard]] uint32_t& BucketOf(const VelaValue& value);
    [[nodiscard]] VelaValue* SlotValues(uint32_t slot)
    {
        return mValues.data() + slot * mColumnIDs.size();
    }
    [[nodiscard]] const VelaValue* SlotValues(uint32_t slot) const
    {
        return mValues.data() + slot * mColumnIDs.size();
    }

    string mName;
    SimpleVector<uint32_t> mColumnIDs;
    RowMap<uint32_t> mEntries;   // row id to slot, in insertion order
    // The key values of each slot, side by side.
    std::vector<VelaValue, LargeAllocator<VelaValue>> mValues;
    LargeVector<uint32_t> mSlotRows;
    SimpleVector<uint32_t> mFreeSlots;
    bool mChanged = false;
    bool mHasNulls = false;
    bool mFileHasEntries = false;   // says LoadColumns
    bool mBehindFile = false;       // the entries in memory come after all those of the file
    size_t mEntriesInFile = 0;   // the file holds exactly the first that many entries; 0: not known
    size_t mEntriesBefore = 0;   // the same before it was last saved or appended to

    bool mHashed = false;
    bool mMixedTypes = false;            // first key values have several types
    VelaDataType mKeyType = kTypeNone;   // of the first key values that are not null
    LargeVector<uint32_t> mBuckets;      // slot + 1 of the first entry
    LargeVector<uint32_t> mNext;         // by slot: slot + 1 of the next entry in its bucket
    LargeVector<uint32_t> mPrevious;
};

}   // namespace vela
