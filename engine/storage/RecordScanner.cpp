#include "engine/storage/RecordScanner.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "engine/storage/RecordFormat.h"
#include "runtime/ByteOrder.h"

namespace vela {

namespace {

// Blocks grow, so that looking at the first records of a file is cheap and reading it all is too.
constexpr size_t kFirstBlockSize = size_t{1} << 12;
constexpr size_t kLargestBlockSize = size_t{1} << 18;
constexpr size_t kBlockGrowth = 4;

}   // namespace

RecordError ParseRecordHeader(const char* bytes, int64_t bytesAfter, RecordHeader* header)
{
    const uint32_t tag = LoadBigEndian32(bytes);
    if (tag != kRecordTag && tag != kTrashTag)
        return RecordError::kCorruptHeader;
    const int32_t size = static_cast<int32_t>(LoadBigEndian32(bytes + 8));
    if (size < 1 || size > bytesAfter)
        return RecordError::kCorruptHeader;
    header->live = tag == kRecordTag;
    header->rowID = LoadBigEndian32(bytes + 4);
    header->bodySize = static_cast<uint32_t>(size);
    return RecordError::kNone;
}

void ReportRecordError(RecordError error)
{
    std::fprintf(stderr, "VelaStorage error%d\n", static_cast<int>(error));
}

DamageKind DamageOf(RecordError error)
{
    return error == RecordError::kReadFailed ? DamageKind::kUnreadable : DamageKind::kHeader;
}

RecordScanner::RecordScanner(RandomAccessMechanism* file)
    : RecordScanner(file, kMetadataSize, std::min(file->GetLength(), kMaxRecordFileSize))
{}

RecordScanner::RecordScanner(RandomAccessMechanism* file, int64_t position, int64_t end)
    : mFile(file), mEnd(end), mNext(position), mNextBlockSize(kFirstBlockSize)
{}

bool RecordScanner::Next()
{
    if (mNext >= mEnd)
        return false;
    mPosition = mNext;
    RecordError error = RecordError::kReadFailed;
    if (Provide(mPosition, kRecordHeaderSize)) {
        const char* header = mBlock.data() + (mPosition - mBlockStart);
        error = ParseRecordHeader(
            header, mEnd - mPosition - static_cast<int64_t>(kRecordHeaderSize), &mHeader);
    }
    const int64_t bodyPosition = mPosition + static_cast<int64_t>(kRecordHeaderSize);
    if (error == RecordError::kNone && !Provide(bodyPosition, mHeader.bodySize))
        error = RecordError::kReadFailed;
    if (error != RecordError::kNone) {
        ReportRecordError(error);
        mFile->NoteDamage(mPosition, DamageOf(error));
        mFailed = true;
        mNext = mEnd;
        return false;
    }
    mBodyOffset = static_cast<size_t>(bodyPosition - mBlockStart);
    mNext = bodyPosition + mHeader.bodySize;
    return true;
}

bool RecordScanner::Provide(int64_t position, size_t size)
{
    const int64_t blockEnd = mBlockStart + static_cast<int64_t>(mBlockSize);
    if (position >= mBlockStart && position + static_cast<int64_t>(size) <= blockEnd)
        return true;
    if (position + static_cast<int64_t>(size) > mEnd)
        return false;
    const size_t wanted = std::max(size, mNextBlockSize);
    mNextBlockSize = std::min(mNextBlockSize * kBlockGrowth, kLargestBlockSize);
    const size_t count =
        static_cast<size_t>(std::min<int64_t>(static_cast<int64_t>(wanted), mEnd - position));
    if (mBlock.size() < count)
        mBlock.resize(count);
    int bytesRead = 0;
    mBlockSize = 0;
    if (!mFile->SeekFromStart(position))
        return false;
    if (!mFile->ReadData(mBlock.data(), static_cast<int>(count), &bytesRead) && bytesRead < 0)
        return false;
    mBlockStart = position;
    mBlockSize = static_cast<size_t>(bytesRead);
    return mBlockSize >= size;
}

}   // namespace vela
