#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

namespace vela {

// BlockArena gives out memory for many small objects that live and die together, such as the nodes of a syntax tree: a piece
// costs a few instructions, and all of it goes back at once when the arena dies.
//
// The first pieces lie inside the arena itself, so that few objects take no memory of their own; then come blocks of growing
// size. Objects are not destroyed one by one: only those that need no destruction can be made here, and nothing recurses over
// them in the end. When memory runs out it throws std::bad_alloc; what was made before stays good.
class BlockArena {
public:
    static constexpr size_t kFirstBlock = 928;   // bytes inside the arena
    // No piece needs more.
    static constexpr size_t kAlignment = alignof(std::max_align_t);

    BlockArena() : mPosition(mFirst), mEnd(mFirst + kFirstBlock) {}
    ~BlockArena();
    BlockArena(const BlockArena&) = delete;
    BlockArena& operator=(const BlockArena&) = delete;

    // size bytes at a multiple of alignment, a power of two up to kAlignment. They stay where they are until the arena dies.
    [[nodiscard]] void* Allocate(size_t size, size_t alignment)
    {
        const size_t padding = -reinterpret_cast<uintptr_t>(mPosition) & (alignment - 1);
        const size_t room = static_cast<size_t>(mEnd - mPosition);
        if (padding > room || size > room - padding)
            return AllocateElsewhere(size);
        char* piece = mPosition + padding;
        mPosition = piece + size;
        return piece;
    }
    // Lengthens a piece by size bytes where it lies. False: it isn't the one that was given out last, or there is no room
    // behind it; nothing has changed then.
    [[nodiscard]] bool Lengthen(const void* endOfPiece, size_t size)
    {
        if (endOfPiece != mPosition || size > static_cast<size_t>(mEnd - mPosition))
            return false;
        mPosition += size;
        return true;
    }
    // A new object.
    template <class T, class... Arguments>
    [[nodiscard]] T* Make(Arguments&&... arguments)
    {
        static_assert(std::is_trivially_destructible_v<T>, "nobody would destroy it");
        static_assert(alignof(T) <= kAlignment);
        return new (Allocate(sizeof(T), alignof(T))) T(std::forward<Arguments>(arguments)...);
    }
    // A copy of the bytes.
    [[nodiscard]] std::string_view Copy(std::string_view bytes);

private:
    // Stands before the bytes of a block.
    struct alignas(kAlignment) Block {
        Block* next;
        size_t size;   // without this
    };

    [[nodiscard]] void* AllocateElsewhere(size_t size);
    [[nodiscard]] char* AddBlock(size_t size);

    char* mPosition;   // the next free byte of the block that is being filled
    char* mEnd;        // of that block
    Block* mBlocks = nullptr;
    size_t mNextSize = 4 * kFirstBlock;   // bytes of the next block
    alignas(8) char mFirst[kFirstBlock];
};

}   // namespace vela
