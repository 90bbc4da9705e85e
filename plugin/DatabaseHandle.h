#pragma once

#include <cstddef>

#include "engine/storage/VelaDatabase.h"
#include "plugin/MOXAPlugin.h"
#include "runtime/FileLocator.h"

// What the plug-in keeps for one database object of the host, in memory that the host gives to the
// objects of class "MOXADatabase", or that the plug-in takes for the database of a data source.
struct dbDatabase {
    vela::VelaDatabase* database = nullptr;   // owned; null while not connected
    vela::VelaStatus status;                  // of the last call
    MOXAfolderItem databaseFile = nullptr;    // the property; its reference belongs to the object
};

static_assert(sizeof(dbDatabase) == (sizeof(void*) == 4 ? 16 : 32));
static_assert(offsetof(dbDatabase, databaseFile) == (sizeof(void*) == 4 ? 12 : 24));

namespace vela {

// The SQLSTATE of a database that can't be opened, "08001", and that of files that can't be
// written, "58030"; both come with a message.
extern const VelaState kStateCantConnect;
extern const VelaState kStateInputOutput;

// The name of the file without which a folder holds no database.
extern const char* const kSchemaRecordFileName;   // "_schema.dat"

// Opens the database in the folder and makes it the handle's, which has none. With create a missing
// folder and missing files are made, the files at the first commit. False: the handle stays
// unconnected, and its status says why.
[[nodiscard]] bool OpenDatabase(dbDatabase* handle, const FileLocator& folder, bool create);
// Commits and closes; does nothing without a connection. A commit that failed is told by the
// status. Cursors of this database become read-only.
void CloseDatabase(dbDatabase* handle);
// To be called before the handle's memory goes: closes it, and no cursor refers to it any more.
void EndHandle(dbDatabase* handle);

// To be called when memory has run out in anything that was done with the handle, which may be
// null: its status tells so, and its database can be used again.
void EndOutOfMemory(dbDatabase* handle);

// Runs a statement without rows and leaves its status. A COMMIT that failed has one of its own.
void ExecuteStatement(dbDatabase* handle, const string& sql);

}   // namespace vela
