#include "engine/sql/SQLDropTableNode.h"
#include "engine/sql/StatementChecks.h"
#include "engine/sql/StatementExecutors.h"

namespace vela {

void ExecuteDropTable(const SQLDropTableNode& node, VelaDatabase& database, VelaStatus* status)
{
    const SQLText& name = node.mTableName;
    if (name.EqualsIgnoringCase(kSchemaTableName)) {
        Fail(status, kVEDynamicSQLError, "Error: Can't drop the schema table (nice try!).");
        return;
    }
    size_t position = 0;
    if (!FindOpenTable(database, name, &position, status))
        return;
    const VelaTrans* table = database.OpenTables()[position]->AsStoredTable();
    if (table && table->HasChangesToCommit()) {
        FailTableInTransaction(name, status);
        return;
    }
    VelaStatus deleteStatus;
    database.BeginSchemaChange();
    RunStatement("DELETE FROM _schema WHERE TableName='" + name.ToString() + "'", database,
                 &deleteStatus);
    if (deleteStatus.State() == kVEStateSuccess)
        database.MoveToDropped(position);
    database.EndSchemaChange();
    if (deleteStatus.State() == kVEStateSuccess)
        return;
    if (status)
        *status = deleteStatus;
}

}   // namespace vela
