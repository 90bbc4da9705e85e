#pragma once

namespace vela {

// A moment of the platform's local calendar.
struct LocalTime {
    int year;     // for instance 2026
    int month;    // 1 to 12
    int day;      // 1 to 31
    int hour;     // 0 to 23
    int minute;   // 0 to 59
    int second;   // 0 to 60
};

// Now, in the time zone of the process.
[[nodiscard]] LocalTime CurrentLocalTime();

}   // namespace vela
