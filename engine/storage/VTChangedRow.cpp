#include "engine/storage/VTChangedRow.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "engine/storage/BodyMerge.h"

namespace vela {

namespace {

constexpr std::string_view kEmptyBody("\0", 1);

bool HasNull(const VelaRow& values)
{
    return std::any_of(values.begin(), values.end(),
                       [](const VelaValueWithID* value) { return value->IsNull(); });
}

bool NamesAColumnTwice(const VelaRow& values)
{
    for (size_t i = 1; i < values.size(); i++)
        for (size_t earlier = 0; earlier < i; earlier++)
            if (values[earlier]->ColumnID() == values[i]->ColumnID())
                return true;
    return false;
}

}   // namespace

VTChangedRow* VTChangedRow::Allocate(RowArena* arena, uint32_t rowID, Kind kind, bool hasNulls,
                                     size_t bodySize)
{
    void* memory = arena->Take(sizeof(VTChangedRow) + bodySize, alignof(VTChangedRow));
    return new (memory) VTChangedRow(rowID, kind, hasNulls, bodySize);
}

VTChangedRow* VTChangedRow::Create(RowArena* arena, uint32_t rowID, Kind kind, bool hasNulls,
                                   std::string_view body)
{
    VTChangedRow* row = Allocate(arena, rowID, kind, hasNulls, body.size());
    std::memcpy(row->Bytes(), body.data(), body.size());
    return row;
}

VTChangedRow* VTChangedRow::Create(RowArena* arena, uint32_t rowID, Kind kind,
                                   const VelaRow& values)
{
    VTChangedRow* row =
        Allocate(arena, rowID, kind, HasNull(values), CalcSchemaAndDataSize(values));
    EncodeRecordBody(row->Bytes(), values);
    if (kind == kInsert || !NamesAColumnTwice(values))
        return row;
    std::vector<char> body;
    const bool hasNulls = MergeBodies(kEmptyBody, row->Body(), MergedNulls::kKeep, &body);
    arena->Drop(row->Size());
    return Create(arena, rowID, kind, hasNulls, {body.data(), body.size()});
}

VTChangedRow* VTChangedRow::Insert(RowArena* arena, uint32_t rowID, std::string_view body)
{
    return Create(arena, rowID, kInsert, false, body);
}

VTChangedRow* VTChangedRow::UpdateValues(RowArena* arena, const VelaRow& values) const
{
    std::vector<char> changes(CalcSchemaAndDataSize(values));
    EncodeRecordBody(changes.data(), values);
    std::vector<char> body;
    const bool hasNulls =
        MergeBodies(Body(), {changes.data(), changes.size()}, MergedNulls::kKeep, &body);
    return Create(arena, mRowID, mKind, hasNulls, {body.data(), body.size()});
}

VTChangedRow* VTChangedRow::CopyTo(RowArena* arena) const
{
    return Create(arena, mRowID, mKind, mHasNulls, Body());
}

bool VTChangedRow::GetValue(uint32_t columnID, VelaDataType type, VelaValue* value) const
{
    RecordField field;
    if (!FindField(Body(), columnID, &field))
        return false;
    GetValue(field, type, value);
    return true;
}

void VTChangedRow::GetValue(const RecordField& field, VelaDataType type, VelaValue* value)
{
    if (field.type == kTypeNone)
        value->SetNull(type);
    else
        DecodeField(field, value);
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
