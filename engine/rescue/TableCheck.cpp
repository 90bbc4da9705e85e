#include "engine/rescue/TableCheck.h"

#include <algorithm>
#include <cstring>

#include "engine/rescue/MapPairs.h"
#include "engine/storage/RecordFormat.h"
#include "engine/storage/VelaSchema.h"

namespace vela {

namespace {

constexpr int64_t kHeader = static_cast<int64_t>(kRecordHeaderSize);
constexpr size_t kCountersSize = 8;
// More column ids than a table ever used up between two of its columns.
constexpr uint32_t kFarAbove = 65536;

std::string Hex(uint32_t number)
{
    const char* const digits = "0123456789abcdef";
    std::string text = "0x";
    for (int shift = 28; shift >= 0; shift -= 4)
        text += digits[number >> shift & 15u];
    return text;
}

std::string Counted(int64_t count, const char* thing)
{
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

FaultKind KindOf(BodyFault fault)
{
    switch (fault) {
        case BodyFault::kTypeCode:
            return FaultKind::kTypeCode;
        case BodyFault::kPayload:
            return FaultKind::kPayload;
        case BodyFault::kUnreadable:
            return FaultKind::kUnreadable;
        default:
            return FaultKind::kBody;
    }
}

const char* TextOf(BodyFault fault)
{
    switch (fault) {
        case BodyFault::kNone:
            return "";
        case BodyFault::kCount:
            return "the count of values is more than the record can hold";
        case BodyFault::kEntry:
            return "the list of columns reaches over the end of the record";
        case BodyFault::kTypeCode:
            return "a type code is none";
        case BodyFault::kPayload:
            return "a value reaches over the end of its record";
        case BodyFault::kUnreadable:
            return "the record can't be read";
    }
    return "";
}

}   // namespace

TableCheck::TableCheck(VelaFileAccess* files, const std::string& name, const TableFiles& tableFiles,
                       const SchemaRows& schema, FaultReceiver* receiver, RescueWatch* watch)
    : mFiles(files),
      mTableFiles(tableFiles),
      mSchema(schema),
      mColumns(schema.ColumnsOf(name)),
      mReceiver(receiver),
      mWatch(watch),
      mRecordFile(RecordFileName(name)),
      mMapFile(MapFileName(name)),
      mSearch(files, mRecordFile, mMapFile, watch)
{
    mSummary.name = name;
    for (const SchemaRow& column : mColumns)
        mColumnsByID.emplace(column.columnID, &column);
    mSummary.isDescribed = !mColumns.empty();
    mSummary.bytes = mSearch.File().Length();
}

void TableCheck::Report(FaultKind kind, const std::string& file, int64_t offset,
                        const std::string& text)
{
    mReceiver->AddFault({kind, mSummary.name, file, offset, false, 0, text});
}

void TableCheck::ReportRow(FaultKind kind, const std::string& file, int64_t offset, uint32_t rowID,
                           const std::string& text)
{
    mReceiver->AddFault({kind, mSummary.name, file, offset, true, rowID, text});
}

const SchemaRow* TableCheck::FindColumn(uint32_t columnID) const
{
    const auto found = mColumnsByID.find(columnID);
    return found == mColumnsByID.end() ? nullptr : found->second;
}

void TableCheck::Run()
{
    if (!mSearch.File().IsOpen()) {
        Report(FaultKind::kMissingFile, mRecordFile, -1,
               mTableFiles.hasRecords ? "the record file can't be opened"
                                      : "the table has no record file");
    } else {
        if (mColumns.empty() && mSummary.name != kSchemaTableName)
            Report(FaultKind::kOrphanFile, mRecordFile, -1, "no table of this name is described");
        CheckRecords();
        CheckMap();
        for (const std::string& index : mTableFiles.indexes)
            CheckIndex(index);
    }
    mReceiver->AddTable(mSummary);
}

// ---- records

void TableCheck::CheckRecords()
{
    CheckMetadata();
    RecordSearch::Step step;
    while ((step = mSearch.Next()) != RecordSearch::Step::kEnd) {
        if (step == RecordSearch::Step::kRecord)
            CheckRecord();
        else
            ReportPassed(mSearch.Passed(), mRecordFile);
    }
    mSummary.bytesPassedOver = mSearch.BytesPassedOver();
    if (mSummary.bytes > kMaxRecordFileSize)
        Report(FaultKind::kLength, mRecordFile, kMaxRecordFileSize,
               "the file is larger than 4 GiB; what lies behind can't be reached");
    ReportUnreadable(mRecordFile, mSearch.File().Unreadable());
    const char* metadata = mSearch.File().Bytes(0, kCountersSize);
    if (metadata != nullptr)
        CheckCounters(metadata);
    mRecords.Sort();
    CheckDuplicates();
}

void TableCheck::CheckRecord()
{
    const FoundRecord& record = mSearch.Record();
    const uint32_t rowID = record.header.rowID;
    if (record.header.live && rowID == kInvalidRowID)
        ReportRow(FaultKind::kRowID, mRecordFile, record.position, rowID,
                  "no row can have this row id");
    else
        mHighestRowID = std::max(mHighestRowID, rowID == kInvalidRowID ? 0 : rowID);
    if (!record.IsWhole())
        ReportBody(record, mRecordFile);
    else if (record.lengthIsWrong)
        ReportRow(FaultKind::kLength, mRecordFile, record.position + 8, rowID,
                  "the record's length doesn't lead to the next record");
    mSummary.rows += record.header.live && record.IsWhole();
    mSummary.brokenRecords += record.header.live && !record.IsWhole();
    mSummary.deletedRecords += !record.header.live;
    mRecords.Add(
        {rowID, static_cast<uint32_t>(record.position), record.header.live, record.IsWhole()});
    if (record.IsWhole() && record.header.live)
        CheckFields();
}

void TableCheck::CheckFields()
{
    const FoundRecord& record = mSearch.Record();
    BodyReader reader(&mSearch.File(), &mSearch.Payloads(), record.position + kHeader, record.end);
    FieldPlace field;
    while (reader.Next(&field)) {
        mHighestColumnID = std::max(mHighestColumnID, field.columnID);
        if (field.columnID != 0 && mSummary.isDescribed && FindColumn(field.columnID) == nullptr &&
            !mSchema.WasDescribed(mSummary.name, field.columnID))
            ReportRow(FaultKind::kColumnID, mRecordFile, record.position, record.header.rowID,
                      "a value is of column " + std::to_string(field.columnID) +
                          ", which the table never had");
        CheckEncoding(field);
    }
}

void TableCheck::CheckEncoding(const FieldPlace& field)
{
    if (field.type == kTypeString && IconvName(field.encoding) == nullptr)
        ReportRow(FaultKind::kEncoding, mRecordFile, field.position + 8,
                  mSearch.Record().header.rowID,
                  "the text of column " + std::to_string(field.columnID) + " has the encoding " +
                      Hex(field.encoding) + ", which is none");
}

void TableCheck::ReportBody(const FoundRecord& record, const std::string& file)
{
    const std::string size =
        record.lengthIsWrong ? ", and its length doesn't lead to the next record" : std::string();
    ReportRow(KindOf(record.fault), file, record.faultPosition, record.header.rowID,
              TextOf(record.fault) + size);
}

void TableCheck::ReportPassed(const PassedBytes& passed, const std::string& file)
{
    const std::string over = "; " + Counted(passed.size, "byte") + " passed over";
    switch (passed.reason) {
        case PassedBytes::Reason::kTag:
            Report(FaultKind::kTag, file, passed.position, "no record begins here" + over);
            break;
        case PassedBytes::Reason::kLength:
            Report(FaultKind::kLength, file, passed.position + 8,
                   "the length of the record here can't be right" + over);
            break;
        case PassedBytes::Reason::kCut:
            Report(FaultKind::kLength, file, passed.position,
                   "the file ends within a record" + over);
            break;
        case PassedBytes::Reason::kCovered:
            break;   // told with the record before it
    }
}

void TableCheck::ReportUnreadable(const std::string& file,
                                  const std::vector<DamagedFile::Range>& ranges)
{
    for (const DamagedFile::Range& range : ranges)
        Report(FaultKind::kUnreadable, file, range.position,
               Counted(range.size, "byte") + " can't be read");
}

void TableCheck::CheckMetadata()
{
    const char* block = mSearch.File().Bytes(0, kMetadataSize);
    if (block == nullptr) {
        Report(FaultKind::kMetadata, mRecordFile, 0,
               "the file is shorter than the 256 bytes at its start");
        return;
    }
    const char* end = block + kMetadataSize;
    const char* other =
        std::find_if(block + kCountersSize, end, [](char byte) { return byte != 0; });
    if (other != end)
        Report(FaultKind::kMetadata, mRecordFile, other - block,
               "bytes that are always zero are not");
}

// A counter of 0 is no fault: it is computed anew.
void TableCheck::CheckCounters(const char* metadata)
{
    uint32_t lastRowID;
    uint32_t lastColumnID;
    std::memcpy(&lastRowID, metadata, sizeof lastRowID);
    std::memcpy(&lastColumnID, metadata + 4, sizeof lastColumnID);
    if (lastRowID == kInvalidRowID || (lastRowID != 0 && lastRowID < mHighestRowID))
        Report(FaultKind::kCounter, mRecordFile, 0,
               "the last used row id is " + std::to_string(lastRowID) + ", but row " +
                   std::to_string(mHighestRowID) + " is in use");
    uint32_t described = 0;
    for (const SchemaRow& column : mColumns)
        described = std::max(described, column.columnID);
    if (lastColumnID != 0 && lastColumnID < described)
        Report(FaultKind::kCounter, mRecordFile, 4,
               "the last used column id is " + std::to_string(lastColumnID) + ", but column " +
                   std::to_string(described) + " is in use");
    const uint32_t highest = std::max(described, mHighestColumnID);
    if (lastColumnID > highest && lastColumnID - highest > kFarAbove)
        Report(FaultKind::kCounter, mRecordFile, 4,
               "the last used column id is " + std::to_string(lastColumnID) +
                   ", far above any in use");
}

void TableCheck::CheckDuplicates()
{
    const std::vector<RecordList::Place>& sorted = mRecords.Sorted();
    for (size_t i = 0; i < sorted.size(); i++)
        if (sorted[i].live && sorted[i].rowID != kInvalidRowID && !mRecords.IsLiveRow(i))
            ReportRow(FaultKind::kDuplicateRow, mRecordFile, sorted[i].position, sorted[i].rowID,
                      "the row has another record, at offset " +
                          std::to_string(sorted[mRecords.LiveRowOf(sorted[i].rowID)].position));
}

// ---- the map

void TableCheck::CheckMap()
{
    const MapPairs map(mFiles, mMapFile, mWatch);
    if (!map.IsThere()) {
        Report(FaultKind::kMapState, mMapFile, -1,
               mTableFiles.hasMap ? "the map can't be opened"
                                  : "the map is missing; it is made anew when needed");
        return;
    }
    if (map.Length() == 0 && mSummary.rows == 0 && mSummary.brokenRecords == 0)
        return;   // that of a table that never had rows
    ReportUnreadable(mMapFile, map.Unreadable());
    if (map.State() != kMapValid) {
        Report(FaultKind::kMapState, mMapFile, 0,
               map.State() == kMapStale ? "the map is marked as stale; it is made anew when needed"
                                        : "this is no map; it is made anew when needed");
        return;
    }
    if (!map.HasAllPairs())
        Report(FaultKind::kMapCount, mMapFile, 4,
               "the map should have " + Counted(map.Count(), "pair") + ", but ends after " +
                   std::to_string(map.Pairs().size()));
    else if (!map.HasEndMark())
        Report(FaultKind::kMapCount, mMapFile, map.EndMarkPosition(),
               "there is no end mark behind the " + Counted(map.Count(), "pair"));
    CheckPairs(map);
    CheckPairOrder(map);
    CheckListedRows(map);
}

// Each pair gives the present place of its row, or the last one of a row that was deleted.
void TableCheck::CheckPairs(const MapPairs& map)
{
    const std::vector<RecordList::Place>& sorted = mRecords.Sorted();
    for (size_t i = 0; i < map.Pairs().size(); i++) {
        const MapPairs::Pair& pair = map.Pairs()[i];
        const size_t row = mRecords.RowOf(pair.rowID);
        if (row == sorted.size())
            ReportRow(FaultKind::kMapPair, mMapFile, MapPairs::PositionOf(i), pair.rowID,
                      "the map has a row of which there is no record");
        else if (sorted[row].position != pair.position)
            ReportRow(FaultKind::kMapPair, mMapFile, MapPairs::PositionOf(i), pair.rowID,
                      "the map has the row at offset " + std::to_string(pair.position) +
                          ", and its record is at offset " + std::to_string(sorted[row].position));
    }
}

// The last pairs of the rows stand in the order of their records.
void TableCheck::CheckPairOrder(const MapPairs& map)
{
    const std::vector<RecordList::Place>& sorted = mRecords.Sorted();
    std::vector<bool> isListed(sorted.size());
    uint32_t next = UINT32_MAX;
    for (size_t i = map.Pairs().size(); i > 0; i--) {
        const size_t row = mRecords.RowOf(map.Pairs()[i - 1].rowID);
        if (row == sorted.size() || isListed[row])
            continue;
        isListed[row] = true;
        if (sorted[row].position > next)
            ReportRow(FaultKind::kMapPair, mMapFile, MapPairs::PositionOf(i - 1), sorted[row].rowID,
                      "the row stands out of order");
        next = std::min(next, sorted[row].position);
    }
}

void TableCheck::CheckListedRows(const MapPairs& map)
{
    const std::vector<RecordList::Place>& sorted = mRecords.Sorted();
    std::vector<uint32_t> listed(sorted.size());
    for (const MapPairs::Pair& pair : map.Pairs()) {
        const size_t row = mRecords.RowOf(pair.rowID);
        if (row < sorted.size())
            listed[row]++;
    }
    for (size_t row = 0; row < sorted.size(); row++) {
        if (mRecords.IsLiveRow(row) && listed[row] == 0)
            ReportRow(FaultKind::kMapRow, mMapFile, -1, sorted[row].rowID,
                      "the map doesn't have the row, whose record is at offset " +
                          std::to_string(sorted[row].position));
        const size_t records = row + 1 - mRecords.FirstOf(sorted[row].rowID);
        if (listed[row] > records)
            ReportRow(FaultKind::kMapRow, mMapFile, -1, sorted[row].rowID,
                      "the map has the row " + Counted(listed[row], "time") + ", and there is " +
                          Counted(static_cast<int64_t>(records), "record") + " of it");
    }
}

}   // namespace vela
