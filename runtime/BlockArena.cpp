#include "runtime/BlockArena.h"

#include <cstring>

#include "runtime/LargeMemory.h"

namespace vela {

namespace {

constexpr size_t kLargestBlock = size_t{8} << 20;
constexpr size_t kLargestPiece = SIZE_MAX / 4;   // more is no size of anything
// Larger pieces get a block of their own, so that the one being filled isn't given up for them.
constexpr size_t kPartOfBlock = 4;

static_assert(BlockArena::kAlignment <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);

}   // namespace

BlockArena::~BlockArena()
{
    while (mBlocks) {
        Block* next = mBlocks->next;
        LargeMemory::GiveBack(mBlocks, sizeof(Block) + mBlocks->size);
        mBlocks = next;
    }
}

std::string_view BlockArena::Copy(std::string_view bytes)
{
    if (bytes.empty())
        return {};
    void* copy = Allocate(bytes.size(), 1);
    std::memcpy(copy, bytes.data(), bytes.size());
    return {static_cast<const char*>(copy), bytes.size()};
}

// The bytes of a block begin at a multiple of kAlignment.
void* BlockArena::AllocateElsewhere(size_t size)
{
    if (size > mNextSize / kPartOfBlock)
        return AddBlock(size);
    char* block = AddBlock(mNextSize);
    mPosition = block + size;
    mEnd = block + mNextSize;
    if (mNextSize < kLargestBlock)
        mNextSize *= 2;
    return block;
}

char* BlockArena::AddBlock(size_t size)
{
    if (size > kLargestPiece)
        throw std::bad_alloc();
    mBlocks = new (LargeMemory::Take(sizeof(Block) + size)) Block{mBlocks, size};
    return reinterpret_cast<char*>(mBlocks + 1);
}

}   // namespace vela
