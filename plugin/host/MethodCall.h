#pragma once

#include <string>
#include <vector>

#include "plugin/MOXAPlugin.h"
#include "plugin/host/Value.h"

namespace vela::host {

class Host;

// A declaration such as "LastRowID(tableName as String) As Integer", taken apart. Type names are in
// lower-case letters; result is empty when there is none.
struct MethodDeclaration {
    std::string name;
    std::vector<std::string> parameters;
    std::string result;
};

// False: this is no declaration.
[[nodiscard]] bool ReadDeclaration(const std::string& text, MethodDeclaration* declaration);

// Calls a method of an object of a registered class, with the C types that its declaration fixes.
// False: the arguments don't fit, or the declaration is of a shape that this host can't call;
// *problem tells, and nothing was called. *result is Nothing for a method without a result, and
// for a string that is null.
[[nodiscard]] bool CallMethod(Host& host, MOXAobject object, const MOXAmethodDefinition& method,
                              const std::vector<Value>& arguments, Value* result,
                              std::string* problem);

}   // namespace vela::host
