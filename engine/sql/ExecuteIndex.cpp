#include "engine/sql/SQLCreateIndexNode.h"
#include "engine/sql/SQLDropIndexNode.h"
#include "engine/sql/StatementChecks.h"
#include "engine/sql/StatementExecutors.h"

namespace vela {

namespace {

bool CheckNewIndexName(VelaTable& table, const SQLText& name, VelaStatus* status)
{
    SimpleVector<string> taken;
    table.GetIndexNames(taken);
    for (const string& other : taken) {
        if (other.View() == name.View())   // the quote that is never closed belongs to the message
            return Fail(status, kVEIndexAlreadyExists,
                        "Error: Index '" + name.ToString() + " already exists.");
    }
    return CheckNewName(name, status);
}

bool FindColumnIDs(VelaTable& table, const ArenaList<SQLText>& names,
                   SimpleVector<uint32_t>* columnIDs, VelaStatus* status)
{
    for (const SQLText& name : names) {
        const int64_t columnID = FindColumnID(table, name.View(), nullptr);
        if (columnID < 0)
            return FailColumnNotFound(name, status);
        columnIDs->push_back(static_cast<uint32_t>(columnID));
    }
    return true;
}

// Takes TABLE.INDEX apart at its first point.
bool SplitSpecifier(const string& specifier, string* tableName, string* indexName,
                    VelaStatus* status)
{
    const size_t point = specifier.View().find('.');
    if (point == std::string_view::npos || point == 0 || point + 1 == specifier.length())
        return Fail(status, kVEDynamicSQLError,
                    "Error: Invalid index specifier (should be TABLE.INDEX).");
    *tableName = specifier.left(point);
    *indexName = specifier.mid(point + 1);
    return true;
}

}   // namespace

void ExecuteCreateIndex(const SQLCreateIndexNode& node, VelaDatabase& database, VelaStatus* status)
{
    VelaTable* table = nullptr;
    SimpleVector<uint32_t> columnIDs;
    if (!FindOpenTable(database, node.mTableName, &table, status) ||
        !CheckNewIndexName(*table, node.mIndexName, status) ||
        !FindColumnIDs(*table, node.mColumns, &columnIDs, status))
        return;
    if (!table->AddIndex(node.mIndexName.ToString(), columnIDs))
        Fail(status, kVEInternalSQLError, "");
}

void ExecuteDropIndex(const SQLDropIndexNode& node, VelaDatabase& database, VelaStatus* status)
{
    string tableName;
    string indexName;
    if (!SplitSpecifier(node.mSpecifier.ToString(), &tableName, &indexName, status))
        return;
    if (tableName.EqualsIgnoringCase(kSchemaTableName)) {
        Fail(status, kVEDynamicSQLError, "Error: Can't drop schema indexes.");
        return;
    }
    VelaTable* table = nullptr;
    if (!FindOpenTable(database, tableName, &table, status))
        return;
    VelaTrans* stored = table->AsStoredTable();
    if (!stored || !stored->DropIndex(indexName))
        Fail(status, kVEIndexNotFound, "Error: Index " + indexName + " not found.");
}

}   // namespace vela
