#include "runtime/StringArena.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace vela::test {

namespace {

struct Made {
    string text;
    std::string expected;
};

// Any of the changes that a string offers, on the string and on its expected text.
void Change(Made* made, std::mt19937* random)
{
    const size_t size = made->expected.size();
    const size_t some = (*random)() % (size + 30);
    switch ((*random)() % 7) {
        case 0:
            made->text += "more of it";
            made->expected += "more of it";
            break;
        case 1:
            made->text.Resize(some);
            made->expected.resize(some);
            break;
        case 2:
            made->text += made->text;
            made->expected += made->expected;
            break;
        case 3:
            if (some < size)
                made->text.MutableBytes()[some] = made->expected[some] = '!';
            break;
        case 4:
            ASSERT_TRUE(made->text.Reserve(size + 100));
            break;
        case 5:
            made->text += 'd';
            made->expected += 'd';
            break;
        case 6:   // a part of itself
            made->text += made->text.View().substr(std::min(size, some));
            made->expected += std::string(made->expected, std::min(size, some));
            break;
    }
}

}   // namespace

TEST(StringArena, ItsStringsAreLikeOthersAndOutliveIt)
{
    std::mt19937 random(1);
    auto arena = std::make_unique<StringArena>();
    std::vector<Made> kept;
    for (int i = 0; i < 20000; i++) {
        if (i == 15000)
            arena.reset();   // others of its strings are still changed after it
        if (arena) {
            const std::string text(random() % 20 == 0 ? random() % 40000 : random() % 60,
                                   static_cast<char>('a' + i % 26));
            kept.push_back({arena->Make(text, kEncodingUTF8), text});
        }
        const size_t one = random() % kept.size();
        const size_t other = random() % kept.size();
        if (random() % 3 == 0)
            kept[one] = kept[other];   // two that share their bytes
        if (kept[one].expected.size() < 50000)
            Change(&kept[one], &random);
        if (kept.size() > 300)
            kept.erase(kept.begin() + static_cast<std::ptrdiff_t>(other));
    }
    for (const Made& made : kept) {
        EXPECT_EQ(made.expected, made.text.View());
        EXPECT_EQ('\0', made.text.CString()[made.text.length()]);
    }
}

TEST(StringArena, KeepsTheEncodingOfEachText)
{
    StringArena arena;
    const string text = arena.Make("a", kEncodingUTF8);
    EXPECT_EQ(kEncodingUTF8, text.Encoding());
    EXPECT_EQ(kEncodingUTF8, arena.Make("", kEncodingUTF8).Encoding());
    EXPECT_EQ(kEncodingASCII, arena.Make("", kEncodingASCII).Encoding());
    string retagged = text;
    retagged.SetEncoding(kEncodingASCII);
    EXPECT_EQ(kEncodingUTF8, text.Encoding());
}

}   // namespace vela::test
