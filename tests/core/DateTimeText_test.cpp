#include "engine/core/DateTimeText.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace vela {
namespace {

// tests/sql/dates/texts.sql has what is found in which text.
TEST(DateTimeText, CanonicalTextsAreTheirOwnCanonicalTexts)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const char letters[] = "0123456789-/: Tx";
    for (int i = 0; i < 100000; i++) {
        std::string text;
        for (size_t size = random() % 24; size > 0; size--)
            text += letters[random() % (sizeof letters - 1)];
        const string date = DateText(text);
        const string time = TimeText(text);
        ASSERT_EQ(kEncodingASCII, date.Encoding());
        ASSERT_EQ(kEncodingASCII, time.Encoding());
        ASSERT_TRUE(date == DateText(date.View())) << text;
        ASSERT_TRUE(time == TimeText(time.View())) << text;
        const std::string both = std::string(date.View()) + " " + std::string(time.View());
        ASSERT_TRUE(date == DateText(both)) << text;
        ASSERT_TRUE(time == TimeText(both)) << text;
    }
}

TEST(DateTimeText, ReadsNothingBeyondTheText)
{
    const char text[] = "1984-05-06 12:34:56";
    EXPECT_STREQ("1984-00-00", DateText(std::string_view(text, 5)).CString());
    EXPECT_STREQ("1984-05-00", DateText(std::string_view(text, 8)).CString());
    EXPECT_STREQ("1984-05-00", DateText(std::string_view(text, 7)).CString());
    EXPECT_STREQ("12:03:00", TimeText(std::string_view(text, 15)).CString());
    EXPECT_STREQ("34:05:00", TimeText(std::string_view(text + 3 + 11, 4)).CString());
    const std::string digits(100000, '7');
    EXPECT_EQ(digits + "-01-02", DateText(digits + "-1-2").CString());
}

}   // namespace
}   // namespace vela
