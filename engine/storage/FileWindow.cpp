#include "engine/storage/FileWindow.h"

#include <cassert>
#include <new>

namespace vela {

size_t FileWindow::CopyOut(int64_t position, char* to, size_t count) const
{
    if (position < mStart || position >= End())
        return 0;
    const size_t offset = static_cast<size_t>(position - mStart);
    const size_t done = count < mSize - offset ? count : mSize - offset;
    std::memcpy(to, mBytes.get() + offset, done);
    return done;
}

void FileWindow::Restart(int64_t start)
{
    mStart = start;
    mSize = 0;
    mUnwrittenBegin = 0;
    mUnwrittenEnd = 0;
}

void FileWindow::DropBefore(int64_t position)
{
    assert(!HasUnwritten());
    if (position <= mStart)
        return;
    if (position >= End()) {
        Restart(End());
        return;
    }
    const size_t dropped = static_cast<size_t>(position - mStart);
    std::memmove(mBytes.get(), mBytes.get() + dropped, mSize - dropped);
    mStart = position;
    mSize -= dropped;
}

void FileWindow::CutFrom(int64_t position)
{
    if (position >= End())
        return;
    if (position <= mStart) {
        Restart(position);
        return;
    }
    mSize = static_cast<size_t>(position - mStart);
    if (mUnwrittenEnd > mSize)
        mUnwrittenEnd = mSize;
    if (!HasUnwritten())
        mUnwrittenBegin = mUnwrittenEnd = 0;
}

char* FileWindow::RoomAtEnd(size_t count)
{
    if (count > kLargestSize - mSize)
        return nullptr;
    return mSize + count <= mCapacity || Grow(mSize + count) ? mBytes.get() + mSize : nullptr;
}

void FileWindow::Free()
{
    Restart(0);
    mBytes.reset();
    mCapacity = 0;
}

bool FileWindow::Grow(size_t size)
{
    size_t capacity = mCapacity < kSmallestSize ? kSmallestSize : 2 * mCapacity;
    while (capacity < size)
        capacity *= 2;
    std::unique_ptr<char[]> bytes(new (std::nothrow) char[capacity]);
    if (!bytes)
        return false;
    if (mSize > 0)
        std::memcpy(bytes.get(), mBytes.get(), mSize);
    mBytes = std::move(bytes);
    mCapacity = capacity;
    return true;
}

}   // namespace vela
