#include "engine/storage/RecordFormat.h"

#include <bit>
#include <cassert>
#include <cstring>

#include "runtime/ByteOrder.h"

namespace vela {

namespace {

VelaDataType StoredType(const VelaValue& value)
{
    return value.IsNull() ? kTypeNone : value.GetType();
}

size_t PayloadSize(const VelaValue& value)
{
    switch (StoredType(value)) {
        case kTypeInteger:
            return 4;
        case kTypeBoolean:
            return 1;
        case kTypeDouble:
            return 8;
        case kTypeString:
            return 12 + value.TextView().size();
        case kTypeDate:
        case kTypeTime:
        case kTypeTimestamp:
        case kTypeBinary:
            return 8 + value.TextView().size();
        case kTypeNone:
            return 0;
    }
    assert(false && "unknown type in CalcSchemaAndDataSize");
    return 0;
}

char* EncodeNumber(char* to, uint32_t number)
{
    StoreBigEndian32(to, number);
    return to + 4;
}

char* EncodeText(char* to, const VelaValue& value)
{
    const std::string_view text = value.TextView();
    const uint32_t size = static_cast<uint32_t>(text.size());
    to = EncodeNumber(to, size);   // space: as much as the text
    to = EncodeNumber(to, size);
    if (value.GetType() == kTypeString)
        to = EncodeNumber(to, value.TextEncodingTag());
    if (size != 0)
        std::memcpy(to, text.data(), size);
    return to + size;
}

char* EncodePayload(char* to, const VelaValue& value)
{
    switch (StoredType(value)) {
        case kTypeInteger:
            return EncodeNumber(to, static_cast<uint32_t>(value.GetInteger()));
        case kTypeBoolean:
            *to = static_cast<char>(value.GetInteger());
            return to + 1;
        case kTypeDouble:
            StoreBigEndian64(to, std::bit_cast<uint64_t>(value.GetDouble()));
            return to + 8;
        case kTypeNone:
            return to;
        default:
            return EncodeText(to, value);
    }
}

bool ReadText(const char** payload, const char* end, RecordField* field, bool hasEncoding)
{
    const size_t headerSize = hasEncoding ? 12 : 8;
    size_t left = static_cast<size_t>(end - *payload);
    if (left < headerSize)
        return false;
    const uint32_t space = LoadBigEndian32(*payload);
    const uint32_t length = LoadBigEndian32(*payload + 4);
    left -= headerSize;
    if (space > left || length > space)
        return false;
    if (hasEncoding)
        field->encoding = LoadBigEndian32(*payload + 8);
    field->payload = {*payload + headerSize, length};
    *payload += headerSize + space;
    return true;
}

// makeText(bytes, encoding) gives a string.
template <class MakeText>
void DecodeFieldWith(const RecordField& field, VelaValue* value, const MakeText& makeText)
{
    switch (field.type) {
        case kTypeInteger:
            value->SetInteger(FieldInteger(field));
            break;
        case kTypeBoolean:
            value->SetBoolean(FieldInteger(field) != 0);
            break;
        case kTypeDouble:
            value->SetDouble(FieldDouble(field));
            break;
        case kTypeString:
            value->SetText(kTypeString, makeText(field.payload, field.encoding));
            break;
        case kTypeDate:
        case kTypeTime:
        case kTypeTimestamp:
        case kTypeBinary:
            value->SetText(field.type, makeText(field.payload, kEncodingASCII));
            break;
        default:
            value->SetNull(kTypeNone);
            break;
    }
}

}   // namespace

char* EncodeByteChunk(char* to, uint32_t value)
{
    for (; value > 254; value -= 254)
        *to++ = static_cast<char>(0xFF);
    *to++ = static_cast<char>(value);
    return to;
}

const char* DecodeByteChunk(const char* from, const char* end, uint32_t* value)
{
    uint64_t sum = 0;
    for (; from < end; from++) {
        const uint8_t byte = static_cast<uint8_t>(*from);
        sum += byte == 0xFF ? 254 : byte;
        if (sum > UINT32_MAX)
            return nullptr;
        if (byte == 0xFF)
            continue;
        *value = static_cast<uint32_t>(sum);
        return from + 1;
    }
    return nullptr;
}

size_t CalcSchemaAndDataSize(const VelaRow& values)
{
    size_t size = ByteChunkSize(static_cast<uint32_t>(values.size()));
    for (const VelaValueWithID* value : values)
        size += ByteChunkSize(value->ColumnID()) + 1 + PayloadSize(*value);
    return size;
}

char* EncodeRecordBody(char* to, const VelaRow& values)
{
    to = EncodeByteChunk(to, static_cast<uint32_t>(values.size()));
    for (const VelaValueWithID* value : values) {
        to = EncodeByteChunk(to, value->ColumnID());
        *to++ = static_cast<char>(StoredType(*value));
    }
    for (const VelaValueWithID* value : values)
        to = EncodePayload(to, *value);
    return to;
}

void EncodeRecordHeader(char* to, uint32_t rowID, uint32_t bodySize)
{
    StoreBigEndian32(to, kRecordTag);
    StoreBigEndian32(to + 4, rowID);
    StoreBigEndian32(to + 8, bodySize);
}

void AppendRecord(std::vector<char>* to, uint32_t rowID, const VelaRow& values)
{
    const size_t bodySize = CalcSchemaAndDataSize(values);
    const size_t start = to->size();
    to->resize(start + kRecordHeaderSize + bodySize);
    char* record = to->data() + start;
    EncodeRecordHeader(record, rowID, static_cast<uint32_t>(bodySize));
    EncodeRecordBody(record + kRecordHeaderSize, values);
}

bool ReadPayload(const char** payload, const char* end, RecordField* field)
{
    size_t size = 0;
    switch (field->type) {
        case kTypeInteger:
            size = 4;
            break;
        case kTypeBoolean:
            size = 1;
            break;
        case kTypeDouble:
            size = 8;
            break;
        case kTypeNone:
            break;
        case kTypeString:
            return ReadText(payload, end, field, true);
        case kTypeDate:
        case kTypeTime:
        case kTypeTimestamp:
        case kTypeBinary:
            return ReadText(payload, end, field, false);
        default:
            return false;
    }
    if (static_cast<size_t>(end - *payload) < size)
        return false;
    field->payload = {*payload, size};
    *payload += size;
    return true;
}

RecordReader::RecordReader(std::string_view body) : mEnd(body.data() + body.size())
{
    const char* from = DecodeByteChunk(body.data(), mEnd, &mCount);
    // A value takes two bytes at least, so a count that the body can't hold is damage.
    if (from == nullptr || mCount > static_cast<size_t>(mEnd - from) / 2) {
        mCount = 0;
        mDamaged = true;
        return;
    }
    mEntry = from;
    for (uint32_t i = 0; i < mCount && from != nullptr; i++) {
        uint32_t columnID;
        from = DecodeByteChunk(from, mEnd, &columnID);
        if (from == mEnd)
            from = nullptr;
        if (from != nullptr)
            from++;
    }
    mPayload = from;
    mDamaged = from == nullptr;
    mLeft = mDamaged ? 0 : mCount;
}

bool RecordReader::Next(RecordField* field)
{
    if (mLeft == 0)
        return false;
    mEntry = DecodeByteChunk(mEntry, mEnd, &field->columnID);
    field->type = static_cast<VelaDataType>(*mEntry++);
    mLeft--;
    if (ReadPayload(&mPayload, mEnd, field))
        return true;
    mDamaged = true;
    mLeft = 0;
    return false;
}

bool IsWholeBody(std::string_view body)
{
    RecordReader reader(body);
    RecordField field;
    while (reader.Next(&field)) {
    }
    return !reader.IsDamaged();
}

int32_t FieldInteger(const RecordField& field)
{
    if (field.type == kTypeBoolean && field.payload.size() == 1)
        return field.payload[0] != 0;
    return field.payload.size() < 4 ? 0
                                    : static_cast<int32_t>(LoadBigEndian32(field.payload.data()));
}

double FieldDouble(const RecordField& field)
{
    return field.payload.size() < 8 ? 0.0
                                    : std::bit_cast<double>(LoadBigEndian64(field.payload.data()));
}

void DecodeField(const RecordField& field, VelaValue* value)
{
    DecodeFieldWith(field, value, [](std::string_view text, TextEncoding encoding) {
        return string(text, encoding);
    });
}

void DecodeField(const RecordField& field, StringArena* arena, VelaValue* value)
{
    DecodeFieldWith(field, value, [arena](std::string_view text, TextEncoding encoding) {
        return arena->Make(text, encoding);
    });
}

bool DecodeRecordBody(std::string_view body, VelaRow* values)
{
    RecordReader reader(body);
    while (values->size() > reader.Count()) {
        delete values->back();
        values->pop_back();
    }
    RecordField field;
    size_t index = 0;
    for (; reader.Next(&field); index++) {
        if (index == values->size()) {
            values->MakeRoomForOne();
            values->push_back(new VelaValueWithID);
        }
        (*values)[index]->SetColumnID(field.columnID);
        DecodeField(field, (*values)[index]);
    }
    while (values->size() > index) {
        delete values->back();
        values->pop_back();
    }
    return reader.EndsExactly();
}

void DeleteValues(VelaRow* values)
{
    for (VelaValueWithID* value : *values)
        delete value;
    values->clear();
}

}   // namespace vela
