#pragma once

#include <cstdint>

namespace vela {

// The type code of a value. The codes are stored in record files and in _schema.TypeCode: they
// never change. The gaps are not types.
enum VelaDataType : uint8_t {
    kTypeNone = 0,
    kTypeInteger = 3,
    kTypeString = 5,
    kTypeDouble = 7,
    kTypeDate = 8,
    kTypeTime = 9,
    kTypeTimestamp = 10,
    kTypeBoolean = 12,
    kTypeBinary = 14,
};

// String, Date, Time, Timestamp and Binary: their payload is a shared text.
[[nodiscard]] constexpr bool IsTextBacked(VelaDataType type)
{
    constexpr uint32_t kTextBacked = 1u << kTypeString | 1u << kTypeDate | 1u << kTypeTime |
                                     1u << kTypeTimestamp | 1u << kTypeBinary;
    return type < 32 && (kTextBacked >> type & 1u) != 0;
}

// Whether a byte read from a file is one of the codes above.
[[nodiscard]] constexpr bool IsDataType(uint8_t code)
{
    return code == kTypeNone || code == kTypeInteger || code == kTypeDouble ||
           code == kTypeBoolean || IsTextBacked(static_cast<VelaDataType>(code));
}

// "Integer", "String", "Double", "Date", "Time", "Timestamp", "Boolean", "Binary", "None"; null for
// any other code.
[[nodiscard]] const char* DataTypeName(VelaDataType type);

}   // namespace vela
