#include "engine/sql/SQLDropTableNode.h"
#include "engine/sql/StatementChecks.h"
#include "engine/sql/StatementExecutors.h"
#include "engine/sql/VelaSQL.h"

namespace vela {

void ExecuteDropTable(const SQLDropTableNode& node, VelaDatabase& database, VelaStatus* status)
{
    const string& name = node.mTableName;
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
    VelaSQLExecute("DELETE FROM _schema WHERE TableName='" + name + "'", database, &deleteStatus);
    if (deleteStatus.State() == kVEStateSuccess)
        database.MoveToDropped(position);
    else if (status)
        *status = deleteStatus;
}

}   // namespace vela
