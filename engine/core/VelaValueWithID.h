#pragma once

#include <cstdint>

#include "engine/core/VelaValue.h"

namespace vela {

// A value and the id of the column it belongs to. Rows travel between the layers as lists of
// pointers to these.
class VelaValueWithID : public VelaValue {
public:
    VelaValueWithID() = default;
    explicit VelaValueWithID(uint32_t columnID) : mColumnID(columnID) {}
    VelaValueWithID(const VelaValue& value, uint32_t columnID)
        : VelaValue(value), mColumnID(columnID)
    {}

    [[nodiscard]] uint32_t ColumnID() const { return mColumnID; }
    void SetColumnID(uint32_t columnID) { mColumnID = columnID; }
    // Assigns the value; the column id stays.
    void SetValue(const VelaValue& value) { VelaValue::operator=(value); }

private:
    uint32_t mColumnID = 0;
};

}   // namespace vela
