#include "engine/query/HashChains.h"

namespace vela {

namespace {

constexpr size_t kFirstHeads = 64;
constexpr uint64_t kMultiplier = 0x9E3779B97F4A7C15u;

uint64_t LoadBytes(const char* bytes, size_t count)
{
    uint64_t word = 0;
    std::memcpy(&word, bytes, count);
    return word;
}

}   // namespace

uint64_t HashBytes(std::string_view bytes)
{
    uint64_t hash = bytes.size() * kMultiplier;
    size_t position = 0;
    for (; bytes.size() - position > 8; position += 8) {
        hash = (hash ^ LoadBytes(bytes.data() + position, 8)) * kMultiplier;
        hash ^= hash >> 29;
    }
    const size_t rest = bytes.size() - position;
    return MixBits(hash ^ (rest == 0 ? 0 : LoadBytes(bytes.data() + position, rest)));
}

void HashChains::Reserve(size_t count)
{
    size_t headCount = kFirstHeads;
    while (headCount < count)
        headCount *= 2;
    mEntries.reserve(count);
    if (headCount > mHeads.size())
        Rebuild(headCount);
}

uint32_t HashChains::Add(uint64_t hash)
{
    if (mEntries.size() >= mHeads.size())
        Rebuild(mHeads.empty() ? kFirstHeads : mHeads.size() * 2);
    const auto entry = static_cast<uint32_t>(mEntries.size());
    mEntries.push_back({Shorten(hash), kNone});
    if (!mUnfindable.empty())
        mUnfindable.push_back(false);
    Link(entry);
    return entry;
}

uint32_t HashChains::AddUnfindable()
{
    mUnfindable.resize(mEntries.size());
    mUnfindable.push_back(true);
    mEntries.push_back({0, kNone});
    return static_cast<uint32_t>(mEntries.size() - 1);
}

void HashChains::Rebuild(size_t headCount)
{
    mHeads.assign(headCount, {0, kNone});
    mMask = static_cast<uint32_t>(headCount - 1);
    for (uint32_t entry = 0; entry < mEntries.size(); entry++) {
        if (mUnfindable.empty() || !mUnfindable[entry])
            Link(entry);
    }
}

void HashChains::Link(uint32_t entry)
{
    const uint32_t hash = mEntries[entry].hash;
    Entry& head = mHeads[hash & mMask];
    mEntries[entry].next = head.next;
    head = {hash, entry};
}

}   // namespace vela
