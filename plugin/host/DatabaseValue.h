#pragma once

#include <optional>
#include <string>
#include <vector>

#include "plugin/MOXAPlugin.h"
#include "plugin/host/Value.h"

namespace vela::host {

class Host;

// What columnValue stored. Takes over the reference of a text. Complains about a value that is not
// as its type says.
[[nodiscard]] Value FromDatabaseValue(Host& host, const MOXAdbValue& stored);

// The changes for one call of updateRow, with the strings that they point at.
class RowChanges {
public:
    explicit RowChanges(Host& host) : mHost(host) {}
    ~RowChanges();
    RowChanges(const RowChanges&) = delete;
    RowChanges& operator=(const RowChanges&) = delete;

    // False: the value is an object, or no value at all.
    [[nodiscard]] bool Add(int32_t column, const Value& value);
    [[nodiscard]] const MOXAdbChange* Changes() const { return mChanges.data(); }
    [[nodiscard]] int32_t Count() const { return static_cast<int32_t>(mChanges.size()); }

private:
    Host& mHost;
    std::vector<MOXAdbChange> mChanges;
};

// The names that programs use for kMOXAType...: "integer", "text" and so on; a number for others.
[[nodiscard]] std::string FieldTypeName(int32_t type);

}   // namespace vela::host
