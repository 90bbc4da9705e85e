#include "tests/memory/FailingAllocations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <string>

namespace vela {

namespace {

struct Fault {
    int64_t left = 0;   // allocations up to the one that fails; 0: none fails
    bool forGood = false;
    bool failed = false;
};

constinit Fault gFault;

#if defined(__SANITIZE_ADDRESS__)
constexpr int64_t kStride = 5;
#else
constexpr int64_t kStride = 1;
#endif

int64_t Stride()
{
    const char* text = std::getenv("VELA_ALLOCATION_STRIDE");
    return text != nullptr ? std::max<int64_t>(std::atoll(text), 1) : kStride;
}

bool Strikes()
{
    if (gFault.left == 0 || --gFault.left > 0)
        return false;
    gFault.failed = true;
    gFault.left = gFault.forGood ? 1 : 0;
    return true;
}

}   // namespace

FailingAllocations::FailingAllocations(int64_t number, Mode mode)
{
    gFault.left = number;
    gFault.forGood = mode == Mode::kForGood;
    gFault.failed = false;
}

FailingAllocations::~FailingAllocations()
{
    gFault.left = 0;
}

bool FailingAllocations::HaveFailed()
{
    return gFault.failed;
}

void FailEach(const std::function<bool(int64_t number, FailingAllocations::Mode mode)>& check)
{
    using Mode = FailingAllocations::Mode;
    for (const Mode mode : {Mode::kOnce, Mode::kForGood}) {
        const int64_t first = mode == Mode::kOnce ? 1 : 1 + Stride() / 2;
        for (int64_t number = first;; number += Stride()) {
            SCOPED_TRACE("allocation " + std::to_string(number) +
                         (mode == Mode::kOnce ? "" : " and all later ones"));
            ASSERT_LT(number, 100000);
            if (!check(number, mode) || testing::Test::HasFailure())
                break;
        }
    }
}

}   // namespace vela

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return vela::Strikes() ? nullptr : std::malloc(size > 0 ? size : 1);
}

void* operator new(std::size_t size)
{
    if (void* memory = operator new(size, std::nothrow))
        return memory;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return operator new(size, std::nothrow);
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}
