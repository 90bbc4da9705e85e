#pragma once

#include <memory>

#include "engine/core/VelaStatus.h"
#include "engine/storage/VelaTable.h"

namespace vela {

class VelaDatabase;

// In all of these, memory that runs out ends the statement, with the state kVEOutOfMemory or kVETransactionLost
// (VelaDatabase::Enter).

// Runs one statement that returns no rows. A SELECT is parsed and does nothing. status may be null. The statement's
// changes stay in the open transaction; after a failure those of its earlier steps do too.
void VelaSQLExecute(const string& sql, VelaDatabase& database, VelaStatus* status);

// Runs one SELECT and returns its rows, a table of their own that the caller keeps; null when it failed. A result without
// rows is returned with the state kVEStateNoData. Any other statement returns null and does nothing.
//
// The three lists, each optional, describe the sources of the rows for callers that write back through them:
// tableNames gets the name of every FROM table in order, rangeNames the same names once more, and sourceColumns, for each
// result column, the number of the table (high 16 bits) and of the column in it (low 16 bits) that it shows unchanged, -1
// when it is computed.
std::unique_ptr<VelaTable> VelaSQLQuery(const string& sql, VelaDatabase& database,
                                        VelaStatus* status,
                                        SimpleVector<string>* tableNames = nullptr,
                                        SimpleVector<string>* rangeNames = nullptr,
                                        SimpleVector<long>* sourceColumns = nullptr);

// Runs one SELECT, throws its rows away, and tells in words how they were found: which tables were read in which order, and
// how each condition was applied. Lines are UTF-8, without line ends. False: it failed, and status says why; lines is as it was.
// A text that is no SELECT fails with kVEInvalidParameter.
bool VelaSQLExplain(const string& sql, VelaDatabase& database, VelaStatus* status,
                    SimpleVector<string>* lines);

}   // namespace vela
