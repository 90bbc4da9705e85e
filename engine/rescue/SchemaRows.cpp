#include "engine/rescue/SchemaRows.h"

#include <map>
#include <set>

#include "engine/rescue/DatabaseFiles.h"
#include "engine/rescue/RecordSearch.h"
#include "engine/storage/RecordFormat.h"
#include "engine/storage/VelaSchema.h"

namespace vela {

namespace {

void TakeField(uint32_t columnID, const VelaValue& value, SchemaRow* row)
{
    switch (columnID) {
        case VelaSchema::kTableName:
            row->table = value.StoredText();
            break;
        case VelaSchema::kColumnID:
            row->columnID = static_cast<uint32_t>(value.GetInteger());
            break;
        case VelaSchema::kColumnName:
            row->name = value.StoredText();
            break;
        case VelaSchema::kTypeCode: {
            const int32_t code = value.GetInteger();
            const bool isType = code > 0 && code <= UINT8_MAX;
            if (isType && IsDataType(static_cast<uint8_t>(code)))
                row->type = static_cast<VelaDataType>(code);
            break;
        }
        case VelaSchema::kLength:
            row->length = value.GetInteger();
            break;
        case VelaSchema::kNotNull:
            row->notNull = value.GetInteger() != 0;
            break;
        case VelaSchema::kDefaultValue:
            row->defaultText = value.StoredText();
            row->hasDefault = true;
            break;
        default:
            break;
    }
}

SchemaRow ReadRow(RecordSearch* search)
{
    const FoundRecord& record = search->Record();
    SchemaRow row;
    row.live = record.header.live;
    row.rowID = record.header.rowID;
    row.position = record.position;
    BodyReader reader(&search->File(), &search->Payloads(),
                      record.position + static_cast<int64_t>(kRecordHeaderSize), record.end);
    FieldPlace field;
    VelaValue value;
    std::set<uint32_t> seen;   // of several values for a column the first is read
    while (reader.Next(&field))
        if (seen.insert(field.columnID).second && ReadField(&search->File(), field, &value))
            TakeField(field.columnID, value, &row);
    row.isComplete =
        !row.table.empty() && row.columnID != 0 && !row.name.empty() && row.type != kTypeNone;
    return row;
}

// Of several live rows under one id the last is the row.
void DropEarlierDuplicates(std::vector<SchemaRow>* rows)
{
    std::map<uint32_t, int64_t> last;
    for (const SchemaRow& row : *rows)
        if (row.live)
            last[row.rowID] = row.position;
    std::erase_if(*rows, [&last](const SchemaRow& row) {
        return row.live && last[row.rowID] != row.position;
    });
}

}   // namespace

const std::vector<SchemaRow>& SchemaRows::ColumnsOf(const std::string& table) const
{
    static const std::vector<SchemaRow> none;
    const auto found = columns.find(table);
    return found == columns.end() ? none : found->second;
}

bool SchemaRows::WasDescribed(const std::string& table, uint32_t columnID) const
{
    const auto found = onceDescribed.find(table);
    return found != onceDescribed.end() && found->second.count(columnID) != 0;
}

SchemaRows ReadSchemaRows(VelaFileAccess* files, RescueWatch* watch)
{
    const std::string name = kSchemaTableName;
    RecordSearch search(files, RecordFileName(name), MapFileName(name), watch);
    SchemaRows schema;
    schema.isWhole = search.File().IsOpen();
    RecordSearch::Step step;
    while ((step = search.Next()) != RecordSearch::Step::kEnd) {
        if (step == RecordSearch::Step::kRecord && search.Record().IsWhole())
            schema.rows.push_back(ReadRow(&search));
        else
            schema.isWhole = false;
    }
    DropEarlierDuplicates(&schema.rows);
    for (const SchemaRow& row : schema.rows) {
        const std::string table(row.table.View());
        if (!row.live)
            schema.onceDescribed[table].insert(row.columnID);
        if (!row.live || table.empty())
            continue;
        std::vector<SchemaRow>& columns = schema.columns[table];
        columns.push_back(row);
        if (columns.size() == 1 && table != name)
            schema.tables.push_back(table);
    }
    return schema;
}

VelaValue DefaultOf(const SchemaRow& column)
{
    if (!column.hasDefault)
        return VelaValue::Null(column.type);
    const VelaValue text = VelaValue::String(column.defaultText);
    switch (column.type) {
        case kTypeInteger:
            return VelaValue::Integer(text.GetInteger());
        case kTypeBoolean:
            return VelaValue::Boolean(text.GetInteger() != 0);
        case kTypeDouble:
            return VelaValue::Double(text.GetDouble());
        default:
            return IsTextBacked(column.type) ? VelaValue::Text(column.type, column.defaultText)
                                             : VelaValue::Null(column.type);
    }
}

}   // namespace vela
