#include "engine/core/VelaValueWithID.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(VelaValueWithID, SetValueKeepsTheColumnAndAssignmentTakesBoth)
{
    VelaValueWithID value(VelaValue::Integer(1), 7);
    value.SetValue(VelaValue::String("y"));
    EXPECT_EQ(7u, value.ColumnID());
    EXPECT_EQ("y", value.TextView());
    const VelaValueWithID other(VelaValue::Boolean(true), 9);
    value = other;
    EXPECT_EQ(9u, value.ColumnID());
    EXPECT_EQ(kTypeBoolean, value.GetType());
    value.SetColumnID(3);
    EXPECT_EQ(3u, value.ColumnID());
    EXPECT_EQ(9u, other.ColumnID());
}

}   // namespace
}   // namespace vela
