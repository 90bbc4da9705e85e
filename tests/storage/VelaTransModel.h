#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "engine/core/VelaValue.h"

namespace vela {

// VelaTransModel is what a stored table promises, done in the plainest way: its file is a list of records, its
// transaction a list of changes and a list of deletions, its indexes lists of entries. Everything is searched from the
// start. Random tests compare VelaTrans with it.
class VelaTransModel {
public:
    using Values = std::vector<std::pair<uint32_t, VelaValue>>;   // by column id

    struct Column {
        uint32_t columnID;
        VelaValue defaultValue;   // has the column's type
    };

    explicit VelaTransModel(const std::vector<Column>& columns) : mColumns(columns) {}

    uint32_t AddRow(Values values);
    void UpdateRow(uint32_t rowID, Values values);
    void DeleteRow(uint32_t rowID);
    bool ContainsRow(uint32_t rowID) const;
    // number 1 ... ; false when it can't be read.
    bool GetValue(uint32_t rowID, size_t number, bool useIndexes, VelaValue* value) const;
    std::vector<uint32_t> GetRowIDs() const;
    size_t QtyRows() const { return mMapList.size() + mChanges.size(); }
    bool HasChangesToCommit() const { return !mChanges.empty() || !mDeletions.empty(); }
    uint32_t NextUnusedRowID() const { return mLastUsedRowID + 1; }
    uint32_t LastRowID() const { return mLastRowID; }

    bool AddIndex(const std::string& name, const std::vector<uint32_t>& columnIDs);
    bool DropIndex(const std::string& name);
    // Rows, in table order, whose column holds exactly this value.
    std::vector<uint32_t> RowsWith(size_t number, const VelaValue& key) const;

    void Commit();
    void Rollback();
    // As a table that is opened from its files; without a map file the map is built from the live records.
    void Reopen(bool withMap);
    // A column that is added while nothing is pending.
    void AddColumn(const Column& column) { mColumns.push_back(column); }

private:
    struct Record {
        bool live;
        uint32_t rowID;
        Values values;
        size_t space;
    };
    struct Change {
        uint32_t rowID;
        bool isInsert;
        Values values;
    };
    struct Index {
        std::string name;
        std::vector<uint32_t> columnIDs;
        std::map<uint32_t, std::vector<VelaValue>> entries;
    };

    const Column* FindColumn(uint32_t columnID) const;
    void Coerce(Values* values) const;
    Change* FindChange(uint32_t rowID);
    const Change* FindChange(uint32_t rowID) const;
    bool IsDeleted(uint32_t rowID) const;
    const Record* FindRecord(uint32_t rowID) const;
    void AddToIndex(Index* index, uint32_t rowID) const;
    void AppendRecord(uint32_t rowID, const Values& values);
    void UpdateRecord(Record* record, const Values& changes);
    void LoadMetadata();

    std::vector<Column> mColumns;
    // The files, as of the last commit.
    std::vector<Record> mRecords;
    std::vector<uint32_t> mMapList;
    std::map<uint32_t, size_t> mPositions;   // in mRecords
    uint32_t mSavedLastUsedRowID = 0;
    std::vector<Index> mSavedIndexes;
    // The open transaction.
    std::vector<Change> mChanges;
    std::vector<uint32_t> mDeletions;
    std::vector<Index> mIndexes;
    uint32_t mLastUsedRowID = 0;
    uint32_t mLastRowID = 0;
};

}   // namespace vela
