#include "tests/memory/FailingAllocations.h"

#include <cstdlib>
#include <new>

namespace vela {

namespace {

struct Fault {
    int64_t left = 0;   // allocations up to the one that fails; 0: none fails
    bool forGood = false;
    bool failed = false;
    int spared = 0;
};

constinit Fault gFault;

bool Strikes()
{
    if (gFault.left == 0 || gFault.spared > 0 || --gFault.left > 0)
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

SpareAllocations::SpareAllocations()
{
    gFault.spared++;
}

SpareAllocations::~SpareAllocations()
{
    gFault.spared--;
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
