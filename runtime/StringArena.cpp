#include "runtime/StringArena.h"

#include <algorithm>
#include <new>

#include "runtime/LargeMemory.h"

namespace vela {

namespace {

// Longer texts are rare enough, and large enough, for an allocation each.
constexpr size_t kLongText = StringArena::kFirstChunk / 16;

constexpr size_t AlignedSize(size_t bytes)
{
    constexpr size_t kAlignment = alignof(StringStorage);
    return (bytes + kAlignment - 1) / kAlignment * kAlignment;
}

constexpr size_t kFirstStorage = AlignedSize(sizeof(StringChunk));

}   // namespace

StringArena::~StringArena()
{
    if (mChunk)
        mChunk->Release();
}

string StringArena::Make(std::string_view text, TextEncoding encoding)
{
    if (text.empty() || text.size() > kLongText)
        return string(text, encoding);
    const size_t size = AlignedSize(sizeof(StringStorage) + text.size() + 1);
    if (size > mSize - mUsed)
        StartChunk();
    char* place = reinterpret_cast<char*>(mChunk) + mUsed;
    auto* storage =
        new (place) StringStorage{1, encoding, text.size(), StringStorage::kInChunk | mUsed};
    std::memcpy(storage->Bytes(), text.data(), text.size());
    storage->Bytes()[text.size()] = '\0';
    mUsed += size;
    mChunk->references++;
    return string::AdoptStorage(storage);
}

void StringArena::StartChunk()
{
    const size_t size = std::clamp(mAllChunks, kFirstChunk, kLargestChunk);
    void* memory = LargeMemory::Take(size);
    if (mChunk)
        mChunk->Release();
    mChunk = new (memory) StringChunk{1, size};
    mUsed = kFirstStorage;
    mSize = size;
    mAllChunks += size;
}

}   // namespace vela
