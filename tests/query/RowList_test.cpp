#include "engine/query/RowList.h"

#include <gtest/gtest.h>

#include <random>

namespace vela {
namespace {

std::vector<uint32_t> RowsOf(const RowList& list)
{
    std::vector<uint32_t> rows;
    for (uint32_t i = 0; i < list.Count(); i++)
        rows.push_back(list.At(i));
    return rows;
}

TEST(RowList, RangesAndLists)
{
    EXPECT_EQ(std::vector<uint32_t>(), RowsOf(RowList()));
    EXPECT_EQ((std::vector<uint32_t>{0, 1, 2}), RowsOf(RowList::Range(3)));
    EXPECT_EQ((std::vector<uint32_t>{7}), RowsOf(RowList::Range(1, 7)));
    EXPECT_EQ(std::vector<uint32_t>(), RowsOf(RowList::Range(0, 7)));
    EXPECT_EQ((std::vector<uint32_t>{5, 2}), RowsOf(RowList(LargeVector<uint32_t>{5, 2})));
}

// Against erasing one by one, for every choice of six rows, and for long lists; each row is asked about once, in order.
TEST(RowList, RetainKeepsWhatIsToBeKept)
{
    for (uint32_t choice = 0; choice < 64; choice++) {
        for (RowList list : {RowList::Range(6), RowList::Range(6, 100),
                             RowList(LargeVector<uint32_t>{9, 4, 7, 8, 1, 3})}) {
            const std::vector<uint32_t> before = RowsOf(list);
            std::vector<uint32_t> asked, expected;
            for (uint32_t i = 0; i < 6; i++) {
                if (choice >> i & 1)
                    expected.push_back(before[i]);
            }
            list.Retain([&](uint32_t row) {
                asked.push_back(row);
                return (choice >> (asked.size() - 1) & 1) != 0;
            });
            EXPECT_EQ(before, asked);
            EXPECT_EQ(expected, RowsOf(list)) << choice;
            list.Retain([](uint32_t row) { return row % 2 == 0; });
            std::erase_if(expected, [](uint32_t row) { return row % 2 != 0; });
            EXPECT_EQ(expected, RowsOf(list)) << choice << ", once more";
        }
    }
}

}   // namespace
}   // namespace vela
