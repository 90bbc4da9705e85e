#include "runtime/ByteOrder.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(ByteOrder, NumbersAreBigEndianAtAnyAlignment)
{
    for (size_t shift = 0; shift < 8; shift++) {
        unsigned char bytes[24] = {};
        StoreBigEndian32(bytes + shift, 0x01020304);
        const unsigned char expected32[] = {1, 2, 3, 4, 0};
        EXPECT_EQ(0, memcmp(expected32, bytes + shift, sizeof expected32)) << shift;
        EXPECT_EQ(0x01020304u, LoadBigEndian32(bytes + shift)) << shift;

        StoreBigEndian64(bytes + shift, 0xF1020304050607F8);
        const unsigned char expected64[] = {0xF1, 2, 3, 4, 5, 6, 7, 0xF8, 0};
        EXPECT_EQ(0, memcmp(expected64, bytes + shift, sizeof expected64)) << shift;
        EXPECT_EQ(0xF1020304050607F8u, LoadBigEndian64(bytes + shift)) << shift;
    }
}

}   // namespace
}   // namespace vela
