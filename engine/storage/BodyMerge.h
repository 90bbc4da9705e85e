#pragma once

#include <string_view>
#include <vector>

#include "runtime/SimpleVector.h"

namespace vela {

// Merges two record bodies into a new one: every value of base, in its order, replaced by the value that changes holds for
// its column, or left out when its column id is in removed; then the values of changes whose columns base lacks. Payloads
// come out without slack. merged receives the body; values that can't be read, in a damaged base, are lost.
void MergeBodies(std::string_view base, std::string_view changes,
                 const SimpleVector<uint32_t>& removed, std::vector<char>* merged);

}   // namespace vela
