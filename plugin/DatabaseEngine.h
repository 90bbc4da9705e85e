#pragma once

#include "plugin/MOXAPlugin.h"

namespace vela {

// The record that is registered for the database engine.
extern const MOXAdbEngineDefinition kDatabaseEngine;

}   // namespace vela
