#include "engine/query/VelaFunctions.h"

#include <gtest/gtest.h>

#include <limits>

#include "engine/query/VExprScalarFunc.h"
#include "engine/storage/VelaDatabase.h"
#include "tests/query/ExprTesting.h"
#include "tests/storage/MemoryFileAccess.h"
#include "tests/storage/StorageTesting.h"

namespace vela {
namespace {

const VelaValue kNull;

// An argument that may be absent.
struct Argument {
    Argument() = default;
    Argument(const VelaValue& argument) : value(argument), given(true) {}
    Argument(int number) : Argument(I(number)) {}
    Argument(const char* text) : Argument(Text(text)) {}

    const VelaValue* Pointer() const { return given ? &value : nullptr; }

    VelaValue value;
    bool given = false;
};

// What the function comes to without a database: "Integer 5", "NULL None", "refused".
std::string Call(VelaFuncCode code, const Argument& arg1 = {}, const Argument& arg2 = {},
                 const Argument& arg3 = {})
{
    VelaValue result = Text("untouched");
    if (VelaFuncEval(code, nullptr, arg1.Pointer(), arg2.Pointer(), arg3.Pointer(), &result))
        return Shown(result);
    return Shown(result) == "String untouched" ? "refused" : "refused, but changed the result";
}

TEST(VelaFunctions, NamesLeadToCodesInAnyLetterCase)
{
    for (int i = kFuncBitLength; i <= kFuncSum; i++) {
        string name = VelaFuncName(static_cast<VelaFuncCode>(i)).Lowercase();
        const std::string before(name.View());
        VelaFuncCode code = kFuncBitLength;
        EXPECT_TRUE(GetVelaFuncCode(&name, &code)) << before;
        EXPECT_EQ(i, code) << before;
        EXPECT_EQ(before, std::string(name.View())) << "the name is not normalised";
    }
    VelaFuncCode found = kFuncBitLength;
    EXPECT_TRUE(FindVelaFunc("character_LENGTH", &found));
    EXPECT_EQ(kFuncCharLength, found);
    EXPECT_TRUE(FindVelaFunc("sum", &found));
    EXPECT_EQ(kFuncSum, found);
    for (const char* other : {"", "_sum", "SUMS", "SU", "[UM", "\xD3UM", "k"})
        EXPECT_FALSE(FindVelaFunc(other, &found)) << other;
    EXPECT_EQ(kFuncSum, found) << "left alone";
    string longName("Character_Length");
    EXPECT_TRUE(GetVelaFuncCode(&longName, nullptr));
    EXPECT_EQ("CHAR_LENGTH", longName) << "but this one is";
    for (const char* other : {"", "UPPE", "UPPERS", "CHARACTER_LENGT", "LENGTH", "UPPER "}) {
        string name(other);
        EXPECT_FALSE(GetVelaFuncCode(&name, nullptr)) << other;
    }
}

TEST(VelaFunctions, MissingArgumentsAreRefused)
{
    for (int code = kFuncBitLength; code <= kFuncSum; code++)
        EXPECT_EQ("refused", Call(static_cast<VelaFuncCode>(code))) << code;
    EXPECT_EQ("refused", Call(kFuncPosition, "a"));
    EXPECT_EQ("refused", Call(kFuncSubstring, "a"));
    EXPECT_EQ("refused", Call(kFuncPosition, {}, "a"));
    EXPECT_EQ("refused", Call(kFuncTrim, {}, "a", "BOTH"));
    EXPECT_EQ("refused", Call(kFuncLastRowID, "t")) << "there is no database";
    for (int code = kFuncAvg; code <= kFuncSum; code++)
        EXPECT_EQ("refused", Call(static_cast<VelaFuncCode>(code), 1, 1, 1)) << code;
}

// tests/sql/functions has the texts that a statement can say; here are other encodings, malformed
// texts, and nulls and numbers of all sizes.
TEST(VelaFunctions, EncodingsAndOddArguments)
{
    constexpr int kLargest = std::numeric_limits<int32_t>::max();
    const VelaValue malformed = UTF8(
        "\xC3"
        "a\x80\x80\x80"
        "b\xF0");
    const VelaValue wide = UTF16(u"abcd");
    const Argument none;
    const struct {
        VelaFuncCode code;
        Argument arguments[3];
        VelaValue result;
        const char* why;
    } cases[] = {
        {kFuncCharLength,
         {UTF8("\x80\x80"
               "a\xFF")},
         I(2),
         "stray bytes belong to a character"},
        {kFuncCharLength, {Text("caf\xC3\xA9")}, I(5), "bytes without an encoding"},
        {kFuncCharLength, {wide}, I(8), "two-byte characters are counted in bytes"},
        {kFuncBitLength, {wide}, I(64), "bits"},
        {kFuncByteLength, {Null(kTypeInteger)}, kNull, "null has no bytes"},
        {kFuncByteLength, {Binary("ab")}, kNull, "nor do other types"},
        {kFuncCharLength, {Null(kTypeString)}, I(4), "NULL is a word"},

        {kFuncPosition, {UTF8("\xC3\xA9t"), UTF8("\xA9")}, I(1), "inside a character: that one"},
        {kFuncPosition, {UTF8("\x80\x80z"), UTF8("z")}, I(2), "stray bytes are one character"},
        {kFuncPosition,
         {UTF8("\xC3\xA9t"), Latin1("\xE9")},
         I(1),
         "sought in the other's encoding"},
        {kFuncPosition, {Latin1("t\xE9"), UTF8("\xC3\xA9")}, I(2), "the other way"},
        {kFuncPosition, {Text("\xC3\xA9t"), "t"}, I(3), "bytes without an encoding"},
        {kFuncPosition, {wide, UTF16(u"c")}, I(2), "byte 5, halved"},
        {kFuncPosition, {wide, UTF16(u"b")}, I(1), "byte 3, halved"},
        {kFuncPosition, {wide, UTF16(u"a")}, I(0), "byte 1, halved"},
        {kFuncPosition,
         {wide, VelaValue::String(string("\0b", 2, kEncodingUTF16))},
         I(1),
         "every byte is tried; byte 2, halved"},
        {kFuncPosition, {wide, "c"}, I(2), "converted to two bytes a character"},
        {kFuncPosition, {wide, ""}, I(1), "nothing is not halved"},

        {kFuncSubstring,
         {malformed, 2, 1},
         UTF8("a\x80\x80\x80"),
         "stray bytes stay with a letter"},
        {kFuncSubstring, {malformed, 3, 9}, UTF8("b\xF0"), "a lead byte at the end is a character"},
        {kFuncSubstring, {malformed, 4, 9}, UTF8("\xF0"), "the last one"},
        {kFuncSubstring, {wide, 1, 2}, UTF16(u"ab"), "whole characters"},
        {kFuncSubstring, {wide, 2, none}, UTF16(u"bcd"), "no length: the rest"},
        {kFuncSubstring, {wide, 3, 9}, UTF16(u"cd"), "past the end"},
        {kFuncSubstring, {wide, 5, 1}, UTF16(u""), "at the end"},
        {kFuncSubstring, {wide, 0, 1}, UTF16(u"a"), "a start below 1"},
        {kFuncSubstring, {wide, kLargest, kLargest}, UTF16(u""), "overflow"},
        {kFuncSubstring, {wide, 2, kLargest}, UTF16(u"bcd"), "overflow of the length alone"},
        {kFuncSubstring, {wide, 2, -1}, UTF16(u""), "a negative length"},

        {kFuncTrim, {"  foo  ", kNull, kNull}, Text("foo"), "NULL arguments are none"},
        {kFuncTrim, {"  foo  ", none, "sideways"}, Text("foo"), "any other word is both"},
        {kFuncTrim, {UTF8("\xC3\xA9t\xC3\xA9"), Latin1("\xE9")}, UTF8("t"), "another encoding"},
        {kFuncTrim, {UTF16(u"  a b ")}, UTF16(u"a b"), "whole characters"},
        {kFuncTrim, {UTF16(u"aba"), "a"}, UTF16(u"b"), "converted to two bytes a character"},
        {kFuncTrim, {Latin1(" \xE9 ")}, Latin1("\xE9"), "the result keeps the encoding"},
        {kFuncLowercase, {Latin1("\xE9T")}, Latin1("\xE9t"), "the result keeps the encoding"},
    };
    for (const auto& c : cases) {
        VelaValue result;
        EXPECT_TRUE(VelaFuncEval(c.code, nullptr, c.arguments[0].Pointer(),
                                 c.arguments[1].Pointer(), c.arguments[2].Pointer(), &result))
            << c.why;
        EXPECT_EQ(ValueText(c.result), ValueText(result)) << c.why;
    }
}

TEST(VelaFunctions, PositionInALongTextOfFalseStartsEnds)
{
    const std::string text(2000000, 'a');
    const std::string sought = std::string(100000, 'a') + "b";
    const VelaValue searched = VelaValue::String(string(text, kEncodingASCII));
    EXPECT_EQ("Integer 0",
              Call(kFuncPosition, searched, VelaValue::String(string(sought, kEncodingASCII))));
}

TEST(VelaFunctions, ResultMayBeAnArgument)
{
    VelaValue value = Text("foo");
    ASSERT_TRUE(VelaFuncEval(kFuncUppercase, nullptr, &value, nullptr, nullptr, &value));
    EXPECT_EQ("String FOO", Shown(value));
    ASSERT_TRUE(VelaFuncEval(kFuncCharLength, nullptr, &value, nullptr, nullptr, &value));
    EXPECT_EQ("Integer 3", Shown(value));
}

TEST(VelaFunctions, TheClockIsThatOfTheDatabase)
{
    MemoryDisk disk;
    VelaDatabase database(std::make_unique<MemoryFileAccess>(&disk));
    database.UpdateClock();
    const std::pair<VelaFuncCode, const string&> cases[] = {
        {kFuncCurrentDate, database.CurrentDate()},
        {kFuncCurrentTime, database.CurrentTime()},
        {kFuncCurrentTimestamp, database.CurrentTimestamp()},
    };
    for (const auto& [code, text] : cases) {
        VelaValue result;
        ASSERT_TRUE(VelaFuncEval(code, &database, nullptr, nullptr, nullptr, &result));
        EXPECT_EQ(kTypeString, result.GetType());
        EXPECT_EQ(text, result.GetString());
        EXPECT_LE(8u, text.length());
        const VExprScalarFunc func(code, nullptr, nullptr, nullptr);
        ASSERT_TRUE(func.EvaluateInIsolation(&result, &database)) << "the database is handed on";
        EXPECT_EQ(text, result.GetString());
    }
}

}   // namespace
}   // namespace vela
