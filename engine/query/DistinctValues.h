#pragma once

#include <cstdint>
#include <vector>

#include "engine/core/VelaValue.h"
#include "engine/query/HashChains.h"

namespace vela {

// DistinctValues tells the values of a sequence that come for the first time.
//
// New is what equals (VelaValue::Equals, asked of the new value) none of those taken. Since Equals
// is not symmetric across types, an Integer is looked up among the integer forms of the values
// taken, a text among their display forms: a Date never equals a Date and is always new. A
// not-a-number is always new, too.
//
// One hash look-up a value, while Doubles don't mix with other types.
class DistinctValues {
public:
    // Whether value is new; then it is taken. value must not be null.
    bool Take(const VelaValue& value);

private:
    [[nodiscard]] bool IsNew(const VelaValue& value);
    // Whether value equals one of those taken that index finds by that hash.
    [[nodiscard]] bool Finds(const HashChains& index, uint64_t hash, const VelaValue& value) const;
    [[nodiscard]] bool IsAmongIntegers(const VelaValue& value);
    [[nodiscard]] bool IsAmongTexts(const VelaValue& value);
    [[nodiscard]] bool IsAmongDoubles(const VelaValue& value);

    std::vector<VelaValue> mTaken;

    // Those taken by the hash of one of their forms; entry i is value i. A value is entered when
    // the next look-up needs that form.
    HashChains mIntegers;
    HashChains mTexts;
    HashChains mDoubles;                // finds the Doubles only
    std::vector<uint32_t> mNoDoubles;   // positions of the others that were entered in mDoubles
};

}   // namespace vela
