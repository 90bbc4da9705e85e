#include "engine/query/RecSetGrouper.h"

#include <algorithm>

namespace vela {

namespace {

// A table of this many numbers is always worth making, and one of so many for each record set.
constexpr uint64_t kSmallRange = 1024;
constexpr uint64_t kRangePerRecSet = 4;

}   // namespace

void RecSetGrouper::FindGroups(const RecSetList& list)
{
    mGroupOf.resize(list.Count());
    if (!FindGroupsByNumber(list)) {
        for (size_t i = 0; i < list.Count(); i++)
            mGroupOf[i] = FindOrAddGroup(mKey.Of(list.At(i)), static_cast<uint32_t>(i));
    }
    mCounts.assign(mGroups.size(), 0);
    for (const uint32_t group : mGroupOf)
        mCounts[group]++;
}

std::vector<uint32_t> RecSetGrouper::SortedGroups() const
{
    return SortByWords(static_cast<uint32_t>(mGroups.size()), *this);
}

std::vector<size_t> RecSetGrouper::SortIntoGroups(RecSetList* list)
{
    std::vector<size_t> starts;
    std::vector<uint32_t> next(mGroups.size());   // where a group's next record set goes
    uint32_t position = 0;
    for (const uint32_t group : SortedGroups()) {
        starts.push_back(position);
        next[group] = position;
        position += mCounts[group];
    }
    for (uint32_t& group : mGroupOf)
        group = next[group]++;
    list->Rearrange(mGroupOf);
    return starts;
}

// The same where the key is one Integer of a range that is not much wider than the list is long: a table by number remembers
// which group each number has. False: it is another key.
bool RecSetGrouper::FindGroupsByNumber(const RecSetList& list)
{
    size_t table = 0;
    const ColumnData* column = mKey.IntegerColumn(&table);
    const VelaRecSetGroup all = list.Group(0, list.Count());
    if (column == nullptr || all.Count() == 0)
        return false;
    int32_t smallest = INT32_MAX;
    int32_t largest = INT32_MIN;
    for (size_t i = 0; i < all.Count(); i++) {
        const uint32_t row = all.RowID(i, table);
        if (row >= column->integers.size())
            return false;
        smallest = std::min(smallest, column->integers[row]);
        largest = std::max(largest, column->integers[row]);
    }
    const uint64_t range = static_cast<uint64_t>(int64_t{largest} - smallest) + 1;
    if (range > kSmallRange + all.Count() * kRangePerRecSet)
        return false;
    LargeVector<uint32_t> groupOfNumber(static_cast<size_t>(range), HashChains::kNone);
    mGroups.reserve(std::min(groupOfNumber.size(), all.Count()));
    for (size_t i = 0; i < all.Count(); i++) {
        const int32_t number = column->integers[all.RowID(i, table)];
        uint32_t& group = groupOfNumber[static_cast<size_t>(int64_t{number} - smallest)];
        if (group == HashChains::kNone)
            group = AddGroup(mKey.Of(all.At(i)), static_cast<uint32_t>(i));
        mGroupOf[i] = group;
    }
    return true;
}

uint32_t RecSetGrouper::FindOrAddGroup(std::string_view key, uint32_t first)
{
    const uint64_t hash = HashBytes(key);
    const uint64_t firstWord = TextWord(key, 0);
    for (uint32_t group = mChains.First(hash); group != HashChains::kNone;
         group = mChains.Next(group)) {
        if (HasKey(mGroups[group], firstWord, key))
            return group;
    }
    mChains.Add(hash);
    return AddGroup(key, first);
}

uint32_t RecSetGrouper::AddGroup(std::string_view key, uint32_t first)
{
    mGroups.push_back(
        {mKeyBytes.size(), TextWord(key, 0), static_cast<uint32_t>(key.size()), first});
    mKeyBytes.append(key);
    return static_cast<uint32_t>(mGroups.size() - 1);
}

bool RecSetGrouper::HasKey(const Group& group, uint64_t firstWord, std::string_view key) const
{
    if (group.firstWord != firstWord || group.keySize != key.size())
        return false;
    return key.size() <= sizeof firstWord || KeyOf(group) == key;
}

void RecSetGrouper::SetWords(SortEntry* begin, SortEntry* end, SortStage stage) const
{
    for (SortEntry* entry = begin; entry < end; entry++) {
        const Group& group = mGroups[entry->item];
        entry->word = stage.word == 0 ? group.firstWord : TextWord(KeyOf(group), stage.word);
    }
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
