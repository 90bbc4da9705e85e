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

    // Rearranges the list. The positions where the groups start, ascending; none when the list is
    // empty. Once only.
    [[nodiscard]] std::vector<size_t> SortIntoGroups(RecSetList* list);

private:
    struct Group {
        size_t keyStart;      // in mKeyBytes
        uint64_t firstWord;   // of the key: all that must be looked at of a short one
        uint32_t keySize;
        uint32_t count;   // record sets
    };

    [[nodiscard]] std::vector<uint32_t> FindGroups(const RecSetList& list);
    [[nodiscard]] bool FindGroupsByNumber(const RecSetList& list, std::vector<uint32_t>* groupOf);
    [[nodiscard]] uint32_t FindOrAddGroup(std::string_view key);
    [[nodiscard]] bool HasKey(const Group& group, uint64_t firstWord, std::string_view key) const;
    [[nodiscard]] std::string_view KeyOf(const Group& group) const
    {
        return {mKeyBytes.data() + group.keyStart, group.keySize};
    }
    [[nodiscard]] uint64_t Word(uint32_t group, SortStage stage) const override;
    [[nodiscard]] bool GoToNextStage(SortStage* stage, const SortEntry* begin,
                                     const SortEntry* end) const override;

    GroupKey mKey;
    HashChains mChains;   // entry i is group i
    std::vector<Group> mGroups;
    std::string mKeyBytes;   // of all groups
};

}   // namespace vela
