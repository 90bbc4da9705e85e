#pragma once

#include <cstdint>
#include <functional>

namespace vela {

// While one of these lives, an allocation by operator new fails, in any of its forms: the number-th
// from now (1: the next one), and with kForGood every later one too. One at a time; the program that
// this is linked into gets its memory through it.
class FailingAllocations {
public:
    enum class Mode { kOnce, kForGood };

    FailingAllocations(int64_t number, Mode mode);
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    // Whether any has failed.
    [[nodiscard]] static bool HaveFailed();
};

// Does work while allocations fail; whether any has failed.
template <class Work>
bool FailDuring(int64_t number, FailingAllocations::Mode mode, const Work& work)
{
    const FailingAllocations faults(number, mode);
    work();
    return FailingAllocations::HaveFailed();
}

// Runs check with each number of an allocation to fail, once and for good, until the step gets through. check returns
// whether any has failed. VELA_ALLOCATION_STRIDE=5 takes each fifth, as builds with sanitizers do by themselves.
void FailEach(const std::function<bool(int64_t number, FailingAllocations::Mode mode)>& check);

}   // namespace vela
