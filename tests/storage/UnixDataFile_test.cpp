#include "engine/storage/UnixDataFile.h"

#include <errno.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <random>
#include <string>

#include "engine/storage/FileDescriptor.h"
#include "tests/storage/StreamModel.h"
#include "tests/storage/SystemCalls.h"
#include "tests/storage/TemporaryFolder.h"

namespace vela {
namespace {

constexpr int kModeRead = 1;
constexpr int kModeReadWrite = 3;

class UnixDataFileTest : public testing::Test {
protected:
    string Path(const std::string& name = "file") const
    {
        return string(mFolder.File(name).c_str());
    }
    // Opens a file of that content.
    void OpenOn(const std::string& bytes, int mode = kModeReadWrite)
    {
        mFolder.Write("file", bytes);
        ASSERT_TRUE(mFile.Open(Path(), mode));
    }
    std::string OnDisk() const { return mFolder.Read("file"); }

    std::string ReadAt(int64_t position, size_t count)
    {
        std::string bytes(count, '#');
        int came = 0;
        EXPECT_TRUE(mFile.SeekFromStart(position));
        mFile.ReadData(bytes.data(), static_cast<int>(count), &came);
        return bytes.substr(0, static_cast<size_t>(came));
    }
    bool WriteAt(int64_t position, const std::string& bytes)
    {
        EXPECT_TRUE(mFile.SeekFromStart(position));
        return mFile.WriteData(bytes.data(), static_cast<int>(bytes.size()));
    }

    TemporaryFolder mFolder;
    UnixDataFile mFile;
};

TEST_F(UnixDataFileTest, Open_OnlyModes1And3)
{
    mFolder.Write("file", "abc");
    for (const int mode : {-1, 0, 2, 4, 5, 7, 99}) {
        EXPECT_FALSE(mFile.Open(Path(), mode)) << mode;
        EXPECT_EQ(EINVAL, mFile.ErrorNumber()) << mode;
        EXPECT_EQ(0, mFile.GetLength()) << mode;
    }
    EXPECT_TRUE(mFile.Open(Path(), kModeRead));
    EXPECT_EQ(0, mFile.ErrorNumber());
    EXPECT_FALSE(mFile.WriteData("x", 1));
    EXPECT_EQ(EBADF, mFile.ErrorNumber());
    EXPECT_FALSE(mFile.SetLength(0));
    EXPECT_FALSE(mFile.Reserve(100));
    EXPECT_TRUE(mFile.FlushToDisk()) << "nothing to write is no failure";
    EXPECT_EQ("abc", ReadAt(0, 3));
    EXPECT_TRUE(mFile.Open(Path(), kModeReadWrite));
    EXPECT_TRUE(WriteAt(3, "d"));
    mFile.Close();
    EXPECT_EQ("abcd", OnDisk());
}

TEST_F(UnixDataFileTest, Open_CreatesNothingAndKeepsTheErrorNumber)
{
    for (const int mode : {kModeRead, kModeReadWrite}) {
        EXPECT_FALSE(mFile.Open(Path("missing"), mode));
        EXPECT_EQ(ENOENT, mFile.ErrorNumber());
        EXPECT_FALSE(std::filesystem::exists(mFolder.File("missing")));
        EXPECT_FALSE(mFile.Open(string("/tmp\0x", 6, kEncodingUTF8), mode));
        EXPECT_EQ(EINVAL, mFile.ErrorNumber());
    }
}

TEST_F(UnixDataFileTest, Open_RefusesWhatIsNoOrdinaryFileWithoutWaiting)
{
    ASSERT_EQ(0, mkfifo(mFolder.File("pipe").c_str(), 0600));
    for (const int mode : {kModeRead, kModeReadWrite}) {
        EXPECT_FALSE(mFile.Open(Path("pipe"), mode));
        EXPECT_FALSE(mFile.Open(Path("."), mode));
        EXPECT_EQ(EISDIR, mFile.ErrorNumber());
        EXPECT_FALSE(mFile.Open("/dev/null", mode));
        EXPECT_EQ(0, mFile.GetLength()) << "nothing is open";
    }
    EXPECT_FALSE(mFile.Create(Path("pipe")));
    EXPECT_FALSE(mFile.Create(Path(".")));
}

TEST_F(UnixDataFileTest, Open_ClosesTheFormerFileAndWritesItOut)
{
    mFolder.Write("other", "xyz");
    OpenOn("abc");
    EXPECT_TRUE(WriteAt(0, "A"));
    ASSERT_TRUE(mFile.Open(Path("other"), kModeRead));
    EXPECT_EQ("Abc", OnDisk());
    EXPECT_EQ(0, mFile.GetPosition());
    EXPECT_EQ("xyz", ReadAt(0, 9));
}

TEST_F(UnixDataFileTest, CreateTemporaryFile_FollowsThePatternAndNeverRepeats)
{
    string first;
    string second;
    UnixDataFile other;
    ASSERT_TRUE(mFile.CreateTemporaryFile(first));
    ASSERT_TRUE(other.CreateTemporaryFile(second));
    EXPECT_TRUE(first.left(8) == "/tmp/mx_") << first.CString();
    EXPECT_EQ(14u, first.length());
    EXPECT_TRUE(first != second);
    EXPECT_TRUE(mFile.WriteData("abc", 3));
    EXPECT_EQ("abc", ReadAt(0, 3));
    EXPECT_TRUE(mFile.TemporaryPath() == first);
    mFile.Close();
    EXPECT_TRUE(std::filesystem::exists(first.CString())) << "it stays until somebody deletes it";
    unlink(first.CString());
    unlink(second.CString());
}

// ---- calls to the system

TEST_F(UnixDataFileTest, ReadingOnCallsTheSystemRarelyAlsoPastSkippedBodies)
{
    const std::string content = PatternBytes(4000000);
    for (const size_t step : {12u, 600u}) {
        OpenOn(content, kModeRead);
        SystemCalls calls;
        char header[12];
        for (size_t position = 0; position < 3999000; position += step) {
            mFile.SeekFromStart(static_cast<int64_t>(position));
            ASSERT_TRUE(mFile.ReadData(header, 12, nullptr));
            ASSERT_EQ(content.substr(position, 12), std::string(header, 12));
        }
        EXPECT_LE(calls.reads, 4000000 / (256 * 1024) + 10) << step;
        EXPECT_LE(calls.bytesRead, 4000000) << step;
    }
}

TEST_F(UnixDataFileTest, ReadingOnFromTheDeviceGivesWhatIsThere)
{
    const std::string content = PatternBytes(size_t{12} << 20);   // more than is fetched early
    OpenOn(content);
    ASSERT_TRUE(WriteAt(0, content) && mFile.FlushToDisk());
    FileDescriptor file;
    ASSERT_TRUE(file.Open(Path(), O_RDONLY));
    ASSERT_EQ(0, posix_fadvise(file.Get(), 0, 0, POSIX_FADV_DONTNEED));
    ASSERT_TRUE(mFile.Open(Path(), kModeRead));
    for (size_t position = 0; position < content.size(); position += 50000)
        ASSERT_TRUE(content.substr(position, 50000) ==
                    ReadAt(static_cast<int64_t>(position), 50000));
}

TEST_F(UnixDataFileTest, AJumpFetchesTwoPagesAtMost)
{
    const std::string content = PatternBytes(4000000);
    OpenOn(content, kModeRead);
    EXPECT_EQ(content.substr(0, 3000000), ReadAt(0, 3000000))
        << "reading on before must not matter";
    std::mt19937 random(1);
    SystemCalls calls;
    for (int i = 1; i <= 1000; i++) {
        const int64_t position = static_cast<int64_t>(random() % 3990000);
        ASSERT_EQ(content.substr(static_cast<size_t>(position), 100), ReadAt(position, 100));
        ASSERT_LE(calls.reads, i);
        ASSERT_LE(calls.bytesRead, 8192l * i);
    }
}

TEST_F(UnixDataFileTest, ALargeReadIsOneCallForJustThatMuch)
{
    const std::string content = PatternBytes(1000000);
    OpenOn(content, kModeRead);
    SystemCalls calls;
    EXPECT_TRUE(content.substr(1234, 500000) == ReadAt(1234, 500000));
    EXPECT_EQ(1, calls.reads);
    EXPECT_EQ(500000, calls.bytesRead);
}

TEST_F(UnixDataFileTest, RewritingRecordsOneByOneCallsTheSystemRarely)
{
    std::string content = PatternBytes(3000000);
    OpenOn(content);
    {
        SystemCalls calls;
        for (size_t at = 0; at + 60 <= content.size(); at += 60) {
            char header[12];
            char body[48];
            ASSERT_TRUE(mFile.SeekFromStart(static_cast<int64_t>(at)));
            ASSERT_TRUE(mFile.ReadData(header, 12, nullptr) && mFile.ReadData(body, 48, nullptr));
            ASSERT_EQ(content.substr(at + 12, 48), std::string(body, 48));
            const std::string changed = PatternBytes(60, static_cast<unsigned>(at));
            ASSERT_TRUE(WriteAt(static_cast<int64_t>(at), changed));
            content.replace(at, 60, changed);
        }
        EXPECT_LE(calls.All(), 2 * (3000000 / (128 * 1024)) + 20);
        EXPECT_LE(calls.bytesRead, 3100000) << "nothing is read twice";
    }
    mFile.Close();
    EXPECT_TRUE(content == OnDisk());
}

TEST_F(UnixDataFileTest, AppendingRecordsAndPatchingTheirHeadersStaysInTheBuffer)
{
    ASSERT_TRUE(mFile.Create(Path()));
    std::string content;
    {
        SystemCalls calls;
        for (unsigned i = 0; i < 20000; i++) {
            const int64_t start = mFile.GetLength();
            const std::string body = PatternBytes(80, i);
            ASSERT_TRUE(WriteAt(start, std::string(12, '?') + body));
            ASSERT_TRUE(WriteAt(start, "RcSt12345678"));
            content += "RcSt12345678" + body;
        }
        EXPECT_LE(calls.All(), 10) << "one write for each full buffer";
        EXPECT_EQ(0, calls.reads) << "what is new needs no reading";
        mFile.Close();
        EXPECT_EQ(static_cast<long>(content.size()), calls.bytesWritten) << "each byte once";
    }
    EXPECT_TRUE(content == OnDisk());
}

TEST_F(UnixDataFileTest, ScatteredRewritesDoNotDragTheBytesBetweenThemAlong)
{
    OpenOn(PatternBytes(250000));
    for (int64_t position = 0; position < 250000; position += 12)
        ReadAt(position, 12);
    SystemCalls calls;
    for (int round = 0; round < 10; round++) {
        ASSERT_TRUE(WriteAt(60000, "one"));
        ASSERT_TRUE(WriteAt(240000, "two"));
    }
    EXPECT_TRUE(mFile.FlushBuffer());
    EXPECT_LE(calls.bytesWritten, 10 * 2 * 3);
}

// ---- what others see, and what we see of others

TEST_F(UnixDataFileTest, FlushBuffer_ShowsOurWritesAndTheirs)
{
    OpenOn("abcdef");
    EXPECT_EQ("abcdef", ReadAt(0, 6));
    EXPECT_TRUE(WriteAt(0, "A"));
    EXPECT_EQ("abcdef", OnDisk());
    EXPECT_TRUE(mFile.FlushBuffer());
    EXPECT_EQ("Abcdef", OnDisk());

    mFolder.Write("file", "from others");
    EXPECT_TRUE(mFile.FlushBuffer());
    EXPECT_EQ(11, mFile.GetLength());
    EXPECT_EQ("from others", ReadAt(0, 20));
}

TEST_F(UnixDataFileTest, AFileCutByOthersGivesAShortReadNotALoop)
{
    const std::string content = PatternBytes(100000);
    OpenOn(content);
    EXPECT_EQ(content.substr(0, 10), ReadAt(0, 10));
    mFolder.Write("file", "short");
    int came = 99;
    char bytes[100];
    EXPECT_TRUE(mFile.SeekFromStart(50000));
    EXPECT_FALSE(mFile.ReadData(bytes, 100, &came));
    EXPECT_EQ(0, came);
    EXPECT_EQ(EIO, mFile.ErrorNumber());
}

TEST_F(UnixDataFileTest, TemporaryClose_KeepsPositionAndRefusesUntilReopened)
{
    OpenOn("abcdef");
    EXPECT_TRUE(WriteAt(1, "B"));
    EXPECT_TRUE(mFile.TemporaryClose());
    EXPECT_EQ("aBcdef", OnDisk());
    char byte = 0;
    EXPECT_FALSE(mFile.ReadData(&byte, 1, nullptr));
    EXPECT_FALSE(mFile.WriteData("x", 1));
    EXPECT_FALSE(mFile.FlushBuffer());
    EXPECT_FALSE(mFile.FlushToDisk());
    EXPECT_FALSE(mFile.SetLength(1));
    EXPECT_FALSE(mFile.TemporaryClose());
    EXPECT_EQ(2, mFile.GetPosition());

    mFolder.Write("file", "0123456789");
    EXPECT_TRUE(mFile.TemporaryReopen());
    EXPECT_EQ(10, mFile.GetLength()) << "the length that it has now";
    EXPECT_TRUE(mFile.ReadData(&byte, 1, nullptr));
    EXPECT_EQ('2', byte);
    EXPECT_TRUE(mFile.WriteData("X", 1)) << "in the mode it had";
    EXPECT_TRUE(mFile.TemporaryReopen()) << "open already";
    EXPECT_EQ("012X", ReadAt(0, 4));
}

TEST_F(UnixDataFileTest, TemporaryReopen_OfAVanishedFileFailsAndMayBeTriedAgain)
{
    OpenOn("abc", kModeRead);
    EXPECT_TRUE(mFile.TemporaryClose());
    ASSERT_EQ(0, unlink(mFolder.File("file").c_str()));
    EXPECT_FALSE(mFile.TemporaryReopen());
    EXPECT_EQ(ENOENT, mFile.ErrorNumber());
    mFolder.Write("file", "back");
    EXPECT_TRUE(mFile.TemporaryReopen());
    EXPECT_EQ("back", ReadAt(0, 9));
    EXPECT_FALSE(mFile.WriteData("x", 1)) << "still for reading only";
    mFile.Close();
    EXPECT_FALSE(mFile.TemporaryReopen()) << "closed for good";
}

TEST_F(UnixDataFileTest, OffsetsBeyondFourGigabytesWork)
{
    const int64_t far = int64_t{5} * 1024 * 1024 * 1024 + 123;
    ASSERT_TRUE(mFile.Create(Path()));
    EXPECT_TRUE(WriteAt(far, "far away"));
    EXPECT_EQ(far + 8, mFile.GetLength());
    EXPECT_TRUE(mFile.FlushBuffer());
    EXPECT_EQ(far + 8, mFile.GetLength());
    EXPECT_EQ("far away", ReadAt(far, 8));
    EXPECT_EQ(std::string(10, '\0'), ReadAt(far - 10, 10));
    EXPECT_TRUE(mFile.SetLength(far + 3));
    EXPECT_EQ("far", ReadAt(far, 8));
    EXPECT_TRUE(mFile.SeekFromStart(INT64_MAX));
    EXPECT_FALSE(mFile.WriteData("x", 1));
    EXPECT_EQ(EFBIG, mFile.ErrorNumber());
    EXPECT_TRUE(mFile.IsEOF());
}

// ---- a system that falls short or fails

TEST_F(UnixDataFileTest, RandomOperationsAgreeWithAStringWhateverTheSystemDoes)
{
    struct {
        int mostBytes;
        bool interrupts;
        int operations;
    } worlds[] = {{0, false, 20000}, {0, true, 5000}, {1000, false, 3000}, {7, true, 150}};
    for (const auto& world : worlds) {
        const unsigned seed = std::random_device{}();
        SCOPED_TRACE(seed);
        UnixDataFile file;
        ASSERT_TRUE(file.Create(Path()));
        std::string model;
        {
            SystemCalls calls;
            calls.mostBytes = world.mostBytes;
            calls.interrupts = world.interrupts;
            CompareWithString(file, seed, world.operations, &model, [&](unsigned choice) {
                switch (choice % 8) {
                    case 0:
                        EXPECT_TRUE(file.FlushBuffer());
                        break;
                    case 1:
                        EXPECT_TRUE(file.FlushToDisk());
                        break;
                    case 2:
                        EXPECT_TRUE(file.TemporaryClose() && file.TemporaryReopen());
                        break;
                    default:
                        break;
                }
            });
            file.Close();
        }
        ASSERT_FALSE(HasFailure());
        ASSERT_TRUE(model == OnDisk());
    }
}

TEST_F(UnixDataFileTest, ReadsGoOnWhileBufferedBytesCannotBeWritten)
{
    const std::string content = PatternBytes(1000000);
    OpenOn(content);
    SystemCalls calls;
    ASSERT_TRUE(WriteAt(500000, "unwritten"));
    calls.writeError = ENOSPC;
    EXPECT_EQ("unwritten", ReadAt(500000, 9));
    EXPECT_TRUE(content.substr(100, 50) == ReadAt(100, 50)) << "before them";
    EXPECT_TRUE(content.substr(900000, 50) == ReadAt(900000, 50)) << "behind them";
    std::string mixed = content;
    mixed.replace(500000, 9, "unwritten");
    EXPECT_TRUE(mixed.substr(499990, 30) == ReadAt(499990, 30)) << "across them";
    EXPECT_TRUE(mixed == ReadAt(0, 1000000)) << "all at once";
    EXPECT_EQ(ENOSPC, mFile.ErrorNumber());
}

TEST_F(UnixDataFileTest, AGapThatIsNotWrittenOutReadsAsZeros)
{
    OpenOn("abc");
    SystemCalls calls;
    ASSERT_TRUE(WriteAt(100000, "far"));
    calls.writeError = ENOSPC;
    EXPECT_EQ(std::string("c\0\0", 3), ReadAt(2, 3));
    EXPECT_EQ(std::string("\0far", 4), ReadAt(99999, 10));
    EXPECT_EQ(std::string("abc") + std::string(99997, '\0') + "far", ReadAt(0, 200000));
    EXPECT_EQ(100003, mFile.GetLength());
}

TEST_F(UnixDataFileTest, FailedWritesAreReportedKeptAndTriedAgain)
{
    OpenOn("abcdef");
    {
        SystemCalls calls;
        calls.writeError = ENOSPC;
        EXPECT_TRUE(WriteAt(3, "DEFGHI")) << "buffered";
        EXPECT_FALSE(mFile.FlushBuffer());
        EXPECT_EQ(ENOSPC, mFile.ErrorNumber());
        EXPECT_FALSE(mFile.FlushToDisk());
        EXPECT_EQ(0, calls.synchronisations) << "nothing to synchronise yet";
        EXPECT_FALSE(mFile.TemporaryClose());
        EXPECT_FALSE(mFile.SetLength(20));
        EXPECT_EQ("abcDEFGHI", ReadAt(0, 9));
    }
    EXPECT_TRUE(mFile.FlushToDisk());
    EXPECT_EQ("abcDEFGHI" + std::string(11, '\0'), OnDisk());
}

// Room for n bytes, then none, then as much as is wanted: for every n in turn, what was refused is
// written again and the file comes out right.
TEST_F(UnixDataFileTest, RefusedWritesTriedAgainGiveTheSameFile)
{
    for (long room = 0; room < 3000; room += 61) {
        UnixDataFile file;
        ASSERT_TRUE(file.Create(Path()));
        std::string model;
        {
            SystemCalls calls;
            calls.roomLeft = room;
            std::mt19937 random(static_cast<unsigned>(room));
            for (int i = 0; i < 60; i++) {
                const size_t position = random() % (i % 4 == 0 ? 200000 : model.size() + 1);
                const std::string bytes =
                    PatternBytes(random() % 100 + 1, static_cast<unsigned>(random()));
                ASSERT_TRUE(file.SeekFromStart(static_cast<int64_t>(position)));
                if (!file.WriteData(bytes.data(), static_cast<int>(bytes.size()))) {
                    calls.roomLeft = -1;
                    ASSERT_TRUE(file.WriteData(bytes.data(), static_cast<int>(bytes.size())))
                        << room;
                }
                if (model.size() < position + bytes.size())
                    model.resize(position + bytes.size());
                model.replace(position, bytes.size(), bytes);
            }
            calls.roomLeft = -1;
            ASSERT_TRUE(file.FlushToDisk()) << room;
        }
        ASSERT_TRUE(model == OnDisk()) << room;
    }
}

TEST_F(UnixDataFileTest, SetLength_ForgetsUnwrittenBytesBehindTheEndAndTheirFailure)
{
    OpenOn("abcdef");
    SystemCalls calls;
    calls.writeError = ENOSPC;
    ASSERT_TRUE(WriteAt(6, "new"));
    EXPECT_FALSE(mFile.FlushBuffer());
    EXPECT_TRUE(mFile.SetLength(6)) << "nothing is left to write";
    EXPECT_TRUE(mFile.FlushBuffer());
    EXPECT_EQ("abcdef", OnDisk());
    calls.writeError = 0;
    calls.truncateError = EIO;
    EXPECT_FALSE(mFile.SetLength(2));
    EXPECT_EQ(EIO, mFile.ErrorNumber());
    EXPECT_EQ(6, mFile.GetLength());
}

TEST_F(UnixDataFileTest, FlushToDisk_SynchronisesOnlyWhatIsNew)
{
    OpenOn("abcdef");
    SystemCalls calls;
    EXPECT_TRUE(WriteAt(0, "A"));
    EXPECT_TRUE(mFile.FlushToDisk());
    EXPECT_EQ(1, calls.synchronisations);
    EXPECT_TRUE(mFile.FlushToDisk());
    EXPECT_EQ("Abc", ReadAt(0, 3));
    EXPECT_TRUE(mFile.FlushToDisk());
    EXPECT_EQ(1, calls.synchronisations) << "nothing was written in between";
    EXPECT_TRUE(mFile.SetLength(3));
    EXPECT_TRUE(mFile.FlushToDisk());
    EXPECT_EQ(2, calls.synchronisations) << "a new length is news";
    EXPECT_TRUE(WriteAt(0, "B"));
    EXPECT_TRUE(mFile.FlushBuffer());
    EXPECT_TRUE(mFile.FlushToDisk());
    EXPECT_EQ(3, calls.synchronisations) << "written by a flush before";
}

TEST_F(UnixDataFileTest, FlushToDisk_OnceFailedNeverPretendsAgain)
{
    OpenOn("abcdef");
    {
        SystemCalls calls;
        calls.synchroniseError = EIO;
        EXPECT_TRUE(WriteAt(0, "A"));
        EXPECT_FALSE(mFile.FlushToDisk());
        EXPECT_EQ(EIO, mFile.ErrorNumber());
        calls.synchroniseError = 0;
        EXPECT_FALSE(mFile.FlushToDisk())
            << "the system would say yes now, and the data may be gone";
        EXPECT_TRUE(mFile.TemporaryClose() && mFile.TemporaryReopen());
        EXPECT_FALSE(mFile.FlushToDisk());
    }
    ASSERT_TRUE(mFile.Open(Path(), kModeReadWrite));
    EXPECT_TRUE(WriteAt(0, "B"));
    EXPECT_TRUE(mFile.FlushToDisk());
}

TEST_F(UnixDataFileTest, FailedReadsAreShortAndKeepTheErrorNumber)
{
    OpenOn(PatternBytes(10000));
    SystemCalls calls;
    calls.readError = EIO;
    char bytes[100];
    int came = 99;
    EXPECT_FALSE(mFile.ReadData(bytes, 100, &came));
    EXPECT_EQ(0, came);
    EXPECT_EQ(EIO, mFile.ErrorNumber());
    EXPECT_EQ(0, mFile.GetPosition());
    calls.readError = 0;
    EXPECT_TRUE(mFile.ReadData(bytes, 100, &came));
    EXPECT_TRUE(PatternBytes(10000).substr(0, 100) == std::string(bytes, 100));
}

TEST_F(UnixDataFileTest, Reserve_TellsAFullDeviceFromOneThatCannotTell)
{
    OpenOn("abcdef");
    struct {
        int error;
        bool result;
    } cases[] = {{0, true},      {ENOSPC, false},    {EDQUOT, false}, {EIO, false},
                 {EFBIG, false}, {EOPNOTSUPP, true}, {ENOSYS, true},  {EINVAL, true}};
    for (const auto& c : cases) {
        SystemCalls calls;
        calls.allocateError = c.error;
        EXPECT_EQ(c.result, mFile.Reserve(50000)) << c.error;
        EXPECT_EQ(1, calls.allocations);
        if (!c.result) {
            EXPECT_EQ(c.error, mFile.ErrorNumber());
        }
        EXPECT_EQ(6, mFile.GetLength());
    }
    SystemCalls calls;
    EXPECT_TRUE(mFile.Reserve(6));
    EXPECT_TRUE(mFile.Reserve(0));
    EXPECT_TRUE(mFile.Reserve(-1));
    EXPECT_EQ(0, calls.allocations) << "no room wanted";
    EXPECT_TRUE(WriteAt(6, "buffered"));
    EXPECT_TRUE(mFile.Reserve(14));
    EXPECT_EQ(1, calls.allocations) << "the file is longer than what is written";
    calls.interrupts = true;
    EXPECT_TRUE(mFile.Reserve(50000));
    EXPECT_EQ("abcdef", OnDisk());
}

TEST_F(UnixDataFileTest, Close_KeepsTheErrorOfItsLastWrite)
{
    OpenOn("abc");
    EXPECT_TRUE(WriteAt(0, "A"));
    SystemCalls calls;
    calls.writeError = ENOSPC;
    mFile.Close();
    EXPECT_EQ(ENOSPC, mFile.ErrorNumber());
}

}   // namespace
}   // namespace vela
