#pragma once

#include <cstdint>

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

// While one of these lives, allocations neither fail nor count: those of what stands around the
// code under test.
class SpareAllocations {
public:
    SpareAllocations();
    ~SpareAllocations();
    SpareAllocations(const SpareAllocations&) = delete;
    SpareAllocations& operator=(const SpareAllocations&) = delete;
};

}   // namespace vela
