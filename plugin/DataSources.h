#pragma once

#include "plugin/MOXAPlugin.h"

namespace vela {

// Databases as data sources of the program that a person develops in the host.

// The kind of data source: "veladb".
extern const char* const kDataSourceKind;

// Asks for a place with the save dialog, makes a database there, and adds a data source for it. An
// existing database at that place is kept as it is.
MOXAbool NewDataSource(MOXAstring* message);
// Asks for a database with the open dialog and adds a data source for it.
MOXAbool SelectDataSource(MOXAstring* message);
// Opens the database of a data source; data is the save info of its folder item, seen from the
// program's folder.
MOXAdbDatabase OpenDataSource(const char* data, int32_t length, MOXAstring* message);

}   // namespace vela
