#include "engine/storage/VelaSchema.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>

#include "engine/storage/VelaTablesTable.h"

namespace vela {

namespace {

struct FieldDefinition {
    VelaSchema::Field field;
    const char* name;
    VelaDataType type;
};

constexpr FieldDefinition kFields[] = {
    {VelaSchema::kTableName, "TableName", kTypeString},
    {VelaSchema::kColumnID, "ColumnID", kTypeInteger},
    {VelaSchema::kColumnName, "ColumnName", kTypeString},
    {VelaSchema::kTypeCode, "TypeCode", kTypeInteger},
    {VelaSchema::kLength, "Length", kTypeInteger},
    {VelaSchema::kNotNull, "NotNull", kTypeInteger},
    {VelaSchema::kDefaultValue, "DefaultValue", kTypeString},
};

// The default value of a column from its text in the schema.
VelaValue DefaultFromText(VelaDataType type, const VelaValue& text)
{
    if (text.IsNull())
        return VelaValue::Null(type);
    switch (type) {
        case kTypeInteger:
            return VelaValue::Integer(text.GetInteger());
        case kTypeBoolean:
            return VelaValue::Boolean(text.GetInteger() != 0);
        case kTypeDouble:
            return VelaValue::Double(text.GetDouble());
        default:
            return IsTextBacked(type) ? VelaValue::Text(type, text.StoredText())
                                      : VelaValue::Null(type);
    }
}

VelaDataType TypeFromCode(int32_t code)
{
    return code >= 0 && code <= UINT8_MAX && IsDataType(static_cast<uint8_t>(code))
               ? static_cast<VelaDataType>(code)
               : kTypeNone;
}

VelaColumnInfo ReadColumn(TableColumns* schema, uint32_t row)
{
    VelaValue columnID;
    VelaValue columnName;
    VelaValue typeCode;
    VelaValue defaultText;
    schema->GetValue(row, VelaSchema::kColumnID, &columnID);
    schema->GetValue(row, VelaSchema::kColumnName, &columnName);
    schema->GetValue(row, VelaSchema::kTypeCode, &typeCode);
    schema->GetValue(row, VelaSchema::kDefaultValue, &defaultText);
    return {columnName.StoredText(),
            DefaultFromText(TypeFromCode(typeCode.GetInteger()), defaultText),
            static_cast<uint32_t>(columnID.GetInteger())};
}

}   // namespace

const char* const kSchemaTableName = "_schema";

VelaSchema::VelaSchema(VelaFileAccess* files, ColumnMemory* memory)
    : VelaTrans(files, kSchemaTableName,
                files->ContainsFile("_schema.dat") || files->IsReadOnly() ? Files::kExisting
                                                                          : Files::kNew),
      mMemory(memory)
{
    SetColumnMemory(memory);
    for (const FieldDefinition& field : kFields)
        mColumns.push_back({field.name, VelaValue::Null(field.type), field.field});
    mLastUsedColumnID = kDefaultValue;
    PopulateInitialSchema();
}

void VelaSchema::PopulateInitialSchema()
{
    if ((!Storage() && !mNewFiles) || Columns()->RowCount() > 0)
        return;
    for (const FieldDefinition& field : kFields)
        AddSchemaRow(kSchemaTableName, field.field, field.name, field.type, 0, true, "");
}

void VelaSchema::AddSchemaRow(const string& tableName, uint32_t columnID, const string& columnName,
                              VelaDataType typeCode, int32_t length, bool notNull,
                              const string& defaultValue)
{
    VelaValueWithID values[] = {
        {VelaValue::String(tableName), kTableName},
        {VelaValue::Integer(static_cast<int32_t>(columnID)), kColumnID},
        {VelaValue::String(columnName), kColumnName},
        {VelaValue::Integer(typeCode), kTypeCode},
        {VelaValue::Integer(length), kLength},
        {VelaValue::Integer(notNull ? 1 : 0), kNotNull},
        {VelaValue::String(defaultValue), kDefaultValue},
    };
    VelaRow row;
    for (VelaValueWithID& value : values)
        row.push_back(&value);
    AddRow(row, false);
}

// Reads the columns of the named table, or of every table when name is null, in order of first appearance.
SimpleVector<VelaSchema::Description> VelaSchema::ReadDescriptions(const string* name)
{
    SimpleVector<Description> found;
    std::unordered_map<std::string, size_t> places;   // of the tables in found
    TableColumns* columns = Columns();
    columns->Prepare(std::vector<bool>(static_cast<size_t>(QtyColumns()), true));
    for (uint32_t row = 0; row < columns->RowCount(); row++) {
        VelaValue tableName;
        columns->GetValue(row, kTableName, &tableName);
        if (name != nullptr && tableName.StoredText().Compare(*name) != 0)
            continue;
        const auto [place, isNew] = places.emplace(tableName.TextView(), found.size());
        if (isNew)
            found.push_back({tableName.StoredText(), {}});
        found[place->second].columns.push_back(ReadColumn(columns, row));
    }
    return found;
}

std::unique_ptr<VelaTrans> VelaSchema::MakeTable(const Description& description, Files state)
{
    auto table = std::make_unique<VelaTrans>(mFiles, description.tableName, state);
    table->SetColumnMemory(mMemory);
    table->mColumns = description.columns;
    for (const VelaColumnInfo& column : description.columns)
        table->mLastUsedColumnID = std::max(table->mLastUsedColumnID, column.columnID);
    return table;
}

std::unique_ptr<VelaTrans> VelaSchema::MakeTable(const string& name, Files state)
{
    const SimpleVector<Description> found = ReadDescriptions(&name);
    return found.empty() ? nullptr : MakeTable(found[0], state);
}

std::unique_ptr<VelaTrans> VelaSchema::CreateTable(const string& name)
{
    return MakeTable(name, Files::kNew);
}

std::unique_ptr<VelaTrans> VelaSchema::LoadTable(const string& name)
{
    return MakeTable(name, Files::kExisting);
}

void VelaSchema::LoadAllTables(SimpleVector<VelaTable*>* tables)
{
    for (const Description& description : ReadDescriptions(nullptr))
        if (description.tableName.View() != kSchemaTableName) {
            tables->MakeRoomForOne();
            tables->push_back(MakeTable(description, Files::kExisting).release());
        }
}

void VelaSchema::ReloadTable(VelaTrans** table)
{
    std::unique_ptr<VelaTrans> old(*table);
    const string name = old->mName;
    old->NeedFiles();
    const Files state = old->mNewFiles ? Files::kNew : Files::kExisting;
    const uint32_t lastRowID = old->mLastUsedRowID;
    const uint32_t lastColumnID = old->mLastUsedColumnID;
    auto indexes = std::move(old->Indexes());
    auto droppedIndexes = std::move(old->mDroppedIndexes);
    old.reset();   // gives the files free before they are opened again
    std::unique_ptr<VelaTrans> fresh = MakeTable(name, state);
    if (fresh) {
        fresh->NeedFiles();
        fresh->mIndexesOpened = true;
        fresh->mLastUsedRowID = std::max(fresh->mLastUsedRowID, lastRowID);
        fresh->mLastUsedColumnID = std::max(fresh->mLastUsedColumnID, lastColumnID);
        fresh->mLastRowID = fresh->mLastUsedRowID;
        fresh->mIndexes = std::move(indexes);
        fresh->mDroppedIndexes = std::move(droppedIndexes);
    }
    *table = fresh.release();
}

VelaTable* VelaSchema::GetTablesTable()
{
    static VelaTablesTable table;
    return &table;
}

}   // namespace vela
