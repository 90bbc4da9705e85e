#pragma once

#include "engine/core/VelaValue.h"

namespace vela {

class VelaDatabase;

// The built-in functions of SQL. The numbers are compared: from kFuncAvg on they are aggregates.
enum VelaFuncCode {
    kFuncBitLength = 0,
    kFuncByteLength = 1,
    kFuncCharLength = 2,
    kFuncCurrentDate = 3,
    kFuncCurrentTime = 4,
    kFuncCurrentTimestamp = 5,
    kFuncLowercase = 6,
    kFuncUppercase = 7,
    kFuncPosition = 8,
    kFuncSubstring = 9,
    kFuncTrim = 10,
    kFuncLastRowID = 11,
    kFuncAvg = 12,
    kFuncCount = 13,
    kFuncMax = 14,
    kFuncMin = 15,
    kFuncSum = 16,
};

// The SQL name of a function, upper case, ASCII. code must be one of the above.
[[nodiscard]] string VelaFuncName(VelaFuncCode code);
// Finds a function by name, ignoring case. "CHARACTER_LENGTH" is first replaced by "CHAR_LENGTH",
// in the caller's string too. code may be null. False for an unknown name.
bool GetVelaFuncCode(string* name, VelaFuncCode* code);
// The same by the bytes of the name alone.
[[nodiscard]] bool FindVelaFunc(std::string_view name, VelaFuncCode* code);
// Integer or String, by a fixed table.
[[nodiscard]] VelaDataType VelaFuncResultType(VelaFuncCode code);
// Evaluates a scalar function; absent arguments are null pointers. False, with result untouched,
// when code is an aggregate, a required argument is absent, or the database is needed and null.
// True: result has the value, maybe NULL.
bool VelaFuncEval(VelaFuncCode code, VelaDatabase* database, const VelaValue* arg1,
                  const VelaValue* arg2, const VelaValue* arg3, VelaValue* result);

}   // namespace vela
