#pragma once

#include <cstdint>

#include "engine/core/VelaValueWithID.h"
#include "engine/rescue/DamagedFile.h"

namespace vela {

// What is wrong with the body of a record (engine/storage/RecordFormat.h).
enum class BodyFault {
    kNone,
    kCount,      // the count of values doesn't end, or is more than the body can hold
    kEntry,      // the list of column ids and types reaches over the end
    kTypeCode,   // a type code that is none
    kPayload,    // a payload reaches over the end, or a text over its space
    kUnreadable
};

// One value of a record, as a place in the file.
struct FieldPlace {
    uint32_t columnID = 0;
    VelaDataType type = kTypeNone;
    TextEncoding encoding = 0;   // of a String
    int64_t position = 0;        // where the payload begins
    int64_t data = 0;            // where its bytes lie: the number, or the text
    uint32_t size = 0;           // of these bytes
};

// BodyReader takes the body of a record apart where it lies in the file, without having it in
// memory as a whole. Nothing in it is believed: every number is compared with the bytes that are
// left.
//
//     BodyReader reader(&entries, &payloads, position, end);
//     FieldPlace field;
//     while (reader.Next(&field)) ...
//     if (reader.Fault() == BodyFault::kNone) ...   // the body is whole up to reader.Position()
class BodyReader {
public:
    // Two views of one file, because the list of types and the payloads may lie far apart; both
    // must outlive the reader. The body ends at end at the latest.
    BodyReader(DamagedFile* entries, DamagedFile* payloads, int64_t position, int64_t end);

    [[nodiscard]] uint32_t Count() const { return mCount; }
    // False at the end, or at a fault.
    bool Next(FieldPlace* field);
    [[nodiscard]] BodyFault Fault() const { return mFault; }
    // Behind the last payload that was read; at a fault, where that is.
    [[nodiscard]] int64_t Position() const { return mPayload; }

private:
    bool ReadChunk(int64_t* position, uint32_t* value);
    bool ReadEntry(int64_t* position, FieldPlace* field);
    bool PlacePayload(FieldPlace* field);
    bool PlaceText(FieldPlace* field);
    bool Fail(BodyFault fault, int64_t position);

    DamagedFile* mEntries;
    DamagedFile* mPayloads;
    int64_t mStart;
    int64_t mEnd;
    int64_t mEntry = 0;
    int64_t mPayload = 0;
    uint32_t mCount = 0;
    uint32_t mLeft = 0;
    BodyFault mFault = BodyFault::kNone;
};

// The value at a place; false when its bytes can't be had. A field of type None gives a null.
bool ReadField(DamagedFile* file, const FieldPlace& field, VelaValue* value);

}   // namespace vela
