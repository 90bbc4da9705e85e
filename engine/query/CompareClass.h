#pragma once

#include <cstdint>
#include <string_view>

#include "engine/core/VelaValue.h"

namespace vela {

// CompareClass is the form in which VExprCompare compares two values; it follows from their types.
enum class CompareClass : uint8_t {
    kBooleans,
    kIntegers,
    kDoubles,
    kTexts,   // stored texts; where a String meets a date or time, without a prefix like "DATE "
};

[[nodiscard]] CompareClass ClassOfComparison(VelaDataType left, VelaDataType right);
// Date, Time or Timestamp.
[[nodiscard]] bool IsDateOrTime(VelaDataType type);
// text without one leading "DATE ", "TIME " or "TIMESTAMP ", in any letter case.
[[nodiscard]] std::string_view WithoutTypePrefix(std::string_view text);

// Hashes for looking equals up: values that are equal in a class have equal hashes in it. Texts are
// hashed without any prefix, so that one hash serves whatever they meet; what is found must be
// compared once more.
[[nodiscard]] uint64_t HashInClass(CompareClass compareClass, const VelaValue& value);
[[nodiscard]] uint64_t HashOfInteger(int32_t number);
[[nodiscard]] uint64_t HashOfDouble(double number);
[[nodiscard]] uint64_t HashOfText(std::string_view text);

}   // namespace vela
