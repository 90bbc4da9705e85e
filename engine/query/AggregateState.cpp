#include "engine/query/AggregateState.h"

#include <limits>
#include <type_traits>

#include "engine/query/StringForm.h"

namespace vela {

namespace {

bool IsNumber(const VelaValue& value)
{
    return value.GetType() == kTypeInteger || value.GetType() == kTypeDouble ||
           value.GetType() == kTypeBoolean;
}

// Two numbers compare as such, exactly: every Integer is a double. All else compares as texts.
bool IsLess(const VelaValue& a, const VelaValue& b)
{
    if (IsNumber(a) && IsNumber(b))
        return a.GetDouble() < b.GetDouble();
    return string::CompareBytes(StringForm(a).View(), StringForm(b).View()) < 0;
}

// Calls take(row) for the rows of the group whose value is not null. False: a row is not in the column.
template <class TakeRow>
bool ForEachRow(const ColumnData& column, const VelaRecSetGroup& group, size_t table,
                const TakeRow& take)
{
    const size_t rows = column.Count();
    const bool anyNulls = !column.nulls.empty();
    for (size_t i = 0; i < group.Count(); i++) {
        const uint32_t row = group.RowID(i, table);
        if (row >= rows)
            return false;
        if (!anyNulls || !column.IsNull(row))
            take(row);
    }
    return true;
}

VelaValue IntegerOrDouble(int64_t number)
{
    const int32_t narrow = static_cast<int32_t>(number);
    return narrow == number ? VelaValue::Integer(narrow)
                            : VelaValue::Double(static_cast<double>(number));
}

}   // namespace

AggregateState::AggregateState(VelaFuncCode func, bool distinct) : mFunc(func)
{
    if (distinct && func != kFuncMin && func != kFuncMax)
        mSeen = std::make_unique<DistinctValues>();
}

AggregateState AggregateState::OfIntegers(VelaFuncCode func, uint64_t count, int64_t sum)
{
    AggregateState state(func, false);
    state.mCount = count;
    state.mIntegers = sum;
    return state;
}

AggregateState AggregateState::OfDoubles(VelaFuncCode func, uint64_t count, double sum)
{
    AggregateState state(func, false);
    state.mCount = count;
    state.mDoubles = sum;
    state.mAreDoubles = count != 0;
    return state;
}

void AggregateState::Take(const VelaValue& value)
{
    if (value.IsNull() || (mSeen && !mSeen->Take(value)))
        return;
    mCount++;
    if (mFunc == kFuncSum || mFunc == kFuncAvg)
        Add(value);
    else if (mFunc != kFuncCount)
        KeepIfBeyond(value);
}

bool AggregateState::TakeColumn(const ColumnData& column, const VelaRecSetGroup& group,
                                size_t table)
{
    if (mSeen || mCount != 0)
        return false;
    if (mFunc == kFuncCount) {
        uint64_t count = 0;
        if (!ForEachRow(column, group, table, [&count](uint32_t) { count++; }))
            return false;
        mCount = count;
        return true;
    }
    switch (column.form) {
        case ColumnData::Form::kIntegers:
            return TakeNumbers(column, column.integers, group, table);
        case ColumnData::Form::kDoubles:
            return TakeNumbers(column, column.doubles, group, table);
        default:
            return false;
    }
}

// A group has fewer than 2^32 rows, so their Integers add up in 64 bits; Doubles are added one after another, as ever.
template <class Number>
bool AggregateState::TakeNumbers(const ColumnData& column, const LargeVector<Number>& numbers,
                                 const VelaRecSetGroup& group, size_t table)
{
    constexpr bool kAreDoubles = std::is_same_v<Number, double>;
    uint64_t count = 0;
    std::conditional_t<kAreDoubles, double, int64_t> sum = 0;
    uint32_t extreme = 0;   // the row of the first smallest or largest number
    const auto add = [&](uint32_t row) {
        sum += numbers[row];
        count++;
    };
    const auto compare = [&](uint32_t row) {
        const bool isBeyond = count == 0 || (mFunc == kFuncMin ? numbers[row] < numbers[extreme]
                                                               : numbers[extreme] < numbers[row]);
        extreme = isBeyond ? row : extreme;
        count++;
    };
    const bool adds = mFunc == kFuncSum || mFunc == kFuncAvg;
    if (!(adds ? ForEachRow(column, group, table, add) : ForEachRow(column, group, table, compare)))
        return false;
    mCount = count;
    if (!adds && count != 0)
        column.GetValue(extreme, &mExtreme);
    if constexpr (kAreDoubles) {
        mDoubles = sum;
        mAreDoubles = count != 0;
    } else {
        mIntegers = sum;
    }
    return true;
}

VelaValue AggregateState::Result() const
{
    if (mFunc == kFuncCount)
        return CountValue(mCount);
    if (mCount == 0)
        return VelaValue::Null(kTypeInteger);
    switch (mFunc) {
        case kFuncSum:
            return Sum();
        case kFuncAvg:
            return VelaValue::Double(Sum().GetDouble() / static_cast<double>(mCount));
        default:
            return mExtreme;
    }
}

void AggregateState::Add(const VelaValue& value)
{
    if (value.GetType() != kTypeDouble && value.GetType() != kTypeString) {
        AddInteger(value.GetInteger());
        return;
    }
    mAreDoubles = true;
    mDoubles += value.GetDouble();
}

// What 64 bits can't hold goes on among the doubles.
void AggregateState::AddInteger(int32_t number)
{
    int64_t sum = 0;
    if (!__builtin_add_overflow(mIntegers, number, &sum)) {
        mIntegers = sum;
        return;
    }
    mAreDoubles = true;
    mDoubles += static_cast<double>(mIntegers);
    mIntegers = number;
}

// The first of equals stays.
void AggregateState::KeepIfBeyond(const VelaValue& value)
{
    const bool isBeyond =
        mCount == 1 || (mFunc == kFuncMin ? IsLess(value, mExtreme) : IsLess(mExtreme, value));
    if (isBeyond)
        mExtreme = value;
}

VelaValue AggregateState::Sum() const
{
    return mAreDoubles ? VelaValue::Double(mDoubles + static_cast<double>(mIntegers))
                       : IntegerOrDouble(mIntegers);
}

VelaValue CountValue(uint64_t count)
{
    constexpr uint64_t kLargest = std::numeric_limits<int64_t>::max();
    return IntegerOrDouble(static_cast<int64_t>(count < kLargest ? count : kLargest));
}

}   // namespace vela
