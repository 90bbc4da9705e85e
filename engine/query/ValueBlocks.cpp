#include "engine/query/ValueBlocks.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>

#include "runtime/LargeMemory.h"

namespace vela {

namespace {

constexpr size_t kFirstBlock = 64;   // values
constexpr size_t kLargestBlock =
    (size_t{1} << 22) / sizeof(VelaValue);   // but where more are wanted at once

}   // namespace

ValueBlocks::~ValueBlocks()
{
    for (const Block& block : mBlocks) {
        std::destroy_n(block.values, block.used);
        LargeMemory::GiveBack(block.values, block.size * sizeof(VelaValue));
    }
}

VelaValue* ValueBlocks::Take(size_t count)
{
    if (mBlocks.empty() || mBlocks.back().size - mBlocks.back().used < count) {
        const size_t size = mBlocks.empty() ? kFirstBlock : mBlocks.back().size * 2;
        StartBlock(std::max(count, std::min(size, kLargestBlock)));
    }
    Block& block = mBlocks.back();
    VelaValue* values = block.values + block.used;
    std::uninitialized_default_construct_n(values, count);
    block.used += count;
    return values;
}

void ValueBlocks::GiveBack(size_t count)
{
    Block& block = mBlocks.back();
    block.used -= count;
    std::destroy_n(block.values + block.used, count);
}

void ValueBlocks::Reserve(size_t rows, size_t width)
{
    if (width > 0 && rows > SIZE_MAX / width)
        throw std::bad_alloc();
    const size_t count = rows * width;
    if (count > 0 && (mBlocks.empty() || mBlocks.back().size - mBlocks.back().used < count))
        StartBlock(count);
}

// What is left of a block stays unused.
void ValueBlocks::StartBlock(size_t size)
{
    if (size > SIZE_MAX / sizeof(VelaValue))
        throw std::bad_alloc();
    mBlocks.push_back({nullptr, 0, 0});
    void* memory = LargeMemory::Take(size * sizeof(VelaValue));
    mBlocks.back() = {static_cast<VelaValue*>(memory), size, 0};
}

}   // namespace vela
