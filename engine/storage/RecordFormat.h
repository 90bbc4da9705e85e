#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/core/VelaValueWithID.h"
#include "engine/storage/VelaTable.h"
#include "runtime/SimpleVector.h"
#include "runtime/StringArena.h"

namespace vela {

// RecordFormat: the files that VelaStorage reads and writes. All numbers big-endian.
//
// Record file: a metadata block of 256 bytes, free text of the file's owner padded with zeros, then records to the end.
//
//   offset  size  content of a record
//        0     4  tag: kRecordTag "RcSt" live, kTrashTag "Trsh" deleted; anything else is damage
//        4     4  row id, unsigned
//        8     4  body length L, signed, at least 1; the next record starts at 12 + L
//       12     ?  value count n, a byte chunk
//              ?  n times: column id (byte chunk), type code (1 byte)
//              ?  n payloads in the same order
//              ?  slack up to 12 + L, left by updates in place; never read
//
//   payload   Integer    4 bytes, signed
//             Boolean    1 byte, zero or not
//             Double     8 bytes, IEEE
//             String     space S (4 bytes), length N (4), text-encoding tag (4), N bytes; the next payload starts at 12 + S
//             Date, Time, Timestamp, Binary
//                        space S (4 bytes), length N (4), N bytes; the next payload starts at 8 + S
//             None       nothing
//             The writer has S = N; readers honour S. Null is not stored.
//
//   byte chunk: zero or more 0xFF bytes, each standing for 254, then one byte 0 to 254 that is added.
//
// Readers check every length against the bytes that are left before they trust it.
// Example, row 1 with column 1 = Integer 42:
//   52 63 53 74  00 00 00 01  00 00 00 07  01  01 03  00 00 00 2A
constexpr uint32_t kRecordTag = 0x52635374;   // stored in files: never change
constexpr uint32_t kTrashTag = 0x54727368;    // stored in files: never change
constexpr size_t kMetadataSize = 256;
constexpr size_t kRecordHeaderSize = 12;
// Positions in a record file are unsigned 32-bit numbers.
constexpr int64_t kMaxRecordFileSize = 0xFFFFFFFF;

// Row-position map file: which record belongs to which row, so that opening a table needs no scan.
//
//   offset  size  content
//        0     4  state: kMapValid "RMap", or kMapStale "Drty" while the record file has moved on
//        4     4  count C, signed
//        8    8C  C pairs: row id, position of its record (4 bytes each)
//   8 + 8C     4  end mark kMapEnd "MEnd"; bytes after it are left over from earlier and mean nothing
constexpr uint32_t kMapValid = 0x524D6170;   // stored in files: never change
constexpr uint32_t kMapStale = 0x44727479;   // stored in files: never change
constexpr uint32_t kMapEnd = 0x4D456E64;     // stored in files: never change

[[nodiscard]] constexpr size_t ByteChunkSize(uint32_t value)
{
    return value == 0 ? 1 : 1 + (value - 1) / 254;
}
// Writes ByteChunkSize(value) bytes and returns the place after them.
char* EncodeByteChunk(char* to, uint32_t value);
// Reads a byte chunk that ends before end; returns the place after it, or null when it doesn't end or passes 32 bits.
const char* DecodeByteChunk(const char* from, const char* end, uint32_t* value);

// Bytes that a record's body takes: the count, the ids and types, the payloads. A null value, which record files of tables
// don't have, is a field of type None.
[[nodiscard]] size_t CalcSchemaAndDataSize(const VelaRow& values);
// Writes a body of exactly CalcSchemaAndDataSize(values) bytes and returns the place after it.
char* EncodeRecordBody(char* to, const VelaRow& values);
// Writes the 12 bytes of a live record's header.
void EncodeRecordHeader(char* to, uint32_t rowID, uint32_t bodySize);

// Appends a whole live record with these values.
void AppendRecord(std::vector<char>* to, uint32_t rowID, const VelaRow& values);

// One value of a record where it lies. payload is what the type's reader needs: the number's bytes, or the text's.
struct RecordField {
    uint32_t columnID;
    VelaDataType type;
    TextEncoding encoding;   // of a String
    std::string_view
        payload;   // as long as it says; shorter than its type wants only in a damaged record
};

// Reads the payload of field->type at *payload and moves that on; false when it doesn't end before end.
bool ReadPayload(const char** payload, const char* end, RecordField* field);

// RecordReader walks the values of a record body that lies in memory, which must stay there.
//
//     RecordReader reader(body);
//     RecordField field;
//     while (reader.Next(&field)) ...
class RecordReader {
public:
    explicit RecordReader(std::string_view body);

    // The number of values that the body promises; never more than its bytes can describe.
    [[nodiscard]] uint32_t Count() const { return mCount; }
    // The next value; false at the end, or where the body is damaged.
    bool Next(RecordField* field);
    // Whether Next has ended at damage, before the last value.
    [[nodiscard]] bool IsDamaged() const { return mDamaged; }
    // After the last value: whether the payloads end exactly where the body does.
    [[nodiscard]] bool EndsExactly() const { return !mDamaged && mPayload == mEnd; }

private:
    const char* mEntry = nullptr;
    const char* mPayload = nullptr;
    const char* mEnd = nullptr;
    uint32_t mCount = 0;
    uint32_t mLeft = 0;
    bool mDamaged = false;
};

// Whether every value of a body can be read.
[[nodiscard]] bool IsWholeBody(std::string_view body);

// Makes the value that a field holds: non-null, but for type None.
void DecodeField(const RecordField& field, VelaValue* value);
// The same with a text that arena makes.
void DecodeField(const RecordField& field, StringArena* arena, VelaValue* value);
// The numbers of a field, for readers that want no VelaValue. 0 when the payload is short.
[[nodiscard]] int32_t FieldInteger(const RecordField& field);
[[nodiscard]] double FieldDouble(const RecordField& field);

// Resizes the list to the values of a body: surplus ones are deleted, missing ones made. Of a damaged body it gives the
// values before the damage. False when the payloads don't end exactly where the body does.
bool DecodeRecordBody(std::string_view body, VelaRow* values);

// Deletes the values of a row and empties it.
void DeleteValues(VelaRow* values);

}   // namespace vela
