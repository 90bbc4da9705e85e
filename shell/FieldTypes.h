#pragma once

#include <string_view>

#include "engine/core/VelaValue.h"

namespace vela::shell {

// What texts of imported fields are values of.

// FieldTypes finds the type of a column that is to hold all of the texts it is shown. A type is
// chosen only when each text is what the type's value would be written as, give or take the
// letters' case and the form of a number, so that nothing is lost:
//
//   Integer    a whole number of 32 bits, without "+" or leading zeros
//   Double     other decimal numbers, with exponents too, that a double holds to the last digit
//              written, up to 17 digits; "nan", "inf" and "-inf" beside them
//   Boolean    true, false
//   Date       a date that is in the calendar, as 2026-11-21
//   Time       a time of day, as 09:05:00
//   Timestamp  both, with a blank between
//   String     everything else, and a column without any text
class FieldTypes {
public:
    // Fields without a value are not shown. The empty text makes the column a String.
    void Add(std::string_view text);
    [[nodiscard]] VelaDataType Type() const;

private:
    bool mHasText = false;
    bool mHasNumber = false;   // other than nan and the infinities
    unsigned mPossible = ~0u;
};

// Converts a field for a column of that type, more leniently than FieldTypes: Boolean takes t, f,
// 1 and 0 too, dates may be written with "/", with one digit for a month or day, and need not be
// in the calendar, times may lack the seconds. False: the text is not a value of the type; the
// engine would make 0 or the like of it.
[[nodiscard]] bool ConvertField(std::string_view text, VelaDataType type, VelaValue* value);

}   // namespace vela::shell
