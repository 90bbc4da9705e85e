#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/rescue/DatabaseFault.h"
#include "engine/rescue/DatabaseFiles.h"
#include "engine/rescue/RecordList.h"
#include "engine/rescue/RecordSearch.h"
#include "engine/rescue/SchemaRows.h"

namespace vela {

// TableCheck compares the files of one table with each other and with the schema, and tells every
// fault that it finds. Memory: 12 bytes for each record, 8 for each pair of the map, a flag per row
// for an index, and one row at a time.
class TableCheck {
public:
    // Everything must outlive the object.
    TableCheck(VelaFileAccess* files, const std::string& name, const TableFiles& tableFiles,
               const SchemaRows& schema, FaultReceiver* receiver, RescueWatch* watch);

    void Run();

private:
    struct OpenIndex;

    void CheckRecords();
    void CheckRecord();
    void CheckFields();
    void CheckEncoding(const FieldPlace& field);
    void ReportBody(const FoundRecord& record, const std::string& file);
    void ReportPassed(const PassedBytes& passed, const std::string& file);
    void ReportUnreadable(const std::string& file, const std::vector<DamagedFile::Range>& ranges);
    void CheckMetadata();
    void CheckCounters(const char* metadata);
    void CheckDuplicates();

    void CheckMap();
    void CheckPairs(const class MapPairs& map);
    void CheckPairOrder(const MapPairs& map);
    void CheckListedRows(const MapPairs& map);

    void CheckIndex(const std::string& index);
    bool TakeIndexColumns(const std::vector<FieldPlace>& fields, OpenIndex* open);
    void CheckEntry(OpenIndex* open);
    void CheckEntryValues(OpenIndex* open, const std::vector<FieldPlace>& fields, size_t row);
    void CheckRowsHaveEntries(const OpenIndex& open);
    bool EntryFits(OpenIndex* open, const FieldPlace& entry, const SchemaRow& column,
                   const FieldPlace* field);

    [[nodiscard]] const SchemaRow* FindColumn(uint32_t columnID) const;
    void Report(FaultKind kind, const std::string& file, int64_t offset, const std::string& text);
    void ReportRow(FaultKind kind, const std::string& file, int64_t offset, uint32_t rowID,
                   const std::string& text);

    VelaFileAccess* mFiles;
    const TableFiles& mTableFiles;
    const SchemaRows& mSchema;
    const std::vector<SchemaRow>& mColumns;   // none when the schema doesn't name the table
    FaultReceiver* mReceiver;
    RescueWatch* mWatch;
    std::unordered_map<uint32_t, const SchemaRow*> mColumnsByID;
    TableSummary mSummary;
    std::string mRecordFile;
    std::string mMapFile;
    RecordSearch mSearch;
    RecordList mRecords;
    uint32_t mHighestRowID = 0;
    uint32_t mHighestColumnID = 0;   // of the records
};

}   // namespace vela
