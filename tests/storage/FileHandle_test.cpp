#include "engine/storage/FileHandle.h"

#include <errno.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/storage/TemporaryFolder.h"

namespace vela {
namespace {

bool IsOpenDescriptor(int descriptor)
{
    return fcntl(descriptor, F_GETFD) != -1;
}

TEST(FileHandle, ExtractHandleGivesTheDescriptorUp)
{
    TemporaryFolder folder;
    int descriptor = -1;
    {
        FileHandle stream;
        ASSERT_TRUE(stream.Open(folder.File("x").c_str(), O_RDWR | O_CREAT));
        ASSERT_TRUE(stream.WriteData("abc", 3));
        descriptor = stream.ExtractHandle();
        EXPECT_FALSE(stream.WriteData("d", 1)) << "it has none any more";
        EXPECT_EQ(-1, stream.ExtractHandle());
    }
    ASSERT_TRUE(IsOpenDescriptor(descriptor)) << "the stream must not have closed it";
    EXPECT_EQ(3, lseek(descriptor, 0, SEEK_CUR)) << "at the stream's position";
    close(descriptor);
    EXPECT_EQ("abc", folder.Read("x"));
}

TEST(FileHandle, ResetClosesTheOldDescriptorAndTakesTheNew)
{
    TemporaryFolder folder;
    folder.Write("one", "1");
    folder.Write("two", "2");
    FileHandle stream;
    ASSERT_TRUE(stream.Open(folder.File("one").c_str(), O_RDONLY));
    const int second = open(folder.File("two").c_str(), O_RDONLY);
    stream.Reset(second);
    char byte = 0;
    EXPECT_TRUE(stream.ReadData(&byte, 1, nullptr));
    EXPECT_EQ('2', byte);
    stream.Reset();
    EXPECT_FALSE(IsOpenDescriptor(second));
    EXPECT_FALSE(stream.ReadData(&byte, 1, nullptr));
}

TEST(FileHandle, KeepsTheErrorNumber)
{
    FileHandle stream;
    EXPECT_FALSE(stream.Open("/no such folder/x", O_RDONLY));
    EXPECT_EQ(ENOENT, stream.ErrorNumber());
    EXPECT_FALSE(stream.Open(string("/dev/null\0x", 11, kEncodingUTF8), O_RDONLY));
    EXPECT_EQ(EINVAL, stream.ErrorNumber());
    ASSERT_TRUE(stream.Open("/dev/full", O_RDWR));
    EXPECT_FALSE(stream.WriteData("x", 1));
    EXPECT_EQ(ENOSPC, stream.ErrorNumber());
}

TEST(FileHandle, ReadsAPipeToItsEndInPieces)
{
    int ends[2];
    ASSERT_EQ(0, pipe(ends));
    ASSERT_EQ(6, write(ends[1], "abcdef", 6));
    close(ends[1]);
    FileHandle stream;
    stream.Reset(ends[0]);
    char bytes[10];
    int count = 0;
    EXPECT_TRUE(stream.ReadData(bytes, 4, &count));
    EXPECT_FALSE(stream.ReadData(bytes, 4, &count));
    EXPECT_EQ(2, count);
}

}   // namespace
}   // namespace vela
