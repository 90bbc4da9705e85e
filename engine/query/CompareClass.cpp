#include "engine/query/CompareClass.h"

#include "engine/query/HashChains.h"
#include "engine/query/StringForm.h"

namespace vela {

namespace {

uint64_t HashOfBoolean(VelaValue value)
{
    value.CoerceToType(kTypeBoolean);
    return value.GetInteger() != 0 ? 1 : 0;
}

}   // namespace

CompareClass ClassOfComparison(VelaDataType left, VelaDataType right)
{
    if (left == kTypeBoolean || right == kTypeBoolean)
        return CompareClass::kBooleans;
    if (left == kTypeString || IsDateOrTime(left))
        return CompareClass::kTexts;
    return left == kTypeDouble || right == kTypeDouble ? CompareClass::kDoubles
                                                       : CompareClass::kIntegers;
}

bool IsDateOrTime(VelaDataType type)
{
    return type == kTypeDate || type == kTypeTime || type == kTypeTimestamp;
}

std::string_view WithoutTypePrefix(std::string_view text)
{
    for (const std::string_view prefix : {"DATE ", "TIME ", "TIMESTAMP "}) {
        if (EqualsIgnoringCase(text.substr(0, prefix.size()), prefix))
            return text.substr(prefix.size());
    }
    return text;
}

uint64_t HashInClass(CompareClass compareClass, const VelaValue& value)
{
    switch (compareClass) {
        case CompareClass::kBooleans:
            return HashOfBoolean(value);
        case CompareClass::kIntegers:
            return HashOfInteger(value.GetInteger());
        case CompareClass::kDoubles:
            return HashOfDouble(value.GetDouble());
        case CompareClass::kTexts:
            break;
    }
    return HashOfText(StringForm(value).View());
}

uint64_t HashOfInteger(int32_t number)
{
    return MixBits(static_cast<uint32_t>(number));
}

uint64_t HashOfDouble(double number)
{
    const double normal = number + 0.0;   // -0.0 equals 0.0
    uint64_t bits;
    std::memcpy(&bits, &normal, sizeof bits);
    return MixBits(bits);
}

// All prefixes go: a text that is one prefix short of another one has the same hash.
uint64_t HashOfText(std::string_view text)
{
    std::string_view rest = WithoutTypePrefix(text);
    while (rest.size() != text.size()) {
        text = rest;
        rest = WithoutTypePrefix(text);
    }
    return HashBytes(text);
}

}   // namespace vela
