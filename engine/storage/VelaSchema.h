#pragma once

#include <memory>

#include "engine/storage/VelaTrans.h"

namespace vela {

// The name of the table that describes all tables, itself included.
extern const char* const kSchemaTableName;   // "_schema"

// VelaSchema is the stored table _schema: one row per column of every table, and the operations that make open tables of
// these rows. A table exists exactly when _schema has a row with its name; its columns stand in the order of their rows.
class VelaSchema : public VelaTrans {
public:
    // Column ids, which are column numbers too.
    enum Field : uint32_t {
        kTableName = 1,
        kColumnID = 2,
        kColumnName = 3,
        kTypeCode = 4,
        kLength = 5,
        kNotNull = 6,
        kDefaultValue = 7
    };

    // files must outlive the schema, and so must memory, which counts the columns of the schema and of all tables that it
    // makes; null for no limit. A schema without stored rows gets the rows that describe _schema itself, pending.
    explicit VelaSchema(VelaFileAccess* files, ColumnMemory* memory = nullptr);

    // Adds the seven rows that describe _schema itself, pending, when there is no row at all.
    void PopulateInitialSchema();
    // Appends one schema row.
    void AddSchemaRow(const string& tableName, uint32_t columnID, const string& columnName,
                      VelaDataType typeCode, int32_t length, bool notNull,
                      const string& defaultValue);
    // A new object for a table whose rows were just added: it has no files until its first Commit, which makes new ones in
    // place of whatever lies there.
    [[nodiscard]] std::unique_ptr<VelaTrans> CreateTable(const string& name);
    // A new object for the table, with its files opened and its columns set; null when the schema has no rows of that name.
    [[nodiscard]] std::unique_ptr<VelaTrans> LoadTable(const string& name);
    // Appends an object for every table that the schema names, in order of first appearance, but for _schema itself. The
    // caller owns them.
    void LoadAllTables(SimpleVector<VelaTable*>* tables);
    // Replaces an open table, which has no pending rows, by a freshly loaded one whose id counters are not below the old one's.
    // Indexes created and dropped in the open transaction stay so. *table is null when the schema has no rows of that name.
    void ReloadTable(VelaTrans** table);

    // The table _TABLES; one instance for the whole process.
    [[nodiscard]] static VelaTable* GetTablesTable();

private:
    // The columns of one table.
    struct Description {
        string tableName;
        SimpleVector<VelaColumnInfo> columns;
    };

    SimpleVector<Description> ReadDescriptions(const string* name);
    std::unique_ptr<VelaTrans> MakeTable(const Description& description, Files state);
    std::unique_ptr<VelaTrans> MakeTable(const string& name, Files state);

    ColumnMemory* mMemory;
};

}   // namespace vela
