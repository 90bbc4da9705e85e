#pragma once

#include "plugin/MOXAPlugin.h"

namespace vela {

// The record that is registered for the class "MOXADatabase".
extern const MOXAclassDefinition kDatabaseClass;

}   // namespace vela
