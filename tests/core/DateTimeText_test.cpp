#include "engine/core/DateTimeText.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace vela {
namespace {

TEST(DateTimeText, FindsDateAndTimeInTheText)
{
    struct {
        const char* text;
        const char* date;
        const char* time;
        const char* why;
    } cases[] = {
        {"", "0000-00-00", "00:00:00", "nothing"},
        {"no date", "0000-00-00", "00:00:00", "no separators"},
        {"1984-5-06", "1984-05-06", "00:00:00", ""},
        {"1984/05/06 12:34:56", "1984-05-06", "12:34:56", "slashes"},
        {"1984/05/06 12:34:6", "1984-05-06", "12:34:06", "one digit of seconds"},
        {"1984-5-6 8:4", "1984-05-06", "08:04:00", "no seconds"},
        {"DATE 1984-05-06", "1984-05-06", "00:00:00", "a word before the date"},
        {"1984-12-23", "1984-12-23", "00:00:00", "canonical, the date alone"},
        {"0000-00-00", "0000-00-00", "00:00:00", "canonical, nothing in it"},
        {"12:34:56", "0000-00-00", "12:34:56", "canonical, the time alone"},
        {"198-12-233", "0198-12-23", "00:00:00", "as long as a canonical date"},
        {"1984/12/23", "1984-12-23", "00:00:00", "likewise"},
        {"1984-1-x23", "1984-01-00", "00:00:00", "likewise"},
        {"1:23:456", "0000-00-00", "01:23:45", "as long as a canonical time"},
        {"12:34-56", "0034-56-00", "12:34:00", "likewise"},
        {"TIMESTAMP 1984-12-23 12:34:56", "1984-12-23", "12:34:56", "a word before both"},
        {"84-5-6", "0084-05-06", "00:00:00", "a short year"},
        {"1984-5", "1984-05-00", "00:00:00", "no day"},
        {"1984-", "1984-00-00", "00:00:00", "the year alone"},
        {"-5-6", "0000-05-06", "00:00:00", "no year"},
        {"-", "0000-00-00", "00:00:00", "the separator alone"},
        {"1984--6", "1984-00-06", "00:00:00", "no month"},
        {"x-1-2", "0000-01-02", "00:00:00", "a letter where the year ends"},
        {"1984 -5-6", "0000-05-06", "00:00:00", "a blank where the year ends"},
        {"1984- 5-6", "1984-00-06", "00:00:00", "a blank before the month"},
        {"1984-5- 6", "1984-05-00", "00:00:00", "a blank before the day"},
        {"1984-5 x-6", "1984-05-06", "00:00:00", "the next separator, wherever it is"},
        {"1984-123-456", "1984-12-45", "00:00:00", "two digits of each at most"},
        {"1984/5-6", "0005-06-00", "00:00:00", "the first - wins over a / before it"},
        {"1984/5/6/7", "1984-05-06", "00:00:00", "what follows is ignored"},
        {"12345-1-2", "12345-01-02", "00:00:00", "a year of five digits"},
        {"0012345-1-2", "12345-01-02", "00:00:00", "... without leading zeros"},
        {"00001-1-2", "0001-01-02", "00:00:00", "zeros beyond four digits go"},
        {"99999999999999999999-1-2", "99999999999999999999-01-02", "00:00:00",
         "no integer holds it"},
        {"1:2:3", "0000-00-00", "01:02:03", "one digit each"},
        {"99:99:99", "0000-00-00", "99:99:99", "no clock"},
        {"123:456:789", "0000-00-00", "23:45:78", "two digits of each at most"},
        {":5", "0000-00-00", "00:05:00", "no hour"},
        {"5:", "0000-00-00", "05:00:00", "no minute"},
        {"::7", "0000-00-00", "00:00:07", "seconds alone"},
        {"1: 2:3", "0000-00-00", "01:00:03", "a blank before the minute"},
        {"1 :2:3", "0000-00-00", "00:02:03", "a blank behind the hour"},
        {"12:34.5:6", "0000-00-00", "12:34:06", "the next colon, wherever it is"},
        {"5-6:7", "0005-06-00", "06:07:00", "date and time run into each other"},
        {"\xD9\xA1-1-1", "0000-01-01", "00:00:00", "digits of another script are none"},
    };
    for (const auto& c : cases) {
        EXPECT_STREQ(c.date, DateText(c.text).CString()) << c.text << ": " << c.why;
        EXPECT_STREQ(c.time, TimeText(c.text).CString()) << c.text << ": " << c.why;
        EXPECT_EQ(kEncodingASCII, DateText(c.text).Encoding());
        EXPECT_EQ(kEncodingASCII, TimeText(c.text).Encoding());
    }
}

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
