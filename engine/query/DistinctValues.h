#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "engine/core/VelaValue.h"

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
    struct TextHash {
        using is_transparent = void;
        size_t operator()(std::string_view text) const
        {
            return std::hash<std::string_view>()(text);
        }
    };

    [[nodiscard]] bool IsNew(const VelaValue& value);
    [[nodiscard]] bool IsNewInteger(int32_t number);
    [[nodiscard]] bool IsNewText(std::string_view text);
    [[nodiscard]] bool IsNewDouble(const VelaValue& value);

    std::vector<VelaValue> mTaken;

    // Each form is entered when the first value that needs it is looked up: of the values from its
    // count in mTaken on, that has not happened yet.
    std::unordered_set<int32_t> mIntegers;
    size_t mIntegersEntered = 0;
    std::unordered_set<std::string, TextHash, std::equal_to<>> mTexts;
    size_t mTextsEntered = 0;
    std::unordered_set<double> mDoubles;   // of the Doubles only
    std::vector<VelaValue> mNoDoubles;     // the others, for the look-up of Doubles
    size_t mDoublesEntered = 0;
};

}   // namespace vela
