#include "engine/sql/VelaSQL.h"

#include "engine/sql/SQLAlterTableNode.h"
#include "engine/sql/SQLCreateIndexNode.h"
#include "engine/sql/SQLCreateTableNode.h"
#include "engine/sql/SQLDeleteNode.h"
#include "engine/sql/SQLDropIndexNode.h"
#include "engine/sql/SQLDropTableNode.h"
#include "engine/sql/SQLEndTransactionNode.h"
#include "engine/sql/SQLInsertNode.h"
#include "engine/sql/SQLSetOptionNode.h"
#include "engine/sql/SQLUpdateNode.h"
#include "engine/sql/StatementExecutors.h"
#include "engine/sql/VelaSQLParser.h"

namespace vela {

namespace {

void ReportParseError(const VelaSQLParser& parser, VelaStatus* status)
{
    if (!status)
        return;
    const VelaSQLParser::ErrorType error = parser.LastError();
    const VelaState state = error == VelaSQLParser::kNoError ? kVEStateSuccess : kVEDynamicSQLError;
    *status = VelaStatus(state, string(VelaSQLParser::ErrorMessage(error)));
}

// Begins a statement: its tree, when it has no errors; null for any other, which status then tells.
SQLSyntaxNodePtr Start(const string& sql, VelaDatabase& database, VelaStatus* status)
{
    database.StartStatement();
    const string& escape = database.EscapeOption();
    VelaSQLParser parser(escape.empty() ? '\0' : escape.CString()[0]);
    SQLSyntaxNodePtr root = parser.Evaluate(sql);
    ReportParseError(parser, status);
    if (parser.LastError() != VelaSQLParser::kNoError)
        return nullptr;
    return root;
}

void EndTransaction(const SQLEndTransactionNode& node, VelaDatabase& database)
{
    if (node.mCommit)
        database.Commit();
    else
        database.Rollback();
}

template <class Node>
const Node& As(const SQLSyntaxNode& root)
{
    return static_cast<const Node&>(root);
}

void Dispatch(const SQLSyntaxNode& root, VelaDatabase& database, VelaStatus* status)
{
    if (root.IsInsert())
        ExecuteInsert(As<SQLInsertNode>(root), database, status);
    else if (root.IsUpdate())
        ExecuteUpdate(As<SQLUpdateNode>(root), database, status);
    else if (root.IsDelete())
        ExecuteDelete(As<SQLDeleteNode>(root), database, status);
    else if (root.IsCreateTable())
        ExecuteCreateTable(As<SQLCreateTableNode>(root), database, status);
    else if (root.IsAlterTable())
        ExecuteAlterTable(As<SQLAlterTableNode>(root), database, status);
    else if (root.IsDropTable())
        ExecuteDropTable(As<SQLDropTableNode>(root), database, status);
    else if (root.IsCreateIndex())
        ExecuteCreateIndex(As<SQLCreateIndexNode>(root), database, status);
    else if (root.IsDropIndex())
        ExecuteDropIndex(As<SQLDropIndexNode>(root), database, status);
    else if (root.IsEndTransaction())
        EndTransaction(As<SQLEndTransactionNode>(root), database);
    else if (root.IsSetOption())
        ExecuteSetOption(As<SQLSetOptionNode>(root), database, status);
}

}   // namespace

void RunStatement(const string& sql, VelaDatabase& database, VelaStatus* status)
{
    const SQLSyntaxNodePtr root = Start(sql, database, status);
    if (root)
        Dispatch(*root, database, status);
}

void VelaSQLExecute(const string& sql, VelaDatabase& database, VelaStatus* status)
{
    database.Enter(status, [&] { RunStatement(sql, database, status); });
}

bool VelaSQLExplain(const string& sql, VelaDatabase& database, VelaStatus* status,
                    SimpleVector<string>* lines)
{
    bool explained = false;
    const bool done = database.Enter(status, [&] {
        const SQLSyntaxNodePtr root = Start(sql, database, status);
        if (root && !root->IsSelect())
            Fail(status, kVEInvalidParameter, "Error: Only a SELECT can be explained.");
        else if (root)
            explained = ExplainSelect(As<SQLSelectNode>(*root), database, status, lines) != nullptr;
    });
    return done && explained;
}

std::unique_ptr<VelaTable> VelaSQLQuery(const string& sql, VelaDatabase& database,
                                        VelaStatus* status, SimpleVector<string>* tableNames,
                                        SimpleVector<string>* rangeNames,
                                        SimpleVector<long>* sourceColumns)
{
    std::unique_ptr<VelaTable> rows;
    database.Enter(status, [&] {
        const SQLSyntaxNodePtr root = Start(sql, database, status);
        if (root && root->IsSelect())
            rows = ExecuteSelect(As<SQLSelectNode>(*root), database, status, tableNames, rangeNames,
                                 sourceColumns);
    });
    return rows;
}

}   // namespace vela
