#include "engine/storage/RandomAccessMechanism.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "engine/storage/StringStorageMechanism.h"

namespace vela {
namespace {

using Bytes = std::string;

// Bytes from a list of numbers.
template <class... Number>
Bytes Of(Number... numbers)
{
    return Bytes{static_cast<char>(numbers)...};
}

void OpenOn(StringStorageMechanism& stream, const Bytes& bytes)
{
    stream.Open(string(bytes, kEncodingASCII));
}

Bytes Content(const StringStorageMechanism& stream)
{
    return Bytes(stream.Storage().View());
}

using Stream = RandomAccessMechanism;

// Whether the next number is this one, to the bit.
template <class Number>
bool ReadsBack(Stream& stream, bool (Stream::*read)(Number&), Number expected)
{
    Number number{7};
    return (stream.*read)(number) && memcmp(&number, &expected, sizeof number) == 0;
}

// Fewer bytes than a number has are refused, and nothing changes.
template <class Number>
void ExpectShortReadsRefused(bool (Stream::*read)(Number&))
{
    for (size_t size = 0; size < sizeof(Number); size++) {
        StringStorageMechanism stream;
        OpenOn(stream, Bytes(size, '\xFF'));
        Number number{7};
        EXPECT_FALSE((stream.*read)(number)) << size;
        EXPECT_EQ(Number{7}, number);
    }
}

TEST(RandomAccessMechanism, NumbersHaveTheirBytesInBothOrders)
{
    const Bytes orders[] = {
        Of(0xF2, 0xFF, 1, 2, 0xFF, 0x5C, 0x64, 0xFF, 0x2E, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE) +
            Of(0x80, 0, 0, 0, 0x3F, 0xF8, 0, 0, 0, 0, 0, 0, 0x80, 0, 0, 0, 0, 0, 0, 0),
        Of(0xF2, 0xFF, 2, 1, 0x5C, 0xFF, 0xFF, 0x2E, 0xFF, 0x64, 0xFE, 0xFF, 0xFF, 0xFF) +
            Of(0, 0, 0, 0x80, 0, 0, 0, 0, 0, 0, 0xF8, 0x3F, 0, 0, 0, 0, 0, 0, 0, 0x80)};
    StringStorageMechanism stream;
    for (const int round : {0, 1, 2}) {   // the order may change, and change back
        OpenOn(stream, "");
        if (round % 2 == 0)
            stream.SetBigEndian();
        else
            stream.SetLittleEndian();
        EXPECT_TRUE(stream.WriteByte(0xF2));
        EXPECT_TRUE(stream.WriteByte(0x1FF)) << "its low eight bits";
        EXPECT_TRUE(stream.WriteShort(0x0102) && stream.WriteShort(0xFF5C));
        EXPECT_TRUE(stream.WriteLong(0x64FF2EFF) && stream.WriteLong(-2));
        EXPECT_TRUE(stream.WriteLong(INT32_MIN));
        EXPECT_TRUE(stream.WriteDouble(1.5) && stream.WriteDouble(-0.0));
        EXPECT_EQ(orders[round % 2], Content(stream)) << round;

        EXPECT_TRUE(stream.SeekFromStart(0));
        EXPECT_TRUE(ReadsBack<unsigned char>(stream, &Stream::ReadByte, 0xF2));
        EXPECT_TRUE(ReadsBack<unsigned char>(stream, &Stream::ReadByte, 0xFF));
        EXPECT_TRUE(ReadsBack<short>(stream, &Stream::ReadShort, 0x0102));
        EXPECT_TRUE(ReadsBack<short>(stream, &Stream::ReadShort, -164));
        for (const int number : {0x64FF2EFF, -2, INT32_MIN})
            EXPECT_TRUE(ReadsBack(stream, &Stream::ReadLong, number)) << number;
        for (const double number : {1.5, -0.0})
            EXPECT_TRUE(ReadsBack(stream, &Stream::ReadDouble, number)) << number;
        EXPECT_TRUE(stream.IsEOF());
    }
    StringStorageMechanism fresh;
    OpenOn(fresh, "");
    EXPECT_TRUE(fresh.WriteShort(1));
    EXPECT_EQ(Of(1, 0), Content(fresh)) << "little-endian until it is told otherwise";
    ExpectShortReadsRefused(&Stream::ReadByte);
    ExpectShortReadsRefused(&Stream::ReadShort);
    ExpectShortReadsRefused(&Stream::ReadLong);
    ExpectShortReadsRefused(&Stream::ReadDouble);
}

TEST(RandomAccessMechanism, PStringsHaveALengthByteAndAtMost255)
{
    constexpr size_t kSizes[] = {0, 1, 254, 255, 256, 300, 100000};
    for (const size_t size : kSizes) {
        Bytes text(size, 'a');
        if (size > 0)
            text.back() = 'z';
        StringStorageMechanism stream;
        OpenOn(stream, "");
        EXPECT_TRUE(stream.WritePString(string(text, kEncodingASCII)));
        const Bytes kept = text.substr(0, 255);
        EXPECT_EQ(Of(kept.size()) + kept, Content(stream)) << size;

        string back("old");
        EXPECT_TRUE(stream.SeekFromStart(0) && stream.ReadPString(back));
        EXPECT_EQ(kept, back.View()) << size;
        for (size_t cut = 0; cut <= kept.size(); cut++) {
            OpenOn(stream, (Of(kept.size()) + kept).substr(0, cut));
            EXPECT_FALSE(stream.ReadPString(back)) << size << ", cut at " << cut;
            EXPECT_EQ(kept, back.View()) << "the text stays";
        }
    }
}

TEST(RandomAccessMechanism, LinesEndWithALineFeed)
{
    StringStorageMechanism stream;
    OpenOn(stream, "");
    EXPECT_TRUE(stream.WriteLine("one") && stream.WriteLine("") && stream.WriteLine("two"));
    EXPECT_EQ("one\n\ntwo\n", Content(stream));
}

TEST(RandomAccessMechanism, EncodedIntegersTakeOneToFiveBytes)
{
    struct {
        int number;
        Bytes bytes;
        const char* why;
    } cases[] = {
        {0, Of(0x00), "zero"},
        {1, Of(0x01), ""},
        {63, Of(0x3F), "last of one byte"},
        {64, Of(0x80, 0x01), "first of two bytes"},
        {-1, Of(0x41), "the sign is 0x40"},
        {-63, Of(0x7F), "last of one byte, negative"},
        {-64, Of(0xC0, 0x01), "first of two bytes, negative"},
        {65, Of(0x81, 0x01), ""},
        {8191, Of(0xBF, 0x7F), "last of two bytes"},
        {8192, Of(0x80, 0x80, 0x01), "first of three bytes"},
        {-8191, Of(0xFF, 0x7F), ""},
        {1048575, Of(0xBF, 0xFF, 0x7F), "last of three bytes"},
        {1048576, Of(0x80, 0x80, 0x80, 0x01), "first of four bytes"},
        {134217727, Of(0xBF, 0xFF, 0xFF, 0x7F), "last of four bytes"},
        {134217728, Of(0x80, 0x80, 0x80, 0x80, 0x01), "first of five bytes"},
        {INT32_MAX, Of(0xBF, 0xFF, 0xFF, 0xFF, 0x0F), "the largest"},
        {-INT32_MAX, Of(0xFF, 0xFF, 0xFF, 0xFF, 0x0F), "the second smallest"},
        {INT32_MIN, Of(0x80, 0x80, 0x80, 0x80, 0x10), "the smallest has no sign bit"},
    };
    for (const auto& c : cases) {
        StringStorageMechanism stream;
        OpenOn(stream, "");
        EXPECT_TRUE(stream.WriteEncodedInt(c.number));
        EXPECT_EQ(c.bytes, Content(stream)) << c.number << " " << c.why;
        int back = 99;
        EXPECT_TRUE(stream.SeekFromStart(0) && stream.ReadEncodedInt(back)) << c.number;
        EXPECT_EQ(c.number, back) << c.why;
        EXPECT_TRUE(stream.IsEOF()) << c.number;
        for (size_t cut = 0; cut < c.bytes.size(); cut++) {
            OpenOn(stream, c.bytes.substr(0, cut));
            back = 99;
            EXPECT_FALSE(stream.ReadEncodedInt(back)) << c.number << ", cut at " << cut;
            EXPECT_EQ(99, back);
        }
    }
}

TEST(RandomAccessMechanism, EncodedIntegersThatNobodyWritesAreReadOrRefused)
{
    struct {
        Bytes bytes;
        bool good;
        int number;
        const char* why;
    } cases[] = {
        {Of(0x40), true, 0, "minus zero"},
        {Of(0x80, 0x00), true, 0, "zero in two bytes"},
        {Of(0xC1, 0x80, 0x80, 0x80, 0x00), true, -1, "with zeros on top"},
        {Of(0xC0, 0x80, 0x80, 0x80, 0x10), true, INT32_MIN, "the smallest with a sign: it stands"},
        {Of(0x80, 0x80, 0x80, 0x80, 0x20), false, 0, "33 bits"},
        {Of(0xBF, 0xFF, 0xFF, 0xFF, 0x7F), false, 0, "all bits that five bytes have"},
        {Of(0x80, 0x80, 0x80, 0x80, 0x80, 0x00), false, 0, "six bytes"},
        {Bytes(1000, '\xFF'), false, 0, "without end"},
    };
    for (const auto& c : cases) {
        StringStorageMechanism stream;
        OpenOn(stream, c.bytes);
        int number = 99;
        EXPECT_EQ(c.good, stream.ReadEncodedInt(number)) << c.why;
        EXPECT_EQ(c.good ? c.number : 99, number) << c.why;
    }
}

TEST(RandomAccessMechanism, ScramblingIsOffUntilItIsTurnedOn)
{
    StringStorageMechanism stream;
    stream.SetEncryptionKey(0x12345678);
    Bytes text = "plain";
    stream.ApplyEncryption(text.data(), 5);
    EXPECT_EQ("plain", text);
    stream.ApplyDecryption(text.data(), 5);
    EXPECT_EQ("plain", text);
    EXPECT_FALSE(stream.SetEncryption(true));
    EXPECT_TRUE(stream.SetEncryption(true));
    EXPECT_TRUE(stream.SetEncryption(false));
    EXPECT_FALSE(stream.SetEncryption(false));
}

TEST(RandomAccessMechanism, ScramblingChainsThePlainBytesIntoTheKey)
{
    StringStorageMechanism stream;
    stream.SetEncryption(true);
    stream.SetEncryptionKey(0x5A);
    Bytes text = Of(0x00, 0xFF, 0x0F, 0x0F);
    stream.ApplyEncryption(text.data(), 1);
    stream.ApplyEncryption(text.data() + 1, 3);   // the key runs on from buffer to buffer
    // Keys: 5A, 5A ^ 00 = 5A, 5A ^ FF = A5, A5 ^ 0F = AA.
    EXPECT_EQ(Of(0x5A, 0xA5, 0xAA, 0xA5), text);
    stream.SetEncryptionKey(0x5A);
    stream.ApplyDecryption(text.data(), 4);
    EXPECT_EQ(Of(0x00, 0xFF, 0x0F, 0x0F), text);
}

}   // namespace
}   // namespace vela
