#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

namespace vela {

// Memory for arrays and blocks of any size, of which those of some MiB lie in large pages, where the operating system has
// them: their first touch costs a tenth, and so do address look-ups. Only whole large pages are asked for, so that no
// memory is used beyond the bytes that are asked for. Throws bad_alloc when there is none.
class LargeMemory {
public:
    static constexpr size_t kPage = size_t{2} << 20;
    // Smaller pieces are ordinary memory.
    static constexpr size_t kLeast = kPage;

    [[nodiscard]] static void* Take(size_t bytes);
    // bytes: as taken.
    static void GiveBack(void* memory, size_t bytes) noexcept;
};

// For std::vector. Numbers that a vector adds by resize(count) are not set.
template <class T>
struct LargeAllocator {
    using value_type = T;

    LargeAllocator() = default;
    template <class U>
    LargeAllocator(const LargeAllocator<U>&) noexcept
    {}

    [[nodiscard]] T* allocate(size_t count)
    {
        if (count > SIZE_MAX / 2 / sizeof(T))
            throw std::bad_alloc();
        return static_cast<T*>(LargeMemory::Take(count * sizeof(T)));
    }
    void deallocate(T* memory, size_t count) noexcept
    {
        LargeMemory::GiveBack(memory, count * sizeof(T));
    }
    template <class U>
    void construct(U* place)
    {
        ::new (static_cast<void*>(place)) U;
    }
    template <class U, class... Args>
    void construct(U* place, Args&&... args)
    {
        ::new (static_cast<void*>(place)) U(std::forward<Args>(args)...);
    }
    template <class U>
    bool operator==(const LargeAllocator<U>&) const
    {
        return true;
    }
};

// A vector that may grow large. Its elements are numbers, and resize leaves new ones unset.
template <class T>
using LargeVector = std::vector<T, LargeAllocator<T>>;

}   // namespace vela
