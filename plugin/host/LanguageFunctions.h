#pragma once

#include "plugin/MOXAPlugin.h"

namespace vela::host {

// The functions of the host's language that the plug-in may load, by their declarations. Null for
// another declaration, for one that the host withholds by its name, and, for functions of an
// object, when the object has none of that declaration.
[[nodiscard]] MOXAproc FindGlobalFunction(const char* declaration);
[[nodiscard]] MOXAproc FindObjectFunction(MOXAobject object, const char* declaration);

}   // namespace vela::host
