#pragma once

#include <string_view>

#include "engine/core/VelaValue.h"

namespace vela {

// Short forms of values for tables of cases.

inline VelaValue I(int32_t number)
{
    return VelaValue::Integer(number);
}

inline VelaValue B(bool truth)
{
    return VelaValue::Boolean(truth);
}

inline VelaValue D(double number)
{
    return VelaValue::Double(number);
}

inline VelaValue Null(VelaDataType type)
{
    return VelaValue::Null(type);
}

// Strings, tagged with their encoding; of the first one ASCII.
inline VelaValue Text(std::string_view text)
{
    return VelaValue::String(string(text, kEncodingASCII));
}

inline VelaValue UTF8(std::string_view text)
{
    return VelaValue::String(string(text, kEncodingUTF8));
}

inline VelaValue Latin1(std::string_view text)
{
    return VelaValue::String(string(text, kEncodingLatin1));
}

inline VelaValue UTF16(std::u16string_view text)
{
    return VelaValue::String(string(reinterpret_cast<const char*>(text.data()),
                                    text.size() * sizeof(char16_t), kEncodingUTF16));
}

// Values that hold just this text.
inline VelaValue Date(const char* text)
{
    return VelaValue::Text(kTypeDate, text);
}

inline VelaValue Time(const char* text)
{
    return VelaValue::Text(kTypeTime, text);
}

inline VelaValue Timestamp(const char* text)
{
    return VelaValue::Text(kTypeTimestamp, text);
}

inline VelaValue Binary(const char* text)
{
    return VelaValue::Text(kTypeBinary, text);
}

}   // namespace vela
