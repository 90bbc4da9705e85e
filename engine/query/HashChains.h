#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace vela {

// Hashes for tables in memory. They are never stored.
[[nodiscard]] inline uint64_t MixBits(uint64_t bits)
{
    bits ^= bits >> 32;
    bits *= 0xD6E8FEB86659FD93u;
    bits ^= bits >> 32;
    bits *= 0xD6E8FEB86659FD93u;
    return bits ^ bits >> 32;
}
[[nodiscard]] uint64_t HashBytes(std::string_view bytes);
// For several parts, from 0 on: hash = CombineHash(hash, part).
[[nodiscard]] inline uint64_t CombineHash(uint64_t hash, uint64_t part)
{
    return MixBits(hash * 31 + part);
}

// HashChains finds, among entries numbered from 0, those that were added with a certain hash. What
// an entry is, and whether two entries of one hash are equal, is the caller's business. 16 to 24
// bytes an entry.
class HashChains {
public:
    static constexpr uint32_t kNone = 0xFFFFFFFF;

    // Makes room for count entries in all.
    void Reserve(size_t count);
    // Adds an entry; its number.
    uint32_t Add(uint64_t hash);
    // Adds an entry that no search finds.
    uint32_t AddUnfindable();

    // The entries with that hash, the one added last first; kNone after the last.
    [[nodiscard]] uint32_t First(uint64_t hash) const
    {
        if (mHeads.empty())
            return kNone;
        // The hash lies beside the head: where there is but one entry, it is all that is looked at.
        const uint32_t shortHash = Shorten(hash);
        const Entry& head = mHeads[shortHash & mMask];
        if (head.next == kNone || head.hash == shortHash)
            return head.next;
        return Matching(mEntries[head.next].next, shortHash);
    }
    [[nodiscard]] uint32_t Next(uint32_t entry) const
    {
        return Matching(mEntries[entry].next, mEntries[entry].hash);
    }
    [[nodiscard]] size_t Count() const { return mEntries.size(); }

private:
    // Of an entry: its hash, and the next one in its chain. Of a chain: the hash of its first
    // entry, and which that is.
    struct Entry {
        uint32_t hash;
        uint32_t next;
    };

    [[nodiscard]] static uint32_t Shorten(uint64_t hash)
    {
        return static_cast<uint32_t>(hash >> 32 ^ hash);
    }
    [[nodiscard]] uint32_t Matching(uint32_t entry, uint32_t hash) const
    {
        while (entry != kNone && mEntries[entry].hash != hash)
            entry = mEntries[entry].next;
        return entry;
    }
    void Rebuild(size_t headCount);
    void Link(uint32_t entry);

    std::vector<Entry> mEntries;
    std::vector<bool> mUnfindable;   // empty while there is none
    std::vector<Entry> mHeads;       // a power of two of them, at least as many as entries
    uint32_t mMask = 0;
};

}   // namespace vela
