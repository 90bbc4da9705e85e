#include "engine/storage/FileDescriptor.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace vela {

namespace {

static_assert(sizeof(off_t) == 8, "build with _FILE_OFFSET_BITS=64");

constexpr mode_t kNewFileRights = 0666;

// Calls the system until a call is not interrupted.
template <class Call>
auto Uninterrupted(Call call)
{
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

}   // namespace

bool FileDescriptor::Open(const string& path, int flags)
{
    Close();
    if (path.View().find('\0') != std::string_view::npos) {
        errno = EINVAL;
        return false;
    }
    mDescriptor =
        Uninterrupted([&] { return open(path.CString(), flags | O_CLOEXEC, kNewFileRights); });
    return IsOpen();
}

bool FileDescriptor::OpenForReading(const string& path, int flags)
{
    return Open(path, flags | O_RDONLY | O_NOATIME) ||
           (errno == EPERM && Open(path, flags | O_RDONLY));
}

void FileDescriptor::Reset(int descriptor)
{
    Close();
    mDescriptor = descriptor;
}

int FileDescriptor::Release()
{
    const int descriptor = mDescriptor;
    mDescriptor = -1;
    return descriptor;
}

bool FileDescriptor::Close()
{
    const int descriptor = Release();
    // Not repeated when interrupted: the descriptor is free by then, and may be somebody else's.
    return descriptor < 0 || close(descriptor) == 0 || errno == EINTR;
}

ssize_t FileDescriptor::ReadAt(int64_t offset, void* buffer, size_t count) const
{
    return Uninterrupted([&] { return pread(mDescriptor, buffer, count, offset); });
}

ssize_t FileDescriptor::WriteAt(int64_t offset, const void* buffer, size_t count) const
{
    return Uninterrupted([&] { return pwrite(mDescriptor, buffer, count, offset); });
}

ssize_t FileDescriptor::Read(void* buffer, size_t count) const
{
    return Uninterrupted([&] { return read(mDescriptor, buffer, count); });
}

ssize_t FileDescriptor::Write(const void* buffer, size_t count) const
{
    return Uninterrupted([&] { return write(mDescriptor, buffer, count); });
}

int64_t FileDescriptor::Length() const
{
    struct stat info;
    return fstat(mDescriptor, &info) == 0 ? static_cast<int64_t>(info.st_size) : -1;
}

bool FileDescriptor::SetLength(int64_t length) const
{
    return Uninterrupted([&] { return ftruncate(mDescriptor, length); }) == 0;
}

bool FileDescriptor::Synchronise() const
{
    return Uninterrupted([&] { return fdatasync(mDescriptor); }) == 0;
}

void FileDescriptor::StartSynchronising(int64_t offset, int64_t length) const
{
    const int reason = errno;
    sync_file_range(mDescriptor, offset, length, SYNC_FILE_RANGE_WRITE);
    errno = reason;
}

bool FileDescriptor::IsCached(int64_t offset) const
{
    const int reason = errno;
    char byte;
    const iovec place{&byte, 1};
    const bool mustWait =
        preadv2(mDescriptor, &place, 1, offset, RWF_NOWAIT) < 0 && errno == EAGAIN;
    errno = reason;
    return !mustWait;
}

void FileDescriptor::StartReading(int64_t offset, int64_t length) const
{
    (void)posix_fadvise(mDescriptor, offset, length, POSIX_FADV_WILLNEED);   // leaves errno alone
}

bool FileDescriptor::Allocate(int64_t offset, int64_t length) const
{
    if (length <= 0)
        return true;
    if (Uninterrupted(
            [&] { return fallocate(mDescriptor, FALLOC_FL_KEEP_SIZE, offset, length); }) == 0)
        return true;
    return errno == EOPNOTSUPP || errno == ENOSYS || errno == EINVAL;
}

}   // namespace vela
