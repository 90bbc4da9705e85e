#include "engine/storage/UnixDataFile.h"

#include <errno.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <algorithm>
#include <cassert>

namespace vela {

namespace {

constexpr int kModeRead = 1;
constexpr int kModeReadWrite = 3;

constexpr char kTemporaryPattern[] = "/tmp/mx_XXXXXX";

constexpr int64_t kPageSize = 4 * 1024;
constexpr int64_t kEarlyPiece = int64_t{2} << 20;
constexpr int64_t kLargestFetch = static_cast<int64_t>(FileWindow::kLargestSize);
// How far reading on is ahead of itself where the system has to get the bytes from the device.
constexpr int64_t kFetchedEarly = int64_t{4} << 20;
// From this size on, a block is read or written without the window.
constexpr size_t kLargeBlock = 64 * 1024;
// A read that skips no more than this behind the window still counts as reading on.
constexpr int64_t kNear = 8 * 1024;
// What stays of the window when reading or writing goes on behind it: a record that was just read
// is often rewritten.
constexpr int64_t kTail = 4 * 1024;

int64_t PageStart(int64_t position)
{
    return position / kPageSize * kPageSize;
}

// Flags that keep an open of something that is no ordinary file from waiting, or from taking over a
// terminal.
constexpr int kOpenFlags = O_NONBLOCK | O_NOCTTY;

}   // namespace

UnixDataFile::~UnixDataFile()
{
    UnixDataFile::Close();
}

bool UnixDataFile::Create(const string& path)
{
    Abandon();
    if (!mFile.Open(path, O_RDWR | O_CREAT | kOpenFlags))
        return FailWith(errno);
    if (!IsOrdinaryFile())
        return false;
    if (!mFile.SetLength(0)) {
        FailWith(errno);
        mFile.Close();
        return false;
    }
    return StartOn(path, true);
}

bool UnixDataFile::Open(const string& path, int mode)
{
    Abandon();
    if (mode != kModeRead && mode != kModeReadWrite)
        return FailWith(EINVAL);
    const bool writable = mode == kModeReadWrite;
    if (!(writable ? mFile.Open(path, O_RDWR | kOpenFlags)
                   : mFile.OpenForReading(path, kOpenFlags)))
        return FailWith(errno);
    return IsOrdinaryFile() && StartOn(path, writable);
}

bool UnixDataFile::CreateTemporaryFile(string& name)
{
    Abandon();
    char path[sizeof kTemporaryPattern];
    std::copy(std::begin(kTemporaryPattern), std::end(kTemporaryPattern), path);
    const int descriptor = mkostemp(path, O_CLOEXEC);
    if (descriptor < 0)
        return FailWith(errno);
    mFile.Reset(descriptor);
    mTemporaryPath = path;
    name = path;
    return StartOn(name, true);
}

bool UnixDataFile::TemporaryClose()
{
    if (!mFile.IsOpen())
        return FailWith(EBADF);
    if (!WriteWindow())
        return false;
    mWindow.Free();
    return mFile.Close() || FailWith(errno);
}

bool UnixDataFile::TemporaryReopen()
{
    if (mFile.IsOpen())
        return true;
    if (mPath.empty())
        return FailWith(EBADF);
    if (!mFile.Open(mPath, (mWritable ? O_RDWR : O_RDONLY) | kOpenFlags))
        return FailWith(errno);
    return IsOrdinaryFile() && FlushBuffer();
}

bool UnixDataFile::FlushBuffer()
{
    if (!mFile.IsOpen())
        return FailWith(EBADF);
    if (!WriteWindow())
        return false;
    const int64_t length = mFile.Length();
    if (length < 0)
        return FailWith(errno);
    mWindow.Restart(0);
    mFileLength = mLength = length;
    return true;
}

bool UnixDataFile::ReadData(void* buffer, int count, int* bytesRead)
{
    const size_t wanted = count > 0 ? static_cast<size_t>(count) : 0;
    size_t done = 0;
    if (const char* bytes = wanted > 0 ? mWindow.Find(mPosition, wanted) : nullptr) {
        std::memcpy(buffer, bytes, wanted);
        done = wanted;
    } else {
        done = ReadSlowly(static_cast<char*>(buffer), wanted);
    }
    mPosition += static_cast<int64_t>(done);
    if (bytesRead)
        *bytesRead = static_cast<int>(done);
    return done == wanted && count >= 0 && mFile.IsOpen();
}

bool UnixDataFile::WriteData(const void* buffer, int count)
{
    if (!mFile.IsOpen() || !mWritable)
        return FailWith(EBADF);
    if (count < 0)
        return FailWith(EINVAL);
    if (count == 0)
        return true;
    if (mPosition > INT64_MAX - count)
        return FailWith(EFBIG);
    const size_t size = static_cast<size_t>(count);
    if (size >= kLargeBlock)
        return WritePastWindow(static_cast<const char*>(buffer), size);
    char* room = mWindow.Place(mPosition, size);
    if (!room)
        room = PlaceSlowly(size);
    if (!room)
        return false;
    std::memcpy(room, buffer, size);
    mPosition += count;
    mLength = std::max(mLength, mPosition);
    return true;
}

void UnixDataFile::Close()
{
    if (mFile.IsOpen()) {
        WriteWindow();
        if (!mFile.Close())
            FailWith(errno);
    }
    mWindow.Free();
    mPath = string();
    mWritable = false;
    mPosition = mLength = mFileLength = mAhead = mFetchEnd = 0;
    mUnsynchronised = false;
}

bool UnixDataFile::SeekFromStart(int64_t offset)
{
    if (offset < 0)
        return FailWith(EINVAL);
    mPosition = offset;
    return true;
}

bool UnixDataFile::SetLength(int64_t length)
{
    if (!mFile.IsOpen() || !mWritable)
        return FailWith(EBADF);
    if (length == mLength && length == mFileLength)
        return true;
    if (!mFile.SetLength(length))
        return FailWith(errno);
    mWindow.CutFrom(length);
    mFileLength = mLength = length;
    mUnsynchronised = true;
    return WriteWindow();
}

bool UnixDataFile::FlushToDisk()
{
    if (!mFile.IsOpen())
        return FailWith(EBADF);
    if (!WriteWindow())
        return false;
    if (mDeviceFailed)
        return FailWith(EIO);
    if (!mUnsynchronised)
        return true;
    if (!mFile.Synchronise()) {
        mDeviceFailed = true;
        return FailWith(errno);
    }
    mUnsynchronised = false;
    return true;
}

bool UnixDataFile::Reserve(int64_t length)
{
    if (!mFile.IsOpen() || !mWritable)
        return FailWith(EBADF);
    return mFile.Allocate(mFileLength, length - mFileLength) || FailWith(errno);
}

void UnixDataFile::Abandon()
{
    Close();
    mTemporaryPath = string();
}

bool UnixDataFile::StartOn(const string& path, bool writable)
{
    const int64_t length = mFile.Length();
    if (length < 0) {
        FailWith(errno);
        mFile.Close();
        return false;
    }
    mPath = path;
    mWritable = writable;
    mFileLength = mLength = length;
    mErrorNumber = 0;
    mDeviceFailed = false;
    mUnsynchronised =
        writable;   // an earlier opening may have left something on its way to the device
    return true;
}

bool UnixDataFile::IsOrdinaryFile()
{
    struct stat info;
    const bool known = fstat(mFile.Get(), &info) == 0;
    if (known && S_ISREG(info.st_mode))
        return true;
    FailWith(!known ? errno : S_ISDIR(info.st_mode) ? EISDIR : EINVAL);
    mFile.Close();
    return false;
}

bool UnixDataFile::FailWith(int errorNumber)
{
    mErrorNumber = errorNumber;
    return false;
}

// Reads what the window doesn't hold, or not whole. Says how many bytes came.
size_t UnixDataFile::ReadSlowly(char* to, size_t count)
{
    if (!mFile.IsOpen()) {
        FailWith(EBADF);
        return 0;
    }
    const int64_t available = std::max<int64_t>(mLength - mPosition, 0);
    const size_t wanted = static_cast<size_t>(std::min(static_cast<int64_t>(count), available));
    size_t done = 0;
    while (done < wanted) {
        const size_t came =
            ReadSome(mPosition + static_cast<int64_t>(done), to + done, wanted - done);
        if (came == 0)
            break;
        done += came;
    }
    return done;
}

// Reads at least one of the count bytes from position, which the stream has. 0: that failed.
size_t UnixDataFile::ReadSome(int64_t position, char* to, size_t count)
{
    size_t came = mWindow.CopyOut(position, to, count);
    if (came == 0 && count < kLargeBlock && MoveWindow(position, count))
        came = mWindow.CopyOut(position, to, count);
    // Also when bytes that can't be written out keep the window where it is.
    return came > 0 ? came : ReadPastWindow(position, to, count);
}

// Moves the window, which ends before position or starts behind it, to the count bytes from
// position.
bool UnixDataFile::MoveWindow(int64_t position, size_t count)
{
    if (!WriteWindow())
        return false;
    assert(mFileLength == mLength);
    const bool goesOn =
        !mWindow.IsEmpty() && position >= mWindow.End() && position - mWindow.End() <= kNear;
    return goesOn ? ReadOn(position, count) : ReadAround(position, count);
}

// Lengthens the window behind its end, with twice what came last time. What was read just before
// stays in it.
bool UnixDataFile::ReadOn(int64_t position, size_t count)
{
    mAhead = std::clamp(2 * mAhead, 2 * kPageSize, kLargestFetch);
    if (mAhead == kLargestFetch)
        FetchEarly(position);
    mWindow.DropBefore(std::min(mPosition, mWindow.End()) - kTail);
    const int64_t end = position + static_cast<int64_t>(count);
    return Fill(std::max(PageStart(position + mAhead), end));
}

// Has the system read on from position while the bytes before are being used. It reads ahead by itself, but no further than
// is right for any reader of any file. What it has in memory already costs no more than one question.
void UnixDataFile::FetchEarly(int64_t position)
{
    const int64_t end = std::min(position + kFetchedEarly, mFileLength);
    if (end <= position || mFile.IsCached(end - 1))
        return;
    if (mFetchEnd < position || mFetchEnd > end)
        mFetchEnd = position;
    for (; mFetchEnd < end; mFetchEnd += kLargestFetch)
        mFile.StartReading(mFetchEnd, kLargestFetch);
}

bool UnixDataFile::ReadAround(int64_t position, size_t count)
{
    mAhead = kPageSize;
    mWindow.Restart(PageStart(position));
    return Fill(PageStart(position + static_cast<int64_t>(count) + kPageSize - 1));
}

// Reads from the file what lies between the window's end and end, as far as there is such a thing
// and room for it.
bool UnixDataFile::Fill(int64_t end)
{
    end = std::min({end, mFileLength, mWindow.Start() + kLargestFetch});
    const size_t wanted = static_cast<size_t>(end - mWindow.End());
    char* room = mWindow.RoomAtEnd(wanted);
    size_t done = 0;
    while (room && done < wanted) {
        const ssize_t came = mFile.ReadAt(mWindow.End(), room + done, wanted - done);
        if (came <= 0)
            break;
        mWindow.Added(static_cast<size_t>(came));
        done += static_cast<size_t>(came);
    }
    return room && done == wanted;
}

// Reads from the file itself, up to where the window starts, if that lies ahead. 0: that failed.
size_t UnixDataFile::ReadPastWindow(int64_t position, char* to, size_t count)
{
    if (!mWindow.IsEmpty() && position < mWindow.Start())
        count =
            static_cast<size_t>(std::min(static_cast<int64_t>(count), mWindow.Start() - position));
    if (position >= mFileLength) {
        std::memset(to, 0, count);
        return count;
    }
    count = static_cast<size_t>(std::min(static_cast<int64_t>(count), mFileLength - position));
    const ssize_t came = mFile.ReadAt(position, to, count);
    if (came > 0)
        return static_cast<size_t>(came);
    FailWith(came < 0 ? errno : EIO);   // EIO: somebody has cut the file
    return 0;
}

// Room for count bytes at the position that Place had none for: writes the window out and moves it.
// Null when that failed.
char* UnixDataFile::PlaceSlowly(size_t count)
{
    if (!WriteWindow())
        return nullptr;
    if (mPosition >= mWindow.Start() && mPosition <= mWindow.End())
        mWindow.DropBefore(mPosition - kTail);
    char* room = mWindow.Place(mPosition, count);
    if (!room) {
        mWindow.Restart(mPosition);
        mAhead = kPageSize;
        room = mWindow.Place(mPosition, count);
    }
    if (!room)
        FailWith(ENOMEM);
    return room;
}

bool UnixDataFile::WritePastWindow(const char* from, size_t count)
{
    if (!WriteWindow())
        return false;
    mWindow.Restart(mPosition);
    const size_t done = WriteToFile(mPosition, from, count);
    if (done < count)
        return false;
    mPosition += static_cast<int64_t>(count);
    return true;
}

bool UnixDataFile::WriteWindow()
{
    if (!mWindow.HasUnwritten())
        return true;
    const std::string_view bytes = mWindow.Unwritten();
    const size_t done = WriteToFile(mWindow.UnwrittenStart(), bytes.data(), bytes.size());
    mWindow.Written(done);
    return done == bytes.size();
}

size_t UnixDataFile::WriteToFile(int64_t position, const char* from, size_t count)
{
    size_t done = 0;
    while (done < count) {
        const ssize_t took = mFile.WriteAt(position, from + done, count - done);
        if (took <= 0) {
            FailWith(took < 0 ? errno : EIO);
            break;
        }
        mUnsynchronised = true;
        done += static_cast<size_t>(took);
        position += took;
        mFileLength = std::max(mFileLength, position);
        mLength = std::max(mLength, position);
    }
    StartEarly(position, done);
    return done;
}

// A long run of writes goes to the device while it is still being made, so that the flush at its end has little left to wait
// for.
void UnixDataFile::StartEarly(int64_t end, size_t written)
{
    if (mRunEnd != end - static_cast<int64_t>(written))
        mRunStart = end - static_cast<int64_t>(written);
    mRunEnd = end;
    if (mRunEnd - mRunStart < kEarlyPiece)
        return;
    mFile.StartSynchronising(mRunStart, mRunEnd - mRunStart);
    mRunStart = mRunEnd;
}

}   // namespace vela
