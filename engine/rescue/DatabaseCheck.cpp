#include "engine/rescue/DatabaseCheck.h"

#include <set>

#include "engine/rescue/DatabaseFiles.h"
#include "engine/rescue/SchemaRows.h"
#include "engine/rescue/TableCheck.h"
#include "engine/storage/CommitLogFormat.h"
#include "engine/storage/VelaSchema.h"

namespace vela {

namespace {

const char* const kSchemaColumns[] = {"TableName", "ColumnID", "ColumnName",  "TypeCode",
                                      "Length",    "NotNull",  "DefaultValue"};
constexpr uint32_t kSchemaColumnCount = 7;

void ReportSchema(FaultKind kind, const SchemaRow* row, const std::string& text,
                  FaultReceiver* receiver)
{
    DatabaseFault fault;
    fault.kind = kind;
    fault.table = kSchemaTableName;
    fault.file = RecordFileName(kSchemaTableName);
    fault.text = text;
    if (row != nullptr) {
        fault.offset = row->position;
        fault.hasRow = true;
        fault.rowID = row->rowID;
    }
    receiver->AddFault(fault);
}

std::string NameOf(const SchemaRow& row)
{
    return "column " + std::to_string(row.columnID) + " of table " + std::string(row.table.View());
}

// Each live row describes a column, and no other row describes the same one.
void CheckSchemaRows(const SchemaRows& schema, FaultReceiver* receiver)
{
    std::set<std::pair<std::string, uint32_t>> ids;
    for (const SchemaRow& row : schema.rows) {
        const std::string table(row.table.View());
        if (!row.live)
            continue;
        if (!row.isComplete)
            ReportSchema(FaultKind::kSchemaRow, &row,
                         "the row describes no column: table, column id, name or type is missing",
                         receiver);
        else if (!ids.emplace(table, row.columnID).second)
            ReportSchema(FaultKind::kSchemaRow, &row, NameOf(row) + " is described twice",
                         receiver);
    }
}

// The seven rows that describe _schema itself.
void CheckSelfDescription(const SchemaRows& schema, FaultReceiver* receiver)
{
    const std::vector<SchemaRow>& columns = schema.ColumnsOf(kSchemaTableName);
    for (uint32_t id = 1; id <= kSchemaColumnCount; id++) {
        bool isDescribed = false;
        for (const SchemaRow& column : columns)
            isDescribed = isDescribed ||
                          (column.columnID == id && column.name.View() == kSchemaColumns[id - 1]);
        if (!isDescribed)
            ReportSchema(
                FaultKind::kSchemaSelf, nullptr,
                std::string("_schema doesn't describe its column ") + kSchemaColumns[id - 1],
                receiver);
    }
}

void ReportOrphan(const std::string& file, const std::string& table, FaultReceiver* receiver)
{
    receiver->AddFault({FaultKind::kOrphanFile, table, file, -1, false, 0,
                        "the file belongs to no table of the database"});
}

// Maps and indexes of tables that are neither described nor there.
void ReportOrphans(const DatabaseFiles& found, const std::set<std::string>& checked,
                   FaultReceiver* receiver)
{
    for (const auto& [table, files] : found.tables) {
        if (checked.count(table) != 0)
            continue;
        if (files.hasMap)
            ReportOrphan(MapFileName(table), table, receiver);
        for (const std::string& index : files.indexes)
            ReportOrphan(IndexFileName(table, index), table, receiver);
    }
    for (const std::string& other : found.others)
        if (other != kCommitLogName)
            ReportOrphan(other, "", receiver);
}

}   // namespace

bool HoldsDatabase(const VelaFileAccess& files)
{
    return !ListDatabaseFiles(files).tables.empty();
}

void CheckDatabase(VelaFileAccess* files, FaultReceiver* receiver, RescueWatch* watch)
{
    DatabaseFiles found = ListDatabaseFiles(*files);
    if (files->ContainsFile(kCommitLogName))
        receiver->AddFault({FaultKind::kCommitLog, "", kCommitLogName, -1, false, 0,
                            "the log can't be read; commits that have not reached the files are "
                            "missing from what was checked"});
    const SchemaRows schema = ReadSchemaRows(files, watch);
    CheckSchemaRows(schema, receiver);
    if (found.tables[kSchemaTableName].hasRecords)
        CheckSelfDescription(schema, receiver);

    std::vector<std::string> names = {kSchemaTableName};
    names.insert(names.end(), schema.tables.begin(), schema.tables.end());
    std::set<std::string> checked(names.begin(), names.end());
    for (const auto& [table, tableFiles] : found.tables)
        if (tableFiles.hasRecords && checked.insert(table).second)
            names.push_back(table);
    for (const std::string& name : names)
        if (!watch->Stopped())
            TableCheck(files, name, found.tables[name], schema, receiver, watch).Run();
    ReportOrphans(found, checked, receiver);
}

}   // namespace vela
