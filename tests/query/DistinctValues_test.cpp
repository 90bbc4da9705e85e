#include "engine/query/DistinctValues.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

// The definition: each value is compared with all taken before.
class PlainDistinctValues {
public:
    bool Take(const VelaValue& value)
    {
        for (const VelaValue& taken : mTaken) {
            if (value.Equals(taken))
                return false;
        }
        mTaken.push_back(value);
        return true;
    }

private:
    std::vector<VelaValue> mTaken;
};

VelaValue RandomValue(std::mt19937& random, size_t kinds)
{
    const int32_t number = static_cast<int32_t>(random() % 7) - 2;
    const std::string digits = std::to_string(number);
    switch (random() % kinds) {
        case 0:
            return VelaValue::Integer(number);
        case 1:
            return Text(digits.c_str());
        case 2:
            return VelaValue::Double(number / 2.0);
        case 3:
            return VelaValue::Boolean(number > 0);
        case 4:
            return Date(digits.c_str());
        case 5:
            return Text(("DATE " + digits).c_str());
        case 6:
            return VelaValue::Double(std::nan(""));
        default:
            return Binary(digits.c_str());
    }
}

TEST(DistinctValues, RandomSequencesAnswerAsComparingWithAll)
{
    const unsigned seed = std::random_device()();
    std::mt19937 random(seed);
    for (int round = 0; round < 2000; round++) {
        DistinctValues values;
        PlainDistinctValues plain;
        const size_t kinds = random() % 8 + 1;
        for (int i = 0; i < 30; i++) {
            const VelaValue value = RandomValue(random, kinds);
            ASSERT_EQ(plain.Take(value), values.Take(value))
                << Shown(value) << ", step " << i << ", seed " << seed;
        }
    }
}

// Comparing each with all would take longer than anybody waits.
TEST(DistinctValues, ManyValuesOfOneTypeEnd)
{
    DistinctValues integers;
    DistinctValues doubles;
    DistinctValues texts;
    for (int i = 0; i < 300000; i++) {
        const int number = i % 150000;
        ASSERT_EQ(i < 150000, integers.Take(VelaValue::Integer(number)));
        ASSERT_EQ(i < 150000, doubles.Take(VelaValue::Double(number)));
        ASSERT_EQ(i < 150000, texts.Take(Text(std::to_string(number).c_str())));
    }
}

}   // namespace
}   // namespace vela
