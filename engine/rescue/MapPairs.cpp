#include "engine/rescue/MapPairs.h"

#include <algorithm>

#include "engine/storage/RecordFormat.h"
#include "runtime/ByteOrder.h"

namespace vela {

namespace {

constexpr size_t kHeaderSize = 8;
constexpr size_t kPairSize = 8;
constexpr size_t kBlockSize = size_t{1} << 16;

}   // namespace

MapPairs::MapPairs(VelaFileAccess* files, const std::string& name, RescueWatch* watch)
{
    DamagedFile file(files, name, watch, kBlockSize);
    mIsThere = file.IsOpen();
    mLength = file.Length();
    const char* header = file.Bytes(0, kHeaderSize);
    if (header == nullptr)
        return;
    mState = LoadBigEndian32(header);
    mCount = LoadBigEndian32(header + 4);
    const int64_t room =
        (mLength - static_cast<int64_t>(kHeaderSize)) / static_cast<int64_t>(kPairSize);
    const uint32_t pairs = static_cast<uint32_t>(std::min<int64_t>(room, mCount));
    watch->StartFile(name, mLength);
    for (uint32_t i = 0; i < pairs && !watch->Stopped(); i++) {
        const char* pair = file.Bytes(PositionOf(i), kPairSize);
        mPairs.push_back({LoadBigEndian32(pair), LoadBigEndian32(pair + 4)});
    }
    const char* end = HasAllPairs() ? file.Bytes(EndMarkPosition(), 4) : nullptr;
    mHasEndMark = end != nullptr && LoadBigEndian32(end) == kMapEnd;
    mUnreadable = file.Unreadable();
}

int64_t MapPairs::PositionOf(size_t pair)
{
    return static_cast<int64_t>(kHeaderSize + kPairSize * static_cast<uint64_t>(pair));
}

bool MapPairs::IsWhole() const
{
    return mState == kMapValid && HasAllPairs() && mHasEndMark && mUnreadable.empty();
}

}   // namespace vela
