#include "engine/query/DistinctValues.h"

#include <gtest/gtest.h>

#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

// Comparing each with all would take longer than anybody waits.
TEST(DistinctValues, ManyValuesOfOneTypeEnd)
{
    DistinctValues integers;
    DistinctValues doubles;
    DistinctValues texts;
    for (int i = 0; i < 300000; i++) {
        const int number = i % 150000;
        ASSERT_EQ(i < 150000, integers.Take(I(number)));
        ASSERT_EQ(i < 150000, doubles.Take(D(number)));
        ASSERT_EQ(i < 150000, texts.Take(Text(std::to_string(number).c_str())));
    }
}

}   // namespace
}   // namespace vela
