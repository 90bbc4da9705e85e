#pragma once

namespace vela {

// Registers the engine with the host: the database engine, the cursor, the class "MOXADatabase",
// the data-source interfaces "#566" and "#567", the data source "veladb", in this order. What could
// not work for lack of a service is left out; a host before version 5.5 gets nothing.
void PluginEntry();

}   // namespace vela
