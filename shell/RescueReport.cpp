#include "shell/RescueReport.h"

#include <nlohmann/json.hpp>

#include "shell/DisplayText.h"
#include "shell/Messages.h"

namespace vela::shell {

namespace {

using Json = nlohmann::ordered_json;

// Names may hold any bytes; what is not UTF-8 becomes U+FFFD.
std::string JsonText(const Json& json)
{
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string Counted(uint64_t count, const char* thing)
{
    return CountText(static_cast<size_t>(count), thing);
}

Json FaultAsJson(const DatabaseFault& fault)
{
    Json json;
    json["kind"] = FaultWord(fault.kind);
    json["table"] = fault.table.empty() ? Json() : Json(fault.table);
    json["file"] = fault.file;
    json["offset"] = fault.offset < 0 ? Json() : Json(fault.offset);
    json["row"] = fault.hasRow ? Json(fault.rowID) : Json();
    json["text"] = fault.text;
    return json;
}

std::string FaultAsLine(const DatabaseFault& fault)
{
    std::string line = ShownText(fault.file);
    if (fault.offset >= 0)
        line += ":" + std::to_string(fault.offset);
    line += ": ";
    if (fault.hasRow)
        line += "row " + std::to_string(fault.rowID) + ": ";
    return line + fault.text + " [" + FaultWord(fault.kind) + "]\n";
}

Json TableAsJson(const RepairedTable& table)
{
    Json json;
    json["name"] = table.name;
    json["saved"] = table.isSaved;
    json["rows"] = table.rows;
    json["lostRows"] = table.lostRows;
    json["duplicates"] = table.duplicates;
    json["bytesPassedOver"] = table.bytesPassedOver;
    json["indexes"] = table.indexes;
    json["lostIndexes"] = table.lostIndexes;
    json["notes"] = table.notes;
    return json;
}

std::string TableAsText(const RepairedTable& table)
{
    std::string text = ShownText(table.name) + ": ";
    text += table.isSaved ? Counted(table.rows, "row") + " saved" : std::string("not saved");
    if (table.lostRows > 0)
        text += ", " + std::to_string(table.lostRows) + " lost";
    if (table.duplicates > 0)
        text += ", " + Counted(table.duplicates, "earlier duplicate") + " left out";
    if (table.bytesPassedOver > 0)
        text +=
            ", " + Counted(static_cast<uint64_t>(table.bytesPassedOver), "byte") + " passed over";
    for (const std::string& index : table.indexes)
        text += ", index " + ShownText(index) + " made anew";
    for (const std::string& index : table.lostIndexes)
        text += ", index " + ShownText(index) + " lost";
    text += "\n";
    for (const std::string& note : table.notes)
        text += "  " + ShownText(note) + "\n";
    return text;
}

}   // namespace

// ---- check

CheckReport::CheckReport(const std::string& database, ReportForm form, Output* output)
    : mForm(form), mOutput(output)
{
    if (mForm == ReportForm::kJson)
        mOutput->Write("{\"database\": " + JsonText(database) + ", \"faults\": [");
}

void CheckReport::AddFault(const DatabaseFault& fault)
{
    if (mForm == ReportForm::kJson)
        mOutput->Write((mFaults == 0 ? "\n" : ",\n") + JsonText(FaultAsJson(fault)));
    else
        mOutput->Write(FaultAsLine(fault));
    mFaults++;
}

void CheckReport::AddTable(const TableSummary& table)
{
    mTables.push_back({table, mFaults - mFaultsBefore});
    mFaultsBefore = mFaults;
}

void CheckReport::Finish(bool isComplete)
{
    const bool isJson = mForm == ReportForm::kJson;
    if (isJson)
        mOutput->Write("], \"tables\": [");
    for (size_t i = 0; i < mTables.size(); i++) {
        if (isJson)
            mOutput->Write(i == 0 ? "\n" : ",\n");
        isJson ? PrintTableAsJson(mTables[i]) : PrintTable(mTables[i]);
    }
    if (isJson)
        mOutput->Write("], \"complete\": " + std::string(isComplete ? "true" : "false") +
                       ", \"faultCount\": " + std::to_string(mFaults) + "}\n");
    else if (isComplete)
        mOutput->Write(mFaults == 0 ? "no faults\n" : Counted(mFaults, "fault") + "\n");
}

void CheckReport::PrintTable(const CountedTable& table)
{
    const TableSummary& summary = table.summary;
    std::string line = ShownText(summary.name) + ": " + Counted(summary.rows, "row");
    if (summary.brokenRecords > 0)
        line += ", " + Counted(summary.brokenRecords, "broken record");
    if (summary.bytesPassedOver > 0)
        line +=
            ", " + Counted(static_cast<uint64_t>(summary.bytesPassedOver), "byte") + " passed over";
    if (summary.indexes > 0)
        line +=
            ", " + std::to_string(summary.indexes) + (summary.indexes == 1 ? " index" : " indexes");
    line += table.faults == 0 ? "" : ", " + Counted(table.faults, "fault");
    mOutput->Write(line + "\n");
}

void CheckReport::PrintTableAsJson(const CountedTable& table)
{
    const TableSummary& summary = table.summary;
    Json json;
    json["name"] = summary.name;
    json["described"] = summary.isDescribed;
    json["rows"] = summary.rows;
    json["deletedRecords"] = summary.deletedRecords;
    json["brokenRecords"] = summary.brokenRecords;
    json["bytes"] = summary.bytes;
    json["bytesPassedOver"] = summary.bytesPassedOver;
    json["indexes"] = summary.indexes;
    json["faults"] = table.faults;
    mOutput->Write(JsonText(json));
}

// ---- repair

void PrintRepairReport(const RepairReport& report, const std::string& database,
                       const std::string& newDatabase, ReportForm form, Output* output)
{
    if (form == ReportForm::kJson) {
        Json json;
        json["database"] = database;
        json["newDatabase"] = newDatabase;
        json["tables"] = Json::array();
        for (const RepairedTable& table : report.tables)
            json["tables"].push_back(TableAsJson(table));
        json["notes"] = report.notes;
        json["complete"] = report.IsComplete();
        output->Write(JsonText(json) + "\n");
        return;
    }
    for (const std::string& note : report.notes)
        output->Write(ShownText(note) + "\n");
    for (const RepairedTable& table : report.tables)
        output->Write(TableAsText(table));
    output->Write(report.IsComplete() ? "everything was saved\n" : "not everything was saved\n");
}

}   // namespace vela::shell
