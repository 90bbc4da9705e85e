#include "tests/storage/StorageTesting.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>

#include "engine/storage/RecordFormat.h"
#include "runtime/ByteOrder.h"

namespace vela {

std::string FromHex(std::string_view hex)
{
    std::string digits;
    for (char c : hex)
        if (!std::isspace(static_cast<unsigned char>(c)))
            digits += c;
    std::string bytes;
    for (size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    return bytes;
}

std::string ToHex(std::string_view bytes)
{
    std::string text;
    char digits[4];
    for (char c : bytes) {
        std::snprintf(digits, sizeof digits, "%02X ", static_cast<unsigned char>(c));
        text += digits;
    }
    return text;
}

std::string Zeros(size_t count)
{
    return std::string(count, '\0');
}

ByteDamage SetByte(size_t place, int byte)
{
    return [=](std::string* bytes) { bytes->at(place) = static_cast<char>(byte); };
}

ByteDamage SetNumber(size_t place, uint32_t number)
{
    return [=](std::string* bytes) { StoreBigEndian32(&bytes->at(place), number); };
}

ByteDamage CutTo(size_t size)
{
    return [=](std::string* bytes) { bytes->resize(size); };
}

std::string ValueText(const VelaValue& value)
{
    const char* name = DataTypeName(value.GetType());
    const std::string type = name != nullptr ? name : "?";
    if (value.IsNull())
        return "NULL " + type;
    const std::string text(value.GetSaveString().View());
    if (value.GetType() != kTypeString)
        return type + " " + text;
    char tag[16];
    std::snprintf(tag, sizeof tag, "[%x] ", static_cast<unsigned>(value.TextEncodingTag()));
    return type + tag + text;
}

std::string RowText(const VelaRow& row)
{
    std::string text;
    for (const VelaValueWithID* value : row)
        text += (text.empty() ? "" : ", ") + std::to_string(value->ColumnID()) + "=" +
                ValueText(*value);
    return text;
}

TestRow::TestRow(std::initializer_list<std::pair<uint32_t, VelaValue>> values)
    : TestRow(std::vector<std::pair<uint32_t, VelaValue>>(values))
{}

TestRow::TestRow(const std::vector<std::pair<uint32_t, VelaValue>>& values)
{
    for (const auto& [columnID, value] : values)
        Add(columnID, value);
}

TestRow::~TestRow()
{
    DeleteValues(&mValues);
}

void TestRow::Add(uint32_t columnID, const VelaValue& value)
{
    mValues.push_back(new VelaValueWithID(value, columnID));
}

VelaValue Int(int32_t number)
{
    return VelaValue::Integer(number);
}

VelaValue Str(std::string_view text)
{
    return VelaValue::String(string(text, kEncodingASCII));
}

std::vector<uint32_t> RowIDsOf(VelaTable* table)
{
    SimpleVector<uint32_t> rowIDs;
    table->GetRowIDs(&rowIDs);
    return {rowIDs.begin(), rowIDs.end()};
}

std::string ReadText(VelaTable* table, uint32_t rowID, long number)
{
    VelaValue value;
    return table->GetValue(rowID, number, &value) ? ValueText(value) : "none";
}

std::vector<std::string> TableText(VelaTable* table)
{
    std::vector<std::string> rows;
    for (uint32_t rowID : RowIDsOf(table)) {
        std::string text = std::to_string(rowID) + ":";
        for (long number = 1; number < table->QtyColumns(); number++)
            text += (number > 1 ? ", " : " ") + ReadText(table, rowID, number);
        rows.push_back(text);
    }
    return rows;
}

CapturedErrors::CapturedErrors()
{
    std::fflush(stderr);
    testing::internal::CaptureStderr();
}

CapturedErrors::~CapturedErrors()
{
    if (!mTaken)
        testing::internal::GetCapturedStderr();
}

std::string CapturedErrors::Text()
{
    mTaken = true;
    return testing::internal::GetCapturedStderr();
}

}   // namespace vela
