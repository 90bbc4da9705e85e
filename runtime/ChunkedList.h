#pragma once

#include <bit>
#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

#include "runtime/LargeMemory.h"

namespace vela {

// ChunkedList is a list of numbers or pointers that may grow large. Its elements never move: it grows by chunks, each twice as
// long as the one before it, and so touches no more memory than its elements take. Indexing is not checked.
template <class T>
class ChunkedList {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    ChunkedList() = default;
    ChunkedList(ChunkedList&& other) noexcept { *this = std::move(other); }
    // Leaves other empty.
    ChunkedList& operator=(ChunkedList&& other) noexcept
    {
        mChunks = std::move(other.mChunks);
        mSize = other.mSize;
        mEnd = other.mEnd;
        mChunkEnd = other.mChunkEnd;
        other.clear();
        return *this;
    }

    [[nodiscard]] size_t size() const { return mSize; }
    [[nodiscard]] bool empty() const { return mSize == 0; }
    [[nodiscard]] T& operator[](size_t index)
    {
        const size_t chunk = ChunkOf(index);
        return mChunks[chunk][index - StartOf(chunk)];
    }
    [[nodiscard]] const T& operator[](size_t index) const
    {
        return const_cast<ChunkedList&>(*this)[index];
    }

    // When memory runs out, nothing has changed.
    void push_back(T item)
    {
        MakeRoomForOne();
        *mEnd++ = item;
        mSize++;
    }
    // The next push_back takes no memory.
    void MakeRoomForOne()
    {
        if (mEnd == mChunkEnd)
            GoToNextChunk();
    }
    void pop_back() { Shorten(mSize - 1); }
    // Keeps the first count elements.
    void Shorten(size_t count)
    {
        mSize = count;
        mEnd = mChunkEnd = nullptr;
        const size_t chunk = ChunkOf(count);
        if (chunk < mChunks.size())
            StandIn(chunk);
    }
    void clear()
    {
        mChunks.clear();
        Shorten(0);
    }

private:
    static constexpr size_t kFirstBits = 4;   // of the first chunk's length

    [[nodiscard]] static size_t ChunkOf(size_t index)
    {
        return static_cast<size_t>(std::bit_width((index >> kFirstBits) + 1)) - 1;
    }
    // Elements in so many chunks.
    [[nodiscard]] static size_t StartOf(size_t chunks)
    {
        return ((size_t{1} << chunks) - 1) << kFirstBits;
    }

    // The last element of a chunk has been taken, or there is no chunk.
    void GoToNextChunk()
    {
        const size_t chunk = ChunkOf(mSize);
        if (chunk == mChunks.size())
            mChunks.emplace_back(StartOf(chunk + 1) - mSize);
        StandIn(chunk);
    }
    void StandIn(size_t chunk)
    {
        T* const start = mChunks[chunk].data();
        mEnd = start + (mSize - StartOf(chunk));
        mChunkEnd = start + mChunks[chunk].size();
    }

    std::vector<LargeVector<T>>
        mChunks;   // each of its full length, the elements behind the last one unset
    size_t mSize = 0;
    T* mEnd = nullptr;        // behind the last element, while the chunk where that is has room
    T* mChunkEnd = nullptr;   // of that chunk
};

}   // namespace vela
