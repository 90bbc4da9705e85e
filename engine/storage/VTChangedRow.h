#pragma once

#include <cstdint>
#include <string_view>

#include "engine/core/VelaValueWithID.h"
#include "engine/storage/RecordFormat.h"
#include "engine/storage/RowArena.h"

namespace vela {

// VTChangedRow is the pending change of one row: a row inserted in this transaction, or an update of a stored row, with the
// values that it sets, by column id.
//
// The values are kept as the body of a record (RecordFormat.h), in one piece of an arena with this object; null ones, which
// a commit doesn't write, are fields of type None. It never changes: an update of a pending row makes a new one.
class VTChangedRow {
public:
    enum Kind : uint8_t { kInsert = 0, kUpdate = 1 };

    // A change with these values, copied. Of several values for one column an insert keeps all, as
    // its record will, and the first is read; an update keeps the last.
    [[nodiscard]] static VTChangedRow* Create(RowArena* arena, uint32_t rowID, Kind kind,
                                              const VelaRow& values);
    // An inserted row with the values of a record's body, copied.
    [[nodiscard]] static VTChangedRow* Insert(RowArena* arena, uint32_t rowID,
                                              std::string_view body);
    // A copy in which each of values takes the place of the one with its column id, or is appended.
    [[nodiscard]] VTChangedRow* UpdateValues(RowArena* arena, const VelaRow& values) const;
    [[nodiscard]] VTChangedRow* CopyTo(RowArena* arena) const;
    // Bytes of its piece of the arena.
    [[nodiscard]] size_t Size() const { return sizeof(VTChangedRow) + mBodySize; }

    [[nodiscard]] uint32_t RowID() const { return mRowID; }
    [[nodiscard]] bool IsInsert() const { return mKind == kInsert; }
    [[nodiscard]] std::string_view Body() const { return {Bytes(), mBodySize}; }
    // Whether any value is null.
    [[nodiscard]] bool HasNulls() const { return mHasNulls; }
    // The value set for a column; a null one is null of type. False when the change doesn't hold the column.
    bool GetValue(uint32_t columnID, VelaDataType type, VelaValue* value) const;
    // The same of a field that a change holds.
    static void GetValue(const RecordField& field, VelaDataType type, VelaValue* value);

private:
    VTChangedRow(uint32_t rowID, Kind kind, bool hasNulls, size_t bodySize)
        : mRowID(rowID),
          mKind(kind),
          mHasNulls(hasNulls),
          mBodySize(static_cast<uint32_t>(bodySize))
    {}
    static VTChangedRow* Allocate(RowArena* arena, uint32_t rowID, Kind kind, bool hasNulls,
                                  size_t bodySize);
    static VTChangedRow* Create(RowArena* arena, uint32_t rowID, Kind kind, bool hasNulls,
                                std::string_view body);
    [[nodiscard]] char* Bytes() { return reinterpret_cast<char*>(this + 1); }
    [[nodiscard]] const char* Bytes() const { return reinterpret_cast<const char*>(this + 1); }

    uint32_t mRowID;
    Kind mKind;
    bool mHasNulls;
    uint32_t mBodySize;
};

// The field of a column in a record body; false when the body lacks it.
bool FindField(std::string_view body, uint32_t columnID, RecordField* field);

}   // namespace vela
