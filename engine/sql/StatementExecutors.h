#pragma once

#include <memory>

#include "engine/core/VelaStatus.h"
#include "engine/query/VelaTempTable.h"
#include "engine/storage/VelaDatabase.h"

namespace vela {

class SQLAlterTableNode;
class SQLCreateIndexNode;
class SQLCreateTableNode;
class SQLDeleteNode;
class SQLDropIndexNode;
class SQLDropTableNode;
class SQLInsertNode;
class SQLSelectNode;
class SQLSetOptionNode;
class SQLUpdateNode;

// The executors, one for each kind of statement. They are called by VelaSQLExecute and VelaSQLQuery
// (VelaSQL.h), which have parsed the statement and set status, unless it is null, to success.
//
// An executor stops at its first failing check, which sets status. It changes the open transaction
// and never ends it; what it did before a failure stays done.

void ExecuteInsert(const SQLInsertNode& node, VelaDatabase& database, VelaStatus* status);
void ExecuteUpdate(const SQLUpdateNode& node, VelaDatabase& database, VelaStatus* status);
void ExecuteDelete(const SQLDeleteNode& node, VelaDatabase& database, VelaStatus* status);
void ExecuteCreateTable(const SQLCreateTableNode& node, VelaDatabase& database, VelaStatus* status);
void ExecuteAlterTable(const SQLAlterTableNode& node, VelaDatabase& database, VelaStatus* status);
void ExecuteDropTable(const SQLDropTableNode& node, VelaDatabase& database, VelaStatus* status);
void ExecuteCreateIndex(const SQLCreateIndexNode& node, VelaDatabase& database, VelaStatus* status);
void ExecuteDropIndex(const SQLDropIndexNode& node, VelaDatabase& database, VelaStatus* status);
void ExecuteSetOption(const SQLSetOptionNode& node, VelaDatabase& database, VelaStatus* status);

// VelaSQLExecute without its door: for a statement that is part of another.
void RunStatement(const string& sql, VelaDatabase& database, VelaStatus* status);

// The rows; null when it failed. The lists are those of VelaSQLQuery; each may be null.
std::unique_ptr<VelaTempTable> ExecuteSelect(const SQLSelectNode& node, VelaDatabase& database,
                                             VelaStatus* status, SimpleVector<string>* tableNames,
                                             SimpleVector<string>* rangeNames,
                                             SimpleVector<long>* sourceColumns);
// Runs it likewise, and appends to lines, in words, how its rows were found.
std::unique_ptr<VelaTempTable> ExplainSelect(const SQLSelectNode& node, VelaDatabase& database,
                                             VelaStatus* status, SimpleVector<string>* lines);

}   // namespace vela
