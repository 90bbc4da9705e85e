#include "engine/query/AggregateState.h"

#include <limits>

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
