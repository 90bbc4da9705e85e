#include "engine/core/VelaValue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "engine/core/VelaValueWithID.h"
#include "tests/core/TestValues.h"

namespace vela {
namespace {

constexpr VelaDataType kAllTypes[] = {kTypeNone,      kTypeInteger, kTypeString,
                                      kTypeDouble,    kTypeDate,    kTypeTime,
                                      kTypeTimestamp, kTypeBoolean, kTypeBinary};

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// A value for a message: "String 'x'".
std::string Show(const VelaValue& value)
{
    const char* name = DataTypeName(value.GetType());
    return std::string(name ? name : "?") + " '" + value.GetSaveString().CString() + "'" +
           (value.IsNull() ? " null" : "");
}

TEST(VelaValue, IsSixteenBytesWithPayloadTypeAndFlagInOrder)
{
    EXPECT_EQ(16u, sizeof(VelaValue));
    EXPECT_EQ(16u, sizeof(VelaValueWithID)) << "the id lies in what the value leaves free";
    const VelaValue value = I(0x01020304);
    unsigned char bytes[sizeof value];
    memcpy(bytes, &value, sizeof value);
    EXPECT_EQ(kTypeInteger, bytes[8]);
    EXPECT_EQ(0, bytes[9]);
    const VelaValue null = Null(kTypeDate);
    memcpy(bytes, &null, sizeof null);
    for (int i = 0; i < 8; i++)
        EXPECT_EQ(0, bytes[i]) << i;
    EXPECT_EQ(kTypeDate, bytes[8]);
    EXPECT_NE(0, bytes[9]);
}

TEST(VelaValue, ConvertsToIntegerDoubleAndTexts)
{
    struct {
        VelaValue value;
        int32_t integer;
        double number;
        const char* display;
        const char* save;
        const char* why;
    } cases[] = {
        {I(42), 42, 42, "42", "42", ""},
        {I(INT32_MAX), INT32_MAX, 2147483647.0, "2147483647", "2147483647", ""},
        {I(INT32_MIN), INT32_MIN, -2147483648.0, "-2147483648", "-2147483648", ""},
        {D(2.5), 2, 2.5, "2.5", "2.5", "truncated"},
        {D(1e300), INT32_MAX, 1e300, "1.0e+300", "1.0e+300", "saturated"},
        {D(-1e300), INT32_MIN, -1e300, "-1.0e+300", "-1.0e+300", ""},
        {D(kInfinity), INT32_MAX, kInfinity, "inf", "inf", ""},
        {D(2147483647.5), INT32_MAX, 2147483647.5, "2147483647.5", "2147483647.5", ""},
        {Text("TRUE"), 0, 0, "TRUE", "TRUE", "no Boolean by its text"},
        {Text("NULL"), 0, 0, "NULL", "NULL", "no null by its text"},
        {Date("1984-05-06"), 0, 0, "DATE 1984-05-06", "1984-05-06", "no number in a date"},
        {Date(""), 0, 0, "DATE ", "", ""},
        {Date("odd"), 0, 0, "DATE odd", "odd", "as it is"},
        {Binary("42"), 0, 0, "42", "42", "no number in a binary"},
        {Null(kTypeNone), 0, 0, "NULL", "NULL", ""},
        {Null(kTypeInteger), 0, 0, "NULL", "NULL", ""},
        {Null(kTypeString), 0, 0, "NULL", "NULL", ""},
        {Null(kTypeDouble), 0, 0, "NULL", "NULL", ""},
        {Null(kTypeDate), 0, 0, "NULL", "NULL", "no prefix"},
        {Null(kTypeBoolean), 0, 0, "NULL", "NULL", ""},
        {Null(kTypeBinary), 0, 0, "NULL", "NULL", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.integer, c.value.GetInteger()) << Show(c.value) << " " << c.why;
        EXPECT_EQ(c.number, c.value.GetDouble()) << Show(c.value) << " " << c.why;
        EXPECT_STREQ(c.display, c.value.GetString().CString()) << Show(c.value) << " " << c.why;
        EXPECT_STREQ(c.save, c.value.GetSaveString().CString()) << Show(c.value) << " " << c.why;
    }
    EXPECT_EQ(0, D(std::nan("")).GetInteger());
    EXPECT_TRUE(std::isnan(D(std::nan("")).GetDouble()));
    EXPECT_STREQ("nan", D(std::nan("")).GetString().CString());
}

TEST(VelaValue, MadeTextsAreASCIIAndOwnTextsKeepTheirTag)
{
    const string utf8("\xC3\xA9", kEncodingUTF8);
    EXPECT_EQ(kEncodingUTF8, VelaValue::String(utf8).GetString().Encoding());
    EXPECT_EQ(kEncodingUTF8, VelaValue::Text(kTypeBinary, utf8).GetSaveString().Encoding());
    EXPECT_EQ(kEncodingUTF8, VelaValue::Text(kTypeDate, utf8).GetSaveString().Encoding());
    EXPECT_EQ(kEncodingASCII, VelaValue::Text(kTypeDate, utf8).GetString().Encoding());
    EXPECT_EQ(kEncodingASCII, I(1).GetString().Encoding());
    EXPECT_EQ(kEncodingASCII, D(1.5).GetString().Encoding());
    EXPECT_EQ(kEncodingASCII, Null(kTypeString).GetString().Encoding());
    EXPECT_EQ(utf8.CString(), VelaValue::String(utf8).GetString().CString()) << "shared";
    EXPECT_EQ(utf8.CString(), VelaValue::String(utf8).StoredText().CString()) << "shared";
}

TEST(VelaValue, SettersSetTheTypeAndClearTheNull)
{
    for (const VelaDataType type : kAllTypes) {
        VelaValue value;
        const auto start = [&]() -> VelaValue& {
            value.SetString("some text, long enough to be on the heap");
            value.SetNull(type);
            EXPECT_TRUE(value.IsNull());
            EXPECT_EQ(type, value.GetType());
            EXPECT_EQ(0, value.GetInteger());
            EXPECT_EQ(0.0, value.GetDouble());
            EXPECT_EQ("", value.TextView());
            return value;
        };
        start().SetInteger(-3);
        EXPECT_EQ("Integer '-3'", Show(value));
        start().SetBoolean(true);
        EXPECT_EQ("Boolean 'TRUE'", Show(value));
        start().SetDouble(1.5);
        EXPECT_EQ("Double '1.5'", Show(value));
        start().SetString("x");
        EXPECT_EQ("String 'x'", Show(value));
        start().SetText(kTypeTime, "y");
        EXPECT_EQ("Time 'y'", Show(value));
    }
}

TEST(VelaValue, ClearKeepsTypeAndNullFlag)
{
    VelaValue text = Date("1984-05-06");
    text.Clear();
    EXPECT_EQ("Date ''", Show(text));
    EXPECT_FALSE(text.IsNull());
    VelaValue number = I(42);
    number.Clear();
    EXPECT_EQ("Integer '0'", Show(number));
    VelaValue null = Null(kTypeString);
    null.Clear();
    EXPECT_EQ("String 'NULL' null", Show(null));
}

TEST(VelaValue, CopiesShareTheTextAndDropTheirReference)
{
    string text("a text", kEncodingUTF8);
    const char* bytes = text.CString();
    VelaValue value = VelaValue::String(text);
    text = string();
    {
        VelaValue copy(value);
        VelaValue assigned = I(1);
        assigned = value;
        EXPECT_EQ(bytes, copy.StoredText().CString());
        EXPECT_EQ(bytes, assigned.StoredText().CString());
        copy.SetInteger(5);
        assigned.SetNull(kTypeDate);
        EXPECT_EQ("a text", value.TextView());
    }
    string last = value.StoredText();
    value.Clear();
    EXPECT_EQ(bytes, last.MutableBytes()) << "nobody else may hold the text any more";
}

TEST(VelaValue, AssignmentWorksBetweenAllTypesAndToItself)
{
    const VelaValue values[] = {
        I(5),
        B(true),
        D(2.5),
        Text("text"),
        Date("1984-05-06"),
        Binary("bytes"),
        Null(kTypeNone),
        Null(kTypeString),
        Null(kTypeInteger),
    };
    for (const VelaValue& from : values) {
        for (const VelaValue& to : values) {
            VelaValue target = to;
            target = from;
            EXPECT_EQ(Show(from), Show(target));
            VelaValue source = from;
            VelaValue moved = to;
            moved = static_cast<VelaValue&&>(source);
            EXPECT_EQ(Show(from), Show(moved));
            source = to;
            EXPECT_EQ(Show(to), Show(source)) << "a moved-from value is usable";
        }
        VelaValue same = from;
        const VelaValue& alias = same;
        same = alias;
        EXPECT_EQ(Show(from), Show(same));
        VelaValue& self = same;
        same = static_cast<VelaValue&&>(self);
        EXPECT_EQ(Show(from), Show(same));
    }
}

TEST(VelaValue, EqualsIsWhatIndexesTakeItFor)
{
    const VelaValue absent = Text("");
    struct {
        VelaValue left, right;
        bool equal, reverse;
        const char* why;
    } cases[] = {
        {Null(kTypeInteger), Null(kTypeInteger), true, true, "null equals null"},
        {Null(kTypeInteger), Null(kTypeString), true, true, "... of any type"},
        {Null(kTypeInteger), I(0), false, false, "null equals no zero"},
        {Null(kTypeString), Text(""), false, false, "... and no empty text"},
        {Null(kTypeString), Text("NULL"), false, false, "... and not its own text"},
        {I(42), Text("42"), true, true, "the text's number; the number's text"},
        {I(42), Text(" 42abc"), true, false, "leading number against the whole text"},
        {I(0), Text("abc"), true, false, "no number is 0"},
        {I(1), B(true), true, true, ""},
        {I(2), B(true), false, false, "TRUE is 1"},
        {I(2), D(2.9), true, false, "truncated; unconverted the other way"},
        {I(0), Date("1984-05-06"), true, false, "a date's integer is 0"},
        {I(1), Binary("1"), false, true, "a binary's integer is 0, but its text is 1"},
        {B(true), Text("1"), true, false, "the text of TRUE is not 1"},
        {B(true), Text("TRUE"), false, true, "... and TRUE is no number"},
        {B(false), Text("x"), true, false, ""},
        {Text("abc"), Text("abc"), true, true, ""},
        {Text("abc"), Text("ABC"), false, false, "case counts"},
        {Text("abc"), Text("abc "), false, false, "blanks count"},
        {Text("abc"), Binary("abc"), true, true, ""},
        {Text("2.5"), D(2.5), true, false, "a double asks for a double"},
        {Text("TRUE"), B(true), true, false, ""},
        {Date("1984-05-06"), Date("1984-05-06"), false, false,
         "the other's display form has a prefix"},
        {Date("1984-05-06"), Text("1984-05-06"), true, false,
         "stored against stored; against DATE ..."},
        {Date("1984-05-06"), Text("DATE 1984-05-06"), false, true, ""},
        {Date("1984-05-06"), Binary("1984-05-06"), true, false, ""},
        {Date("DATE x"), Date("x"), true, false, "a stored text that looks like a display form"},
        {Time("12:00:00"), Time("12:00:00"), false, false, ""},
        {Timestamp("1984-05-06 12:00:00"), Timestamp("1984-05-06 12:00:00"), false, false, ""},
        {Timestamp("1984-05-06 12:00:00"), Text("1984-05-06 12:00:00"), true, false, ""},
        {D(0.0), D(-0.0), true, true, "equal as numbers"},
        {D(2), I(2), false, true, "payloads differ; truncated the other way"},
        {D(0), I(0), true, true, "all bits zero in both"},
        {D(0), B(false), true, true, ""},
        {D(1), B(true), false, true, ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.equal, c.left.Equals(c.right))
            << Show(c.left) << " = " << Show(c.right) << ": " << c.why;
        EXPECT_EQ(c.reverse, c.right.Equals(c.left))
            << Show(c.right) << " = " << Show(c.left) << ": " << c.why;
    }
    EXPECT_FALSE(D(std::nan("")).Equals(D(std::nan(""))));
    VelaValue noType = I(0);
    noType.CoerceToType(kTypeString);
    EXPECT_TRUE(noType.Equals(Text("0")));
}

TEST(VelaValue, EqualTextsOfDifferentEncodingTagsAreEqual)
{
    const VelaValue utf8 = VelaValue::String(string("abc", kEncodingUTF8));
    const VelaValue mac = VelaValue::String(string("abc", kEncodingMacRoman));
    EXPECT_TRUE(utf8.Equals(mac));
    const VelaValue withNUL = VelaValue::String(string("ab\0c", 4, kEncodingUTF8));
    EXPECT_FALSE(withNUL.Equals(Text("ab"))) << "NUL bytes take part";
}

// tests/sql/values/coercion.sql has those that a statement can bring about.
TEST(VelaValue, CoercionToAndFromEveryType)
{
    struct {
        VelaValue value;
        const char* texts;   // saved, after coercion to each of kAllTypes; "null" when it stays one
    } cases[] = {
        {D(2.5), "2.5, 2, 2.5, 2.5, 0000-00-00, 00:00:00, 0000-00-00 00:00:00, TRUE, 2.5"},
        {Date("1984-05-06"),
         "DATE 1984-05-06, 0, DATE 1984-05-06, 0, 1984-05-06, 00:00:00, 1984-05-06 00:00:00, TRUE, "
         "DATE 1984-05-06"},
        {Binary("f"), "f, 0, f, 0, 0000-00-00, 00:00:00, 0000-00-00 00:00:00, FALSE, f"},
        {Null(kTypeNone),
         "null, 0, NULL, 0, 0000-00-00, 00:00:00, 0000-00-00 00:00:00, TRUE, NULL"},
        {Null(kTypeInteger),
         "NULL, null, NULL, 0, 0000-00-00, 00:00:00, 0000-00-00 00:00:00, FALSE, NULL"},
        {Null(kTypeDouble),
         "NULL, 0, NULL, null, 0000-00-00, 00:00:00, 0000-00-00 00:00:00, FALSE, NULL"},
        {Null(kTypeString),
         "NULL, 0, null, 0, 0000-00-00, 00:00:00, 0000-00-00 00:00:00, TRUE, NULL"},
        {Null(kTypeBoolean),
         "NULL, 0, NULL, 0, 0000-00-00, 00:00:00, 0000-00-00 00:00:00, null, NULL"},
        {Null(kTypeDate), "NULL, 0, NULL, 0, null, 00:00:00, 0000-00-00 00:00:00, TRUE, NULL"},
    };
    for (const auto& c : cases) {
        std::string texts;
        for (const VelaDataType type : kAllTypes) {
            VelaValue value = c.value;
            value.CoerceToType(type);
            texts += (texts.empty() ? "" : ", ") +
                     std::string(value.IsNull() ? "null" : value.GetSaveString().CString());
            // None and Binary make Strings of everything but themselves.
            const bool isString = type == kTypeNone || type == kTypeBinary;
            EXPECT_EQ(isString && c.value.GetType() != type ? kTypeString : type, value.GetType())
                << Show(c.value) << " to " << DataTypeName(type);
        }
        EXPECT_EQ(c.texts, texts) << Show(c.value);
    }
}

TEST(VelaValue, CoercionToItsOwnTypeNormalisesNothing)
{
    const VelaValue values[] = {
        Date("odd date"), Time("8:4"), Timestamp("1984/5/6"), Binary("\x80"),
        Text(" 1 "),      D(-0.0),     Null(kTypeDate),
    };
    for (const VelaValue& value : values) {
        VelaValue coerced = value;
        coerced.CoerceToType(value.GetType());
        EXPECT_EQ(Show(value), Show(coerced));
        EXPECT_EQ(value.StoredText().CString(), coerced.StoredText().CString()) << Show(value);
    }
}

}   // namespace
}   // namespace vela
