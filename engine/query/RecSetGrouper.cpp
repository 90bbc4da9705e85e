#include "engine/query/RecSetGrouper.h"

#include <algorithm>

namespace vela {

std::vector<size_t> RecSetGrouper::SortIntoGroups(RecSetList* list)
{
    std::vector<uint32_t> groupOf(list->Count());
    for (size_t i = 0; i < list->Count(); i++) {
        groupOf[i] = FindOrAddGroup(mKey.Of(list->At(i)));
        mGroups[groupOf[i]].count++;
    }
    std::vector<size_t> starts;
    std::vector<uint32_t> next(mGroups.size());   // where a group's next record set goes
    uint32_t position = 0;
    for (const uint32_t group : SortByWords(static_cast<uint32_t>(mGroups.size()), *this)) {
        starts.push_back(position);
        next[group] = position;
        position += mGroups[group].count;
    }
    for (uint32_t& group : groupOf)
        group = next[group]++;
    list->Rearrange(groupOf);
    return starts;
}

uint32_t RecSetGrouper::FindOrAddGroup(std::string_view key)
{
    const uint64_t hash = HashBytes(key);
    const uint64_t firstWord = TextWord(key, 0);
    for (uint32_t group = mChains.First(hash); group != HashChains::kNone;
         group = mChains.Next(group)) {
        if (HasKey(mGroups[group], firstWord, key))
            return group;
    }
    mGroups.push_back({mKeyBytes.size(), firstWord, static_cast<uint32_t>(key.size()), 0});
    mKeyBytes.append(key);
    return mChains.Add(hash);
}

bool RecSetGrouper::HasKey(const Group& group, uint64_t firstWord, std::string_view key) const
{
    if (group.firstWord != firstWord || group.keySize != key.size())
        return false;
    return key.size() <= sizeof firstWord || KeyOf(group) == key;
}

uint64_t RecSetGrouper::Word(uint32_t group, SortStage stage) const
{
    return stage.word == 0 ? mGroups[group].firstWord : TextWord(KeyOf(mGroups[group]), stage.word);
}

bool RecSetGrouper::GoToNextStage(SortStage* stage, const SortEntry* begin,
                                  const SortEntry* end) const
{
    size_t shortest = SIZE_MAX;
    size_t longest = 0;
    for (const SortEntry* entry = begin; entry < end; entry++) {
        shortest = std::min<size_t>(shortest, mGroups[entry->item].keySize);
        longest = std::max<size_t>(longest, mGroups[entry->item].keySize);
    }
    return GoToNextTextWord(&stage->word, shortest, longest);
}

}   // namespace vela
