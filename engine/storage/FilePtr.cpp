#include "engine/storage/FilePtr.h"

#include <errno.h>
#include <stdio_ext.h>
#include <unistd.h>

namespace vela {

bool FilePtr::Open(const string& path, const char* mode)
{
    Close();
    if (path.View().find('\0') != std::string_view::npos)
        errno = EINVAL;
    else
        mFile = fopen(path.CString(), mode);
    return Note(mFile != nullptr);
}

bool FilePtr::ReadData(void* buffer, int count, int* bytesRead)
{
    size_t done = 0;
    if (count > 0 && Turn(Direction::kReading)) {
        done = fread(buffer, 1, static_cast<size_t>(count), mFile);
        Note(!ferror(mFile));
        clearerr(mFile);   // the end of the file is no lasting state: writing moves it
    }
    if (bytesRead)
        *bytesRead = static_cast<int>(done);
    return mFile && static_cast<int>(done) == count;
}

bool FilePtr::WriteData(const void* buffer, int count)
{
    if (count < 0 || !Turn(Direction::kWriting))
        return false;
    const size_t wanted = static_cast<size_t>(count);
    return Note(count == 0 || fwrite(buffer, 1, wanted, mFile) == wanted);
}

void FilePtr::Close()
{
    if (mFile)
        Note(fclose(mFile) == 0);
    mFile = nullptr;
    mDirection = Direction::kNone;
}

bool FilePtr::IsEOF()
{
    return GetPosition() >= GetLength();
}

bool FilePtr::SeekFromStart(int64_t offset)
{
    mDirection = Direction::kNone;
    return mFile && Note(fseeko(mFile, offset, SEEK_SET) == 0);
}

int64_t FilePtr::GetLength()
{
    if (!mFile)
        return 0;
    const int64_t position = GetPosition();
    const bool atEnd = Note(fseeko(mFile, 0, SEEK_END) == 0);
    const int64_t length = atEnd ? GetPosition() : 0;
    SeekFromStart(position);
    return length;
}

bool FilePtr::SetLength(int64_t length)
{
    if (!mFile)
        return false;
    const int64_t position = GetPosition();
    if (!Note(fflush(mFile) == 0) || !Note(ftruncate(fileno(mFile), length) == 0))
        return false;
    __fpurge(mFile);   // what was read ahead may be cut off by now
    return SeekFromStart(position);
}

int64_t FilePtr::GetPosition()
{
    const int64_t position = mFile ? ftello(mFile) : 0;
    return Note(position >= 0) ? position : 0;
}

bool FilePtr::FlushToDisk()
{
    return mFile && Note(fflush(mFile) == 0) && Note(fdatasync(fileno(mFile)) == 0);
}

bool FilePtr::Turn(Direction direction)
{
    if (!mFile)
        return false;
    const bool turns = mDirection != Direction::kNone && mDirection != direction;
    if (turns && !Note(fseeko(mFile, 0, SEEK_CUR) == 0))
        return false;
    mDirection = direction;
    return true;
}

bool FilePtr::Note(bool ok)
{
    if (!ok)
        mErrorNumber = errno;
    return ok;
}

}   // namespace vela
