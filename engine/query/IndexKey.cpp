#include "engine/query/IndexKey.h"

#include <cmath>

#include "engine/query/CompareClass.h"
#include "engine/storage/VelaTrans.h"

namespace vela {

namespace {

std::optional<int32_t> ExactInteger(const VelaValue& value)
{
    if (value.GetType() == kTypeInteger)
        return value.GetInteger();
    const double number = value.GetDouble();
    if (value.GetType() != kTypeDouble || !(number >= INT32_MIN && number <= INT32_MAX) ||
        number != std::trunc(number))
        return std::nullopt;
    return static_cast<int32_t>(number);
}

// Records hold no nulls; what is pending may.
bool MayHoldNulls(VelaTable* table)
{
    const VelaTrans* stored = table->AsStoredTable();
    return stored == nullptr || stored->HasChangesToCommit();
}

std::optional<VelaValue> IntegerKey(const VelaValue& value, bool columnIsLeft)
{
    if (value.GetType() == kTypeString && columnIsLeft)
        return VelaValue::Integer(value.GetInteger());
    const auto number = ExactInteger(value);
    return number ? std::optional(VelaValue::Integer(*number)) : std::nullopt;
}

std::optional<VelaValue> DoubleKey(const VelaValue& value, bool columnIsLeft)
{
    const VelaDataType type = value.GetType();
    const bool isNumber = type == kTypeInteger || type == kTypeDouble;
    if (!isNumber && !(type == kTypeString && columnIsLeft))
        return std::nullopt;
    const double number = value.GetDouble();
    return std::isnan(number) ? std::nullopt : std::optional(VelaValue::Double(number));
}

std::optional<VelaValue> StringKey(const VelaValue& value, bool columnIsLeft)
{
    const VelaDataType type = value.GetType();
    const bool isNumber = type == kTypeInteger || type == kTypeDouble;
    if (type != kTypeString && !(isNumber && columnIsLeft))
        return std::nullopt;
    return VelaValue::String(value.GetSaveString());
}

std::optional<VelaValue> DateKey(VelaDataType columnType, const VelaValue& value)
{
    if (IsDateOrTime(value.GetType()))
        return VelaValue::Text(columnType, value.StoredText());
    if (value.GetType() != kTypeString)
        return std::nullopt;
    return VelaValue::Text(columnType,
                           string(WithoutTypePrefix(value.TextView()), value.TextEncodingTag()));
}

std::optional<VelaValue> KeyOfType(VelaDataType columnType, bool columnIsLeft,
                                   const VelaValue& value)
{
    switch (columnType) {
        case kTypeInteger:
            return IntegerKey(value, columnIsLeft);
        case kTypeDouble:
            return DoubleKey(value, columnIsLeft);
        case kTypeString:
            return StringKey(value, columnIsLeft);
        case kTypeDate:
        case kTypeTime:
        case kTypeTimestamp:
            return DateKey(columnType, value);
        default:
            return std::nullopt;
    }
}

// Whether a comparison would find a null value equal to the key.
bool EqualsNull(const VelaValue& key)
{
    if (IsTextBacked(key.GetType()))
        return key.TextView() == "NULL";
    return key.GetDouble() == 0.0;
}

}   // namespace

std::optional<uint32_t> RowIDEqualTo(const VelaValue& value)
{
    const auto number = value.IsNull() ? std::nullopt : ExactInteger(value);
    if (!number || *number < 0)
        return std::nullopt;
    return static_cast<uint32_t>(*number);
}

std::optional<VelaValue> IndexKeyEqualTo(VelaTable* table, long column, bool columnIsLeft,
                                         const VelaValue& value)
{
    const VelaColumnInfo* info = table->Column(column);
    if (info == nullptr || value.IsNull())
        return std::nullopt;
    auto key = KeyOfType(info->Type(), columnIsLeft, value);
    if (key && EqualsNull(*key) && MayHoldNulls(table))
        return std::nullopt;
    return key;
}

}   // namespace vela
