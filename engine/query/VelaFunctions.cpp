#include "engine/query/VelaFunctions.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "engine/storage/VelaDatabase.h"
#include "runtime/CaseMapping.h"

namespace vela {

namespace {

// By code.
constexpr std::string_view kNames[] = {
    "BIT_LENGTH",   "OCTET_LENGTH", "CHAR_LENGTH",
    "CURRENT_DATE", "CURRENT_TIME", "CURRENT_TIMESTAMP",
    "LOWER",        "UPPER",        "POSITION",
    "SUBSTRING",    "TRIM",         "LAST_ROWID",
    "AVG",          "COUNT",        "MAX",
    "MIN",          "SUM",
};
constexpr int kFunctionCount = sizeof kNames / sizeof *kNames;
static_assert(kFunctionCount == kFuncSum + 1, "every function has a name");

constexpr std::string_view kOtherNameOfCharLength = "CHARACTER_LENGTH";

// Most names differ in length or first letter.
bool IsName(std::string_view word, std::string_view name)
{
    return word.size() == name.size() && ToUpperASCII(word[0]) == name[0] &&
           EqualsIgnoringCase(word, name);
}

constexpr uint32_t LetterBit(char upper)
{
    return upper >= 'A' && upper <= 'Z' ? uint32_t{1} << (upper - 'A') : 0;
}

constexpr uint32_t FirstLetters()
{
    uint32_t letters = 0;
    for (const std::string_view name : kNames)
        letters |= LetterBit(name[0]);
    return letters;
}

// Most words of a statement are no functions, and many can be told by their first letter.
bool MayBeginName(std::string_view word)
{
    constexpr uint32_t kFirstLetters = FirstLetters();
    return !word.empty() && (kFirstLetters & LetterBit(ToUpperASCII(word[0]))) != 0;
}

// An Integer; a number that doesn't fit one becomes the largest.
VelaValue LengthValue(uint64_t length)
{
    constexpr uint64_t kLargest = std::numeric_limits<int32_t>::max();
    return VelaValue::Integer(static_cast<int32_t>(length < kLargest ? length : kLargest));
}

bool IsGiven(const VelaValue* argument)
{
    return argument && !argument->IsNull();
}

uint64_t NotNegative(int64_t number)
{
    return number > 0 ? static_cast<uint64_t>(number) : 0;
}

// ---- characters

bool IsContinuationByte(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

size_t CountLeadBytes(std::string_view text)
{
    size_t count = 0;
    for (const char byte : text)
        count += !IsContinuationByte(byte);
    return count;
}

// The byte position after count characters of UTF-8 text from position on. A character is one byte
// and the continuation bytes after it, however many: malformed text is walked through, too.
size_t SkipCharacters(std::string_view text, size_t position, uint64_t count)
{
    for (; count > 0 && position < text.size(); count--) {
        position++;
        while (position < text.size() && IsContinuationByte(text[position]))
            position++;
    }
    return position;
}

// ---- lengths

// How long what a value consists of is, counted in units of which so many make a byte. NULL for
// types that have no such length.
VelaValue StorageLength(const VelaValue& value, uint64_t unitsPerByte)
{
    if (value.IsNull())
        return VelaValue();
    if (value.GetType() == kTypeInteger)
        return LengthValue(sizeof(int32_t) * unitsPerByte);
    if (value.GetType() == kTypeString)
        return LengthValue(value.TextView().size() * unitsPerByte);
    return VelaValue();
}

VelaValue CharLength(const VelaValue& value)
{
    const string text = value.GetString();
    return LengthValue(text.Encoding() == kEncodingUTF8 ? CountLeadBytes(text.View())
                                                        : text.length());
}

// ---- position and substring

// The byte offset of sought in text; npos when it isn't there. Neither is empty.
size_t FindBytes(std::string_view text, std::string_view sought)
{
    const void* hit = memmem(text.data(), text.size(), sought.data(), sought.size());
    return hit ? static_cast<size_t>(static_cast<const char*>(hit) - text.data())
               : std::string_view::npos;
}

VelaValue Position(const VelaValue& searchedValue, const VelaValue& soughtValue)
{
    const string searched = searchedValue.GetString();
    const string sought = ConvertEncoding(soughtValue.GetString(), searched.Encoding());
    if (sought.empty())
        return VelaValue::Integer(1);
    const size_t offset =
        searched.empty() ? std::string_view::npos : FindBytes(searched.View(), sought.View());
    if (offset == std::string_view::npos)
        return VelaValue::Integer(0);
    switch (searched.Encoding()) {
        case kEncodingUTF16:
            return LengthValue((offset + 1) / 2);   // the 1-based byte position, halved
        case kEncodingUTF8:
            // Characters up to the one at offset; the first byte starts one even when malformed.
            return LengthValue(1 + CountLeadBytes(searched.View().substr(1, offset)));
        default:
            return LengthValue(offset + 1);
    }
}

// The characters of text from one, after skipped others, on; taken of them or what is there.
std::string_view TakeCharacters(const string& text, uint64_t skipped, uint64_t taken)
{
    const std::string_view bytes = text.View();
    if (text.Encoding() == kEncodingUTF8) {
        const size_t from = SkipCharacters(bytes, 0, skipped);
        return bytes.substr(from, SkipCharacters(bytes, from, taken) - from);
    }
    const uint64_t unit = text.Encoding() == kEncodingUTF16 ? 2 : 1;
    const uint64_t from = std::min<uint64_t>(skipped * unit, bytes.size());
    const uint64_t size = std::min<uint64_t>(taken * unit, bytes.size() - from);
    return bytes.substr(static_cast<size_t>(from), static_cast<size_t>(size));
}

VelaValue Substring(const VelaValue& value, const VelaValue& start, const VelaValue* length)
{
    const string text = value.GetString();
    const uint64_t skipped = NotNegative(int64_t{start.GetInteger()} - 1);
    const uint64_t taken = IsGiven(length) ? NotNegative(length->GetInteger()) : text.length();
    return VelaValue::String(string(TakeCharacters(text, skipped, taken), text.Encoding()));
}

// ---- trim

// The bytes to trim off a text of that encoding.
string TrimString(const VelaValue* trimmed, TextEncoding encoding)
{
    if (!IsGiven(trimmed) && encoding != kEncodingUTF16)
        return " ";
    return ConvertEncoding(IsGiven(trimmed) ? trimmed->GetString() : " ", encoding);
}

std::string_view TrimLeading(std::string_view text, std::string_view trimmed)
{
    while (!text.empty() && text.substr(0, trimmed.size()) == trimmed)
        text.remove_prefix(trimmed.size());
    return text;
}

// Never takes what stands at the very start: a text of nothing but trimmed keeps one.
std::string_view TrimTrailing(std::string_view text, std::string_view trimmed)
{
    while (text.size() > trimmed.size() && text.substr(text.size() - trimmed.size()) == trimmed)
        text.remove_suffix(trimmed.size());
    return text;
}

VelaValue Trim(const VelaValue& value, const VelaValue* trimmedValue, const VelaValue* side)
{
    const string text = value.GetString();
    const string trimmed = TrimString(trimmedValue, text.Encoding());
    if (text.empty() || trimmed.empty())
        return VelaValue::String(text);
    const string word = IsGiven(side) ? side->GetString() : string();
    std::string_view rest = text.View();
    if (!word.EqualsIgnoringCase("TRAILING"))
        rest = TrimLeading(rest, trimmed.View());
    if (!word.EqualsIgnoringCase("LEADING"))
        rest = TrimTrailing(rest, trimmed.View());
    return VelaValue::String(string(rest, text.Encoding()));
}

// ---- the database

VelaValue LastRowID(VelaDatabase& database, const VelaValue& tableName)
{
    uint32_t rowID = 0;
    if (!database.LastRowID(tableName.GetString(), &rowID))
        return VelaValue();
    return VelaValue::Integer(static_cast<int32_t>(rowID));
}

bool EvalWithDatabase(VelaFuncCode code, VelaDatabase& database, const VelaValue* arg1,
                      VelaValue* result)
{
    switch (code) {
        case kFuncCurrentDate:
            result->SetString(database.CurrentDate());
            return true;
        case kFuncCurrentTime:
            result->SetString(database.CurrentTime());
            return true;
        case kFuncCurrentTimestamp:
            result->SetString(database.CurrentTimestamp());
            return true;
        default:
            if (!arg1)
                return false;
            *result = LastRowID(database, *arg1);
            return true;
    }
}

bool EvalOfText(VelaFuncCode code, const VelaValue& arg1, const VelaValue* arg2,
                const VelaValue* arg3, VelaValue* result)
{
    switch (code) {
        case kFuncBitLength:
            *result = StorageLength(arg1, 8);
            return true;
        case kFuncByteLength:
            *result = StorageLength(arg1, 1);
            return true;
        case kFuncCharLength:
            *result = CharLength(arg1);
            return true;
        case kFuncLowercase:
            result->SetString(arg1.GetString().Lowercase());
            return true;
        case kFuncUppercase:
            result->SetString(arg1.GetString().Uppercase());
            return true;
        case kFuncTrim:
            *result = Trim(arg1, arg2, arg3);
            return true;
        default:
            if (!arg2)
                return false;
            *result = code == kFuncPosition ? Position(arg1, *arg2) : Substring(arg1, *arg2, arg3);
            return true;
    }
}

}   // namespace

string VelaFuncName(VelaFuncCode code)
{
    return string(kNames[code], kEncodingASCII);
}

bool GetVelaFuncCode(string* name, VelaFuncCode* code)
{
    if (name->EqualsIgnoringCase(kOtherNameOfCharLength))
        *name = "CHAR_LENGTH";
    VelaFuncCode found;
    if (!FindVelaFunc(name->View(), &found))
        return false;
    if (code)
        *code = found;
    return true;
}

bool FindVelaFunc(std::string_view name, VelaFuncCode* code)
{
    if (!MayBeginName(name))
        return false;
    for (int i = 0; i < kFunctionCount; i++) {
        if (!IsName(name, kNames[i]))
            continue;
        *code = static_cast<VelaFuncCode>(i);
        return true;
    }
    if (!IsName(name, kOtherNameOfCharLength))
        return false;
    *code = kFuncCharLength;
    return true;
}

VelaDataType VelaFuncResultType(VelaFuncCode code)
{
    switch (code) {
        case kFuncCurrentDate:
        case kFuncCurrentTime:
        case kFuncCurrentTimestamp:
        case kFuncLowercase:
        case kFuncUppercase:
        case kFuncSubstring:
        case kFuncTrim:
            return kTypeString;
        default:
            return kTypeInteger;
    }
}

bool VelaFuncEval(VelaFuncCode code, VelaDatabase* database, const VelaValue* arg1,
                  const VelaValue* arg2, const VelaValue* arg3, VelaValue* result)
{
    switch (code) {
        case kFuncCurrentDate:
        case kFuncCurrentTime:
        case kFuncCurrentTimestamp:
        case kFuncLastRowID:
            return database && EvalWithDatabase(code, *database, arg1, result);
        case kFuncAvg:
        case kFuncCount:
        case kFuncMax:
        case kFuncMin:
        case kFuncSum:
            return false;
        default:
            return arg1 && EvalOfText(code, *arg1, arg2, arg3, result);
    }
}

}   // namespace vela
