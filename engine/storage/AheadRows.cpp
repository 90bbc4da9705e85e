#include "engine/storage/AheadRows.h"

#include <algorithm>

#include "engine/storage/RecordFormat.h"
#include "engine/storage/RecordScanner.h"

namespace vela {

namespace {

// What goes to the file at a time.
constexpr size_t kWriteSize = size_t{64} << 10;

}   // namespace

void AheadRows::Open(RandomAccessMechanism* records)
{
    mRecords = records;
    mBytes = records->Ahead();
    Clear();
}

void AheadRows::Close()
{
    Clear();
    mRecords = nullptr;
    mBytes = nullptr;
    mPiece = SIZE_MAX;
}

void AheadRows::Clear()
{
    if (mBytes != nullptr)
        mBytes->DropAhead();
    mPositions.clear();
    mBuffer = std::string();
    mStart = mEnd = mSafeEnd = 0;
    mSafeCount = 0;
    mTaken = false;
    const size_t piece = mBytes != nullptr ? mBytes->AheadPiece() : 0;
    mPiece = piece > 0 ? piece : SIZE_MAX;
}

bool AheadRows::Append(uint32_t rowID, std::string_view body)
{
    if (Count() == 0)
        Start();
    const int64_t end = mEnd + static_cast<int64_t>(kRecordHeaderSize + body.size());
    if (end > kMaxRecordFileSize) {
        GiveUp();
        return false;
    }
    mPositions.push_back(static_cast<uint32_t>(mEnd));
    mEnd = end;
    char header[kRecordHeaderSize];
    EncodeRecordHeader(header, rowID, static_cast<uint32_t>(body.size()));
    mBuffer.append(header, sizeof header).append(body);
    return mBuffer.size() < kWriteSize || WriteBuffer();
}

// A file that is shorter than its metadata gets that first.
void AheadRows::Start()
{
    mStart = mRecords->GetLength();
    mEnd = mSafeEnd = std::max(mStart, static_cast<int64_t>(kMetadataSize));
    mBuffer.assign(static_cast<size_t>(mEnd - mStart), '\0');
}

bool AheadRows::WriteBuffer()
{
    const bool written = mBytes->WriteAhead(mBuffer.data(), mBuffer.size());
    mBuffer.clear();
    if (!written)
        GiveUp();
    return written;
}

bool AheadRows::EndPiece()
{
    return mBuffer.empty() || WriteBuffer();
}

bool AheadRows::Flush()
{
    if (mSafeCount == Count())
        return true;
    if (!mBytes->FlushAhead()) {
        GiveUp();
        return false;
    }
    mSafeCount = Count();
    mSafeEnd = mEnd;
    return true;
}

void AheadRows::GiveUp()
{
    mPiece = SIZE_MAX;
    mPositions.Shorten(mSafeCount);
    mEnd = mSafeEnd;
    mBuffer = std::string();
    if (mSafeCount == 0 && mBytes != nullptr)
        mBytes->DropAhead();
}

bool AheadRows::ReadBody(size_t number, uint32_t rowID, std::vector<char>* body) const
{
    const int64_t bodyPosition =
        int64_t{mPositions[number]} + static_cast<int64_t>(kRecordHeaderSize);
    char bytes[kRecordHeaderSize];
    RecordHeader header;
    if (!mRecords->SeekFromStart(mPositions[number]) ||
        !mRecords->ReadData(bytes, sizeof bytes, nullptr) ||
        ParseRecordHeader(bytes, mSafeEnd - bodyPosition, &header) != RecordError::kNone ||
        header.rowID != rowID)
        return false;
    body->resize(header.bodySize);
    return mRecords->ReadData(body->data(), static_cast<int>(body->size()), nullptr);
}

bool AheadRows::Take()
{
    mTaken = mTaken || Count() == 0 || mBytes->TakeAhead(mEnd - mStart);
    return mTaken;
}

void AheadRows::CommitWasCancelled()
{
    mTaken = false;
    if (Count() > 0 && mBytes->AheadLength() < mEnd - mStart)
        GiveUp();
}

}   // namespace vela
