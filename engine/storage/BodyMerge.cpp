#include "engine/storage/BodyMerge.h"

#include <algorithm>
#include <cstring>

#include "engine/storage/RecordFormat.h"
#include "runtime/ByteOrder.h"

namespace vela {

namespace {

// Most rows have fewer columns than this; wider ones work the same, with a list on the heap.
constexpr size_t kUsualColumns = 16;

// The fields of a body, as a list that rarely allocates.
class FieldList {
public:
    explicit FieldList(std::string_view body)
    {
        RecordReader reader(body);
        if (reader.Count() > kUsualColumns)
            mLarge.resize(reader.Count());
        RecordField* fields = mLarge.empty() ? mSmall : mLarge.data();
        while (reader.Next(&fields[mCount]))
            mCount++;
    }
    RecordField* begin() { return mLarge.empty() ? mSmall : mLarge.data(); }
    RecordField* end() { return begin() + mCount; }
    [[nodiscard]] size_t Count() const { return mCount; }
    RecordField* Find(uint32_t columnID)
    {
        return std::find_if(begin(), end(), [columnID](const RecordField& field) {
            return field.columnID == columnID;
        });
    }

private:
    RecordField mSmall[kUsualColumns + 1];
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

void StoreBody(RecordField* const* fields, size_t count, std::vector<char>* body)
{
    size_t size = ByteChunkSize(static_cast<uint32_t>(count));
    for (size_t i = 0; i < count; i++)
        size += ByteChunkSize(fields[i]->columnID) + 1 + StoredSize(*fields[i]);
    body->resize(size);
    char* to = EncodeByteChunk(body->data(), static_cast<uint32_t>(count));
    for (size_t i = 0; i < count; i++) {
        to = EncodeByteChunk(to, fields[i]->columnID);
        *to++ = static_cast<char>(fields[i]->type);
    }
    for (size_t i = 0; i < count; i++)
        to = StoreField(to, *fields[i]);
}

}   // namespace

void MergeBodies(std::string_view base, std::string_view changes,
                 const SimpleVector<uint32_t>& removed, std::vector<char>* merged)
{
    FieldList old(base);
    FieldList fresh(changes);
    RecordField* small[2 * kUsualColumns];
    std::vector<RecordField*> large;
    RecordField** result = small;
    if (old.Count() + fresh.Count() > 2 * kUsualColumns) {
        large.resize(old.Count() + fresh.Count());
        result = large.data();
    }
    size_t count = 0;
    for (RecordField& field : old) {
        if (std::find(removed.begin(), removed.end(), field.columnID) != removed.end())
            continue;
        RecordField* change = fresh.Find(field.columnID);
        result[count++] = change == fresh.end() ? &field : change;
    }
    for (RecordField& field : fresh)
        if (old.Find(field.columnID) == old.end())
            result[count++] = &field;
    StoreBody(result, count, merged);
}

}   // namespace vela
