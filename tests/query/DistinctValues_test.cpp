#include "engine/query/DistinctValues.h"

#include <gtest/gtest.h>

#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

TEST(DistinctValues, MixedTypesAreComparedWithAllTaken)
{
    DistinctValues values;
    for (const VelaValue& value : {I(2), Text("a"), D(2), Date("1"), D(0.5)})
        EXPECT_TRUE(values.Take(value));
    EXPECT_TRUE(values.Take(Date("1"))) << "a date equals no date";
    EXPECT_TRUE(values.Take(Text("2 eggs"))) << "a text takes the other's text";
    for (const VelaValue& value : {D(2), I(2), Text("2"), Text("DATE 1"), B(false)})
        EXPECT_FALSE(values.Take(value)) << Shown(value) << " equals one";
}

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
