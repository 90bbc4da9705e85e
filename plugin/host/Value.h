#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "plugin/host/Text.h"

namespace vela::host {

class HostObject;

// A date, a time of day, or both.
struct Moment {
    bool hasDate = false;
    bool hasTime = false;
    int32_t year = 0;
    int32_t month = 0;
    int32_t day = 0;
    int32_t hour = 0;
    int32_t minute = 0;
    int32_t second = 0;

    bool operator==(const Moment& other) const = default;
};

// Bytes that are no text.
struct Bytes {
    std::string bytes;

    bool operator==(const Bytes& other) const = default;
};

// No result: a call that gives none, a cursor without a row.
struct Nothing {
    bool operator==(const Nothing& other) const = default;
};

// The NULL of the database.
struct Null {
    bool operator==(const Null& other) const = default;
};

// What a call gives and takes. Values of different kinds are never equal: 1 is not 1.0. An object
// is not held by being a value; whoever keeps the value holds the object.
using Value = std::variant<Nothing, Null, bool, int32_t, double, Text, Bytes, Moment, HostObject*>;

// A value as programs write it: nothing, null, true, 42, 1.5, "text", binary"bytes",
// 1994-07-09, 12:34:06, 1994-07-09T12:34:06. An object shows as <object>, which can't be written.
[[nodiscard]] std::string Describe(const Value& value);

// The value that a word stands for; nothing when it is no value.
[[nodiscard]] std::optional<Value> ValueFromWord(std::string_view word);

// The bytes by which a value is pasted into a text: those of a text itself, else its description.
[[nodiscard]] std::string PastedText(const Value& value);

}   // namespace vela::host
