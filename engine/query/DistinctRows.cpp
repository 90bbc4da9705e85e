#include "engine/query/DistinctRows.h"

#include <algorithm>
#include <cmath>

namespace vela {

namespace {

constexpr uint64_t kNullHash = 1;
// Half a megabyte of flags at most.
constexpr size_t kNumbersKept = size_t{1} << 22;
constexpr size_t kFewNumbers = 1024;

uint64_t HashOf(const VelaValue& value)
{
    if (value.IsNull())
        return kNullHash;
    if (IsTextBacked(value.GetType()))
        return HashBytes(value.TextView());
    if (value.GetType() != kTypeDouble)
        return static_cast<uint32_t>(value.GetInteger());
    const double number = value.GetDouble() + 0.0;   // -0.0 equals 0.0
    uint64_t bits;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

// A date's stored text would have to begin like a display form ("DATE ...") to equal another date.
// No stored date does; one made by hand might.
bool BeginsWithLetter(std::string_view text)
{
    return !text.empty() && text[0] >= 'A' && text[0] <= 'Z';
}

}   // namespace

DistinctRows::DistinctRows(const VelaTempTable& table)
    : mTable(table),
      mWidth(static_cast<size_t>(table.QtyColumns())),
      mClasses(mWidth, ValueClass::kUnknown)
{}

bool DistinctRows::IsNew()
{
    const VelaValue* row = mTable.RowValues(mTable.RowCount() - 1);
    if (mIsHashed && !FitsClasses(row)) {
        mIsHashed = false;
        mRows = HashChains();
    }
    if (!mIsHashed)
        return !FindByComparing(row);
    if (!CanEqual(row)) {
        mRows.AddUnfindable();
        return true;
    }
    const uint64_t hash = Hash(row);
    if (FindByHash(row, hash))
        return false;
    mRows.Add(hash);
    return true;
}

bool DistinctRows::HasCome(int32_t number)
{
    const size_t place = static_cast<uint32_t>(number);
    if (place >= kNumbersKept)
        return false;
    if (place >= mHasCome.size())
        mHasCome.resize(std::min(kNumbersKept, 2 * place + kFewNumbers));
    const bool hasCome = mHasCome[place];
    mHasCome[place] = true;
    return hasCome;
}

DistinctRows::ValueClass DistinctRows::ClassOf(const VelaValue& value)
{
    switch (value.GetType()) {
        case kTypeInteger:
        case kTypeBoolean:
            return ValueClass::kIntegers;
        case kTypeDouble:
            return ValueClass::kDoubles;
        case kTypeString:
        case kTypeBinary:
            return ValueClass::kTexts;
        case kTypeDate:
            return ValueClass::kDates;
        case kTypeTime:
            return ValueClass::kTimes;
        case kTypeTimestamp:
            return ValueClass::kTimestamps;
        default:
            return ValueClass::kOther;
    }
}

bool DistinctRows::FitsClasses(const VelaValue* row)
{
    for (size_t i = 0; i < mWidth; i++) {
        if (row[i].IsNull())
            continue;
        const ValueClass valueClass = ClassOf(row[i]);
        if (mClasses[i] == ValueClass::kUnknown)
            mClasses[i] = valueClass;
        if (mClasses[i] != valueClass || valueClass == ValueClass::kOther)
            return false;
        if (valueClass >= ValueClass::kDates && BeginsWithLetter(row[i].TextView()))
            return false;
    }
    return true;
}

// Whether any row of the same classes could equal this one, or this one a later one.
bool DistinctRows::CanEqual(const VelaValue* row) const
{
    for (size_t i = 0; i < mWidth; i++) {
        if (row[i].IsNull())
            continue;
        if (mClasses[i] >= ValueClass::kDates)
            return false;
        if (mClasses[i] == ValueClass::kDoubles && std::isnan(row[i].GetDouble()))
            return false;
    }
    return true;
}

uint64_t DistinctRows::Hash(const VelaValue* row) const
{
    uint64_t hash = 0;
    for (size_t i = 0; i < mWidth; i++)
        hash = CombineHash(hash, HashOf(row[i]));
    return hash;
}

bool DistinctRows::FindByHash(const VelaValue* row, uint64_t hash) const
{
    for (uint32_t entry = mRows.First(hash); entry != HashChains::kNone;
         entry = mRows.Next(entry)) {
        if (RowsEqual(row, entry))
            return true;
    }
    return false;
}

bool DistinctRows::FindByComparing(const VelaValue* row) const
{
    for (size_t earlier = mTable.RowCount() - 1; earlier > 0; earlier--) {
        if (RowsEqual(row, earlier - 1))
            return true;
    }
    return false;
}

bool DistinctRows::RowsEqual(const VelaValue* row, size_t earlier) const
{
    const VelaValue* other = mTable.RowValues(earlier);
    for (size_t i = 0; i < mWidth; i++) {
        if (!row[i].Equals(other[i]))
            return false;
    }
    return true;
}

}   // namespace vela
