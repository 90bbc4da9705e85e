#include "engine/query/VelaFunctions.h"

#include <gtest/gtest.h>

#include <limits>

#include "engine/query/VExprScalarFunc.h"
#include "engine/storage/VelaDatabase.h"
#include "tests/query/ExprTesting.h"
#include "tests/storage/MemoryFileAccess.h"

namespace vela {
namespace {

const VelaValue kNull;

// An argument that may be absent.
struct Argument {
    Argument() = default;
    Argument(const VelaValue& argument) : value(argument), given(true) {}
    Argument(int number) : Argument(VelaValue::Integer(number)) {}
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

TEST(VelaFunctions, NamesAndResultTypesByCode)
{
    struct {
        VelaFuncCode code;
        int number;
        const char* name;
        VelaDataType type;
    } cases[] = {
        {kFuncBitLength, 0, "BIT_LENGTH", kTypeInteger},
        {kFuncByteLength, 1, "OCTET_LENGTH", kTypeInteger},
        {kFuncCharLength, 2, "CHAR_LENGTH", kTypeInteger},
        {kFuncCurrentDate, 3, "CURRENT_DATE", kTypeString},
        {kFuncCurrentTime, 4, "CURRENT_TIME", kTypeString},
        {kFuncCurrentTimestamp, 5, "CURRENT_TIMESTAMP", kTypeString},
        {kFuncLowercase, 6, "LOWER", kTypeString},
        {kFuncUppercase, 7, "UPPER", kTypeString},
        {kFuncPosition, 8, "POSITION", kTypeInteger},
        {kFuncSubstring, 9, "SUBSTRING", kTypeString},
        {kFuncTrim, 10, "TRIM", kTypeString},
        {kFuncLastRowID, 11, "LAST_ROWID", kTypeInteger},
        {kFuncAvg, 12, "AVG", kTypeInteger},
        {kFuncCount, 13, "COUNT", kTypeInteger},
        {kFuncMax, 14, "MAX", kTypeInteger},
        {kFuncMin, 15, "MIN", kTypeInteger},
        {kFuncSum, 16, "SUM", kTypeInteger},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.number, c.code) << c.name;
        EXPECT_EQ(c.type, VelaFuncResultType(c.code)) << c.name;
        EXPECT_EQ(c.name, VelaFuncName(c.code));
        EXPECT_EQ(kEncodingASCII, VelaFuncName(c.code).Encoding()) << c.name;

        string name(c.name);
        VelaFuncCode code = kFuncBitLength;
        EXPECT_TRUE(GetVelaFuncCode(&name, &code)) << c.name;
        EXPECT_EQ(c.code, code) << c.name;
        string lowercase = string(c.name).Lowercase();
        EXPECT_TRUE(GetVelaFuncCode(&lowercase, nullptr)) << c.name;
        EXPECT_EQ(string(c.name).Lowercase(), lowercase) << "the name is not normalised";
    }
}

TEST(VelaFunctions, GetVelaFuncCode_ReplacesTheLongNameOfCharLength)
{
    for (const char* spelling : {"CHARACTER_LENGTH", "character_length", "Character_Length"}) {
        string name(spelling);
        VelaFuncCode code = kFuncSum;
        EXPECT_TRUE(GetVelaFuncCode(&name, &code));
        EXPECT_EQ(kFuncCharLength, code);
        EXPECT_EQ("CHAR_LENGTH", name);
    }
}

TEST(VelaFunctions, GetVelaFuncCode_RefusesOtherNames)
{
    for (const char* other : {"", "UPPE", "UPPERS", "CHARACTER_LENGT", "LENGTH", "UPPER "}) {
        string name(other);
        VelaFuncCode code = kFuncSum;
        EXPECT_FALSE(GetVelaFuncCode(&name, &code)) << other;
        EXPECT_EQ(kFuncSum, code) << other;
        EXPECT_EQ(other, name);
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

TEST(VelaFunctions, Lengths)
{
    struct {
        Argument argument;
        const char* bits;
        const char* bytes;
        const char* characters;
    } cases[] = {
        {"foo", "Integer 24", "Integer 3", "Integer 3"},
        {"", "Integer 0", "Integer 0", "Integer 0"},
        {-2000000000, "Integer 32", "Integer 4", "Integer 11"},
        {5, "Integer 32", "Integer 4", "Integer 1"},
        {UTF8("caf\xC3\xA9"), "Integer 40", "Integer 5", "Integer 4"},
        {UTF8("\xE2\x82\xAC\xF0\x9F\x98\x80"), "Integer 56", "Integer 7", "Integer 2"},
        {UTF8("\x80\x80"
              "a\xFF"),
         "Integer 32", "Integer 4", "Integer 2"},
        {Text("caf\xC3\xA9"), "Integer 40", "Integer 5", "Integer 5"},
        {UTF16(u"ab"), "Integer 32", "Integer 4", "Integer 4"},
        {VelaValue::Double(2.5), "NULL None", "NULL None", "Integer 3"},
        {VelaValue::Boolean(true), "NULL None", "NULL None", "Integer 4"},
        {Date("1994-07-09"), "NULL None", "NULL None", "Integer 15"},
        {Binary("ab"), "NULL None", "NULL None", "Integer 2"},
        {kNull, "NULL None", "NULL None", "Integer 4"},
        {VelaValue::Null(kTypeInteger), "NULL None", "NULL None", "Integer 4"},
        {VelaValue::Null(kTypeString), "NULL None", "NULL None", "Integer 4"},
    };
    for (const auto& c : cases) {
        const std::string shown = Shown(c.argument.value);
        EXPECT_EQ(c.bits, Call(kFuncBitLength, c.argument)) << shown;
        EXPECT_EQ(c.bytes, Call(kFuncByteLength, c.argument)) << shown;
        EXPECT_EQ(c.characters, Call(kFuncCharLength, c.argument)) << shown;
    }
}

TEST(VelaFunctions, LowerAndUpper)
{
    struct {
        Argument argument;
        const char* lower;
        const char* upper;
    } cases[] = {
        {"FOO", "String foo", "String FOO"},
        {"foo", "String foo", "String FOO"},
        {"@AZ[`az{", "String @az[`az{", "String @AZ[`AZ{"},
        {"", "String ", "String "},
        {42, "String 42", "String 42"},
        {VelaValue::Boolean(true), "String true", "String TRUE"},
        {Date("1994-07-09"), "String date 1994-07-09", "String DATE 1994-07-09"},
        {kNull, "String null", "String NULL"},
        {UTF8("\xC3\x89t\xC3\xA9"), "String \xC3\xA9t\xC3\xA9", "String \xC3\x89T\xC3\x89"},
        {Text("\xC3\x89t\xC3\xA9"), "String \xC3\x89t\xC3\xA9", "String \xC3\x89T\xC3\xA9"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.lower, Call(kFuncLowercase, c.argument));
        EXPECT_EQ(c.upper, Call(kFuncUppercase, c.argument));
    }
}

TEST(VelaFunctions, PositionCountsCharacters)
{
    struct {
        Argument searched;
        Argument sought;
        const char* position;
        const char* why;
    } cases[] = {
        {"foobar", "foo", "Integer 1", "at the start"},
        {"foobar", "oo", "Integer 2", "inside"},
        {"foobar", "r", "Integer 6", "at the end"},
        {"foobar", "bars", "Integer 0", "runs past the end"},
        {"foobar", "B", "Integer 0", "letter case counts"},
        {"foobar", "", "Integer 1", "nothing is everywhere"},
        {"", "", "Integer 1", "also in nothing"},
        {"", "a", "Integer 0", "nothing holds nothing else"},
        {"abababac", "abac", "Integer 5", "after false starts"},
        {"x1994", Date("1994"), "Integer 0", "a date has its prefix"},
        {Date("1994-07-09"), "1994", "Integer 6", "here, too"},
        {12345, 34, "Integer 3", "numbers by their digits"},
        {"a NULL", kNull, "Integer 3", "NULL is a word"},
        {UTF8("\xC3\xA9t\xC3\xA9"), UTF8("t"), "Integer 2", "characters, not bytes"},
        {UTF8("\xC3\xA9t\xC3\xA9"), UTF8("\xC3\xA9"), "Integer 1", "at the start"},
        {UTF8("t\xC3\xA9t\xC3\xA9z"), UTF8("z"), "Integer 5", "after several"},
        {UTF8("\xC3\xA9t\xC3\xA9"), UTF8("\xA9"), "Integer 1", "inside a character: that one"},
        {UTF8("\x80\x80z"), UTF8("z"), "Integer 2", "stray bytes are one character"},
        {UTF8("\xC3\xA9t"), VelaValue::String(string("\xE9", kEncodingLatin1)), "Integer 1",
         "the sought text in the encoding of the searched one"},
        {VelaValue::String(string("t\xE9", kEncodingLatin1)), UTF8("\xC3\xA9"), "Integer 2",
         "the other way"},
        {Text("\xC3\xA9t"), Text("t"), "Integer 3", "bytes without an encoding"},
        {UTF16(u"abc"), UTF16(u"c"), "Integer 2", "byte 5, halved"},
        {UTF16(u"abc"), UTF16(u"b"), "Integer 1", "byte 3, halved"},
        {UTF16(u"abc"), UTF16(u"a"), "Integer 0", "byte 1, halved"},
        {VelaValue::String(string("a\0b\0", 4, kEncodingUTF16)),
         VelaValue::String(string("\0b", 2, kEncodingUTF16)), "Integer 1",
         "every byte is tried; byte 2, halved"},
        {UTF16(u"abc"), "c", "Integer 2", "converted to two bytes a character"},
        {UTF16(u"abc"), "", "Integer 1", "nothing is not halved"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.position, Call(kFuncPosition, c.searched, c.sought)) << c.why;
}

TEST(VelaFunctions, PositionInALongTextOfFalseStartsEnds)
{
    const std::string text(2000000, 'a');
    const std::string sought = std::string(100000, 'a') + "b";
    const VelaValue searched = VelaValue::String(string(text, kEncodingASCII));
    EXPECT_EQ("Integer 0",
              Call(kFuncPosition, searched, VelaValue::String(string(sought, kEncodingASCII))));
}

TEST(VelaFunctions, SubstringTakesWhatIsThere)
{
    constexpr int kLargest = std::numeric_limits<int32_t>::max();
    constexpr int kSmallest = std::numeric_limits<int32_t>::min();
    const VelaValue utf8 = UTF8("a\xC3\xA9\xE2\x82\xACz");
    const VelaValue malformed = UTF8(
        "\xC3"
        "a\x80\x80\x80"
        "b\xF0");
    struct {
        Argument text;
        Argument start;
        Argument length;
        const char* substring;
        const char* why;
    } cases[] = {
        {"Foo", 1, {}, "String Foo", "all of it"},
        {"Foo", 1, 2, "String Fo", "the start"},
        {"Foo", 2, 2, "String oo", "the end"},
        {"Foo", 3, 1, "String o", "the last one"},
        {"Foo", 2, {}, "String oo", "no length: the rest"},
        {"Foo", 2, kNull, "String oo", "a NULL length is none"},
        {"Foo", 4, 1, "String ", "just past the end"},
        {"Foo", kLargest, kLargest, "String ", "far past the end"},
        {"Foo", 2, kLargest, "String oo", "start and length overflow"},
        {"Foo", 0, 2, "String Fo", "a start below 1 counts as 1"},
        {"Foo", -5, 2, "String Fo", "however far below"},
        {"Foo", kSmallest, 2, "String Fo", "even where one less wraps"},
        {"Foo", 2, 0, "String ", "no letters"},
        {"Foo", 2, -1, "String ", "a negative length counts as 0"},
        {"Foo", 2, kSmallest, "String ", "however negative"},
        {"Foo", kNull, 2, "String Fo", "a NULL start is 0, below 1"},
        {"Foo", "2 ", "1", "String o", "texts count by their number"},
        {"Foo", VelaValue::Double(2.9), VelaValue::Double(1.9), "String o", "Doubles truncate"},
        {12345, 2, 3, "String 234", "a number by its digits"},
        {Date("1994-07-09"), 6, 4, "String 1994", "a date with its prefix"},
        {kNull, 1, 2, "String NU", "NULL is a word"},
        {utf8, 2, 2, "String \xC3\xA9\xE2\x82\xAC", "characters, not bytes"},
        {utf8, 3, {}, "String \xE2\x82\xACz", "no length: the rest"},
        {utf8, 4, 5, "String z", "runs past the end"},
        {utf8, 5, 1, "String ", "past the end"},
        {utf8, kLargest, kLargest, "String ", "far past the end"},
        {malformed, 2, 1, "String a\x80\x80\x80", "stray bytes belong to the letter before"},
        {malformed, 3, 9, "String b\xF0", "a lead byte at the end is a character"},
        {malformed, 4, 9, "String \xF0", "the last one"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.substring, Call(kFuncSubstring, c.text, c.start, c.length)) << c.why;
}

TEST(VelaFunctions, SubstringOfTwoByteCharacters)
{
    constexpr int kLargest = std::numeric_limits<int32_t>::max();
    struct {
        int start;
        Argument length;
        std::u16string_view substring;
    } cases[] = {
        {1, 2, u"ab"}, {2, 1, u"b"},          {2, {}, u"bcd"}, {4, 1, u"d"},
        {5, 1, u""},   {0, 1, u"a"},          {3, 9, u"cd"},   {kLargest, kLargest, u""},
        {2, -1, u""},  {2, kLargest, u"bcd"},
    };
    for (const auto& c : cases) {
        VelaValue result;
        const VelaValue text = UTF16(u"abcd");
        const VelaValue start = VelaValue::Integer(c.start);
        ASSERT_TRUE(
            VelaFuncEval(kFuncSubstring, nullptr, &text, &start, c.length.Pointer(), &result));
        EXPECT_TRUE(UTF16(c.substring).TextView() == result.TextView())
            << c.start << ", " << Shown(c.length.value);
        EXPECT_EQ(kEncodingUTF16, result.StoredText().Encoding());
    }
}

TEST(VelaFunctions, TrimTakesTheTrimStringOffAsAUnit)
{
    struct {
        Argument text;
        Argument trimmed;
        Argument side;
        const char* rest;
        const char* why;
    } cases[] = {
        {"  foo  ", {}, {}, "String foo", "blanks on both sides"},
        {"  foo  ", " ", {}, "String foo", "named"},
        {"  foo  ", kNull, kNull, "String foo", "NULL arguments are none"},
        {"  foo  ", {}, "LEADING", "String foo  ", "the leading side"},
        {"  foo  ", {}, "leading", "String foo  ", "in lower case"},
        {"  foo  ", {}, "TRAILING", "String   foo", "the trailing side"},
        {"  foo  ", {}, "BOTH", "String foo", "both, named"},
        {"  foo  ", {}, "sideways", "String foo", "any other word is both"},
        {"  foo  ", "?", {}, "String   foo  ", "nothing to trim"},
        {"???foo???", "?", "TRAILING", "String ???foo", "another letter"},
        {"???foo???", "?", "LEADING", "String foo???", "the other side"},
        {"ababxab", "ab", {}, "String x", "a unit, not a set"},
        {"abaxbab", "ab", {}, "String axb", "what isn't a whole unit stays"},
        {"xfoox", "X", {}, "String xfoox", "letter case counts"},
        {"", {}, {}, "String ", "nothing"},
        {"foo", "", {}, "String foo", "an empty trim string"},
        {"foo", "foofoo", {}, "String foo", "a longer trim string"},
        {"   ", {}, {}, "String ", "all of it from the front"},
        {"   ", {}, "LEADING", "String ", "all of it, too"},
        {"   ", {}, "TRAILING", "String  ", "from the back one stays"},
        {" ", {}, "TRAILING", "String  ", "also the only one"},
        {"ababab", "ab", "TRAILING", "String ab", "also of a longer unit"},
        {"xabab", "ab", "TRAILING", "String x", "not when something is before it"},
        {" a", {}, "TRAILING", "String  a", "nothing behind"},
        {110, 1, {}, "String 0", "numbers by their digits"},
        {kNull, "N", {}, "String ULL", "NULL is a word"},
        {UTF8("\xC3\xA9t\xC3\xA9"), UTF8("\xC3\xA9"), {}, "String t", "a character of two bytes"},
        {UTF8("\xC3\xA9t\xC3\xA9"),
         VelaValue::String(string("\xE9", kEncodingLatin1)),
         {},
         "String t",
         "in another encoding"},
        {"\t foo", {}, {}, "String \t foo", "blanks only, not white space"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.rest, Call(kFuncTrim, c.text, c.trimmed, c.side)) << c.why;
}

TEST(VelaFunctions, TrimOfTwoByteCharactersKeepsThemWhole)
{
    VelaValue result;
    const VelaValue text = UTF16(u"  a b ");
    ASSERT_TRUE(VelaFuncEval(kFuncTrim, nullptr, &text, nullptr, nullptr, &result));
    EXPECT_TRUE(UTF16(u"a b").TextView() == result.TextView());
    const VelaValue letter = Text("a");
    const VelaValue letters = UTF16(u"aba");
    ASSERT_TRUE(VelaFuncEval(kFuncTrim, nullptr, &letters, &letter, nullptr, &result));
    EXPECT_TRUE(UTF16(u"b").TextView() == result.TextView());
}

TEST(VelaFunctions, ResultsKeepTheEncodingOfTheirArgument)
{
    for (const TextEncoding encoding : {kEncodingUTF8, kEncodingLatin1, kEncodingASCII}) {
        const VelaValue text = VelaValue::String(string(" Foo ", encoding));
        const VelaValue one = VelaValue::Integer(1);
        for (const VelaFuncCode code :
             {kFuncLowercase, kFuncUppercase, kFuncSubstring, kFuncTrim}) {
            VelaValue result;
            const VelaValue* second = code == kFuncSubstring ? &one : nullptr;
            ASSERT_TRUE(VelaFuncEval(code, nullptr, &text, second, nullptr, &result));
            EXPECT_EQ(encoding, result.StoredText().Encoding()) << VelaFuncName(code).CString();
        }
    }
}

TEST(VelaFunctions, ResultMayBeAnArgument)
{
    VelaValue value = Text("foo");
    ASSERT_TRUE(VelaFuncEval(kFuncUppercase, nullptr, &value, nullptr, nullptr, &value));
    EXPECT_EQ("String FOO", Shown(value));
    ASSERT_TRUE(VelaFuncEval(kFuncCharLength, nullptr, &value, nullptr, nullptr, &value));
    EXPECT_EQ("Integer 3", Shown(value));
}

// A new database in memory with the table t of one column.
class DatabaseFunctions : public testing::Test {
protected:
    void SetUp() override
    {
        database.Schema()->AddSchemaRow("t", 1, "a", kTypeInteger, 0, true, "");
        database.AddOpenTable(database.Schema()->CreateTable("t"));
    }

    void InsertRow()
    {
        VelaValueWithID value(VelaValue::Integer(42), 1);
        VelaRow row{&value};
        const auto position = static_cast<size_t>(database.FindOpenTable("t"));
        ASSERT_NE(kInvalidRowID, database.OpenTables()[position]->AddRow(row, false));
    }

    std::string LastRowID(const Argument& name)
    {
        VelaValue result = Text("untouched");
        const bool flag =
            VelaFuncEval(kFuncLastRowID, &database, name.Pointer(), nullptr, nullptr, &result);
        return flag ? Shown(result) : "refused";
    }

    MemoryDisk disk;
    VelaDatabase database{std::make_unique<MemoryFileAccess>(&disk)};
};

TEST_F(DatabaseFunctions, LastRowIDIsThatOfTheNamedTable)
{
    InsertRow();
    EXPECT_EQ("Integer 1", LastRowID("t"));
    InsertRow();
    EXPECT_EQ("Integer 2", LastRowID("t"));
    EXPECT_EQ("NULL None", LastRowID("T")) << "names are compared exactly";
    EXPECT_EQ("NULL None", LastRowID("u"));
    EXPECT_EQ("NULL None", LastRowID(kNull)) << "there is no table NULL";
    EXPECT_EQ("NULL None", LastRowID(5));
    EXPECT_EQ("refused", LastRowID({}));
}

TEST_F(DatabaseFunctions, TheClockIsThatOfTheDatabase)
{
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
