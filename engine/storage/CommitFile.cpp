#include "engine/storage/CommitFile.h"

#include <cerrno>

#include <algorithm>
#include <cstring>
#include <utility>

#include "engine/core/OutOfMemory.h"
#include "engine/storage/CommitFileAccess.h"

namespace vela {

namespace {

// What one call of a stream takes.
constexpr size_t kLargestWrite = size_t{1} << 24;
constexpr int64_t kReservedUnit = 4096;

}   // namespace

CommitFile::CommitFile(CommitFileAccess* owner, const std::string& name,
                       std::unique_ptr<RandomAccessMechanism> stream)
    : mOwner(owner), mName(name), mStream(std::move(stream)), mIsNew(mStream == nullptr)
{
    if (mStream)
        mKept = mCommitted = mStream->GetLength();
}

// ---- reading

size_t CommitFile::ReadStream(int64_t position, char* to, size_t count)
{
    int bytesRead = 0;
    if (!mStream || !mStream->SeekFromStart(position))
        return 0;
    if (!mStream->ReadData(to, static_cast<int>(count), &bytesRead))
        mErrorNumber = mStream->ErrorNumber();
    return static_cast<size_t>(std::max(bytesRead, 0));
}

// The three parts one after the other: what the pages may cover, what has gone to the container since, the tail.
size_t CommitFile::ReadChanged(int64_t position, char* to, size_t count)
{
    size_t done = 0;
    for (const int64_t end : {std::min(mCommitted, mKept), mKept}) {
        const int64_t place = position + static_cast<int64_t>(done);
        if (place >= end || done == count)
            continue;
        const size_t wanted =
            static_cast<size_t>(std::min(static_cast<int64_t>(count - done), end - place));
        const bool covered = end <= mCommitted && !mPages.IsEmpty() && mStream;
        const size_t came = covered ? mPages.Read(mStream.get(), place, to + done, wanted)
                                    : ReadStream(place, to + done, wanted);
        done += came;
        if (came < wanted)
            return done;
    }
    const int64_t offset = position + static_cast<int64_t>(done) - mKept;
    if (done < count && offset < static_cast<int64_t>(mTail.size()))
        done += mTail.copy(to + done, count - done, static_cast<size_t>(offset));
    return done;
}

// Of the committed bytes, the only ones that are read in small pieces.
std::string_view CommitFile::Peek(int64_t position)
{
    if (!mChanged)
        return mStream ? mStream->Peek(position) : std::string_view();
    const int64_t end = std::min(mCommitted, mKept);
    if (position >= end || !mStream)
        return {};
    const std::string_view bytes =
        mPages.IsEmpty() ? mStream->Peek(position) : mPages.Peek(position);
    return bytes.substr(0, static_cast<size_t>(end - position));
}

// ---- writing

bool CommitFile::Write(int64_t position, const char* from, size_t count)
{
    if (mOwner->WritesPassThrough())
        return WriteThrough(position, from, count);
    if (!NoteChange())
        return false;
    if (position < mKept) {
        const size_t below =
            static_cast<size_t>(std::min(static_cast<int64_t>(count), mKept - position));
        if (!Overwrite(position, from, below))
            return false;
        position += static_cast<int64_t>(below);
        from += below;
        count -= below;
    }
    if (count == 0)
        return true;
    const size_t offset = static_cast<size_t>(position - mKept);
    if (offset > mTail.size())
        mTail.resize(offset);
    mTail.replace(offset, std::min(count, mTail.size() - offset), from, count);
    return mTail.size() < mOwner->LargestTail() || Spill();
}

// All of it lies below mKept.
bool CommitFile::Overwrite(int64_t position, const char* from, size_t count)
{
    if (position >= mCommitted)
        return WriteStream(position, from, count);
    const size_t committed =
        static_cast<size_t>(std::min(static_cast<int64_t>(count), mCommitted - position));
    if (!mStream || !mPages.Write(mStream.get(), mCommitted, position, from, committed))
        return FailWithStream();
    return committed == count || WriteStream(mCommitted, from + committed, count - committed);
}

bool CommitFile::WriteStream(int64_t position, const char* from, size_t count)
{
    if (!mStream || !mStream->SeekFromStart(position))
        return FailWithStream();
    for (size_t done = 0; done < count;) {
        const size_t size = std::min(count - done, kLargestWrite);
        if (!mStream->WriteData(from + done, static_cast<int>(size)))
            return FailWithStream();
        done += size;
    }
    return true;
}

bool CommitFile::WriteThrough(int64_t position, const char* from, size_t count)
{
    if (mChanged || mGrowing)
        return FailWith(
            EBUSY);   // a commit is still on its way to the container, or has begun to be
    const bool written = WriteStream(position, from, count);
    if (mStream)
        mKept = mCommitted = mStream->GetLength();
    mWrittenThrough = true;
    return written;
}

bool CommitFile::SetLength(int64_t length)
{
    if (length < 0)
        return FailWith(EINVAL);
    if (mOwner->WritesPassThrough()) {
        if (mChanged || mGrowing)
            return FailWith(EBUSY);
        const bool done = mStream && mStream->SetLength(length);
        if (mStream)
            mKept = mCommitted = mStream->GetLength();
        mWrittenThrough = true;
        return done || FailWithStream();
    }
    if (!NoteChange())
        return false;
    if (length >= mKept) {
        mTail.resize(static_cast<size_t>(length - mKept));
        return true;
    }
    mTail.clear();
    mPages.CutFrom(length);
    mKept = length;
    return true;
}

bool CommitFile::Flush()
{
    if (!mOwner->WritesPassThrough())
        return true;
    return FlushStream();
}

bool CommitFile::Reserve(int64_t length)
{
    if (!mStream || length <= mReserved)
        return true;
    if (!mStream->Reserve(length))
        return FailWithStream();
    mReserved = length;
    return true;
}

// The first change of a commit.
bool CommitFile::NoteChange()
{
    if (mChanged && (mOwner->mRecovering || !mOwner->IsReadOnly()))
        return true;
    if (!mStream && !mIsNew && !Reopen())
        return FailWith(EIO);
    if (!mOwner->NoteChange(this))
        return FailWith(EROFS);
    mChanged = true;
    return true;
}

// Brings the tail to the container. What was cut off before, it may not overwrite: then the tail stays.
bool CommitFile::Spill()
{
    if (mKept < mCommitted)
        return true;
    if (!BeginGrowing() || !WriteStream(mKept, mTail.data(), mTail.size()))
        return false;
    mKept += static_cast<int64_t>(mTail.size());
    mTail.clear();
    return true;
}

bool CommitFile::BeginGrowing()
{
    if (!mGrowing && !mOwner->BeginGrowing(shared_from_this()))
        return FailWith(mOwner->LogErrorNumber());
    mGrowing = true;
    return true;
}

// ---- ahead of a commit

size_t CommitFile::AheadPiece() const
{
    return mOwner->AheadPiece();
}

bool CommitFile::WriteAhead(const char* from, size_t count)
{
    // Between commits, all of which have reached the container, or have been cleaned up.
    const bool isReady = mOwner->WritesPassThrough() && !mChanged && !mFlushFailed &&
                         (mAhead > 0 ? mStream != nullptr : !mGrowing && (mStream || mIsNew));
    if (!isReady)
        return FailWith(EBUSY);
    if (!BeginGrowing() || !WriteStream(mCommitted + mAhead, from, count)) {
        mAhead = mAheadFlushed;
        return false;
    }
    mAhead += static_cast<int64_t>(count);
    return true;
}

bool CommitFile::FlushAhead()
{
    if (mAhead == mAheadFlushed)
        return true;
    if (!FlushStream()) {
        mAhead = mAheadFlushed;
        mOwner->NoteFailedFlush();
        return false;
    }
    mAheadFlushed = mAhead;
    return true;
}

bool CommitFile::TakeAhead(int64_t length)
{
    if (mOwner->WritesPassThrough() || Length() != mCommitted || length > mAhead)
        return FailWith(EINVAL);
    if (!NoteChange())
        return false;
    mAhead = length;
    mKept = mCommitted + length;
    return true;
}

void CommitFile::DropAhead()
{
    if (mAhead == 0)
        return;
    mAhead = mAheadFlushed = 0;
    mOwner->AheadWasDropped();
}

// ---- for the owner

void CommitFile::SetStream(std::unique_ptr<RandomAccessMechanism> stream)
{
    mStream = std::move(stream);
    mIsNew = false;
    mBeside = false;
}

void CommitFile::SetStreamBeside(std::unique_ptr<RandomAccessMechanism> stream, int64_t committed)
{
    mStream = std::move(stream);
    mBeside = true;
    mCommitted = committed;
    if (committed > 0)
        mKept = committed;
}

void CommitFile::TakeOwnName()
{
    mIsNew = false;
    mBeside = false;
}

bool CommitFile::Reopen()
{
    mStream.reset();   // two streams of one file would not know of each other
    mStream = mOwner->OpenInContainer(mBeside ? BesideName(mName) : mName);
    mReserved = 0;
    mFlushFailed = false;
    return mStream != nullptr;
}

bool CommitFile::FlushLargeParts()
{
    if (mGrowing && !mStream)
        return FailWith(EIO);
    if (mGrowing && !mTail.empty() && !Spill())
        return false;
    if (mGrowing && mStream->GetLength() > mKept && mKept >= mCommitted &&
        !mStream->SetLength(mKept))
        return FailWithStream();
    return (!mGrowing && !mWrittenThrough) || FlushStream();
}

bool CommitFile::ReserveTail()
{
    const int64_t length = (Length() + kReservedUnit - 1) / kReservedUnit * kReservedUnit;
    return mTail.empty() || Reserve(length);
}

CommitFile::Extents CommitFile::CountExtents()
{
    Extents extents;
    const auto count = [&extents](int64_t, std::string_view bytes) {
        extents.count++;
        extents.bytes += bytes.size();
        return true;
    };
    mPages.ForEachChange(count);
    if (!mTail.empty())
        count(mKept, mTail);
    return extents;
}

uint64_t CommitFile::SizeInLog()
{
    const uint64_t head = kLogEntryHeadSize + mName.size();
    if (mBeside)
        return head + kLogNumberSize;
    mExtents = CountExtents();
    return head + 2 * kLogNumberSize + kLogCountSize +
           uint64_t{mExtents.count} * kLogExtentHeadSize + mExtents.bytes;
}

void CommitFile::AppendToLog(LogPayload* payload)
{
    if (mBeside) {
        AppendLogEntry(payload->Room(), LogEntryKind::kReplacement, mName);
        AppendLogNumber(payload->Room(), Length());
        return;
    }
    AppendLogEntry(payload->Room(), LogEntryKind::kFile, mName);
    AppendLogNumber(payload->Room(), mKept);
    AppendLogNumber(payload->Room(), Length());
    AppendLogCount(payload->Room(), mExtents.count);
    const auto append = [payload](int64_t position, std::string_view bytes) {
        AppendLogExtent(payload->Room(), position, bytes);
        return true;
    };
    mPages.ForEachChange(append);
    if (!mTail.empty())
        append(mKept, mTail);
}

bool CommitFile::TakeFromLog(const LogEntry& entry)
{
    if (entry.kept > Length() || !SetLength(entry.kept))
        return false;
    for (const LogExtent& extent : entry.extents)
        if (!Write(extent.position, extent.bytes.data(), extent.bytes.size()))
            return false;
    return true;
}

bool CommitFile::WriteAgain(const LogEntry& entry)
{
    for (const LogExtent& extent : entry.extents) {
        const int64_t room = std::max<int64_t>(mCommitted - extent.position, 0);
        const std::string_view bytes =
            extent.bytes.substr(0, static_cast<size_t>(std::min<int64_t>(
                                       room, static_cast<int64_t>(extent.bytes.size()))));
        if (!bytes.empty() && !WriteStream(extent.position, bytes.data(), bytes.size()))
            return false;
    }
    return true;
}

bool CommitFile::Apply()
{
    if (!mStream)
        return FailWith(EBADF);
    if (mStream->GetLength() > mKept && !mStream->SetLength(mKept))
        return FailWithStream();
    const auto write = [this](int64_t position, std::string_view bytes) {
        return WriteStream(position, bytes.data(), bytes.size());
    };
    if (!mPages.ForEachPiece(mStream.get(), write))
        return FailWithStream();
    if (!WriteStream(mKept, mTail.data(), mTail.size()))
        return false;
    Settle();
    return true;
}

void CommitFile::Settle()
{
    mKept = mCommitted = Length();
    mPages.Clear();
    mTail = {};
    mChanged = false;
    mGrowing = false;
}

bool CommitFile::FlushStream()
{
    mFlushFailed = !mStream || !mStream->FlushToDisk();
    if (mFlushFailed)
        return FailWithStream();
    mWrittenThrough = false;
    return true;
}

void CommitFile::Cancel()
{
    mPages.Clear();
    mTail = {};
    mKept = mCommitted;
    mChanged = false;
    mAhead = mAheadFlushed;
    // A stream whose flush has failed may not try again; a new one may. When it can't be had, reading fails until it can.
    if (mFlushFailed && !mGrowing)
        (void)CatchOutOfMemory([this] { (void)Reopen(); });
}

bool CommitFile::NeedsCutBack() const
{
    return mGrowing &&
           (mAhead == 0 || mFlushFailed || !mStream || mStream->GetLength() != mCommitted + mAhead);
}

bool CommitFile::CutBack()
{
    if (!NeedsCutBack())
        return true;
    if (!mStream && !Reopen())
        return FailWith(EIO);
    if (!mStream->SetLength(mCommitted + mAhead))
        return FailWithStream();
    if (!FlushStream() && !(Reopen() && FlushStream()))
        return false;
    mReserved = 0;
    mGrowing = mAhead > 0;
    return true;
}

bool CommitFile::FailWith(int errorNumber)
{
    mErrorNumber = errorNumber;
    return false;
}

bool CommitFile::FailWithStream()
{
    return FailWith(mStream ? mStream->ErrorNumber() : EBADF);
}

}   // namespace vela
