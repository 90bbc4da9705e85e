#pragma once

#include <string_view>
#include <vector>

namespace vela {

// What becomes of a value that changes set to null, a field of type None: it stays in the merged body as such a field, or
// its column is taken out.
enum class MergedNulls { kKeep, kTakeOut };

// Merges two record bodies into a new one: the values of base in their order, then each value of changes in turn takes the
// place of the first one with its column id, or is appended. Payloads come out without slack. merged receives the body;
// values that can't be read, in a damaged base, are lost. True when the merged body holds a null.
bool MergeBodies(std::string_view base, std::string_view changes, MergedNulls nulls,
                 std::vector<char>* merged);

// The values of a body that are not null, in their order.
void CopyWithoutNulls(std::string_view body, std::vector<char>* copy);

}   // namespace vela
