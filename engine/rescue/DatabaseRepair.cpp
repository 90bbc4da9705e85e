#include "engine/rescue/DatabaseRepair.h"

#include <algorithm>
#include <map>
#include <set>

#include "engine/rescue/BodyReader.h"
#include "engine/rescue/RepairPlan.h"
#include "engine/rescue/SavedTable.h"
#include "engine/storage/CommitFileAccess.h"
#include "engine/storage/RecordFormat.h"
#include "engine/storage/VelaDatabase.h"
#include "runtime/ByteOrder.h"

namespace vela {

namespace {

constexpr size_t kBlockSize = size_t{1} << 16;
// How many bytes of rows wait in memory for a commit.
constexpr int64_t kBytesPerCommit = int64_t{1} << 23;
constexpr uint32_t kRowsPerCommit = 100000;
constexpr size_t kLongestFileName = 255;

bool Fail(RepairReport* report, const string& error)
{
    report->error = std::string(error.View());
    return false;
}

bool Commit(VelaDatabase* database, RepairReport* report)
{
    database->Commit();
    return !database->LastCommitFailed() || Fail(report, database->CommitErrorText());
}

std::unique_ptr<VelaDatabase> OpenNew(const OpenNewFiles& openNew, RepairReport* report)
{
    std::unique_ptr<VelaFileAccess> files = openNew();
    if (!files || !files->IsOpen()) {
        Fail(report, files ? files->ErrorText() : string("The new database can't be opened."));
        return nullptr;
    }
    return std::make_unique<VelaDatabase>(std::move(files));
}

// ---- rows

// Copies the values of the record at a position, but for those of columns that were dropped. False:
// it could be read whole before, and now can't.
bool ReadRow(DamagedFile* file, DamagedFile* payloads, int64_t position,
             const std::set<uint32_t>& columnIDs, VelaRow* row)
{
    BodyReader reader(file, payloads, position + static_cast<int64_t>(kRecordHeaderSize),
                      file->Length());
    for (FieldPlace field; reader.Next(&field);) {
        if (field.type == kTypeNone || columnIDs.count(field.columnID) == 0)
            continue;   // a null is not stored
        auto value = std::make_unique<VelaValueWithID>(field.columnID);
        if (!ReadField(payloads, field, value.get()))
            return false;
        row->push_back(value.release());
    }
    return reader.Fault() == BodyFault::kNone;
}

// Copies rows until enough wait for a commit; *next is the first that is left.
void CopyRows(DamagedFile* file, DamagedFile* payloads, const RepairPlan& plan, size_t* next,
              SavedTable* saved, RepairedTable* table)
{
    std::set<uint32_t> columnIDs;
    for (const SchemaRow& column : plan.columns)
        columnIDs.insert(column.columnID);
    const size_t end = std::min(plan.positions.size(), *next + kRowsPerCommit);
    int64_t bytes = 0;
    for (; *next < end && bytes < kBytesPerCommit; (*next)++) {
        const int64_t position = plan.positions[*next];
        const char* header = file->Bytes(position, kRecordHeaderSize);
        const uint32_t rowID = header == nullptr ? kInvalidRowID : LoadBigEndian32(header + 4);
        VelaRow row;
        if (header == nullptr || !ReadRow(file, payloads, position, columnIDs, &row) ||
            !saved->AddRowAs(rowID, &row)) {
            DeleteValues(&row);
            table->lostRows++;
            continue;
        }
        table->rows++;
        bytes += static_cast<int64_t>(CalcSchemaAndDataSize(row));
        DeleteValues(&row);
    }
}

void DescribeColumns(VelaSchema* schema, const std::vector<SchemaRow>& columns, const string& table)
{
    for (const SchemaRow& column : columns)
        schema->AddSchemaRow(table, column.columnID, column.name, column.type, column.length,
                             column.notNull, column.defaultText);
}

bool SaveTable(VelaFileAccess* damaged, const RepairPlan& plan, VelaDatabase* database,
               RepairReport* report, RescueWatch* watch, RepairedTable* table)
{
    const string name(table->name,
                      plan.columns.empty() ? kEncodingUTF8 : plan.columns[0].table.Encoding());
    DescribeColumns(database->Schema(), plan.columns, name);
    auto made = std::make_unique<SavedTable>(database->Files(), name);
    SavedTable* saved = made.get();
    database->AddOpenTable(std::move(made));
    const std::string fileName = RecordFileName(table->name);
    DamagedFile file(damaged, fileName, watch, kBlockSize);
    DamagedFile payloads(damaged, fileName, watch, kBlockSize);
    watch->StartFile(fileName, file.Length());
    size_t next = 0;
    do {
        CopyRows(&file, &payloads, plan, &next, saved, table);
        saved->SetLastUsed(plan.lastUsedRowID, plan.lastUsedColumnID);
        if (!Commit(database, report))
            return false;
    } while (next < plan.positions.size() && !watch->Stopped());
    return !watch->Stopped();
}

// ---- indexes

// What is to be made anew, by the place of the table in the report.
using IndexesByTable = std::map<size_t, std::map<std::string, std::vector<uint32_t>>>;

bool MakeIndex(VelaTable* saved, const std::string& name, const std::vector<uint32_t>& columnIDs)
{
    SimpleVector<uint32_t> ids;
    for (const uint32_t columnID : columnIDs)
        ids.push_back(columnID);
    return saved->AddIndex(string(name, kEncodingUTF8), ids);
}

// The new database is opened once more for this, as its tables have their columns then.
bool MakeIndexes(const OpenNewFiles& openNew, const IndexesByTable& indexes, RepairReport* report,
                 RescueWatch* watch)
{
    if (indexes.empty())
        return true;
    const std::unique_ptr<VelaDatabase> database = OpenNew(openNew, report);
    if (!database)
        return false;
    for (const auto& [number, ofTable] : indexes) {
        RepairedTable& table = report->tables[number];
        const long position = database->FindOpenTable(string(table.name, kEncodingUTF8));
        if (position < 0)
            return Fail(report, "A table that was saved is not there.");
        for (const auto& [name, columnIDs] : ofTable) {
            if (!MakeIndex(database->OpenTables()[static_cast<size_t>(position)], name, columnIDs))
                return Fail(report, "An index could not be made.");
            table.indexes.push_back(name);
        }
        if (watch->Stopped() || !Commit(database.get(), report))
            return false;
    }
    return true;
}

// ---- tables

bool CanBeFileName(const std::string& table)
{
    return !table.empty() && RecordFileName(table).size() <= kLongestFileName &&
           table.find_first_of(std::string_view("/\0", 2)) == std::string::npos;
}

// The tables that the schema names, in its order; then those of which there are only record files.
std::vector<std::string> TablesToSave(const DatabaseFiles& found, const SchemaRows& schema)
{
    std::vector<std::string> names = schema.tables;
    std::set<std::string> known(names.begin(), names.end());
    known.insert(kSchemaTableName);
    for (const auto& [table, files] : found.tables)
        if (files.hasRecords && known.insert(table).second)
            names.push_back(table);
    return names;
}

void NoteOtherFiles(const DatabaseFiles& found, const std::vector<std::string>& saved,
                    RepairReport* report)
{
    std::set<std::string> known(saved.begin(), saved.end());
    known.insert(kSchemaTableName);
    for (const auto& [table, files] : found.tables) {
        if (known.count(table) != 0)
            continue;
        for (const std::string& index : files.indexes)
            report->notes.push_back("The index file " + IndexFileName(table, index) +
                                    " is of no table that is there.");
    }
    for (const std::string& other : found.others)
        report->notes.push_back(
            other == kCommitLogName
                ? "The log of commits, " + other +
                      ", can't be read; commits that have not reached the files are missing."
                : "The file " + other + " is of no table, and was left out.");
}

void NoteSchema(const SchemaRows& schema, RepairReport* report)
{
    if (!schema.isWhole)
        report->notes.emplace_back(
            "The schema is damaged or missing; what it lost is made up from the records.");
    for (const SchemaRow& row : schema.rows)
        if (row.live && row.table.empty())
            report->notes.push_back("A row of the schema, " + std::to_string(row.rowID) +
                                    ", names no table, and was left out.");
}

// Why a table can't be saved at all; empty when it can.
std::string WhyNotSaved(const RepairedTable& table, const RepairPlan& plan)
{
    if (!CanBeFileName(table.name))
        return "The table's name can't be that of a file.";
    return plan.columns.empty() ? "Nothing is known of the table's columns." : "";
}

// Reads and saves each table in turn, without its indexes.
bool SaveTables(VelaFileAccess* damaged, const OpenNewFiles& openNew, IndexesByTable* indexes,
                RepairReport* report, RescueWatch* watch)
{
    DatabaseFiles found = ListDatabaseFiles(*damaged);
    const SchemaRows schema = ReadSchemaRows(damaged, watch);
    const std::vector<std::string> names = TablesToSave(found, schema);
    NoteSchema(schema, report);
    NoteOtherFiles(found, names, report);
    const std::unique_ptr<VelaDatabase> database = OpenNew(openNew, report);
    if (!database || !Commit(database.get(), report))
        return false;
    for (const std::string& name : names) {
        RepairedTable table;
        table.name = name;
        const RepairPlan plan = PlanTableRepair(damaged, found.tables[name], schema, watch, &table);
        const std::string problem = WhyNotSaved(table, plan);
        table.isSaved = problem.empty();
        if (!table.isSaved)
            table.notes.push_back(problem);
        else if (watch->Stopped() ||
                 !SaveTable(damaged, plan, database.get(), report, watch, &table))
            return false;
        else if (!plan.indexes.empty())
            (*indexes)[report->tables.size()] = plan.indexes;
        report->tables.push_back(table);
    }
    return !watch->Stopped();
}

}   // namespace

bool RepairReport::IsComplete() const
{
    return error.empty() && notes.empty() &&
           std::all_of(tables.begin(), tables.end(),
                       [](const RepairedTable& table) { return table.IsComplete(); });
}

bool RepairDatabase(VelaFileAccess* damaged, const OpenNewFiles& openNew, RepairReport* report,
                    RescueWatch* watch)
{
    IndexesByTable indexes;
    return SaveTables(damaged, openNew, &indexes, report, watch) &&
           MakeIndexes(openNew, indexes, report, watch);
}

}   // namespace vela
