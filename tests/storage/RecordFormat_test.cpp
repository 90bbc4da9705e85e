#include "engine/storage/RecordFormat.h"

#include <gtest/gtest.h>

#include <limits>

#include "engine/storage/BodyMerge.h"
#include "tests/storage/StorageTesting.h"

namespace vela {

namespace {

std::string Chunk(uint32_t value)
{
    std::string bytes(ByteChunkSize(value), '?');
    EXPECT_EQ(bytes.data() + bytes.size(), EncodeByteChunk(bytes.data(), value));
    return bytes;
}

std::string Body(const VelaRow& values)
{
    std::string bytes(CalcSchemaAndDataSize(values), '?');
    EXPECT_EQ(bytes.data() + bytes.size(), EncodeRecordBody(bytes.data(), values));
    return bytes;
}

std::string Decoded(std::string_view body, bool* exact)
{
    VelaRow values;
    *exact = DecodeRecordBody(body, &values);
    const std::string text = RowText(values);
    DeleteValues(&values);
    return text;
}

VelaValue Text(VelaDataType type, std::string_view text)
{
    return VelaValue::Text(type, string(text, kEncodingASCII));
}

}   // namespace

TEST(ByteChunk, CodesAndRefuses)
{
    const struct {
        uint32_t value;
        const char* bytes;
        const char* why;
    } cases[] = {
        {0, "00", "smallest"},
        {1, "01", "one"},
        {100, "64", "an ordinary count"},
        {253, "FD", "below the escape"},
        {254, "FE", "last one-byte value; 0xFF would be the off-by-one"},
        {255, "FF 01", "first two-byte value; an escape stands for 254, not 255"},
        {300, "FF 2E", "two bytes"},
        {508, "FF FE", "last two-byte value"},
        {509, "FF FF 01", "first three-byte value"},
        {600, "FF FF 5C", "three bytes"},
        {762, "FF FF FE", "last three-byte value"},
    };
    for (const auto& c : cases) {
        const std::string bytes = FromHex(c.bytes);
        EXPECT_EQ(ToHex(bytes), ToHex(Chunk(c.value))) << c.why;
        uint32_t value = 0;
        const char* end = bytes.data() + bytes.size();
        EXPECT_EQ(end, DecodeByteChunk(bytes.data(), end, &value)) << c.why;
        EXPECT_EQ(c.value, value) << c.why;
        for (const char* cut = bytes.data(); cut < end; cut++)
            EXPECT_EQ(nullptr, DecodeByteChunk(bytes.data(), cut, &value)) << c.why;
    }
}

TEST(ByteChunk, FinalByteMayBeZeroAfterEscapes)
{
    // Nobody writes 254 like this, but the sum is what counts.
    const std::string bytes = FromHex("FF 00");
    uint32_t value = 0;
    EXPECT_EQ(bytes.data() + 2, DecodeByteChunk(bytes.data(), bytes.data() + 2, &value));
    EXPECT_EQ(254u, value);
}

TEST(ByteChunk, ValuesOfAll32BitsAndNoMore)
{
    const std::string largest = Chunk(0xFFFFFFFF);
    uint32_t value = 0;
    const char* end = largest.data() + largest.size();
    EXPECT_EQ(end, DecodeByteChunk(largest.data(), end, &value));
    EXPECT_EQ(0xFFFFFFFF, value);
    std::string tooLarge(largest.size(), '\xFF');
    tooLarge += '\x01';
    EXPECT_EQ(nullptr, DecodeByteChunk(tooLarge.data(), tooLarge.data() + tooLarge.size(), &value));
}

TEST(RecordBody, BytesOfEachType)
{
    const struct {
        VelaValue value;
        const char* bytes;   // of the payload
        const char* why;
    } cases[] = {
        {Int(42), "00 00 00 2A", "positive"},
        {Int(-2), "FF FF FF FE", "negative, big-endian"},
        {Int(INT32_MIN), "80 00 00 00", "most negative"},
        {VelaValue::Boolean(true), "01", "one byte"},
        {VelaValue::Boolean(false), "00", "one byte"},
        {VelaValue::Double(1.0), "3F F0 00 00 00 00 00 00", "big-endian IEEE"},
        {VelaValue::Double(-0.0), "80 00 00 00 00 00 00 00", "the sign of zero is kept"},
        {Str("ab"), "00 00 00 02 00 00 00 02 00 00 06 00 61 62", "space, length, tag, text"},
        {UTF8("\xC3\xA4"), "00 00 00 02 00 00 00 02 08 00 01 00 C3 A4", "the tag of UTF-8"},
        {Str(""), "00 00 00 00 00 00 00 00 00 00 06 00", "an empty text is not a null"},
        {Text(kTypeDate, "1984-05-06"), "00 00 00 0A 00 00 00 0A 31 39 38 34 2D 30 35 2D 30 36",
         "bare text, no tag"},
        {Text(kTypeTime, "12:34:06"), "00 00 00 08 00 00 00 08 31 32 3A 33 34 3A 30 36", "time"},
        {Text(kTypeTimestamp, "1"), "00 00 00 01 00 00 00 01 31", "a text that is no timestamp"},
        {Text(kTypeBinary, std::string_view("\0\xFF", 2)), "00 00 00 02 00 00 00 02 00 FF", "raw"},
    };
    for (const auto& c : cases) {
        TestRow row{{7, c.value}};
        std::string expected = FromHex("01 07");
        expected += static_cast<char>(c.value.GetType());
        expected += FromHex(c.bytes);
        EXPECT_EQ(ToHex(expected), ToHex(Body(row))) << c.why;
        bool exact = false;
        EXPECT_EQ("7=" + ValueText(c.value), Decoded(expected, &exact)) << c.why;
        EXPECT_TRUE(exact) << c.why;
    }
}

TEST(RecordBody, IdsAndTypesComeBeforeAllPayloads)
{
    TestRow row{{1, Int(1)}, {300, VelaValue::Boolean(true)}, {2, Str("x")}};
    const char* const kBytes =
        "03  01 03  FF 2E 0C  02 05  00 00 00 01  01  00 00 00 01 00 00 00 01 00 00 06 00 78";
    EXPECT_EQ(ToHex(FromHex(kBytes)), ToHex(Body(row)));
    EXPECT_EQ(26u, CalcSchemaAndDataSize(row));
}

TEST(RecordBody, DamageAndSlackKeepTheValuesBeforeThem)
{
    const struct {
        const char* bytes;
        const char* values;
        bool exact;
        const char* why;
    } cases[] = {
        {"00", "", true, "no values are one byte"},
        {"02 01 05 02 03  00 00 00 04 00 00 00 01 00 00 06 00 61 2D 2D 2D  00 00 00 09",
         "1=String[600] a, 2=Integer 9", true, "string: 12 + S bytes"},
        {"02 01 0E 02 03  00 00 00 04 00 00 00 01 61 2D 2D 2D  00 00 00 09",
         "1=Binary a, 2=Integer 9", true, "binary: 8 + S bytes"},
        {"01 01 0C 02", "1=Boolean TRUE", true, "any non-zero byte is true"},
        {"02 01 00 02 03 00 00 00 09", "1=NULL None, 2=Integer 9", true, "None has no payload"},
        {"01 01 03 00 00 00 01 EE EE", "1=Integer 1", false, "slack is not read, but told"},
        {"", "", false, "no count"},
        {"05", "", false, "a count that the bytes can't hold"},
        {"FF FF FF", "", false, "a count that doesn't end"},
        {"01 01", "", false, "no type code"},
        {"01 01 03 00 00 00", "", false, "an integer of three bytes"},
        {"02 01 03 02 03 00 00 00 01 00 00 00", "1=Integer 1", false, "the second one cut"},
        {"02 01 03 02 06 00 00 00 01 00 00 00 00", "1=Integer 1", false, "no such type"},
        {"01 01 05 00 00 00 01 00 00 00 02 00 00 06 00 61", "", false, "longer than its space"},
        {"01 01 05 00 00 00 02 00 00 00 01 00 00 06 00 61", "", false, "space past the end"},
        {"01 01 0E FF FF FF FF 00 00 00 01 61", "", false, "space of four billion"},
        {"01 01 07 00 00 00 00 00 00 00", "", false, "a double of seven bytes"},
    };
    for (const auto& c : cases) {
        bool exact = !c.exact;
        EXPECT_EQ(c.values, Decoded(FromHex(c.bytes), &exact)) << c.why;
        EXPECT_EQ(c.exact, exact) << c.why;
    }
}

TEST(RecordBody, DecodeFitsTheListToTheRecord)
{
    TestRow row{{9, Str("old")}, {8, Int(1)}, {7, Int(1)}};
    EXPECT_TRUE(DecodeRecordBody(FromHex("01 01 03 00 00 00 05"), &row.Values()));
    EXPECT_EQ("1=Integer 5", RowText(row));
    EXPECT_TRUE(DecodeRecordBody(FromHex("02 01 0C 02 03 01 00 00 00 06"), &row.Values()));
    EXPECT_EQ("1=Boolean TRUE, 2=Integer 6", RowText(row));
}

TEST(RecordFormat, AppendRecordWritesTheExampleOfTheFormat)
{
    TestRow row{{1, Int(42)}};
    std::vector<char> bytes;
    AppendRecord(&bytes, 1, row);
    AppendRecord(&bytes, 0xFFFFFFFE, row);
    EXPECT_EQ(ToHex(FromHex("52 63 53 74  00 00 00 01  00 00 00 07  01  01 03  00 00 00 2A"
                            "52 63 53 74  FF FF FF FE  00 00 00 07  01  01 03  00 00 00 2A")),
              ToHex({bytes.data(), bytes.size()}));
}

}   // namespace vela
