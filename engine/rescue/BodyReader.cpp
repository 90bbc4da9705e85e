#include "engine/rescue/BodyReader.h"

#include "engine/storage/RecordFormat.h"
#include "runtime/ByteOrder.h"

namespace vela {

BodyReader::BodyReader(DamagedFile* entries, DamagedFile* payloads, int64_t position, int64_t end)
    : mEntries(entries), mPayloads(payloads), mStart(position), mEnd(end)
{
    int64_t place = position;
    if (!ReadChunk(&place, &mCount) || mCount > (mEnd - place) / 2) {
        Fail(BodyFault::kCount, position);
        return;
    }
    mEntry = place;
    FieldPlace field;
    for (uint32_t i = 0; i < mCount; i++)
        if (!ReadEntry(&place, &field))
            return;
    mPayload = place;
    mLeft = mCount;
}

bool BodyReader::Fail(BodyFault fault, int64_t position)
{
    mFault = fault;
    mPayload = position;
    mLeft = 0;
    return false;
}

bool BodyReader::ReadChunk(int64_t* position, uint32_t* value)
{
    uint64_t sum = 0;
    while (*position < mEnd) {
        const char* bytes = mEntries->Bytes((*position)++, 1);
        if (bytes == nullptr)
            return false;
        const uint8_t byte = static_cast<uint8_t>(*bytes);
        sum += byte == 0xFF ? 254 : byte;
        if (sum > UINT32_MAX)
            return false;
        if (byte == 0xFF)
            continue;
        *value = static_cast<uint32_t>(sum);
        return true;
    }
    return false;
}

bool BodyReader::ReadEntry(int64_t* position, FieldPlace* field)
{
    const int64_t start = *position;
    const char* type = nullptr;
    if (ReadChunk(position, &field->columnID) && *position < mEnd)
        type = mEntries->Bytes(*position, 1);
    if (type == nullptr)
        return Fail(BodyFault::kEntry, start);
    if (!IsDataType(static_cast<uint8_t>(*type)))
        return Fail(BodyFault::kTypeCode, *position);
    field->type = static_cast<VelaDataType>(*type);
    (*position)++;
    return true;
}

bool BodyReader::Next(FieldPlace* field)
{
    if (mLeft == 0)
        return false;
    mLeft--;
    if (!ReadEntry(&mEntry, field))
        return false;
    field->position = mPayload;
    if (!PlacePayload(field))
        return Fail(BodyFault::kPayload, field->position);
    if (mLeft == 0 &&
        (!mEntries->IsReadable(mStart, mPayload) || !mPayloads->IsReadable(mStart, mPayload)))
        return Fail(BodyFault::kUnreadable, mStart);
    return true;
}

bool BodyReader::PlacePayload(FieldPlace* field)
{
    if (IsTextBacked(field->type))
        return PlaceText(field);
    const uint32_t size = field->type == kTypeInteger   ? 4
                          : field->type == kTypeBoolean ? 1
                          : field->type == kTypeDouble  ? 8
                                                        : 0;
    field->data = mPayload;
    field->size = size;
    mPayload += size;
    return mPayload <= mEnd && mPayload <= mPayloads->Length();
}

bool BodyReader::PlaceText(FieldPlace* field)
{
    const size_t headerSize = field->type == kTypeString ? 12 : 8;
    const int64_t text = mPayload + static_cast<int64_t>(headerSize);
    const char* header = text <= mEnd ? mPayloads->Bytes(mPayload, headerSize) : nullptr;
    if (header == nullptr)
        return false;
    const uint32_t space = LoadBigEndian32(header);
    field->size = LoadBigEndian32(header + 4);
    if (field->type == kTypeString)
        field->encoding = LoadBigEndian32(header + 8);
    field->data = text;
    mPayload = text + space;
    return field->size <= space && mPayload <= mEnd && mPayload <= mPayloads->Length();
}

bool ReadField(DamagedFile* file, const FieldPlace& field, VelaValue* value)
{
    const char* bytes = file->Bytes(field.data, field.size);
    if (bytes == nullptr ||
        !file->IsReadable(field.data, field.data + static_cast<int64_t>(field.size)))
        return false;
    RecordField decoded;
    decoded.columnID = field.columnID;
    decoded.type = field.type;
    decoded.encoding = field.encoding;
    decoded.payload = {bytes, field.size};
    DecodeField(decoded, value);
    return true;
}

}   // namespace vela
