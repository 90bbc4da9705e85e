#pragma once

#include <memory>

#include "runtime/BlockArena.h"

namespace vela {

// ArenaList is a growable array whose items lie in a BlockArena, for lists of children in objects that do. Like those it needs
// no destruction; items are plain values. Growing leaves the old place behind in the arena: at most as much again as the list.
template <class T>
class ArenaList {
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

public:
    // arena is the same each time.
    void Add(BlockArena* arena, const T& item)
    {
        const T kept = item;   // which may be one of this list
        if (mCount == mCapacity)
            Grow(arena);
        new (mItems + mCount) T(kept);
        mCount++;
    }
    // Makes room for capacity items in all.
    void Reserve(BlockArena* arena, size_t capacity)
    {
        if (capacity <= mCapacity)
            return;
        if (capacity > SIZE_MAX / sizeof(T))
            throw std::bad_alloc();
        T* items = static_cast<T*>(arena->Allocate(capacity * sizeof(T), alignof(T)));
        std::uninitialized_copy(mItems, mItems + mCount, items);
        mItems = items;
        mCapacity = capacity;
    }

    [[nodiscard]] size_t size() const { return mCount; }
    [[nodiscard]] bool empty() const { return mCount == 0; }
    T& operator[](size_t index) { return mItems[index]; }
    const T& operator[](size_t index) const { return mItems[index]; }
    T& back() { return mItems[mCount - 1]; }
    const T* begin() const { return mItems; }
    const T* end() const { return mItems + mCount; }

private:
    static constexpr size_t kFewItems = 4;

    // In place when nothing else was made since it grew last.
    void Grow(BlockArena* arena)
    {
        if (mCapacity > 0 && arena->Lengthen(mItems + mCapacity, kFewItems * sizeof(T)))
            mCapacity += kFewItems;
        else
            Reserve(arena, mCapacity == 0 ? kFewItems : 2 * mCapacity);
    }

    T* mItems = nullptr;
    size_t mCount = 0;
    size_t mCapacity = 0;
};

}   // namespace vela
