#include "engine/query/DistinctValues.h"

#include <cmath>

namespace vela {

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
        return IsNewInteger(value.GetInteger());
    if (type == kTypeDouble)
        return IsNewDouble(value);
    return !IsTextBacked(type) || IsNewText(value.TextView());
}

bool DistinctValues::IsNewInteger(int32_t number)
{
    for (; mIntegersEntered < mTaken.size(); mIntegersEntered++)
        mIntegers.insert(mTaken[mIntegersEntered].GetInteger());
    return mIntegers.find(number) == mIntegers.end();
}

bool DistinctValues::IsNewText(std::string_view text)
{
    for (; mTextsEntered < mTaken.size(); mTextsEntered++)
        mTexts.emplace(mTaken[mTextsEntered].GetString().View());
    return mTexts.find(text) == mTexts.end();
}

// A Double is compared with the payload of the other value, whatever that holds: values of other
// types are asked one by one.
bool DistinctValues::IsNewDouble(const VelaValue& value)
{
    for (; mDoublesEntered < mTaken.size(); mDoublesEntered++) {
        const VelaValue& taken = mTaken[mDoublesEntered];
        if (taken.GetType() != kTypeDouble)
            mNoDoubles.push_back(taken);
        else if (!std::isnan(taken.GetDouble()))
            mDoubles.insert(taken.GetDouble());
    }
    if (mDoubles.find(value.GetDouble()) != mDoubles.end())
        return false;
    for (const VelaValue& taken : mNoDoubles) {
        if (value.Equals(taken))
            return false;
    }
    return true;
}

}   // namespace vela
