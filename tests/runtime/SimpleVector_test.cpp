#include "runtime/SimpleVector.h"

#include <gtest/gtest.h>

#include <memory>

namespace vela {
namespace {

TEST(SimpleVector, PushingItsOwnElementWhileItGrowsKeepsTheValue)
{
    SimpleVector<std::shared_ptr<int>> list;
    list.push_back(std::make_shared<int>(7));
    for (int i = 0; i < 200; i++)
        list.push_back(list[0]);
    for (const auto& item : list)
        ASSERT_EQ(7, *item);
}

TEST(SimpleVector, ResizeMakesZerosAndCuts)
{
    SimpleVector<int*> list;
    int number = 0;
    list.push_back(&number);
    list.resize(3);
    EXPECT_EQ(&number, list[0]);
    EXPECT_EQ(nullptr, list[2]);
    list.resize(0);
    list.resize(1);
    EXPECT_EQ(nullptr, list[0]) << "a cut element must not come back";
}

TEST(SimpleVector, GrowsBySeveralElementsAtATime)
{
    SimpleVector<int> list;
    int moves = 0;
    const int* data = nullptr;
    for (int i = 0; i < 100000; i++) {
        list.push_back(i);
        moves += list.data() != data ? 1 : 0;
        data = list.data();
    }
    EXPECT_LT(moves, 40) << "appending must not move the list at every step";
    for (int i = 0; i < 100000; i++)
        ASSERT_EQ(i, list[static_cast<size_t>(i)]);
    list.pop_back();
    EXPECT_EQ(99998, list.back());
}

}   // namespace
}   // namespace vela
