// What every byte stream promises, asked of all four of them.

#include <fcntl.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>
#include <string>

#include "engine/storage/FileHandle.h"
#include "engine/storage/FilePtr.h"
#include "engine/storage/StringStorageMechanism.h"
#include "engine/storage/UnixDataFile.h"
#include "tests/storage/StreamModel.h"
#include "tests/storage/TemporaryFolder.h"

namespace vela {
namespace {

enum class Kind { kFileHandle, kFilePtr, kString, kUnixDataFile };

std::string KindName(const testing::TestParamInfo<Kind>& info)
{
    const char* const names[] = {"FileHandle", "FilePtr", "StringStorageMechanism", "UnixDataFile"};
    return names[static_cast<size_t>(info.param)];
}

class AllStreams : public testing::TestWithParam<Kind> {
protected:
    std::unique_ptr<RandomAccessMechanism> NewUnopened()
    {
        switch (GetParam()) {
            case Kind::kFileHandle:
                return std::make_unique<FileHandle>();
            case Kind::kFilePtr:
                return std::make_unique<FilePtr>();
            case Kind::kString:
                return std::make_unique<StringStorageMechanism>();
            default:
                return std::make_unique<UnixDataFile>();
        }
    }
    // An empty stream for reading and writing.
    std::unique_ptr<RandomAccessMechanism> New()
    {
        auto stream = NewUnopened();
        const std::string file = mFolder.File("stream");
        const string path(file.c_str());
        if (auto* handle = dynamic_cast<FileHandle*>(stream.get()))
            EXPECT_TRUE(handle->Open(path, O_RDWR | O_CREAT | O_TRUNC));
        else if (auto* pointer = dynamic_cast<FilePtr*>(stream.get()))
            EXPECT_TRUE(pointer->Open(path, "w+"));
        else if (auto* memory = dynamic_cast<StringStorageMechanism*>(stream.get()))
            memory->Open(string());
        else
            EXPECT_TRUE(static_cast<UnixDataFile&>(*stream).Create(path));
        return stream;
    }
    std::unique_ptr<RandomAccessMechanism> NewHolding(const std::string& bytes)
    {
        auto stream = New();
        EXPECT_TRUE(stream->WriteData(bytes.data(), static_cast<int>(bytes.size())));
        EXPECT_TRUE(stream->SeekFromStart(0));
        return stream;
    }
    // Closes the stream and gives what it left behind.
    std::string Finish(RandomAccessMechanism& stream)
    {
        if (GetParam() == Kind::kString)
            return std::string(static_cast<StringStorageMechanism&>(stream).Storage().View());
        stream.Close();
        return mFolder.Read("stream");
    }

    TemporaryFolder mFolder;
};

INSTANTIATE_TEST_SUITE_P(Of, AllStreams,
                         testing::Values(Kind::kFileHandle, Kind::kFilePtr, Kind::kString,
                                         Kind::kUnixDataFile),
                         KindName);

TEST_P(AllStreams, NegativeArgumentsAreRefused)
{
    auto stream = NewHolding("abc");
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
    EXPECT_EQ("abc", Finish(*stream));
}

TEST_P(AllStreams, ClosedStreamsRefuseEverything)
{
    const auto closed = NewHolding("abc");
    closed->Close();
    const auto unopened = NewUnopened();
    for (RandomAccessMechanism* stream : {closed.get(), unopened.get()}) {
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

TEST_P(AllStreams, FlushToDiskBringsEverythingToTheFile)
{
    if (GetParam() == Kind::kString)
        return;
    auto stream = NewHolding("abc");
    EXPECT_TRUE(stream->FlushToDisk());
    EXPECT_EQ("abc", mFolder.Read("stream"));
    EXPECT_TRUE(stream->WriteData("ABCD", 4));
    EXPECT_TRUE(stream->FlushToDisk());
    EXPECT_EQ("ABCD", mFolder.Read("stream"));
}

TEST_P(AllStreams, ReservingRoomLeavesTheLength)
{
    auto stream = NewHolding("abc");
    EXPECT_TRUE(stream->Reserve(100000));
    EXPECT_TRUE(stream->Reserve(1)) << "less than there is";
    EXPECT_EQ(3, stream->GetLength());
    EXPECT_EQ("abc", Finish(*stream));
}

TEST_P(AllStreams, RandomOperationsAgreeWithAPlainString)
{
    for (int round = 0; round < 4; round++) {
        const unsigned seed = std::random_device{}();
        SCOPED_TRACE(seed);
        auto stream = New();
        std::string model;
        CompareWithString(*stream, seed, 5000, &model);
        ASSERT_FALSE(HasFailure());
        ASSERT_TRUE(model == Finish(*stream)) << "the file differs from what was read";
    }
}

}   // namespace
}   // namespace vela
