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

}   // namespace
}   // namespace vela
