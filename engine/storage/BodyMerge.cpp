#include "engine/storage/BodyMerge.h"

#include <algorithm>
#include <cstring>

#include "engine/storage/RecordFormat.h"
#include "runtime/ByteOrder.h"

namespace vela {

namespace {

// Most rows have fewer columns than this; wider ones work the same, with a list on the heap.
constexpr size_t kUsualColumns = 32;

// A list of fields that rarely allocates.
class FieldList {
public:
    explicit FieldList(size_t capacity)
    {
        if (capacity > kUsualColumns)
            mLarge.resize(capacity);
    }
    RecordField* begin() { return mLarge.empty() ? mSmall : mLarge.data(); }
    RecordField* end() { return begin() + mCount; }
    [[nodiscard]] size_t Count() const { return mCount; }
    void Append(const RecordField& field) { begin()[mCount++] = field; }
    // The first field of a column; end() when there is none.
    RecordField* Find(uint32_t columnID)
    {
        return std::find_if(begin(), end(), [columnID](const RecordField& field) {
            return field.columnID == columnID;
        });
    }
    [[nodiscard]] bool HasNull() { return std::any_of(begin(), end(), IsNull); }
    void RemoveNulls() { RemoveIf(IsNull); }
    void RemoveColumn(uint32_t columnID)
    {
        RemoveIf([columnID](const RecordField& field) { return field.columnID == columnID; });
    }

private:
    static bool IsNull(const RecordField& field) { return field.type == kTypeNone; }
    template <class Condition>
    void RemoveIf(const Condition& condition)
    {
        mCount = static_cast<size_t>(std::remove_if(begin(), end(), condition) - begin());
    }

    RecordField mSmall[kUsualColumns];
    std::vector<RecordField> mLarge;
    size_t mCount = 0;
};

size_t StoredSize(const RecordField& field)
{
    const size_t header = field.type == kTypeString ? 12 : (IsTextBacked(field.type) ? 8 : 0);
    return header + field.payload.size();
}

char* StoreField(char* to, const RecordField& field)
{
    if (field.type == kTypeBoolean) {
        *to = field.payload[0] != 0;   // true may be stored as any other byte
        return to + 1;
    }
    if (IsTextBacked(field.type)) {
        StoreBigEndian32(to, static_cast<uint32_t>(field.payload.size()));
        StoreBigEndian32(to + 4, static_cast<uint32_t>(field.payload.size()));
        if (field.type == kTypeString)
            StoreBigEndian32(to + 8, field.encoding);
        to += field.type == kTypeString ? 12 : 8;
    }
    std::memcpy(to, field.payload.data(), field.payload.size());
    return to + field.payload.size();
}

// Takes the columns out that changes left as null, and every other null.
void TakeOutNulls(std::string_view changes, FieldList* fields)
{
    RecordReader reader(changes);
    RecordField change;
    while (reader.Next(&change)) {
        const RecordField* field = fields->Find(change.columnID);
        if (field != fields->end() && field->type == kTypeNone)
            fields->RemoveColumn(change.columnID);
    }
    fields->RemoveNulls();
}

void StoreBody(FieldList& fields, std::vector<char>* body)
{
    size_t size = ByteChunkSize(static_cast<uint32_t>(fields.Count()));
    for (const RecordField& field : fields)
        size += ByteChunkSize(field.columnID) + 1 + StoredSize(field);
    body->resize(size);
    char* to = EncodeByteChunk(body->data(), static_cast<uint32_t>(fields.Count()));
    for (const RecordField& field : fields) {
        to = EncodeByteChunk(to, field.columnID);
        *to++ = static_cast<char>(field.type);
    }
    for (const RecordField& field : fields)
        to = StoreField(to, field);
}

}   // namespace

bool MergeBodies(std::string_view base, std::string_view changes, MergedNulls nulls,
                 std::vector<char>* merged)
{
    RecordReader oldFields(base);
    RecordReader newFields(changes);
    FieldList result(size_t{oldFields.Count()} + newFields.Count());
    RecordField field;
    while (oldFields.Next(&field))
        result.Append(field);
    while (newFields.Next(&field)) {
        RecordField* old = result.Find(field.columnID);
        if (old == result.end())
            result.Append(field);
        else
            *old = field;
    }
    const bool hasNull = result.HasNull();
    if (hasNull && nulls == MergedNulls::kTakeOut)
        TakeOutNulls(changes, &result);
    StoreBody(result, merged);
    return hasNull && nulls == MergedNulls::kKeep;
}

void CopyWithoutNulls(std::string_view body, std::vector<char>* copy)
{
    RecordReader reader(body);
    FieldList fields(reader.Count());
    RecordField field;
    while (reader.Next(&field))
        fields.Append(field);
    fields.RemoveNulls();
    StoreBody(fields, copy);
}

}   // namespace vela
