#include "engine/storage/VTChangedRow.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "engine/storage/BodyMerge.h"

namespace vela {

namespace {

// Splits a row into the values that a record can hold and the columns of the null ones.
void SplitNulls(const VelaRow& values, VelaRow* present, SimpleVector<uint32_t>* nullColumns)
{
    for (VelaValueWithID* value : values) {
        if (value->IsNull())
            nullColumns->push_back(value->ColumnID());
        else
            present->push_back(value);
    }
}

bool HasNull(const VelaRow& values)
{
    return std::any_of(values.begin(), values.end(),
                       [](const VelaValueWithID* value) { return value->IsNull(); });
}

}   // namespace

VTChangedRow* VTChangedRow::Allocate(uint32_t rowID, Kind kind, size_t bodySize,
                                     const SimpleVector<uint32_t>& nullColumns)
{
    void* memory =
        std::malloc(sizeof(VTChangedRow) + bodySize + nullColumns.size() * sizeof(uint32_t));
    if (memory == nullptr)
        throw std::bad_alloc();
    auto* row = new (memory) VTChangedRow(rowID, kind, bodySize, nullColumns.size());
    if (!nullColumns.empty())
        std::memcpy(row->Bytes() + bodySize, nullColumns.data(),
                    nullColumns.size() * sizeof(uint32_t));
    return row;
}

VTChangedRow* VTChangedRow::Create(uint32_t rowID, Kind kind, const VelaRow& values)
{
    SimpleVector<uint32_t> nullColumns;
    VelaRow present;
    const bool hasNull = HasNull(values);
    if (hasNull)
        SplitNulls(values, &present, &nullColumns);
    const VelaRow& stored = hasNull ? present : values;
    VTChangedRow* row = Allocate(rowID, kind, CalcSchemaAndDataSize(stored), nullColumns);
    EncodeRecordBody(row->Bytes(), stored);
    return row;
}

VTChangedRow* VTChangedRow::UpdateValues(const VelaRow& values) const
{
    VTChangedRow* changes = Create(mRowID, mKind, values);
    std::vector<char> body;
    MergeBodies(Body(), changes->Body(), changes->NullColumns(), &body);
    SimpleVector<uint32_t> nullColumns = changes->NullColumns();
    RecordField field;
    for (uint32_t columnID : NullColumns()) {
        const bool again =
            std::find(nullColumns.begin(), nullColumns.end(), columnID) != nullColumns.end();
        if (!again && !FindField(changes->Body(), columnID, &field))
            nullColumns.push_back(columnID);
    }
    changes->Destroy();
    VTChangedRow* row = Allocate(mRowID, mKind, body.size(), nullColumns);
    std::memcpy(row->Bytes(), body.data(), body.size());
    return row;
}

void VTChangedRow::Destroy()
{
    std::free(this);
}

SimpleVector<uint32_t> VTChangedRow::NullColumns() const
{
    SimpleVector<uint32_t> columns;
    columns.resize(mNullCount);
    if (mNullCount != 0)
        std::memcpy(columns.data(), Bytes() + mBodySize, mNullCount * sizeof(uint32_t));
    return columns;
}

bool VTChangedRow::GetValue(uint32_t columnID, VelaDataType type, VelaValue* value) const
{
    RecordField field;
    if (FindField(Body(), columnID, &field)) {
        DecodeField(field, value);
        return true;
    }
    if (!HasNulls())
        return false;
    const SimpleVector<uint32_t> nulls = NullColumns();
    if (std::find(nulls.begin(), nulls.end(), columnID) == nulls.end())
        return false;
    value->SetNull(type);
    return true;
}

bool FindField(std::string_view body, uint32_t columnID, RecordField* field)
{
    RecordReader reader(body);
    while (reader.Next(field))
        if (field->columnID == columnID)
            return true;
    return false;
}

}   // namespace vela
