#include "engine/storage/StringStorageMechanism.h"

namespace vela {

namespace {

// No stream in memory grows beyond this many bytes, whatever a caller's arithmetic comes to.
constexpr int64_t kLongest = static_cast<int64_t>(SIZE_MAX / 4);

}   // namespace

void StringStorageMechanism::Open(const string& storage)
{
    mText = storage;
    mPosition = 0;
    mOpen = true;
}

bool StringStorageMechanism::ReadData(void* buffer, int count, int* bytesRead)
{
    const int64_t available = mPosition < GetLength() ? GetLength() - mPosition : 0;
    const int64_t done = count > 0 && mOpen ? (count < available ? count : available) : 0;
    if (done > 0)
        std::memcpy(buffer, mText.CString() + mPosition, static_cast<size_t>(done));
    mPosition += done;
    if (bytesRead)
        *bytesRead = static_cast<int>(done);
    return mOpen && done == count;
}

bool StringStorageMechanism::WriteData(const void* buffer, int count)
{
    if (!mOpen || count < 0)
        return false;
    if (count == 0)
        return true;
    if (mPosition > kLongest - count)
        return false;
    const int64_t end = mPosition + count;
    if (end > GetLength() && !SetLength(end))
        return false;
    std::memcpy(mText.MutableBytes() + mPosition, buffer, static_cast<size_t>(count));
    mPosition = end;
    return true;
}

void StringStorageMechanism::Close()
{
    mText = string();
    mPosition = 0;
    mOpen = false;
}

bool StringStorageMechanism::SeekFromStart(int64_t offset)
{
    if (!mOpen || offset < 0)
        return false;
    mPosition = offset;
    return true;
}

bool StringStorageMechanism::SetLength(int64_t length)
{
    if (!mOpen || length < 0 || length > kLongest)
        return false;
    const size_t size = static_cast<size_t>(length);
    if (size > mText.length() && !mText.Reserve(size))
        return false;
    mText.Resize(size);
    return true;
}

}   // namespace vela
