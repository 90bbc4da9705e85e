#include "engine/storage/GoodBinCount.h"

#include <gtest/gtest.h>

namespace vela {

TEST(GoodBinCount, SmallestPrimeOfTheListAboveN)
{
    const uint32_t primes[] = {61, 127, 251, 509, 1021, 2039, 4093, 8191, 16381, 32749, 65521};
    EXPECT_EQ(61u, GoodBinCount(0));
    EXPECT_EQ(1021u, GoodBinCount(1000));
    for (size_t i = 0; i + 1 < std::size(primes); i++) {
        EXPECT_EQ(primes[i], GoodBinCount(primes[i] - 1));
        EXPECT_EQ(primes[i + 1], GoodBinCount(primes[i])) << "greater, not equal";
    }
    EXPECT_EQ(65521u, GoodBinCount(65520));
    EXPECT_EQ(65521u, GoodBinCount(65521));
    EXPECT_EQ(65521u, GoodBinCount(0xFFFFFFFF));
}

}   // namespace vela
