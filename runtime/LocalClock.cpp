#include "runtime/LocalClock.h"

#include <time.h>

namespace vela {

LocalTime CurrentLocalTime()
{
    tzset();   // localtime_r alone need not notice that TZ has changed
    const time_t now = time(nullptr);
    struct tm local = {};
    localtime_r(&now, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

}   // namespace vela
