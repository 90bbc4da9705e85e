#pragma once

#include <string>
#include <vector>

#include "engine/query/GroupKey.h"
#include "engine/query/HashChains.h"
#include "engine/query/RecSetList.h"
#include "engine/query/WordSorter.h"

namespace vela {

// RecSetGrouper brings a list of record sets into groups of equal keys (see GroupKey). The groups
// come in the order of their keys' bytes; the record sets of a group keep their order. Linear in
// the record sets, n log n in the groups.
class RecSetGrouper : private SortWords {
public:
    RecSetGrouper(const std::vector<VelaExprPtr>& groupBy, const VelaEvalContext& context)
        : mKey(groupBy, context)
    {}

    // Finds the groups of the list, numbered from 0 as they are met. Once only, before all else.
    void FindGroups(const RecSetList& list);
    // The groups in order.
    [[nodiscard]] std::vector<uint32_t> SortedGroups() const;
    // Rearranges the list, whose groups were found. The positions where the groups start, ascending; none when the list is
    // empty. The groups of its record sets are not known any more.
    [[nodiscard]] std::vector<size_t> SortIntoGroups(RecSetList* list);

    [[nodiscard]] size_t GroupCount() const { return mGroups.size(); }
    // The group of each record set.
    [[nodiscard]] const uint32_t* GroupOf() const { return mGroupOf.data(); }
    // How many record sets a group has, and the first one's position in the list.
    [[nodiscard]] uint32_t CountOf(uint32_t group) const { return mCounts[group]; }
    [[nodiscard]] uint32_t FirstOf(uint32_t group) const { return mGroups[group].first; }

private:
    struct Group {
        size_t keyStart;      // in mKeyBytes
        uint64_t firstWord;   // of the key: all that must be looked at of a short one
        uint32_t keySize;
        uint32_t first;   // record set
    };

    [[nodiscard]] bool FindGroupsByNumber(const RecSetList& list);
    [[nodiscard]] uint32_t FindOrAddGroup(std::string_view key, uint32_t first);
    uint32_t AddGroup(std::string_view key, uint32_t first);
    [[nodiscard]] bool HasKey(const Group& group, uint64_t firstWord, std::string_view key) const;
    [[nodiscard]] std::string_view KeyOf(const Group& group) const
    {
        return {mKeyBytes.data() + group.keyStart, group.keySize};
    }
    void SetWords(SortEntry* begin, SortEntry* end, SortStage stage) const override;
    [[nodiscard]] bool GoToNextStage(SortStage* stage, const SortEntry* begin,
                                     const SortEntry* end) const override;

    GroupKey mKey;
    HashChains mChains;   // entry i is group i; empty where groups are found by number
    LargeVector<Group> mGroups;
    LargeVector<uint32_t> mCounts;    // record sets, by group
    LargeVector<uint32_t> mGroupOf;   // by record set
    std::string mKeyBytes;            // of all groups
};

}   // namespace vela
