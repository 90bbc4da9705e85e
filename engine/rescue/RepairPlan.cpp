#include "engine/rescue/RepairPlan.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <set>
#include <utility>

#include "engine/rescue/MapPairs.h"
#include "engine/rescue/RecordList.h"
#include "engine/rescue/RecordSearch.h"
#include "engine/storage/RecordFormat.h"

namespace vela {

namespace {

constexpr int64_t kHeader = static_cast<int64_t>(kRecordHeaderSize);
// A last used column id that is further above the columns than this was never reached by adding
// columns.
constexpr uint32_t kFarAbove = 65536;
// More column ids than this in one table's records are not columns but damage.
constexpr size_t kMostInferredColumns = 10000;
constexpr size_t kMostColumnLists = 64;
// A column of which the schema knows nothing has a value in one of so many rows at least.
constexpr uint64_t kRowsPerValue = 10;

// The columns that the records of a table hold values for, with how many values of each type.
using StoredColumns = std::map<uint32_t, std::map<VelaDataType, uint64_t>>;

struct TableScan {
    RecordList records;   // the whole, live ones
    StoredColumns columns;
    uint32_t highestRowID = 0;
    uint32_t lastUsedRowID = 0;   // by the counters of the file
    uint32_t lastUsedColumnID = 0;
};

void NoteColumns(RecordSearch* search, StoredColumns* columns)
{
    const FoundRecord& record = search->Record();
    BodyReader reader(&search->File(), &search->Payloads(), record.position + kHeader, record.end);
    for (FieldPlace field; reader.Next(&field);) {
        const auto found = columns->find(field.columnID);
        if (found != columns->end())
            found->second[field.type]++;
        else if (columns->size() < kMostInferredColumns)
            (*columns)[field.columnID][field.type]++;
    }
}

void TakeRecord(RecordSearch* search, TableScan* scan, RepairedTable* table)
{
    const FoundRecord& record = search->Record();
    const uint32_t rowID = record.header.rowID;
    if (rowID != kInvalidRowID)
        scan->highestRowID = std::max(scan->highestRowID, rowID);
    if (!record.header.live)
        return;
    if (!record.IsWhole() || rowID == kInvalidRowID) {
        table->lostRows++;
        table->bytesPassedOver += record.end - record.position;
        return;
    }
    scan->records.Add({rowID, static_cast<uint32_t>(record.position), true, true});
    NoteColumns(search, &scan->columns);
}

void ReadCounters(RecordSearch* search, TableScan* scan)
{
    if (const char* metadata = search->File().Bytes(0, 8)) {
        std::memcpy(&scan->lastUsedRowID, metadata, 4);
        std::memcpy(&scan->lastUsedColumnID, metadata + 4, 4);
    }
}

TableScan ScanTable(VelaFileAccess* files, RescueWatch* watch, RepairedTable* table)
{
    TableScan scan;
    RecordSearch search(files, RecordFileName(table->name), MapFileName(table->name), watch);
    if (!search.File().IsOpen())
        table->notes.emplace_back("The record file is missing or can't be opened.");
    else if (search.File().Length() < static_cast<int64_t>(kMetadataSize))
        table->notes.emplace_back("The record file has lost its start, and with it every row.");
    ReadCounters(&search, &scan);
    RecordSearch::Step step;
    while ((step = search.Next()) != RecordSearch::Step::kEnd)
        if (step == RecordSearch::Step::kRecord)
            TakeRecord(&search, &scan, table);
    table->bytesPassedOver += search.BytesPassedOver();
    scan.records.Sort();
    return scan;
}

// The row ids and positions of a map, sorted.
using MappedPlaces = std::vector<std::pair<uint32_t, uint32_t>>;

// Empty when the map isn't whole.
MappedPlaces ReadMappedPlaces(VelaFileAccess* files, const std::string& table, RescueWatch* watch)
{
    const MapPairs map(files, MapFileName(table), watch);
    MappedPlaces places;
    if (map.IsWhole())
        for (const MapPairs::Pair& pair : map.Pairs())
            places.emplace_back(pair.rowID, pair.position);
    std::sort(places.begin(), places.end());
    return places;
}

// Of the live records of one row, from first to end - 1 in the list, the one to save: the last one,
// as a walk over the records shows it, unless a whole map names another.
size_t ChooseRecord(const RecordList& records, size_t first, size_t end, const MappedPlaces& mapped)
{
    for (size_t i = end; i > first; i--) {
        const RecordList::Place& place = records.Sorted()[i - 1];
        if (std::binary_search(mapped.begin(), mapped.end(),
                               std::pair(place.rowID, place.position)))
            return i - 1;
    }
    return end - 1;
}

std::vector<uint32_t> PositionsToSave(VelaFileAccess* files, const RecordList& records,
                                      RescueWatch* watch, RepairedTable* table)
{
    std::optional<MappedPlaces> mapped;   // read when it is needed
    std::vector<uint32_t> positions;
    for (size_t first = 0; first < records.Sorted().size();) {
        const size_t end = records.EndOf(records.Sorted()[first].rowID);
        size_t chosen = first;
        if (end - first > 1) {
            if (!mapped)
                mapped = ReadMappedPlaces(files, table->name, watch);
            chosen = ChooseRecord(records, first, end, *mapped);
        }
        positions.push_back(records.Sorted()[chosen].position);
        table->duplicates += end - first - 1;
        first = end;
    }
    std::sort(positions.begin(), positions.end());
    return positions;
}

// ---- columns

// The columns that a table will have, each id once.
class PlannedColumns {
public:
    [[nodiscard]] bool HasID(uint32_t columnID) const { return mIDs.count(columnID) != 0; }
    // Names that differ in the case of their letters alone are the same to statements.
    [[nodiscard]] bool HasName(const string& name) const
    {
        return mNames.count(std::string(name.Lowercase().View())) != 0;
    }
    void Add(const SchemaRow& column)
    {
        mIDs.insert(column.columnID);
        mNames.insert(std::string(column.name.Lowercase().View()));
        mColumns.push_back(column);
    }
    // "c3", or "c3_2" when that is taken.
    [[nodiscard]] string NewName(uint32_t columnID) const
    {
        const string plain(("c" + std::to_string(columnID)).c_str());
        string name = plain;
        for (int i = 2; HasName(name); i++)
            name = plain + "_" + std::to_string(i).c_str();
        return name;
    }
    [[nodiscard]] const std::vector<SchemaRow>& Columns() const { return mColumns; }

private:
    std::vector<SchemaRow> mColumns;
    std::set<uint32_t> mIDs;
    std::set<std::string> mNames;
};

// The type of most of a column's values.
VelaDataType InferredType(const std::map<VelaDataType, uint64_t>& counts)
{
    VelaDataType type = kTypeString;
    uint64_t most = 0;
    for (const auto& [candidate, count] : counts) {
        if (candidate == kTypeNone || count <= most)
            continue;
        type = candidate;
        most = count;
    }
    return type;
}

// What the last deleted row of the schema says of a column: it was dropped, or its row was moved
// and then lost.
const SchemaRow* FindDeletedRow(const SchemaRows& schema, const std::string& table,
                                uint32_t columnID)
{
    const SchemaRow* found = nullptr;
    for (const SchemaRow& row : schema.rows)
        if (!row.live && row.isComplete && row.columnID == columnID && row.table.View() == table)
            found = &row;
    return found;
}

std::string Named(const SchemaRow& column)
{
    return std::string(column.name.View()) + " (id " + std::to_string(column.columnID) + ")";
}

// Makes a described column usable: its name and type are filled in where they are missing. False:
// it has no id of its own.
bool MendColumn(SchemaRow* column, const StoredColumns& stored, const PlannedColumns& columns,
                RepairedTable* table)
{
    if (column->columnID == 0 || columns.HasID(column->columnID)) {
        table->notes.push_back("A second description of column " + Named(*column) +
                               " was left out.");
        return false;
    }
    const bool wasComplete = column->isComplete;
    if (column->name.empty())
        column->name = columns.NewName(column->columnID);
    const auto values = stored.find(column->columnID);
    if (column->type == kTypeNone)
        column->type = values == stored.end() ? kTypeString : InferredType(values->second);
    if (!wasComplete)
        table->notes.push_back("The description of column " + Named(*column) +
                               " was damaged; its name or type is made up.");
    return true;
}

SchemaRow InferColumn(const SchemaRows& schema, const PlannedColumns& columns,
                      const std::string& table, uint32_t columnID,
                      const std::map<VelaDataType, uint64_t>& types)
{
    SchemaRow column;
    if (const SchemaRow* deleted = FindDeletedRow(schema, table, columnID))
        column = *deleted;
    else
        column.type = InferredType(types);
    column.table = string(table, kEncodingUTF8);
    column.columnID = columnID;
    if (column.name.empty() || columns.HasName(column.name))
        column.name = columns.NewName(columnID);
    return column;
}

// Whether values of a column that no row of the schema describes are those of a column that was
// dropped.
bool WasDropped(const SchemaRows& schema, const std::string& table, uint32_t columnID)
{
    return schema.isWhole && schema.WasDescribed(table, columnID);
}

uint64_t CountOf(const std::map<VelaDataType, uint64_t>& types)
{
    uint64_t count = 0;
    for (const auto& [type, values] : types)
        count += values;
    return count;
}

// Whether so few records have values of a column that their column ids, rather than the schema,
// must be damaged.
bool IsStray(const std::map<VelaDataType, uint64_t>& types, size_t rows)
{
    const uint64_t count = CountOf(types);
    return count * kRowsPerValue < rows || (count == 1 && rows > 1);
}

// The columns that the schema describes, and those of which only the records know.
std::vector<SchemaRow> PlanColumns(const SchemaRows& schema, const TableScan& scan,
                                   RepairedTable* table)
{
    const StoredColumns& stored = scan.columns;
    PlannedColumns columns;
    const std::vector<SchemaRow>& described = schema.ColumnsOf(table->name);
    for (SchemaRow column : described)
        if (MendColumn(&column, stored, columns, table))
            columns.Add(column);
    if (described.empty())
        table->notes.emplace_back(
            "The schema doesn't describe the table; its columns are made up.");
    for (const auto& [columnID, types] : stored) {
        if (columnID == 0 || columns.HasID(columnID) ||
            (!described.empty() && WasDropped(schema, table->name, columnID)))
            continue;
        if (!described.empty() && schema.isWhole && IsStray(types, scan.records.Sorted().size())) {
            table->notes.push_back("Values of column " + std::to_string(columnID) +
                                   ", which the table never had, were left out of " +
                                   std::to_string(CountOf(types)) + " rows.");
            continue;
        }
        columns.Add(InferColumn(schema, columns, table->name, columnID, types));
        if (!described.empty())
            table->notes.push_back("Column " + Named(columns.Columns().back()) +
                                   " has values but no description, which is made up.");
    }
    return columns.Columns();
}

// ---- counters

void PlanCounters(const TableScan& scan, RepairPlan* plan, RepairedTable* table)
{
    uint32_t highest = 0;
    for (const SchemaRow& column : plan->columns)
        highest = std::max(highest, column.columnID);
    plan->lastUsedRowID = std::max(scan.highestRowID, scan.lastUsedRowID);
    plan->lastUsedColumnID = std::max(highest, scan.lastUsedColumnID);
    if (plan->lastUsedRowID == kInvalidRowID) {
        plan->lastUsedRowID = scan.highestRowID;
        table->notes.emplace_back("The last used row id was damaged; it is that of the last row.");
    }
    if (plan->lastUsedColumnID - highest > kFarAbove) {
        plan->lastUsedColumnID = highest;
        table->notes.emplace_back(
            "The last used column id was damaged; it is that of the last column.");
    }
}

// ---- indexes

// The column list that most records of an index file have; empty when none has one.
std::vector<uint32_t> IndexColumns(VelaFileAccess* files, const std::string& file,
                                   RescueWatch* watch)
{
    std::map<std::vector<uint32_t>, uint64_t> lists;
    RecordSearch search(files, file, "", watch);
    RecordSearch::Step step;
    while ((step = search.Next()) != RecordSearch::Step::kEnd) {
        if (step != RecordSearch::Step::kRecord || !search.Record().IsWhole())
            continue;
        const FoundRecord& record = search.Record();
        BodyReader reader(&search.File(), &search.Payloads(), record.position + kHeader,
                          record.end);
        std::vector<uint32_t> columnIDs;
        for (FieldPlace field; reader.Next(&field) && columnIDs.size() < kMostInferredColumns;)
            columnIDs.push_back(field.columnID);
        if (lists.size() < kMostColumnLists || lists.count(columnIDs) != 0)
            lists[columnIDs]++;
    }
    std::vector<uint32_t> most;
    for (const auto& [columnIDs, count] : lists)
        if (!columnIDs.empty() && (most.empty() || count > lists[most]))
            most = columnIDs;
    return most;
}

void PlanIndexes(VelaFileAccess* files, const TableFiles& tableFiles, RescueWatch* watch,
                 RepairPlan* plan, RepairedTable* table)
{
    std::set<uint32_t> known;
    for (const SchemaRow& column : plan->columns)
        known.insert(column.columnID);
    for (const std::string& index : tableFiles.indexes) {
        const std::vector<uint32_t> columnIDs =
            IndexColumns(files, IndexFileName(table->name, index), watch);
        const bool isKnown =
            !columnIDs.empty() &&
            std::all_of(columnIDs.begin(), columnIDs.end(),
                        [&known](uint32_t columnID) { return known.count(columnID) != 0; });
        if (isKnown)
            plan->indexes[index] = columnIDs;
        else
            table->lostIndexes.push_back(index);
    }
}

}   // namespace

RepairPlan PlanTableRepair(VelaFileAccess* files, const TableFiles& tableFiles,
                           const SchemaRows& schema, RescueWatch* watch, RepairedTable* table)
{
    const TableScan scan = ScanTable(files, watch, table);
    RepairPlan plan;
    plan.columns = PlanColumns(schema, scan, table);
    plan.positions = PositionsToSave(files, scan.records, watch, table);
    PlanCounters(scan, &plan, table);
    PlanIndexes(files, tableFiles, watch, &plan, table);
    return plan;
}

}   // namespace vela
