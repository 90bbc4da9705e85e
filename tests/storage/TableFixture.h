#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/storage/CommitFileAccess.h"
#include "engine/storage/VelaDatabase.h"
#include "tests/storage/MemoryFileAccess.h"
#include "tests/storage/StorageTesting.h"

namespace vela {

// A database on a disk in memory, which a test changes through its tables and opens again.
class DatabaseOnDisk {
public:
    explicit DatabaseOnDisk(MemoryDisk* disk, bool readOnly = false)
        : DatabaseOnDisk(
              [disk](bool forReading) {
                  return std::make_unique<MemoryFileAccess>(disk, forReading);
              },
              readOnly)
    {}
    // The same on files of another kind, which makeFiles opens.
    using MakeFiles = std::function<std::unique_ptr<VelaFileAccess>(bool readOnly)>;
    explicit DatabaseOnDisk(MakeFiles makeFiles, bool readOnly = false)
        : mMakeFiles(std::move(makeFiles))
    {
        Open(readOnly);
    }

    void Open(bool readOnly = false)
    {
        database.reset();   // its files are free before they are opened again
        database = std::make_unique<VelaDatabase>(mMakeFiles(readOnly));
        if (mLimits)
            database->Files()->SetLimits(*mLimits);
    }
    // From the next opening on.
    void SetLimits(const CommitFileAccess::Limits& limits) { mLimits = limits; }
    // Null when there is none.
    VelaTrans* Table(const std::string& name)
    {
        const long position = database->FindOpenTable(string(name, kEncodingASCII));
        return position < 0
                   ? nullptr
                   : database->OpenTables()[static_cast<size_t>(position)]->AsStoredTable();
    }
    // As CREATE TABLE does it: columns of these types, with ids 1, 2, 3 ..., named "c1", "c2" ...
    VelaTrans* Create(const std::string& name, const std::vector<VelaDataType>& types,
                      const std::string& defaultValue = "")
    {
        uint32_t columnID = 0;
        for (VelaDataType type : types)
            AddColumn(name, ++columnID, type, defaultValue);
        database->AddOpenTable(database->Schema()->CreateTable(string(name, kEncodingASCII)));
        return Table(name);
    }
    // As ALTER TABLE ADD does it.
    VelaTrans* Alter(const std::string& name, VelaDataType type, const std::string& defaultValue)
    {
        AddColumn(name, Table(name)->NextUnusedColumnID(), type, defaultValue);
        return Reload(name);
    }
    VelaTrans* Reload(const std::string& name)
    {
        const size_t position =
            static_cast<size_t>(database->FindOpenTable(string(name, kEncodingASCII)));
        VelaTrans* table = Table(name);
        database->Schema()->ReloadTable(&table);
        database->OpenTables()[position] = table;
        return table;
    }
    // As DROP TABLE does it.
    void Drop(const std::string& name)
    {
        VelaSchema* schema = database->Schema();
        for (uint32_t rowID : RowIDsOf(schema))
            if (ReadText(schema, rowID, VelaSchema::kTableName) == "String[600] " + name)
                schema->DeleteRow(rowID);
        database->MoveToDropped(
            static_cast<size_t>(database->FindOpenTable(string(name, kEncodingASCII))));
    }
    // True when the commit succeeded.
    bool Commit()
    {
        database->Commit();
        return !database->LastCommitFailed();
    }
    void Rollback() { database->Rollback(); }

    std::unique_ptr<VelaDatabase> database;

private:
    void AddColumn(const std::string& table, uint32_t columnID, VelaDataType type,
                   const std::string& defaultValue)
    {
        database->Schema()->AddSchemaRow(string(table, kEncodingASCII), columnID,
                                         string("c" + std::to_string(columnID), kEncodingASCII),
                                         type, 0, true, string(defaultValue, kEncodingASCII));
    }

    MakeFiles mMakeFiles;
    std::optional<CommitFileAccess::Limits> mLimits;
};

}   // namespace vela
