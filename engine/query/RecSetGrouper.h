#pragma once

#include <string>
#include <vector>

#include "engine/query/GroupKey.h"
#include "engine/query/HashChains.h"
#include "engine/query/RecSetList.h"

namespace vela {

// RecSetGrouper brings a list of record sets into groups of equal keys (see GroupKey). The groups
// come in the order of their keys' bytes; the record sets of a group keep their order. Linear in
// the record sets, n log n in the groups.
class RecSetGrouper {
public:
    RecSetGrouper(const std::vector<VelaExprPtr>& groupBy, const VelaEvalContext& context)
        : mKey(groupBy, context)
    {}

    // Rearranges the list. The positions where the groups start, ascending; none when the list is
    // empty. Once only.
    [[nodiscard]] std::vector<size_t> SortIntoGroups(RecSetList* list);

private:
    [[nodiscard]] uint32_t FindOrAddGroup(std::string_view key);
    [[nodiscard]] std::string_view KeyOf(uint32_t group) const
    {
        return std::string_view(mKeyBytes).substr(mKeyStarts[group], KeySize(group));
    }
    [[nodiscard]] size_t KeySize(uint32_t group) const
    {
        return mKeyStarts[group + 1] - mKeyStarts[group];
    }
    [[nodiscard]] std::vector<uint32_t> GroupsInKeyOrder() const;

    GroupKey mKey;
    HashChains mGroups;
    std::string mKeyBytes;                  // of all groups
    std::vector<size_t> mKeyStarts = {0};   // and the end
    std::vector<uint32_t> mSizes;           // record sets per group
};

}   // namespace vela
