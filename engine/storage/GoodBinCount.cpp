#include "engine/storage/GoodBinCount.h"

namespace vela {

uint32_t GoodBinCount(uint32_t n)
{
    constexpr uint32_t kPrimes[] = {61, 127, 251, 509, 1021, 2039, 4093, 8191, 16381, 32749, 65521};
    for (uint32_t prime : kPrimes)
        if (prime > n)
            return prime;
    return kPrimes[sizeof kPrimes / sizeof *kPrimes - 1];
}

}   // namespace vela
