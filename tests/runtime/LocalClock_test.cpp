#include "runtime/LocalClock.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <time.h>

#include <string>

namespace vela {
namespace {

// Seconds since 1970 of a calendar moment, taken as UTC.
time_t AsUTC(const LocalTime& moment)
{
    struct tm parts = {};
    parts.tm_year = moment.year - 1900;
    parts.tm_mon = moment.month - 1;
    parts.tm_mday = moment.day;
    parts.tm_hour = moment.hour;
    parts.tm_min = moment.minute;
    parts.tm_sec = moment.second;
    return timegm(&parts);
}

TEST(LocalClock, FollowsTheTimeZoneOfTheProcess)
{
    const char* before = getenv("TZ");
    const std::string saved = before ? before : "";
    struct {
        const char* zone;
        int secondsEast;
    } cases[] = {{"UTC0", 0}, {"AAA-5:30", 19800}, {"BBB8", -28800}};
    for (const auto& c : cases) {
        setenv("TZ", c.zone, 1);
        const time_t earliest = time(nullptr);
        const LocalTime now = CurrentLocalTime();
        const time_t latest = time(nullptr);
        EXPECT_LE(earliest + c.secondsEast, AsUTC(now)) << c.zone;
        EXPECT_GE(latest + c.secondsEast, AsUTC(now)) << c.zone;
    }
    if (before)
        setenv("TZ", saved.c_str(), 1);
    else
        unsetenv("TZ");
    tzset();
}

}   // namespace
}   // namespace vela
