#include "engine/core/VelaValue.h"

#include "engine/core/DateTimeText.h"
#include "runtime/NumberText.h"

namespace vela {

namespace {

// What stands before the stored text in the display form of a date or time; null for other types.
const char* LiteralPrefix(VelaDataType type)
{
    switch (type) {
        case kTypeDate:
            return "DATE ";
        case kTypeTime:
            return "TIME ";
        case kTypeTimestamp:
            return "TIMESTAMP ";
        default:
            return nullptr;
    }
}

bool IsTextOfFalse(std::string_view text)
{
    return EqualsIgnoringCase(text, "false") || text == "0" || EqualsIgnoringCase(text, "f");
}

}   // namespace

int32_t VelaValue::ConvertToInteger() const
{
    switch (mType) {
        case kTypeString:
            return TextToInteger(TextView());
        case kTypeDouble:
            return DoubleToInteger(StoredDouble());
        default:
            return 0;
    }
}

double VelaValue::ConvertToDouble() const
{
    if (IsNull())
        return 0.0;
    switch (mType) {
        case kTypeInteger:
        case kTypeBoolean:
            return StoredInteger();
        case kTypeString:
            return TextToDouble(TextView());
        default:
            return 0.0;
    }
}

string VelaValue::GetString() const
{
    const char* prefix = LiteralPrefix(mType);
    return prefix && !IsNull() ? string(prefix) + StoredText() : GetSaveString();
}

string VelaValue::GetSaveString() const
{
    if (IsNull())
        return "NULL";
    if (IsTextBacked(mType))
        return StoredText();
    switch (mType) {
        case kTypeInteger:
            return IntegerText(StoredInteger());
        case kTypeBoolean:
            return StoredInteger() != 0 ? "TRUE" : "FALSE";
        case kTypeDouble:
            return DoubleText(StoredDouble());
        default:
            return string();
    }
}

string VelaValue::StoredText() const
{
    StringStorage* text = TextStorage();
    if (text)
        text->Retain();
    return string::AdoptStorage(text);
}

bool VelaValue::Equals(const VelaValue& other) const
{
    if (IsNull() || other.IsNull())
        return IsNull() && other.IsNull();
    if (mType == kTypeInteger || mType == kTypeBoolean)
        return StoredInteger() == other.GetInteger();
    if (mType == kTypeDouble)
        return StoredDouble() == other.StoredDouble();
    if (!IsTextBacked(mType))
        return false;
    // The display form of a text without a prefix is the text itself: no need to share it first.
    const bool otherIsPlainText = IsTextBacked(other.mType) && !LiteralPrefix(other.mType);
    return otherIsPlainText ? TextView() == other.TextView()
                            : TextView() == other.GetString().View();
}

void VelaValue::CoerceToType(VelaDataType target)
{
    if (mType == target)
        return;
    switch (target) {
        case kTypeInteger:
            SetInteger(GetInteger());
            break;
        case kTypeDouble:
            SetDouble(GetDouble());
            break;
        case kTypeBoolean:
            SetBoolean(ConvertToBoolean());
            break;
        case kTypeDate:
            SetText(kTypeDate, DateText(GetString().View()));
            break;
        case kTypeTime:
            SetText(kTypeTime, TimeText(GetString().View()));
            break;
        case kTypeTimestamp:
            CoerceToTimestamp();
            break;
        default:
            SetText(kTypeString, GetString());
            break;
    }
}

bool VelaValue::ConvertToBoolean() const
{
    switch (mType) {
        case kTypeInteger:
            return StoredInteger() != 0;
        case kTypeDouble:
            return StoredDouble() != 0.0;
        default:
            return !IsTextOfFalse(GetString().View());
    }
}

void VelaValue::CoerceToTimestamp()
{
    const string text = GetString();
    string timestamp = DateText(text.View());
    timestamp += ' ';
    timestamp += TimeText(text.View());
    SetText(kTypeTimestamp, static_cast<string&&>(timestamp));
}

}   // namespace vela
