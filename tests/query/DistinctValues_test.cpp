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

TEST(DistinctValues, NewIsWhatEqualsNoneTaken)
{
    const VelaValue nan = VelaValue::Double(std::nan(""));
    const VelaValue two = VelaValue::Integer(2);
    struct {
        VelaValue taken;
        VelaValue value;
        bool isNew;
        const char* why;
    } cases[] = {
        {two, two, false, "the same number"},
        {two, VelaValue::Integer(3), true, "another one"},
        {VelaValue::Boolean(true), VelaValue::Integer(1), false, "TRUE is 1"},
        {VelaValue::Integer(1), VelaValue::Boolean(true), false, "1 is TRUE"},
        {Text("2 eggs"), two, false, "an Integer takes the other's number"},
        {two, Text("2 eggs"), true, "a text takes the other's text"},
        {two, Text("2"), false, "which may be the same"},
        {VelaValue::Double(2.9), two, false, "the number truncated"},
        {two, VelaValue::Double(2), true, "a Double converts nothing"},
        {VelaValue::Double(2), VelaValue::Double(2), false, "and equals itself"},
        {VelaValue::Double(0.0), VelaValue::Double(-0.0), false, "zeros are equal"},
        {nan, nan, true, "not-a-number equals nothing"},
        {VelaValue::Integer(0), VelaValue::Double(0.0), false, "the bits of 0 are those of 0.0"},
        {VelaValue::Double(0.0), VelaValue::Integer(0), false, "0.0 truncated"},
        {Text("a"), Text("a"), false, "the same text"},
        {Text("a"), Text("A"), true, "in another case"},
        {Text(""), Text(""), false, "the empty text"},
        {Binary("a"), Text("a"), false, "bytes and texts"},
        {VelaValue::String(string("a\0b", 3, kEncodingASCII)),
         VelaValue::String(string("a\0c", 3, kEncodingASCII)), true, "NUL does not end a text"},
        {Date("1994-07-09"), Date("1994-07-09"), true, "the other date has its prefix"},
        {Date("1994-07-09"), Text("DATE 1994-07-09"), false, "so a text with it is equal"},
        {Text("1994-07-09"), Date("1994-07-09"), false, "and a date equals a text without"},
        {VelaValue::Boolean(true), Text("TRUE"), false, "the word"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.isNew, !c.value.Equals(c.taken)) << c.why;
        DistinctValues values;
        EXPECT_TRUE(values.Take(c.taken)) << c.why;
        EXPECT_EQ(c.isNew, values.Take(c.value)) << c.why;
        EXPECT_TRUE(values.Take(VelaValue::Integer(1000))) << c.why;
        EXPECT_EQ(c.isNew && !c.value.Equals(c.value), values.Take(c.value))
            << c.why << ", asked again";
    }
}

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
