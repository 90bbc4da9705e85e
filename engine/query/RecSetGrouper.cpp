#include "engine/query/RecSetGrouper.h"

#include <algorithm>

#include "engine/query/TextPrefix.h"

namespace vela {

namespace {

struct GroupEntry {
    uint64_t prefix;   // of the key
    uint32_t group;
};

}   // namespace

std::vector<size_t> RecSetGrouper::SortIntoGroups(RecSetList* list)
{
    std::vector<uint32_t> groupOf(list->Count());
    for (size_t i = 0; i < list->Count(); i++) {
        groupOf[i] = FindOrAddGroup(mKey.Of(list->At(i)));
        mSizes[groupOf[i]]++;
    }
    std::vector<size_t> starts;
    std::vector<uint32_t> next(mSizes.size());   // where a group's next record set goes
    uint32_t position = 0;
    for (const uint32_t group : GroupsInKeyOrder()) {
        starts.push_back(position);
        next[group] = position;
        position += mSizes[group];
    }
    for (uint32_t& group : groupOf)
        group = next[group]++;
    list->Rearrange(groupOf);
    return starts;
}

uint32_t RecSetGrouper::FindOrAddGroup(std::string_view key)
{
    const uint64_t hash = HashBytes(key);
    for (uint32_t group = mGroups.First(hash); group != HashChains::kNone;
         group = mGroups.Next(group)) {
        if (KeyOf(group) == key)
            return group;
    }
    mKeyBytes.append(key);
    mKeyStarts.push_back(mKeyBytes.size());
    mSizes.push_back(0);
    return mGroups.Add(hash);
}

std::vector<uint32_t> RecSetGrouper::GroupsInKeyOrder() const
{
    std::vector<GroupEntry> entries(mSizes.size());
    for (uint32_t group = 0; group < entries.size(); group++)
        entries[group] = {TextPrefix(KeyOf(group)), group};
    std::sort(entries.begin(), entries.end(), [this](const GroupEntry& a, const GroupEntry& b) {
        return a.prefix != b.prefix ? a.prefix < b.prefix
                                    : string::CompareBytes(KeyOf(a.group), KeyOf(b.group)) < 0;
    });
    std::vector<uint32_t> groups;
    groups.reserve(entries.size());
    for (const GroupEntry& entry : entries)
        groups.push_back(entry.group);
    return groups;
}

}   // namespace vela
