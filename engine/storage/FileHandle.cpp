#include "engine/storage/FileHandle.h"

#include <errno.h>
#include <unistd.h>

namespace vela {

bool FileHandle::Open(const string& path, int flags)
{
    return Note(mFile.Open(path, flags));
}

void FileHandle::Reset(int descriptor)
{
    mFile.Reset(descriptor);
}

int FileHandle::ExtractHandle()
{
    return mFile.Release();
}

bool FileHandle::ReadData(void* buffer, int count, int* bytesRead)
{
    int done = 0;
    ssize_t result = 1;
    while (done < count && result > 0) {
        result = mFile.Read(static_cast<char*>(buffer) + done, static_cast<size_t>(count - done));
        if (Note(result >= 0))
            done += static_cast<int>(result);
    }
    if (bytesRead)
        *bytesRead = done;
    return mFile.IsOpen() && done == count;
}

bool FileHandle::WriteData(const void* buffer, int count)
{
    int done = 0;
    while (done < count) {
        errno = EIO;   // of a write that takes nothing and gives no reason
        const ssize_t result =
            mFile.Write(static_cast<const char*>(buffer) + done, static_cast<size_t>(count - done));
        if (!Note(result > 0))
            return false;
        done += static_cast<int>(result);
    }
    return count >= 0 && mFile.IsOpen();
}

void FileHandle::Close()
{
    Note(mFile.Close());
}

bool FileHandle::IsEOF()
{
    return GetPosition() >= GetLength();
}

bool FileHandle::SeekFromStart(int64_t offset)
{
    return Note(lseek(mFile.Get(), offset, SEEK_SET) >= 0);
}

int64_t FileHandle::GetLength()
{
    const int64_t length = mFile.Length();
    return Note(length >= 0) ? length : 0;
}

bool FileHandle::SetLength(int64_t length)
{
    return Note(mFile.SetLength(length));
}

int64_t FileHandle::GetPosition()
{
    const int64_t position = lseek(mFile.Get(), 0, SEEK_CUR);
    return Note(position >= 0) ? position : 0;
}

bool FileHandle::FlushToDisk()
{
    return Note(mFile.Synchronise());
}

bool FileHandle::Reserve(int64_t length)
{
    const int64_t present = GetLength();
    return Note(mFile.Allocate(present, length - present));
}

bool FileHandle::Note(bool ok)
{
    if (!ok)
        mErrorNumber = errno;
    return ok;
}

}   // namespace vela
