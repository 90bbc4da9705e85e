#include "engine/storage/RowArena.h"

#include <algorithm>

#include "runtime/LargeMemory.h"

namespace vela {

void* RowArena::Take(size_t bytes)
{
    constexpr size_t kUnit = alignof(std::max_align_t);
    bytes = (bytes + kUnit - 1) / kUnit * kUnit;
    if (bytes > mLeft)
        AddBlock(bytes);
    char* piece = mNext;
    mNext += bytes;
    mLeft -= bytes;
    mTaken += bytes;
    return piece;
}

// Each as large as all before it, so that a short transaction takes little memory and a long one few blocks.
void RowArena::AddBlock(size_t bytes)
{
    const size_t size = std::max(bytes, std::clamp(mTaken, kSmallestBlock, kLargestBlock));
    mBlocks.reserve(mBlocks.size() + 1);
    mNext = static_cast<char*>(LargeMemory::Take(size));
    mBlocks.push_back({mNext, size});
    mLeft = size;
}

// The first block, when it is a small one, serves the next transaction.
void RowArena::Clear()
{
    const bool keepsFirst = !mBlocks.empty() && mBlocks[0].size == kSmallestBlock;
    GiveBackFrom(keepsFirst ? 1 : 0);
    mNext = keepsFirst ? mBlocks[0].bytes : nullptr;
    mLeft = keepsFirst ? kSmallestBlock : 0;
    mTaken = mDropped = 0;
}

void RowArena::GiveBackFrom(size_t first)
{
    for (size_t i = first; i < mBlocks.size(); i++)
        LargeMemory::GiveBack(mBlocks[i].bytes, mBlocks[i].size);
    mBlocks.resize(std::min(first, mBlocks.size()));
}

void RowArena::Swap(RowArena& other)
{
    mBlocks.swap(other.mBlocks);
    std::swap(mNext, other.mNext);
    std::swap(mLeft, other.mLeft);
    std::swap(mTaken, other.mTaken);
    std::swap(mDropped, other.mDropped);
}

}   // namespace vela
