#include "engine/storage/CommitStream.h"

#include <cerrno>

#include <utility>

#include "engine/storage/CommitFileAccess.h"

namespace vela {

CommitStream::CommitStream(CommitFileAccess* owner, std::shared_ptr<CommitFile> file)
    : mOwner(owner), mFile(std::move(file))
{}

CommitStream::~CommitStream()
{
    CommitStream::Close();
}

bool CommitStream::ReadData(void* buffer, int count, int* bytesRead)
{
    const size_t wanted = count > 0 ? static_cast<size_t>(count) : 0;
    const size_t done =
        mFile && wanted > 0 ? mFile->Read(mPosition, static_cast<char*>(buffer), wanted) : 0;
    mPosition += static_cast<int64_t>(done);
    if (bytesRead != nullptr)
        *bytesRead = static_cast<int>(done);
    return mFile && count >= 0 && done == wanted;
}

bool CommitStream::WriteData(const void* buffer, int count)
{
    if (!mFile || count < 0)
        return FailWith(mFile ? EINVAL : EBADF);
    if (count == 0)
        return true;
    if (!mFile->Write(mPosition, static_cast<const char*>(buffer), static_cast<size_t>(count)))
        return FailWith(mFile->ErrorNumber());
    mPosition += count;
    return true;
}

void CommitStream::Close()
{
    if (mFile && mWritesAhead)
        mFile->DropAhead();
    if (mFile)
        mOwner->StreamCloses(std::move(mFile));
    mFile.reset();
    mPosition = 0;
}

bool CommitStream::SeekFromStart(int64_t offset)
{
    if (offset < 0)
        return FailWith(EINVAL);
    mPosition = offset;
    return true;
}

bool CommitStream::SetLength(int64_t length)
{
    if (!mFile)
        return FailWith(EBADF);
    return mFile->SetLength(length) || FailWith(mFile->ErrorNumber());
}

bool CommitStream::FlushToDisk()
{
    if (!mFile)
        return FailWith(EBADF);
    return mFile->Flush() || FailWith(mFile->ErrorNumber());
}

bool CommitStream::Reserve(int64_t length)
{
    if (!mFile)
        return FailWith(EBADF);
    return mFile->Reserve(length) || FailWith(mFile->ErrorNumber());
}

AheadBytes* CommitStream::Ahead()
{
    mWritesAhead = mFile != nullptr;
    return mFile.get();
}

int CommitStream::ErrorNumber() const
{
    return mErrorNumber != 0 || !mFile ? mErrorNumber : mFile->ErrorNumber();
}

bool CommitStream::FailWith(int errorNumber)
{
    mErrorNumber = errorNumber;
    return false;
}

}   // namespace vela
