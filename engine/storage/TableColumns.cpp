#include "engine/storage/TableColumns.h"

#include <algorithm>
#include <array>

namespace vela {

namespace {

constexpr size_t kFewBytes = size_t{1} << 16;

// Calls use(i, fetch(i)) for i from 0 to count - 1, in batches: what fetch reads may lie anywhere in memory, and the waits
// for it overlap.
template <class Fetch, class Use>
void FetchAhead(size_t count, const Fetch& fetch, const Use& use)
{
    constexpr size_t kBatch = 32;
    std::array<decltype(fetch(0)), kBatch> fetched;
    for (size_t start = 0; start < count; start += kBatch) {
        const size_t end = std::min(count, start + kBatch);
        for (size_t i = start; i < end; i++)
            fetched[i - start] = fetch(i);
        for (size_t i = start; i < end; i++)
            use(i, fetched[i - start]);
    }
}

}   // namespace

void ColumnData::Start(VelaDataType columnType)
{
    *this = ColumnData();
    type = columnType;
    if (columnType == kTypeInteger || columnType == kTypeBoolean)
        form = Form::kIntegers;
    else if (columnType == kTypeDouble)
        form = Form::kDoubles;
    else if (IsTextBacked(columnType) && columnType != kTypeBinary)
        form = Form::kTexts;
    else
        form = Form::kValues;
}

void ColumnData::Reserve(size_t rows)
{
    if (form == Form::kIntegers)
        integers.reserve(rows);
    if (form == Form::kDoubles)
        doubles.reserve(rows);
    if (form != Form::kTexts)
        return;
    textStarts.reserve(rows);
    textLengths.reserve(rows);
}

size_t ColumnData::Count() const
{
    switch (form) {
        case Form::kIntegers:
            return integers.size();
        case Form::kDoubles:
            return doubles.size();
        case Form::kTexts:
            return textStarts.size();
        case Form::kValues:
            return values.size();
        case Form::kUnloaded:
            break;
    }
    return 0;
}

size_t ColumnData::MemoryUse() const
{
    return integers.capacity() * sizeof(int32_t) + doubles.capacity() * sizeof(double) +
           (textStarts.capacity() + textLengths.capacity()) * sizeof(uint32_t) + texts.capacity() +
           encodingNumber.capacity() + nulls.capacity() / 8 +
           values.capacity() * (sizeof(VelaValue) + sizeof(StringStorage)) + valueTextBytes;
}

bool ColumnData::Holds(const VelaValue& value) const
{
    return value.GetType() == type;
}

void ColumnData::SetNull(uint32_t row, bool null)
{
    if (nulls.empty() && !null)
        return;
    if (nulls.size() <= row)
        nulls.resize(row + 1, false);
    nulls[row] = null;
}

bool ColumnData::Append(const VelaValue& value)
{
    if (form != Form::kValues && !Holds(value))
        TurnIntoValues();
    const uint32_t row = static_cast<uint32_t>(Count());
    switch (form) {
        case Form::kIntegers:
            integers.push_back(value.GetInteger());
            break;
        case Form::kDoubles:
            doubles.push_back(value.GetDouble());
            break;
        case Form::kTexts:
            if (!AppendText(value.TextView(), value.TextEncodingTag()))
                return false;
            break;
        default:
            valueTextBytes += value.TextView().size();
            values.push_back(value);
            return true;
    }
    if (form != Form::kValues)
        SetNull(row, value.IsNull());
    return true;
}

bool ColumnData::AppendText(std::string_view text, TextEncoding encoding)
{
    if (encodings.size() == 1 && encodings[0] == encoding &&
        texts.size() + text.size() <= UINT32_MAX) {
        textStarts.push_back(static_cast<uint32_t>(texts.size()));
        textLengths.push_back(static_cast<uint32_t>(text.size()));
        texts.insert(texts.end(), text.begin(), text.end());
        return true;
    }
    const uint32_t row = static_cast<uint32_t>(textStarts.size());
    textStarts.push_back(static_cast<uint32_t>(texts.size()));
    textLengths.push_back(0);
    if (!encodingNumber.empty())
        encodingNumber.push_back(0);
    return StoreText(text, encoding, row);
}

bool ColumnData::StoreText(std::string_view text, TextEncoding encoding, uint32_t row)
{
    const auto found = std::find(encodings.begin(), encodings.end(), encoding);
    const size_t number = static_cast<size_t>(found - encodings.begin());
    if (found == encodings.end())
        encodings.push_back(encoding);
    if (number > UINT8_MAX || texts.size() + text.size() > UINT32_MAX)
        return false;
    if (number != 0 && encodingNumber.empty())
        encodingNumber.resize(textStarts.size(), 0);
    if (!encodingNumber.empty())
        encodingNumber[row] = static_cast<uint8_t>(number);
    gapBytes += textLengths[row];
    if (text.size() <= textLengths[row]) {
        std::copy(text.begin(), text.end(), texts.begin() + textStarts[row]);
        gapBytes -= text.size();
    } else {
        textStarts[row] = static_cast<uint32_t>(texts.size());
        texts.insert(texts.end(), text.begin(), text.end());
    }
    textLengths[row] = static_cast<uint32_t>(text.size());
    return true;
}

// Gaps don't take more than half of the memory for long, however often texts are replaced.
void ColumnData::CloseLargeGaps()
{
    if (gapBytes < kFewBytes || gapBytes < texts.size() / 2)
        return;
    LargeVector<char> kept;
    kept.reserve(texts.size() - gapBytes);
    for (size_t row = 0; row < textStarts.size(); row++) {
        const auto start = texts.begin() + textStarts[row];
        textStarts[row] = static_cast<uint32_t>(kept.size());
        kept.insert(kept.end(), start, start + textLengths[row]);
    }
    texts = std::move(kept);
    gapBytes = 0;
    textsInOrder = true;
}

bool ColumnData::Set(uint32_t row, const VelaValue& value)
{
    if (form != Form::kValues && !Holds(value))
        TurnIntoValues();
    switch (form) {
        case Form::kIntegers:
            integers[row] = value.GetInteger();
            break;
        case Form::kDoubles:
            doubles[row] = value.GetDouble();
            break;
        case Form::kTexts:
            textsInOrder = textsInOrder && value.TextView().size() == textLengths[row];
            if (!StoreText(value.TextView(), value.TextEncodingTag(), row))
                return false;
            CloseLargeGaps();
            break;
        default:
            valueTextBytes += value.TextView().size();
            values[row] = value;
            return true;
    }
    SetNull(row, value.IsNull());
    return true;
}

void ColumnData::TurnIntoValues()
{
    std::vector<VelaValue> made(Count());
    for (uint32_t row = 0; row < made.size(); row++)
        GetValue(row, &made[row]);
    const size_t textBytes = texts.size();
    *this = ColumnData();
    form = Form::kValues;
    values = std::move(made);
    valueTextBytes = textBytes;
}

void ColumnData::RemoveRows(const RemovedRows& rows)
{
    if (!nulls.empty())
        nulls.resize(Count(), false);
    if (form == Form::kTexts)
        rows.ForEach([this](size_t row) { gapBytes += textLengths[row]; });
    textsInOrder = false;
    rows.RemoveFrom(&integers);
    rows.RemoveFrom(&doubles);
    rows.RemoveFrom(&textStarts);
    rows.RemoveFrom(&textLengths);
    rows.RemoveFrom(&encodingNumber);
    rows.RemoveFrom(&values);
    rows.RemoveFrom(&nulls);
    CloseLargeGaps();
}

void ColumnData::GetValue(uint32_t row, VelaValue* value) const
{
    GetValue(row, value,
             [](std::string_view text, TextEncoding encoding) { return string(text, encoding); });
}

void ColumnData::GetValues(const uint32_t* rows, size_t rowStep, size_t count, StringArena* arena,
                           VelaValue* target, size_t targetStep) const
{
    const bool isPlain = nulls.empty() && type != kTypeBoolean;
    if (isPlain && form == Form::kIntegers)
        FetchAhead(
            count, [&](size_t i) { return integers[rows[i * rowStep]]; },
            [&](size_t i, int32_t number) { target[i * targetStep].SetInteger(number); });
    else if (isPlain && form == Form::kDoubles)
        FetchAhead(
            count, [&](size_t i) { return doubles[rows[i * rowStep]]; },
            [&](size_t i, double number) { target[i * targetStep].SetDouble(number); });
    else if (isPlain && form == Form::kTexts)
        FetchAhead(
            count, [&](size_t i) { return TextAhead(rows[i * rowStep]); },
            [&](size_t i, std::string_view text) {
                const TextEncoding encoding = EncodingOf(rows[i * rowStep]);
                target[i * targetStep].SetText(type, arena->Make(text, encoding));
            });
    else
        for (size_t i = 0; i < count; i++)
            GetValue(rows[i * rowStep], &target[i * targetStep],
                     [arena](std::string_view text, TextEncoding encoding) {
                         return arena->Make(text, encoding);
                     });
}

// The text, whose bytes will be needed soon.
std::string_view ColumnData::TextAhead(uint32_t row) const
{
    const std::string_view text = Text(row);
    __builtin_prefetch(text.data());
    return text;
}

template <class MakeText>
void ColumnData::GetValue(uint32_t row, VelaValue* value, const MakeText& makeText) const
{
    if (form == Form::kValues) {
        *value = values[row];
        return;
    }
    if (row < nulls.size() && nulls[row]) {
        value->SetNull(type);
        return;
    }
    if (form == Form::kDoubles)
        value->SetDouble(doubles[row]);
    else if (form == Form::kTexts)
        value->SetText(type, makeText(Text(row), EncodingOf(row)));
    else if (type == kTypeBoolean)
        value->SetBoolean(integers[row] != 0);
    else
        value->SetInteger(integers[row]);
}

}   // namespace vela
