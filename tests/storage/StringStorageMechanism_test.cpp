#include "engine/storage/StringStorageMechanism.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(StringStorageMechanism, SharesTheStringUntilItWrites)
{
    const string text("abc", kEncodingUTF8);
    StringStorageMechanism stream;
    stream.Open(text);
    char byte;
    EXPECT_TRUE(stream.ReadData(&byte, 1, nullptr));
    EXPECT_EQ(text.CString(), stream.Storage().CString());
    EXPECT_TRUE(stream.WriteData("XYZ", 3));
    const string taken = stream.Storage();
    EXPECT_STREQ("aXYZ", taken.CString());
    EXPECT_STREQ("abc", text.CString());
    EXPECT_TRUE(stream.WriteData("!", 1));
    EXPECT_STREQ("aXYZ", taken.CString()) << "a result that was taken stays as it was";
    EXPECT_EQ(kEncodingUTF8, stream.Storage().Encoding());
}

TEST(StringStorageMechanism, RefusesALengthThatNoMemoryHolds)
{
    StringStorageMechanism stream;
    stream.Open("abc");
    EXPECT_FALSE(stream.SetLength(INT64_MAX));
    EXPECT_FALSE(stream.SetLength(static_cast<int64_t>(SIZE_MAX / 4) + 1));
    EXPECT_TRUE(stream.SeekFromStart(INT64_MAX));
    EXPECT_FALSE(stream.WriteData("x", 1));
    EXPECT_TRUE(stream.SeekFromStart(INT64_MAX / 2));
    EXPECT_FALSE(stream.WriteData("x", 1));
    EXPECT_STREQ("abc", stream.Storage().CString());
}

TEST(StringStorageMechanism, AppendingAMillionBytesOneByOneEnds)
{
    StringStorageMechanism stream;
    stream.Open(string());
    for (int i = 0; i < 1000000; i++)
        ASSERT_TRUE(stream.WriteByte(i));
    EXPECT_EQ(1000000, stream.GetLength());
    EXPECT_EQ(static_cast<unsigned char>(999999 & 0xFF), stream.Storage()[999999]);
}

}   // namespace
}   // namespace vela
