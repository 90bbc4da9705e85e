#include "engine/storage/RemovedRows.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace vela {
namespace {

template <class Item>
std::vector<Item> Without(const std::vector<Item>& items, const std::vector<uint32_t>& rows)
{
    std::vector<Item> left;
    for (uint32_t row = 0; row < items.size(); row++)
        if (std::find(rows.begin(), rows.end(), row) == rows.end())
            left.push_back(items[row]);
    return left;
}

}   // namespace

// Numbers are moved without asking, flags are bits, and texts must not be moved onto themselves.
TEST(RemovedRows, ListsLoseTheSameRows)
{
    std::mt19937 random(1);
    for (int round = 0; round < 300; round++) {
        std::vector<uint32_t> numbers(1 + random() % 50);
        std::vector<bool> flags(numbers.size());
        std::vector<std::string> texts(numbers.size());
        for (size_t i = 0; i < numbers.size(); i++) {
            numbers[i] = static_cast<uint32_t>(random());
            flags[i] = numbers[i] % 2 == 0;
            texts[i] = std::string(20, static_cast<char>('a' + i));
        }
        std::vector<uint32_t> rows(1 + random() % (round % 2 == 0 ? 2 * numbers.size() : 2));
        for (uint32_t& row : rows)
            row = static_cast<uint32_t>(random() % numbers.size());
        const auto numbersLeft = Without(numbers, rows);
        const auto flagsLeft = Without(flags, rows);
        const auto textsLeft = Without(texts, rows);
        const RemovedRows removed(rows);
        std::vector<uint32_t> none;
        removed.RemoveFrom(&none);
        removed.RemoveFrom(&numbers);
        removed.RemoveFrom(&flags);
        removed.RemoveFrom(&texts);
        ASSERT_TRUE(none.empty());
        ASSERT_EQ(numbersLeft, numbers);
        ASSERT_EQ(flagsLeft, flags);
        ASSERT_EQ(textsLeft, texts);
    }
}

}   // namespace vela
