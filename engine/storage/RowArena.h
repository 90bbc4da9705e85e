#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace vela {

// RowArena is the memory that the pending changes of a table's rows lie in: pieces that are taken one by one and given back
// all together.
class RowArena {
public:
    RowArena() = default;
    RowArena(const RowArena&) = delete;
    RowArena& operator=(const RowArena&) = delete;
    ~RowArena() { GiveBackFrom(0); }

    // A piece of at least that size, aligned for every type.
    [[nodiscard]] void* Take(size_t bytes);
    // A piece of that size is no longer used; its memory stays until Clear.
    void Drop(size_t bytes) { mDropped += bytes; }
    // Whether the pieces that are still used had better move to another arena.
    [[nodiscard]] bool IsWastingMemory() const
    {
        return mDropped > kTolerated && mDropped > mTaken / 2;
    }
    // Gives all pieces back. Takes no memory.
    void Clear();
    void Swap(RowArena& other);

private:
    struct Block {
        char* bytes;
        size_t size;
    };

    static constexpr size_t kSmallestBlock = 4 * 1024;
    static constexpr size_t kLargestBlock = size_t{8} << 20;
    static constexpr size_t kTolerated = size_t{1} << 20;

    void AddBlock(size_t bytes);
    void GiveBackFrom(size_t first);

    std::vector<Block> mBlocks;
    char* mNext = nullptr;   // in the last block
    size_t mLeft = 0;
    size_t mTaken = 0;     // by pieces, those dropped included
    size_t mDropped = 0;   // by pieces that are no longer used
};

}   // namespace vela
