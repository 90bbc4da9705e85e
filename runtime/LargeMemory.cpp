#include "runtime/LargeMemory.h"

#include <sys/mman.h>

namespace vela {

namespace {

constexpr size_t kSmallPage = 4096;

constexpr size_t RoundedUp(size_t bytes, size_t step)
{
    return (bytes + step - 1) / step * step;
}

// The pages of [start, end) that a mapping has too many.
void Unmap(uintptr_t start, uintptr_t end)
{
    if (start < end)
        (void)munmap(reinterpret_cast<void*>(start), end - start);
}

// A large page is only used where it lies at a multiple of its size.
void* MapAligned(size_t size)
{
    const size_t mapped = size + LargeMemory::kPage;
    void* memory =
        mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw std::bad_alloc();
    const auto begin = reinterpret_cast<uintptr_t>(memory);
    const uintptr_t start = RoundedUp(begin, LargeMemory::kPage);
    Unmap(begin, start);
    Unmap(start + size, begin + mapped);
    return reinterpret_cast<void*>(start);
}

}   // namespace

void* LargeMemory::Take(size_t bytes)
{
    if (bytes < kLeast)
        return ::operator new(bytes);
    if (bytes > SIZE_MAX / 2)
        throw std::bad_alloc();
    void* memory = MapAligned(RoundedUp(bytes, kSmallPage));
    // An offer that may be turned down: then the pages are small ones.
    (void)madvise(memory, bytes / kPage * kPage, MADV_HUGEPAGE);
    return memory;
}

void LargeMemory::GiveBack(void* memory, size_t bytes) noexcept
{
    if (bytes < kLeast)
        ::operator delete(memory);
    else
        (void)munmap(memory, RoundedUp(bytes, kSmallPage));
}

}   // namespace vela
