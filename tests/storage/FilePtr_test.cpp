#include "engine/storage/FilePtr.h"

#include <errno.h>
#include <gtest/gtest.h>

#include "tests/storage/TemporaryFolder.h"

namespace vela {
namespace {

TEST(FilePtr, ModesAreThoseOfTheCLibrary)
{
    TemporaryFolder folder;
    folder.Write("x", "abc");
    const std::string path = folder.File("x");
    FilePtr stream;
    ASSERT_TRUE(stream.Open(path.c_str(), "r"));
    EXPECT_FALSE(stream.WriteData("X", 1) && stream.FlushToDisk()) << "opened for reading";
    ASSERT_TRUE(stream.Open(path.c_str(), "r+"));
    EXPECT_EQ(3, stream.GetLength());
    EXPECT_TRUE(stream.WriteData("A", 1));
    ASSERT_TRUE(stream.Open(path.c_str(), "a"));
    EXPECT_TRUE(stream.WriteData("d", 1));
    stream.Close();
    EXPECT_EQ("Abcd", folder.Read("x"));
    ASSERT_TRUE(stream.Open(path.c_str(), "w+"));
    EXPECT_EQ(0, stream.GetLength());
}

TEST(FilePtr, KeepsTheErrorNumber)
{
    FilePtr stream;
    EXPECT_FALSE(stream.Open("/no such folder/x", "r"));
    EXPECT_EQ(ENOENT, stream.ErrorNumber());
    EXPECT_FALSE(stream.Open(string("/dev/null\0x", 11, kEncodingUTF8), "r"));
    EXPECT_EQ(EINVAL, stream.ErrorNumber());
    ASSERT_TRUE(stream.Open("/dev/full", "r+"));
    EXPECT_FALSE(stream.WriteData("x", 1) && stream.FlushToDisk());
    EXPECT_EQ(ENOSPC, stream.ErrorNumber());
}

TEST(FilePtr, AWriteRightBehindAReadLandsWhereTheReadEnded)
{
    TemporaryFolder folder;
    folder.Write("x", "abcdef");
    FilePtr stream;
    ASSERT_TRUE(stream.Open(folder.File("x").c_str(), "r+"));
    char byte;
    EXPECT_TRUE(stream.ReadData(&byte, 1, nullptr));
    EXPECT_TRUE(stream.WriteData("XY", 2));
    EXPECT_TRUE(stream.ReadData(&byte, 1, nullptr));
    EXPECT_EQ('d', byte);
    stream.Close();
    EXPECT_EQ("aXYdef", folder.Read("x"));
}

TEST(FilePtr, BytesReadAheadAndThenCutOffDoNotComeBack)
{
    TemporaryFolder folder;
    folder.Write("x", std::string(100, 'a'));
    FilePtr stream;
    ASSERT_TRUE(stream.Open(folder.File("x").c_str(), "r+"));
    char bytes[60];
    EXPECT_TRUE(stream.ReadData(bytes, 60, nullptr));
    EXPECT_TRUE(stream.SetLength(3));
    EXPECT_TRUE(stream.SeekFromStart(2));
    int came = 0;
    EXPECT_FALSE(stream.ReadData(bytes, 10, &came));
    EXPECT_EQ(1, came);
}

}   // namespace
}   // namespace vela
