#pragma once

#include <cstdint>

namespace vela {

// The number of buckets for a map of about n keys: the first of the primes 61, 127, 251, ... 65521, each about twice the
// one before, that is greater than n; 65521 when none is.
[[nodiscard]] uint32_t GoodBinCount(uint32_t n);

}   // namespace vela
