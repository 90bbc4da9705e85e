#include "engine/storage/RowSet.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/storage/StorageTesting.h"

namespace vela {

TEST(RowSet, AgreesWithASet)
{
    for (uint32_t seed = 1; seed <= 20; seed++) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TestRandom random(seed);
        const uint32_t range = 1u << (6 + random.Below(12));
        const uint32_t start = random.OneIn(2) ? 0u - range : random.Next();
        RowSet set;
        std::set<uint32_t> model;
        for (int step = 0; step < 1000; step++) {
            const uint32_t rowID = random.OneIn(16) ? random.Next() : start + random.Below(range);
            if (!random.OneIn(4))
                ASSERT_EQ(model.insert(rowID).second, set.Insert(rowID)) << rowID;
            else if (model.erase(rowID) == 1)
                set.Remove(rowID);
            ASSERT_EQ(model.count(rowID) != 0, set.Contains(rowID)) << rowID;
            ASSERT_EQ(model.size(), set.Count());
        }
        std::set<uint32_t> found;
        EXPECT_TRUE(set.ForEach([&](uint32_t rowID) { return found.insert(rowID).second; }));
        EXPECT_EQ(model, found);
        size_t taken = 0;
        EXPECT_FALSE(set.ForEach([&taken](uint32_t) { return ++taken < 3; }));
        EXPECT_EQ(3u, taken);
        set.Clear();
        EXPECT_EQ(0u, set.Count());
        EXPECT_FALSE(set.Contains(*model.begin()));
    }
}

}   // namespace vela
