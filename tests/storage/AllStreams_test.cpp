// What every byte stream promises, asked of all four of them.

#include <fcntl.h>
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <type_traits>

#include "engine/storage/FileHandle.h"
#include "engine/storage/FilePtr.h"
#include "engine/storage/StringStorageMechanism.h"
#include "engine/storage/UnixDataFile.h"
#include "tests/storage/StreamModel.h"
#include "tests/storage/TemporaryFolder.h"

namespace vela {
namespace {

bool OpenEmpty(FileHandle& stream, const string& path)
{
    return stream.Open(path, O_RDWR | O_CREAT | O_TRUNC);
}

bool OpenEmpty(FilePtr& stream, const string& path)
{
    return stream.Open(path, "w+");
}

bool OpenEmpty(StringStorageMechanism& stream, const string&)
{
    stream.Open(string());
    return true;
}

bool OpenEmpty(UnixDataFile& stream, const string& path)
{
    return stream.Create(path);
}

template <class Stream>
class AllStreams : public testing::Test {
protected:
    static constexpr bool kInMemory = std::is_same_v<Stream, StringStorageMechanism>;

    // A stream for reading and writing that holds these bytes and stands at their start.
    std::unique_ptr<Stream> NewHolding(const std::string& bytes)
    {
        auto stream = std::make_unique<Stream>();
        EXPECT_TRUE(OpenEmpty(*stream, mFolder.File("stream").c_str()));
        EXPECT_TRUE(stream->WriteData(bytes.data(), static_cast<int>(bytes.size())));
        EXPECT_TRUE(stream->SeekFromStart(0));
        return stream;
    }
    // Closes the stream and gives what it left behind.
    std::string Finish(Stream& stream)
    {
        if constexpr (kInMemory)
            return std::string(stream.Storage().View());
        stream.Close();
        return mFolder.Read("stream");
    }

    TemporaryFolder mFolder;
};

using Streams = testing::Types<FileHandle, FilePtr, StringStorageMechanism, UnixDataFile>;
TYPED_TEST_SUITE(AllStreams, Streams);

TYPED_TEST(AllStreams, NegativeArgumentsAreRefused)
{
    auto stream = this->NewHolding("abc");
    EXPECT_TRUE(stream->SeekFromStart(1));
    EXPECT_FALSE(stream->SeekFromStart(-1));
    EXPECT_FALSE(stream->SetLength(-1));
    char byte;
    int count = 99;
    EXPECT_FALSE(stream->ReadData(&byte, -1, &count));
    EXPECT_EQ(0, count);
    EXPECT_FALSE(stream->WriteData("x", -1));
    EXPECT_EQ(1, stream->GetPosition());
    EXPECT_EQ(3, stream->GetLength());
    EXPECT_EQ("abc", this->Finish(*stream));
}

TYPED_TEST(AllStreams, ClosedStreamsRefuseEverything)
{
    const auto closed = this->NewHolding("abc");
    closed->Close();
    TypeParam unopened;
    for (RandomAccessMechanism* stream : {static_cast<RandomAccessMechanism*>(closed.get()),
                                          static_cast<RandomAccessMechanism*>(&unopened)}) {
        char byte;
        int count = 99;
        EXPECT_FALSE(stream->ReadData(&byte, 1, &count));
        EXPECT_EQ(0, count);
        EXPECT_FALSE(stream->WriteData("x", 1));
        EXPECT_FALSE(stream->SetLength(1));
        EXPECT_EQ(0, stream->GetLength());
        EXPECT_EQ(0, stream->GetPosition());
        EXPECT_TRUE(stream->IsEOF());
        int number;
        EXPECT_FALSE(stream->ReadLong(number));
        stream->Close();
    }
}

TYPED_TEST(AllStreams, FlushToDiskBringsEverythingToTheFile)
{
    if (this->kInMemory)
        return;
    auto stream = this->NewHolding("abc");
    EXPECT_TRUE(stream->FlushToDisk());
    EXPECT_EQ("abc", this->mFolder.Read("stream"));
    EXPECT_TRUE(stream->WriteData("ABCD", 4));
    EXPECT_TRUE(stream->FlushToDisk());
    EXPECT_EQ("ABCD", this->mFolder.Read("stream"));
}

TYPED_TEST(AllStreams, ReservingRoomLeavesTheLength)
{
    auto stream = this->NewHolding("abc");
    EXPECT_TRUE(stream->Reserve(100000));
    EXPECT_TRUE(stream->Reserve(1)) << "less than there is";
    EXPECT_EQ(3, stream->GetLength());
    EXPECT_EQ("abc", this->Finish(*stream));
}

TYPED_TEST(AllStreams, RandomOperationsAgreeWithAPlainString)
{
    for (int round = 0; round < 4; round++) {
        const unsigned seed = std::random_device{}();
        SCOPED_TRACE(seed);
        auto stream = this->NewHolding("");
        std::string model;
        CompareWithString(*stream, seed, 5000, &model);
        ASSERT_FALSE(this->HasFailure());
        ASSERT_TRUE(model == this->Finish(*stream)) << "the file differs from what was read";
    }
}

}   // namespace
}   // namespace vela
