// The indexes of a table: each entry against its row, and each row against the index.

#include <bit>
#include <unordered_map>

#include "engine/rescue/TableCheck.h"
#include "engine/storage/RecordFormat.h"

namespace vela {

namespace {

constexpr int64_t kHeader = static_cast<int64_t>(kRecordHeaderSize);
// An index's rows are read in the order of its entries, which mostly is that of the file.
constexpr size_t kRowBlockSize = size_t{1} << 14;

// Bit for bit, encoding tags included where both were stored as Strings.
bool SameValue(const VelaValue& a, const VelaValue& b)
{
    if (a.IsNull() || b.IsNull())
        return a.IsNull() && b.IsNull();
    if (a.GetType() != b.GetType())
        return false;
    if (IsTextBacked(a.GetType()))
        return a.TextView() == b.TextView();
    if (a.GetType() == kTypeDouble)
        return std::bit_cast<uint64_t>(a.GetDouble()) == std::bit_cast<uint64_t>(b.GetDouble());
    return a.GetInteger() == b.GetInteger();
}

VelaValue Coerced(VelaValue value, VelaDataType type)
{
    if (value.GetType() != type)
        value.CoerceToType(type);
    return value;
}

}   // namespace

// An index whose file is being read.
struct TableCheck::OpenIndex {
    std::string file;
    RecordSearch search;
    DamagedFile rows;   // the table's records
    std::vector<uint32_t> columnIDs;
    std::vector<bool> hasEntry;   // by place in the record list
    uint64_t entries = 0;
};

void TableCheck::CheckIndex(const std::string& index)
{
    mSummary.indexes++;
    const std::string file = IndexFileName(mSummary.name, index);
    OpenIndex open = {file,
                      RecordSearch(mFiles, file, "", mWatch),
                      DamagedFile(mFiles, mRecordFile, mWatch, kRowBlockSize),
                      {},
                      std::vector<bool>(mRecords.Sorted().size()),
                      0};
    if (!open.search.File().IsOpen()) {
        Report(FaultKind::kUnreadable, file, -1, "the index file can't be opened");
        return;
    }
    RecordSearch::Step step;
    while ((step = open.search.Next()) != RecordSearch::Step::kEnd) {
        if (step == RecordSearch::Step::kRecord)
            CheckEntry(&open);
        else
            ReportPassed(open.search.Passed(), file);
    }
    ReportUnreadable(file, open.search.File().Unreadable());
    if (mWatch->Stopped())
        return;
    if (open.columnIDs.empty())
        Report(FaultKind::kIndex, file, -1, "the index has no columns, and is not used");
    else
        CheckRowsHaveEntries(open);
}

// The columns of the first whole record are those of the index. False when a record has others.
bool TableCheck::TakeIndexColumns(const std::vector<FieldPlace>& fields, OpenIndex* open)
{
    std::vector<uint32_t> columnIDs;
    columnIDs.reserve(fields.size());
    for (const FieldPlace& field : fields)
        columnIDs.push_back(field.columnID);
    if (!open->columnIDs.empty())
        return columnIDs == open->columnIDs;
    open->columnIDs = columnIDs;
    for (const uint32_t columnID : columnIDs)
        if (mSummary.isDescribed && FindColumn(columnID) == nullptr)
            Report(FaultKind::kIndex, open->file, open->search.Record().position,
                   "the index is on column " + std::to_string(columnID) +
                       ", which the table doesn't have");
    return true;
}

void TableCheck::CheckEntry(OpenIndex* open)
{
    const FoundRecord& record = open->search.Record();
    const uint32_t rowID = record.header.rowID;
    if (!record.IsWhole()) {
        ReportBody(record, open->file);
        return;
    }
    if (record.lengthIsWrong)
        ReportRow(FaultKind::kLength, open->file, record.position + 8, rowID,
                  "the record's length doesn't lead to the next record");
    if (!record.header.live)
        return;
    BodyReader reader(&open->search.File(), &open->search.Payloads(), record.position + kHeader,
                      record.end);
    std::vector<FieldPlace> fields;
    for (FieldPlace field; reader.Next(&field);)
        fields.push_back(field);
    if (!TakeIndexColumns(fields, open)) {
        ReportRow(FaultKind::kIndexEntry, open->file, record.position, rowID,
                  "the entry's columns are not those of the index");
        return;
    }
    open->entries++;
    if (rowID == kInvalidRowID)
        return;   // it holds the columns of an index without entries
    const size_t row = mRecords.LiveRowOf(rowID);
    if (row == mRecords.Sorted().size()) {
        ReportRow(FaultKind::kIndexEntry, open->file, record.position, rowID,
                  "the entry is of a row that is not there");
        return;
    }
    if (open->hasEntry[row])
        ReportRow(FaultKind::kIndexEntry, open->file, record.position, rowID,
                  "the row has an entry already");
    open->hasEntry[row] = true;
    CheckEntryValues(open, fields, row);
}

void TableCheck::CheckEntryValues(OpenIndex* open, const std::vector<FieldPlace>& fields,
                                  size_t row)
{
    if (!mRecords.Sorted()[row].whole)
        return;   // told already
    const int64_t position = mRecords.Sorted()[row].position;
    BodyReader reader(&open->rows, &open->rows, position + kHeader, open->rows.Length());
    std::unordered_map<uint32_t, FieldPlace> stored;   // of several for a column the first is read
    for (FieldPlace field; reader.Next(&field);)
        stored.emplace(field.columnID, field);
    for (const FieldPlace& entry : fields) {
        const SchemaRow* column = FindColumn(entry.columnID);
        if (column == nullptr)
            continue;
        const auto found = stored.find(entry.columnID);
        if (!EntryFits(open, entry, *column, found == stored.end() ? nullptr : &found->second))
            ReportRow(FaultKind::kIndexValue, open->file, entry.position,
                      mRecords.Sorted()[row].rowID,
                      "the entry's value of column " + std::to_string(entry.columnID) +
                          " is not that of the row");
    }
}

// An index keeps the type that a column had when the entry was made, so a value of another type is
// compared as one of that type. field: what the row's record holds, or null.
bool TableCheck::EntryFits(OpenIndex* open, const FieldPlace& entry, const SchemaRow& column,
                           const FieldPlace* field)
{
    VelaValue held;
    VelaValue stored = DefaultOf(column);
    if (!ReadField(&open->search.File(), entry, &held) ||
        (field != nullptr && !ReadField(&open->rows, *field, &stored)))
        return false;
    if (field != nullptr && held.GetType() == kTypeString && field->type == kTypeString &&
        column.type == kTypeString && entry.encoding != field->encoding)
        return false;
    const bool isNull = stored.IsNull() && stored.GetType() == column.type;
    const VelaValue read = isNull ? stored : Coerced(stored, column.type);
    if (SameValue(held, read))
        return true;
    return held.GetType() != column.type && !held.IsNull() &&
           (SameValue(held, Coerced(stored, held.GetType())) ||
            SameValue(Coerced(held, column.type), read));
}

void TableCheck::CheckRowsHaveEntries(const OpenIndex& open)
{
    const std::vector<RecordList::Place>& sorted = mRecords.Sorted();
    for (size_t row = 0; row < sorted.size(); row++)
        if (mRecords.IsLiveRow(row) && !open.hasEntry[row] && sorted[row].rowID != kInvalidRowID)
            ReportRow(FaultKind::kIndexRow, open.file, -1, sorted[row].rowID,
                      "the index has no entry of the row");
}

}   // namespace vela
