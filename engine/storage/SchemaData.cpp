#include "engine/storage/SchemaData.h"

#include "engine/storage/RecordFormat.h"
#include "engine/storage/RecordScanner.h"
#include "engine/storage/VTChangedRow.h"
#include "engine/storage/VelaSchema.h"

namespace vela {

namespace {

// The column of _schema that a record describes, 1 to 7; 0 when it describes something else.
uint32_t DescribedSchemaColumn(std::string_view body)
{
    RecordField name;
    RecordField columnID;
    if (!FindField(body, VelaSchema::kTableName, &name) || name.type != kTypeString ||
        name.payload != kSchemaTableName)
        return 0;
    if (!FindField(body, VelaSchema::kColumnID, &columnID) || columnID.type != kTypeInteger)
        return 0;
    const uint32_t number = static_cast<uint32_t>(FieldInteger(columnID));
    return number >= VelaSchema::kTableName && number <= VelaSchema::kDefaultValue ? number : 0;
}

}   // namespace

bool IsSchemaRecordFile(std::string_view bytes)
{
    if (bytes.size() < kMetadataSize)
        return false;
    unsigned described = 0;
    for (size_t position = kMetadataSize; position < bytes.size();) {
        if (bytes.size() - position < kRecordHeaderSize)
            return false;
        RecordHeader header;
        const int64_t left = static_cast<int64_t>(bytes.size() - position - kRecordHeaderSize);
        if (ParseRecordHeader(bytes.data() + position, left, &header) != RecordError::kNone)
            return false;
        const std::string_view body = bytes.substr(position + kRecordHeaderSize, header.bodySize);
        if (!IsWholeBody(body))
            return false;
        if (header.live)
            described |= 1u << DescribedSchemaColumn(body);
        position += kRecordHeaderSize + header.bodySize;
    }
    constexpr unsigned kAllSeven = 0xFE;
    return (described & kAllSeven) == kAllSeven;
}

}   // namespace vela
