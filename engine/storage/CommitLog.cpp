#include "engine/storage/CommitLog.h"

#include <cerrno>

#include <algorithm>
#include <cassert>
#include <chrono>
#include <cstring>

#include "engine/storage/Checksum.h"
#include "runtime/ScopeExit.h"

namespace vela {

namespace {

constexpr int64_t kStart = kLogAlignment;   // of the first record
constexpr int64_t kPiece = 64 * 1024;
// A restarted log that has grown past this gives its room back.
constexpr int64_t kLargestEmptyLog = 4 * 1024 * 1024;
constexpr size_t kReadBlock = 64 * 1024;
constexpr size_t kWriteBlock = 16 * 1024 * 1024;

int64_t RoundedUp(int64_t size, int64_t unit)
{
    return (size + unit - 1) / unit * unit;
}

// No log of the same folder has had it, nor the next ones: what lies behind the last record, be it the rest of an older log or
// a text that somebody has stored, can't be taken for a record.
uint64_t NewGeneration()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto count = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
    return static_cast<uint64_t>(std::max<int64_t>(count, 1));
}

bool WriteAt(RandomAccessMechanism* stream, int64_t position, std::string_view bytes)
{
    if (!stream->SeekFromStart(position))
        return false;
    while (!bytes.empty()) {
        const std::string_view block = bytes.substr(0, kWriteBlock);
        if (!stream->WriteData(block.data(), static_cast<int>(block.size())))
            return false;
        bytes.remove_prefix(block.size());
    }
    return true;
}

// The stream stands behind the header.
bool ChecksumAgrees(RandomAccessMechanism* stream, const char* header, uint32_t checksum,
                    int64_t size)
{
    uint32_t sum = LogHeaderChecksum(header);
    std::string block(static_cast<size_t>(std::min<int64_t>(size, kReadBlock)), '\0');
    while (size > 0) {
        const size_t count =
            static_cast<size_t>(std::min<int64_t>(size, static_cast<int64_t>(block.size())));
        if (!stream->ReadData(block.data(), static_cast<int>(count), nullptr))
            return false;
        sum = Checksum(sum, block.data(), count);
        size -= static_cast<int64_t>(count);
    }
    return sum == checksum;
}

// False when there is no whole record at position. Memory is asked for when the checksum has agreed.
bool ReadRecord(RandomAccessMechanism* stream, int64_t position, LogHeader* header,
                std::string* payload)
{
    char bytes[kLogHeaderSize];
    if (!stream->SeekFromStart(position) || !stream->ReadData(bytes, sizeof bytes, nullptr) ||
        !DecodeLogHeader(bytes, header))
        return false;
    const int64_t start = position + static_cast<int64_t>(kLogHeaderSize);
    const int64_t size = static_cast<int64_t>(header->payloadSize);
    if (size > stream->GetLength() - start ||
        !ChecksumAgrees(stream, bytes, header->checksum, size))
        return false;
    payload->resize(static_cast<size_t>(size));
    return stream->SeekFromStart(start) &&
           (size == 0 || stream->ReadData(payload->data(), static_cast<int>(size), nullptr));
}

}   // namespace

CommitLog::CommitLog(VelaFileAccess* files) : mFiles(files), mGeneration(NewGeneration()) {}

bool CommitLog::Exists() const
{
    return mFiles->ContainsFile(kCommitLogName);
}

// ---- reading

bool CommitLog::Read(int64_t end, const TakeRecord& take)
{
    // A new stream has no errors from before.
    const auto stream = mFiles->OpenFile(kCommitLogName, false);
    if (!stream)
        return FailWithFiles();
    LogHeader header;
    std::string payload;
    int64_t position = kStart;
    char head[kLogHeadSize];
    const uint64_t generation =
        stream->ReadData(head, sizeof head, nullptr) ? DecodeLogHead(head) : 0;
    for (uint32_t number = 0; generation != 0 && position - kStart < end &&
                              ReadRecord(stream.get(), position, &header, &payload);
         number++) {
        if (header.generation != generation || header.number != number)
            break;
        if (!take(header.kind, payload))
            return false;
        position += RoundedUp(static_cast<int64_t>(kLogHeaderSize + header.payloadSize),
                              static_cast<int64_t>(kLogAlignment));
    }
    // A record that can't be read is not a torn one: what was committed would be lost.
    return stream->ErrorNumber() == 0 || FailWith(stream->ErrorNumber());
}

// ---- writing

bool CommitLog::Append(LogRecordKind kind, uint64_t payloadSize, const TellPayload& tell)
{
    if (IsDoubtful())
        return false;
    if (payloadSize > kLargestLogPayload) {
        mErrorText = "The changes are too many for one commit";
        return false;
    }
    const int64_t end = mPosition + RoundedUp(static_cast<int64_t>(kLogHeaderSize + payloadSize),
                                              static_cast<int64_t>(kLogAlignment));
    if ((!mStream && !Create()) || !MakeRoom(end))
        return false;
    mDoubt = Doubt::kRecord;   // beforehand: memory may run out on the way
    if (!WriteRecord({kind, mGeneration, mNumber, 0, payloadSize}, tell))
        return false;
    mDoubt = Doubt::kNone;
    mPosition = end;
    mNumber++;
    return true;
}

bool CommitLog::Create()
{
    // An empty log may stay behind when memory runs out here; Mend removes it.
    ScopeExit doubt([this] { mDoubt = Doubt::kRecord; });
    const bool created = mFiles->CreateFile(kCommitLogName);
    if (created)
        mStream = mFiles->OpenFile(kCommitLogName, false);
    doubt.Dismiss();
    if (!created)
        return FailWithFiles();
    mNamed = false;
    return mStream || FailWithFiles();
}

// A log that ends before end is lengthened, by zeros to the next piece or, for a record that is larger than one, by the
// record itself.
bool CommitLog::MakeRoom(int64_t end)
{
    const int64_t length = mStream->GetLength();
    if (end <= length)
        return true;
    const int64_t newLength = RoundedUp(end, kPiece);
    if (!mStream->Reserve(newLength))
        return FailWithStream();
    if (end - length > kPiece)
        return true;
    const std::string zeros(static_cast<size_t>(newLength - length), '\0');
    // What a failed attempt has left of them is as good as none.
    return WriteAt(mStream.get(), length, zeros) || FailWithStream();
}

// The piece with the header comes last, when the checksum is known: before it is there, what has been written is no record.
bool CommitLog::WriteRecord(const LogHeader& header, const TellPayload& tell)
{
    // The first record of a new log: the head goes with it.
    if (!mNamed && !WriteAt(mStream.get(), 0, EncodeLogHead(mGeneration)))
        return FailWithStream();
    std::string first;
    int64_t position = mPosition;
    uint32_t sum = 0;
    bool written = true;
    LogPayload payload(EncodeLogHeader(header), [&](std::string_view piece) {
        sum = Checksum(sum, piece.data(), piece.size());
        if (first.empty())
            first = piece;
        else
            written = written && WriteAt(mStream.get(), position, piece);
        position += static_cast<int64_t>(piece.size());
    });
    tell(&payload);
    payload.End();
    assert(position - mPosition == static_cast<int64_t>(kLogHeaderSize + header.payloadSize) &&
           "as it was told");
    SetLogChecksum(first.data(), sum);
    if (!written || !WriteAt(mStream.get(), mPosition, first) || !mStream->FlushToDisk())
        return FailWithStream();
    if (!mNamed && !mFiles->FlushNames())
        return FailWithFiles();
    mNamed = true;
    return true;
}

bool CommitLog::Restart()
{
    if (!mStream || mPosition == kStart)
        return true;
    StartAgain();
    mDoubt = Doubt::kHead;
    if (!WriteHead())
        return false;
    mDoubt = Doubt::kNone;
    // It is no more than room on the device: nothing is lost when this fails.
    if (mStream->GetLength() > kLargestEmptyLog)
        (void)mStream->SetLength(kPiece);
    return true;
}

void CommitLog::StartAgain()
{
    mPosition = kStart;
    mNumber = 0;
    mGeneration++;
}

bool CommitLog::WriteHead()
{
    return (WriteAt(mStream.get(), 0, EncodeLogHead(mGeneration)) && mStream->FlushToDisk()) ||
           FailWithStream();
}

bool CommitLog::Mend()
{
    if (!IsDoubtful())
        return true;
    // The first record of a log that has no name yet.
    if (!mNamed)
        return Remove();
    // A stream whose flush has failed may not try again; a new one may.
    mStream.reset();
    mStream = mFiles->OpenFile(kCommitLogName, false);
    if (!mStream)
        return FailWithFiles();
    const std::string zeros(kLogAlignment, '\0');
    const bool mended = mDoubt == Doubt::kHead
                            ? WriteHead()
                            : WriteAt(mStream.get(), mPosition, zeros) && mStream->FlushToDisk();
    if (!mended)
        return FailWithStream();
    mDoubt = Doubt::kNone;
    return true;
}

bool CommitLog::Remove()
{
    if (!mFiles->DeleteFile(kCommitLogName))
        return FailWithFiles();
    mStream.reset();
    mNamed = false;
    StartAgain();
    if (!mFiles->FlushNames())
        return FailWithFiles();
    mDoubt = Doubt::kNone;
    return true;
}

bool CommitLog::FailWithStream()
{
    return FailWith(mStream->ErrorNumber());
}

bool CommitLog::FailWith(int errorNumber)
{
    mErrorNumber = errorNumber;
    mErrorText = string(kCommitLogName) + ": " +
                 (errorNumber == 0 ? string("unknown error") : string(std::strerror(errorNumber)));
    return false;
}

bool CommitLog::FailWithFiles()
{
    mErrorNumber = EIO;
    mErrorText = mFiles->ErrorText();
    return false;
}

}   // namespace vela
