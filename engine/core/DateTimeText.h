#pragma once

#include <string_view>

#include "runtime/String.h"

namespace vela {

// The canonical texts of the date and the time that a text holds, in US-ASCII. Nothing is checked
// against the calendar or the clock: month 13 and hour 99 pass. A text without the parts gives
// zeros.

// "YYYY-MM-DD". The parts stand around the first "-" of the text, or when it has none, its first
// "/": the year is the run of digits just before it, the month one or two digits just after it, the
// day one or two digits just after the next such separator. A year of more than four digits prints
// as it is, without leading zeros.
[[nodiscard]] string DateText(std::string_view text);

// "HH:MM:SS". The parts stand around the first ":" of the text: the hour is the one or two digits
// just before it, the minute one or two digits just after it, the second one or two digits just
// after the next ":".
[[nodiscard]] string TimeText(std::string_view text);

}   // namespace vela
