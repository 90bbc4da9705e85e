#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

namespace vela {

// FileWindow is the buffer of a file: an unbroken run of its bytes in memory, of which one part may
// be newer than the file. It calls no system; its owner fills it and writes it out.
//
// Positions are bytes from the start of the file. "Unwritten" are the bytes from the first to the
// last one placed here that the owner hasn't reported as written; bytes between two placed ones
// count, as they are what the file holds.
class FileWindow {
public:
    static constexpr size_t kLargestSize = 256 * 1024;

    [[nodiscard]] int64_t Start() const { return mStart; }
    [[nodiscard]] int64_t End() const { return mStart + static_cast<int64_t>(mSize); }
    [[nodiscard]] bool IsEmpty() const { return mSize == 0; }

    // The count bytes from position; null when they aren't all here. Good until the window changes.
    [[nodiscard]] const char* Find(int64_t position, size_t count) const
    {
        const uint64_t offset =
            static_cast<uint64_t>(position - mStart);   // huge for one before the start
        return offset <= mSize && count <= mSize - offset ? mBytes.get() + offset : nullptr;
    }
    // The bytes from position to the end; none when position isn't here. Good until the window changes.
    [[nodiscard]] std::string_view From(int64_t position) const
    {
        if (position < mStart || position >= End())
            return {};
        return {mBytes.get() + (position - mStart), static_cast<size_t>(End() - position)};
    }
    // Copies as many of the count bytes from position as are here; says how many.
    size_t CopyOut(int64_t position, char* to, size_t count) const;

    // Room for count bytes that the caller writes at position, which count as unwritten from now
    // on. The window grows for them. Null when they don't touch it, when they would make it larger
    // than kLargestSize or lie far from the other unwritten bytes, and when memory is short.
    [[nodiscard]] char* Place(int64_t position, size_t count)
    {
        const uint64_t offset = static_cast<uint64_t>(position - mStart);
        if (offset > mSize || count > kLargestSize - offset)
            return nullptr;
        const size_t begin = static_cast<size_t>(offset);
        return begin + count <= mCapacity || Grow(begin + count) ? Mark(begin, begin + count)
                                                                 : nullptr;
    }

    [[nodiscard]] bool HasUnwritten() const { return mUnwrittenBegin < mUnwrittenEnd; }
    [[nodiscard]] int64_t UnwrittenStart() const
    {
        return mStart + static_cast<int64_t>(mUnwrittenBegin);
    }
    [[nodiscard]] std::string_view Unwritten() const
    {
        return {mBytes.get() + mUnwrittenBegin, mUnwrittenEnd - mUnwrittenBegin};
    }
    // The first count unwritten bytes are in the file now.
    void Written(size_t count) { mUnwrittenBegin += count; }

    // Forgets all bytes, unwritten ones too; the window is empty, at start.
    void Restart(int64_t start);
    // Forgets the bytes before position, or all when they end before it. Nothing may be unwritten.
    void DropBefore(int64_t position);
    // Forgets the bytes from position on, unwritten ones too.
    void CutFrom(int64_t position);

    // Room for up to count bytes of the file behind those that are here; null when that makes the
    // window too large or memory is short. Added says how many came.
    [[nodiscard]] char* RoomAtEnd(size_t count);
    void Added(size_t count) { mSize += count; }

    // Forgets all and gives the memory back.
    void Free();

private:
    static constexpr size_t kSmallestSize = 8 * 1024;
    // Unwritten bytes further apart than this are not written in one go.
    static constexpr size_t kFarApart = 16 * 1024;

    [[nodiscard]] bool Grow(size_t size);
    // Takes [begin, end) into the unwritten part. Null when it is far from it.
    [[nodiscard]] char* Mark(size_t begin, size_t end)
    {
        if (!HasUnwritten()) {
            mUnwrittenBegin = begin;
            mUnwrittenEnd = end;
        } else if (begin > mUnwrittenEnd + kFarApart || end + kFarApart < mUnwrittenBegin) {
            return nullptr;
        }
        if (begin < mUnwrittenBegin)
            mUnwrittenBegin = begin;
        if (end > mUnwrittenEnd)
            mUnwrittenEnd = end;
        if (end > mSize)
            mSize = end;
        return mBytes.get() + begin;
    }

    std::unique_ptr<char[]> mBytes;
    size_t mCapacity = 0;
    int64_t mStart = 0;
    size_t mSize = 0;
    // Offsets in the window.
    size_t mUnwrittenBegin = 0;
    size_t mUnwrittenEnd = 0;
};

}   // namespace vela
