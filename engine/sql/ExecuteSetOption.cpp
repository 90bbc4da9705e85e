#include "engine/sql/SQLSetOptionNode.h"
#include "engine/sql/StatementExecutors.h"

namespace vela {

void ExecuteSetOption(const SQLSetOptionNode& node, VelaDatabase& database, VelaStatus* status)
{
    if (!node.mName.EqualsIgnoringCase("ESCAPE"))
        Fail(status, kVEDynamicSQLError, "Error: Unknown option " + node.mName.ToString() + ".");
    else if (node.mValue.View().size() > 1)
        Fail(status, kVEDynamicSQLError, "Error: ESCAPE character must be only one byte.");
    else
        database.SetEscapeOption(node.mValue.ToString());
}

}   // namespace vela
