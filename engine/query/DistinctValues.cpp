#include "engine/query/DistinctValues.h"

#include <bit>
#include <cmath>

namespace vela {

namespace {

uint64_t HashInteger(const VelaValue& value)
{
    return MixBits(static_cast<uint32_t>(value.GetInteger()));
}

// Both zeros are equal, and so must their hashes be.
uint64_t HashDouble(double number)
{
    return MixBits(std::bit_cast<uint64_t>(number == 0.0 ? 0.0 : number));
}

// Of what Equals compares a text with.
uint64_t HashDisplayForm(const VelaValue& value)
{
    if (value.GetType() == kTypeString || value.GetType() == kTypeBinary)
        return HashBytes(value.TextView());
    return HashBytes(value.GetString().View());
}

}   // namespace

bool DistinctValues::Take(const VelaValue& value)
{
    if (!IsNew(value))
        return false;
    mTaken.push_back(value);
    return true;
}

bool DistinctValues::IsNew(const VelaValue& value)
{
    const VelaDataType type = value.GetType();
    if (type == kTypeInteger || type == kTypeBoolean)
        return !IsAmongIntegers(value);
    if (type == kTypeDouble)
        return !IsAmongDoubles(value);
    return !IsTextBacked(type) || !IsAmongTexts(value);
}

bool DistinctValues::Finds(const HashChains& index, uint64_t hash, const VelaValue& value) const
{
    for (uint32_t i = index.First(hash); i != HashChains::kNone; i = index.Next(i)) {
        if (value.Equals(mTaken[i]))
            return true;
    }
    return false;
}

bool DistinctValues::IsAmongIntegers(const VelaValue& value)
{
    while (mIntegers.Count() < mTaken.size())
        mIntegers.Add(HashInteger(mTaken[mIntegers.Count()]));
    return Finds(mIntegers, HashInteger(value), value);
}

bool DistinctValues::IsAmongTexts(const VelaValue& value)
{
    while (mTexts.Count() < mTaken.size())
        mTexts.Add(HashDisplayForm(mTaken[mTexts.Count()]));
    return Finds(mTexts, HashBytes(value.TextView()), value);
}

// A Double is compared with the payload of the other value, whatever that holds: values of other
// types are asked one by one. Equal not-a-numbers would make one long chain that finds nothing.
bool DistinctValues::IsAmongDoubles(const VelaValue& value)
{
    while (mDoubles.Count() < mTaken.size()) {
        const VelaValue& taken = mTaken[mDoubles.Count()];
        const bool isDouble = taken.GetType() == kTypeDouble;
        if (!isDouble)
            mNoDoubles.push_back(static_cast<uint32_t>(mDoubles.Count()));
        if (isDouble && !std::isnan(taken.GetDouble()))
            mDoubles.Add(HashDouble(taken.GetDouble()));
        else
            mDoubles.AddUnfindable();
    }
    for (const uint32_t position : mNoDoubles) {
        if (value.Equals(mTaken[position]))
            return true;
    }
    return Finds(mDoubles, HashDouble(value.GetDouble()), value);
}

}   // namespace vela
