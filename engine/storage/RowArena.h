#pragma once

#include <memory>
#include <utility>

#include "runtime/BlockArena.h"

namespace vela {

// RowArena is the memory that pending changes lie in, those of a table's rows, or of a file in a commit: pieces that are taken
// one by one and given back all together. It counts how much of it is no longer used.
class RowArena {
public:
    // A piece of that size. Throws bad_alloc.
    [[nodiscard]] void* Take(size_t bytes, size_t alignment)
    {
        if (!mArena)
            mArena = std::make_unique<BlockArena>();
        mTaken += bytes;
        return mArena->Allocate(bytes, alignment);
    }
    // Bytes of all pieces, those that are no longer used among them.
    [[nodiscard]] size_t Taken() const { return mTaken; }
    // A piece of that size is no longer used; its memory stays until Clear.
    void Drop(size_t bytes) { mDropped += bytes; }
    // Whether the pieces that are still used had better move to another arena.
    [[nodiscard]] bool IsWastingMemory() const
    {
        return mDropped > kTolerated && mDropped > mTaken / 2;
    }
    // Gives all pieces back. Takes no memory.
    void Clear() { *this = RowArena(); }

private:
    static constexpr size_t kTolerated = size_t{1} << 20;

    std::unique_ptr<BlockArena> mArena;
    size_t mTaken = 0;     // by pieces, those dropped included
    size_t mDropped = 0;   // by pieces that are no longer used
};

}   // namespace vela
