#include "runtime/ShortArray.h"

#include <gtest/gtest.h>

#include <string>

namespace vela {
namespace {

TEST(ShortArray, HoldsAnyNumberOfElements)
{
    for (size_t count = 0; count <= 9; count++) {
        ShortArray<std::string, 4> array(count, "x");
        ASSERT_EQ(count, array.size());
        const char* start = reinterpret_cast<const char*>(&array);
        const char* first = reinterpret_cast<const char*>(array.data());
        EXPECT_EQ(count <= 4, first >= start && first < start + sizeof array) << count;
        for (size_t i = 0; i < count; i++) {
            EXPECT_EQ("x", array[i]);
            array[i] += std::to_string(i);
        }
        std::string joined;
        for (const std::string& item : array)
            joined += item;
        EXPECT_EQ(std::string("x0x1x2x3x4x5x6x7x8").substr(0, 2 * count), joined);
    }
}

}   // namespace
}   // namespace vela
