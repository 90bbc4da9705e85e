#pragma once

#include <cstdint>
#include <string>

namespace vela {

// What can be wrong with the files of a database. Each kind has a word for programs.
enum class FaultKind {
    kTag,            // bytes that begin no record
    kLength,         // a body length that can't be right, or a file that ends within a record
    kBody,           // the count of values or the list of columns
    kTypeCode,       // a type code that is none
    kPayload,        // a value that reaches over the end of its record
    kEncoding,       // a text-encoding tag that is none
    kColumnID,       // a value for a column that never was
    kRowID,          // a row id that no row can have
    kDuplicateRow,   // two live records under one row id
    kMetadata,       // the block at the start of a record file
    kCounter,        // a last used row id or column id below one in use
    kMapState,       // a map that is missing, marked as stale, or not one
    kMapCount,       // a count of pairs or an end mark that is wrong
    kMapPair,        // a pair that leads to another place than its row's record, or out of order
    kMapRow,         // a live row that the map doesn't have, or has too often
    kIndex,          // an index file without columns, or with unknown ones
    kIndexEntry,     // an entry that is not of its index, of no row, or there twice
    kIndexValue,     // an entry with another value than its row
    kIndexRow,       // a row without an entry
    kSchemaRow,      // a row of _schema that describes no column
    kSchemaSelf,     // _schema doesn't describe itself
    kMissingFile,    // a table without its record file
    kOrphanFile,     // a file that belongs to no table
    kCommitLog,      // commits that have not reached the files can't be read
    kUnreadable      // bytes that the device can't read
};
[[nodiscard]] const char* FaultWord(FaultKind kind);

struct DatabaseFault {
    FaultKind kind;
    std::string table;     // empty when it is of no table
    std::string file;      // its name within the database
    int64_t offset = -1;   // in the file; -1: the fault is of the whole file
    bool hasRow = false;
    uint32_t rowID = 0;
    std::string text;   // a sentence for people, without a "." at its end
};

// What a check found in one table.
struct TableSummary {
    std::string name;
    bool isDescribed = false;   // it has rows in _schema
    uint64_t rows = 0;          // whole live records
    uint64_t deletedRecords = 0;
    uint64_t brokenRecords = 0;    // live ones that can't be read whole
    int64_t bytes = 0;             // of the record file
    int64_t bytesPassedOver = 0;   // of them, those that are in no record
    uint64_t indexes = 0;
};

// Takes what a check finds, as it finds it.
class FaultReceiver {
public:
    virtual ~FaultReceiver() = default;
    virtual void AddFault(const DatabaseFault& fault) = 0;
    // After the last fault of a table; what belongs to no table comes after the last table.
    virtual void AddTable(const TableSummary& table) = 0;
};

}   // namespace vela
