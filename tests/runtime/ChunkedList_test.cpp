#include "runtime/ChunkedList.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

namespace vela {

TEST(ChunkedList, AgreesWithAVectorAndNeverMovesItsElements)
{
    std::mt19937 random(1);
    ChunkedList<uint32_t> list;
    std::vector<uint32_t> model;
    std::vector<const uint32_t*> places;
    const auto expectSame = [&] {
        ASSERT_EQ(model.size(), list.size());
        for (size_t i = 0; i < model.size(); i++) {
            ASSERT_EQ(model[i], list[i]) << i;
            ASSERT_EQ(places[i], &list[i]) << i;
        }
    };
    for (int step = 0; step < 20000; step++) {
        const bool shrinks = !model.empty() && random() % 4 == 0;
        if (shrinks) {
            const size_t kept = random() % 1000 == 0 ? random() % model.size() : model.size() - 1;
            if (kept + 1 == model.size())
                list.pop_back();
            else
                list.Shorten(kept);
            model.resize(kept);
        } else {
            model.push_back(static_cast<uint32_t>(random()));
            list.push_back(model.back());
        }
        if (model.size() > places.size())
            places.push_back(&list[places.size()]);
        if (step % 1000 == 0)
            expectSame();
    }
    expectSame();
    list.clear();
    EXPECT_TRUE(list.empty());
    list.push_back(7);
    EXPECT_EQ(7u, list[0]);
}

}   // namespace vela
