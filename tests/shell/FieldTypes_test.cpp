#include "shell/FieldTypes.h"

#include <gtest/gtest.h>

#include <vector>

#include "engine/core/VelaDataType.h"

namespace vela::shell {
namespace {

TEST(FieldTypes, FindsTheTypeThatLosesNothing)
{
    const struct {
        std::vector<const char*> texts;
        VelaDataType type;
        const char* why;
    } cases[] = {
        {{}, kTypeString, "no text at all"},
        {{""}, kTypeString, "the empty text"},
        {{"1", ""}, kTypeString, "the empty text is no number"},
        {{"0", "-1", "2147483647", "-2147483648"}, kTypeInteger, "all of 32 bits"},
        {{"2147483648"}, kTypeDouble, "one more"},
        {{"-2147483649"}, kTypeDouble, "one less"},
        {{"007"}, kTypeString, "leading zeros are a code's, not a number's"},
        {{"+1"}, kTypeString, "a plus would be lost"},
        {{"-0"}, kTypeDouble, "an Integer has no negative zero"},
        {{"1", "1.5"}, kTypeDouble, "whole and decimal numbers"},
        {{"0.5", ".5", "5.", "-1.25e-7", "1E5"}, kTypeDouble, "forms of decimal numbers"},
        {{"."}, kTypeString, "no digits"},
        {{"1e"}, kTypeString, "no exponent"},
        {{"1.5x"}, kTypeString, "something behind"},
        {{" 1"}, kTypeString, "a blank before"},
        {{"0x10"}, kTypeString, "no hexadecimal numbers"},
        {{"1e999"}, kTypeString, "beyond the doubles"},
        {{"1e-999"}, kTypeString, "below the doubles"},
        {{"0e-999"}, kTypeDouble, "but zero is zero"},
        {{"-9007199254740991"}, kTypeDouble, "2^53 - 1: all below are exact"},
        {{"9007199254740992"}, kTypeString, "2^53 is what 2^53 + 1 would become"},
        {{"0.30000000000000004"}, kTypeDouble, "17 digits tell doubles apart"},
        {{"0.300000000000000041"}, kTypeString, "18 digits are too many"},
        {{"0.00000012345678901234567"}, kTypeDouble, "zeros at the start don't count"},
        {{"nan", "inf", "-inf", "1"}, kTypeDouble, "not a number beside a number"},
        {{"nan"}, kTypeString, "alone it may be a name"},
        {{"true", "FALSE", "False"}, kTypeBoolean, "letters' case doesn't matter"},
        {{"true", "1"}, kTypeString, "mixed with numbers"},
        {{"2026-11-21", "2000-02-29"}, kTypeDate, "dates"},
        {{"2000-01-31", "2000-12-31", "2001-02-28", "2001-11-30"},
         kTypeDate,
         "last days of months"},
        {{"2026-02-29"}, kTypeString, "no leap year"},
        {{"1900-02-29"}, kTypeString, "nor was that one"},
        {{"2026-13-01"}, kTypeString, "no such month"},
        {{"2026-00-01"}, kTypeString, "nor that"},
        {{"2026-04-31"}, kTypeString, "no such day"},
        {{"2026-1-1"}, kTypeString, "would be stored in another form"},
        {{"00:00:00", "23:59:59"}, kTypeTime, "times"},
        {{"24:00:00"}, kTypeString, "no such hour"},
        {{"12:60:00"}, kTypeString, "no such minute"},
        {{"2026-11-21 09:05:00"}, kTypeTimestamp, "a timestamp"},
        {{"2026-11-21T09:05:00"}, kTypeString, "with a T it would be stored in another form"},
        {{"2026-11-21", "2026-11-21 09:05:00"}, kTypeString, "dates and timestamps"},
    };
    for (const auto& c : cases) {
        FieldTypes types;
        for (const char* text : c.texts)
            types.Add(text);
        EXPECT_STREQ(DataTypeName(c.type), DataTypeName(types.Type())) << c.why;
    }
}

TEST(FieldTypes, ConvertsWhatTheTypeHoldsAndRefusesTheRest)
{
    const struct {
        const char* text;
        VelaDataType type;
        const char* stored;   // as GetSaveString; null: refused
    } cases[] = {
        {"42", kTypeInteger, "42"},
        {"007", kTypeInteger, "7"},
        {"+7", kTypeInteger, "7"},
        {"+-7", kTypeInteger, nullptr},
        {"2147483648", kTypeInteger, nullptr},
        {"99999999999999999999999999", kTypeInteger, nullptr},
        {"1.0", kTypeInteger, nullptr},
        {"", kTypeInteger, nullptr},
        {"+.5", kTypeDouble, "0.5"},
        {"-inf", kTypeDouble, "-inf"},
        {"1e999", kTypeDouble, nullptr},
        {"1,5", kTypeDouble, nullptr},
        {"T", kTypeBoolean, "TRUE"},
        {"0", kTypeBoolean, "FALSE"},
        {"no", kTypeBoolean, nullptr},
        {"2026-1-2", kTypeDate, "2026-01-02"},
        {"2026-1/2", kTypeDate, nullptr},
        {"0000-00-00", kTypeDate, "0000-00-00"},
        {"12/25/1999", kTypeDate, nullptr},
        {"2026-01-02 ", kTypeDate, nullptr},
        {"9:05", kTypeTime, "09:05:00"},
        {"9", kTypeTime, nullptr},
        {"2026-1-2T9:05", kTypeTimestamp, "2026-01-02 09:05:00"},
        {"2026-1-2", kTypeTimestamp, nullptr},
        {"", kTypeString, ""},
        {"any", kTypeBinary, "any"},
    };
    for (const auto& c : cases) {
        VelaValue value;
        const bool isConverted = ConvertField(c.text, c.type, &value);
        EXPECT_EQ(c.stored != nullptr, isConverted) << c.text << " as " << DataTypeName(c.type);
        if (c.stored && isConverted) {
            EXPECT_EQ(c.stored, value.GetSaveString().View()) << c.text;
        }
    }
}

}   // namespace
}   // namespace vela::shell
