#include "plugin/ColumnValue.h"

#include "plugin/HostText.h"
#include "runtime/NumberText.h"

namespace vela {

namespace {

// Reads the numbers out of a date or time text, from left to right.
class MomentReader {
public:
    explicit MomentReader(std::string_view text) : mRest(text) {}

    // The next run of digits, up to and with the one byte that follows it; 0 when there is none.
    // Numbers beyond the 32-bit range saturate.
    int32_t Next()
    {
        size_t size = 0;
        while (size < mRest.size() && mRest[size] >= '0' && mRest[size] <= '9')
            size++;
        const int32_t number = TextToInteger(mRest.substr(0, size));
        mRest.remove_prefix(size < mRest.size() ? size + 1 : size);
        return number;
    }

private:
    std::string_view mRest;
};

// "YYYY-MM-DD", "HH:MM:SS", or both with a blank between, as numbers.
MOXAmoment MomentFromText(std::string_view text, VelaDataType type)
{
    MOXAmoment moment = {};
    MomentReader reader(text);
    if (type != kTypeTime) {
        moment.year = reader.Next();
        moment.month = reader.Next();
        moment.day = reader.Next();
    }
    if (type != kTypeDate) {
        moment.hour = reader.Next();
        moment.minute = reader.Next();
        moment.second = reader.Next();
    }
    return moment;
}

void AppendPadded(int32_t number, size_t digits, string* text)
{
    const string decimal = IntegerText(number > 0 ? number : 0);
    for (size_t i = decimal.length(); i < digits; i++)
        *text += '0';
    *text += decimal;
}

// The canonical text of a date, a time or both.
string TextFromMoment(const MOXAmoment& moment, int32_t type)
{
    constexpr size_t kYearDigits = 4;
    constexpr size_t kPartDigits = 2;
    string text;
    if (type != kTypeTime) {
        AppendPadded(moment.year, kYearDigits, &text);
        text += '-';
        AppendPadded(moment.month, kPartDigits, &text);
        text += '-';
        AppendPadded(moment.day, kPartDigits, &text);
    }
    if (type == kTypeTimestamp)
        text += ' ';
    if (type != kTypeDate) {
        AppendPadded(moment.hour, kPartDigits, &text);
        text += ':';
        AppendPadded(moment.minute, kPartDigits, &text);
        text += ':';
        AppendPadded(moment.second, kPartDigits, &text);
    }
    return text;
}

// A text of a stored column is told with the column's type: a Binary column gives Strings. A column
// whose declared type is no type at all is told as it is, and refused.
VelaDataType TypeToTell(const dbCursor& cursor, int32_t column, const VelaValue& value)
{
    if (cursor.SourceOf(column).isComputed)
        return value.GetType();
    const VelaDataType declared = cursor.ColumnType(column);
    const bool areTexts = IsTextBacked(declared) && IsTextBacked(value.GetType());
    return areTexts || !IsDataType(declared) ? declared : value.GetType();
}

bool SetText(const string& text, MOXAdbValue* value)
{
    value->value.text = TextToHost(text);
    return value->value.text != nullptr;
}

bool Convert(const VelaValue& value, VelaDataType type, MOXAdbValue* result)
{
    switch (type) {
        case kTypeInteger:
        case kTypeBoolean:
            result->value.integer = value.GetInteger();
            return true;
        case kTypeDouble:
            result->value.number = value.GetDouble();
            return true;
        case kTypeString:
        case kTypeBinary:
            return SetText(value.StoredText(), result);
        default:
            result->value.moment = MomentFromText(value.TextView(), type);
            return true;
    }
}

bool IsHandled(VelaDataType type)
{
    return type != kTypeNone && IsDataType(type);
}

}   // namespace

bool GetColumnValue(const dbCursor& cursor, int32_t column, MOXAdbValue* value)
{
    VelaValue stored;
    if (!cursor.GetValue(column, &stored))
        return false;
    MOXAdbValue result = {};
    const VelaDataType type =
        stored.IsNull() ? cursor.ColumnType(column) : TypeToTell(cursor, column, stored);
    result.type = type;
    result.isNull = stored.IsNull() ? 1 : 0;
    if (!stored.IsNull() && !IsHandled(type))
        return Fail(cursor.Status(), kVEInternalSQLError,
                    "VelaCursorColumnValue: Not yet able to handle fieldType " + IntegerText(type));
    if (!stored.IsNull() && !Convert(stored, type, &result))
        return false;
    *value = result;
    return true;
}

bool ValueFromHost(const MOXAdbValue& value, VelaValue* result)
{
    if (value.isNull || value.type == kMOXATypeNone) {
        result->SetNull(kTypeNone);
        return true;
    }
    switch (value.type) {
        case kMOXATypeInteger:
            result->SetInteger(value.value.integer);
            return true;
        case kMOXATypeBoolean:
            result->SetBoolean(value.value.integer != 0);
            return true;
        case kMOXATypeDouble:
            result->SetDouble(value.value.number);
            return true;
        case kMOXATypeText:
        case kMOXATypeBinary:
            result->SetString(TextFromHost(value.value.text));
            return true;
        case kMOXATypeDate:
        case kMOXATypeTime:
        case kMOXATypeTimestamp:
            result->SetString(TextFromMoment(value.value.moment, value.type));
            return true;
        default:
            return false;
    }
}

}   // namespace vela
