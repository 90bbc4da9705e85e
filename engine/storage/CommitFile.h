#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "engine/storage/AheadBytes.h"
#include "engine/storage/CommitLogFormat.h"
#include "engine/storage/CommitPages.h"
#include "engine/storage/LogPayload.h"
#include "engine/storage/RandomAccessMechanism.h"

namespace vela {

class CommitFileAccess;

// CommitFile is one file of a database as its users see it, whichever part of it lies in the container and which in memory.
//
// Outside a commit it is the container's file, and reads and writes pass through. During a commit the container's bytes up
// to the committed length stay untouched: what overwrites them is kept in pages, what is appended in a tail. A tail that
// grows large goes to the container, behind the committed length; a new file whose tail does so goes there under its
// name with ".new" behind it. The commit ends with Apply or Cancel.
//
// The file is, in this order: the first Kept() bytes of the container's file, overlaid with the pages; the tail. What is written
// ahead of a commit lies behind the committed length as well, and stays there when a commit is cancelled.
class CommitFile final : public AheadBytes, public std::enable_shared_from_this<CommitFile> {
public:
    // A file of the container, or with null a new, empty one. owner outlives it.
    CommitFile(CommitFileAccess* owner, const std::string& name,
               std::unique_ptr<RandomAccessMechanism> stream);

    [[nodiscard]] const std::string& Name() const { return mName; }
    [[nodiscard]] int64_t Length() const { return mKept + static_cast<int64_t>(mTail.size()); }
    [[nodiscard]] int ErrorNumber() const { return mErrorNumber; }

    // Reads up to count bytes; says how many came.
    [[nodiscard]] size_t Read(int64_t position, char* to, size_t count)
    {
        return mChanged ? ReadChanged(position, to, count) : ReadStream(position, to, count);
    }
    // RandomAccessMechanism::Peek.
    [[nodiscard]] std::string_view Peek(int64_t position);
    [[nodiscard]] bool Write(int64_t position, const char* from, size_t count);
    [[nodiscard]] bool SetLength(int64_t length);
    // During a commit nothing: the end of the commit flushes.
    [[nodiscard]] bool Flush();
    [[nodiscard]] bool Reserve(int64_t length);

    [[nodiscard]] size_t AheadPiece() const override;
    [[nodiscard]] int64_t AheadLength() const override { return mAhead; }
    [[nodiscard]] bool WriteAhead(const char* from, size_t count) override;
    [[nodiscard]] bool FlushAhead() override;
    [[nodiscard]] bool TakeAhead(int64_t length) override;
    void DropAhead() override;

    // ---- for the owner

    [[nodiscard]] bool HasChanges() const { return mChanged; }
    // Whether the container never had it.
    [[nodiscard]] bool IsNew() const { return mIsNew; }
    [[nodiscard]] bool LiesBeside() const { return mBeside; }
    [[nodiscard]] int64_t CommittedLength() const { return mCommitted; }
    // Whether the commit under way takes bytes away that were committed.
    [[nodiscard]] bool IsCut() const { return mKept < mCommitted; }
    [[nodiscard]] bool HasStream() const { return mStream != nullptr; }
    // The container's file of a new one: under its own name, or beside it. Of one beside, the first committed bytes are to
    // stay untouched.
    void SetStream(std::unique_ptr<RandomAccessMechanism> stream);
    void SetStreamBeside(std::unique_ptr<RandomAccessMechanism> stream, int64_t committed);
    // The file beside has been given the name.
    void TakeOwnName();
    void CloseStream() { mStream.reset(); }
    // Forgets what the flush of the old stream has failed with.
    [[nodiscard]] bool Reopen();

    // Before the log is written: what has begun to go to the container goes there whole and reaches the device, as does
    // what was written outside a commit.
    [[nodiscard]] bool FlushLargeParts();
    // Room for the bytes that Apply will append.
    [[nodiscard]] bool ReserveTail();
    // The bytes that the changes take as an entry of the log; then, nothing having changed since, appends that entry.
    [[nodiscard]] uint64_t SizeInLog();
    void AppendToLog(LogPayload* payload);
    // Takes an entry of the log, of kind kFile, for changes of a commit. False: it asks for bytes that aren't there.
    [[nodiscard]] bool TakeFromLog(const LogEntry& entry);
    // Writes the bytes of an entry to the container once more.
    [[nodiscard]] bool WriteAgain(const LogEntry& entry);
    // Brings the changes to the container. False: they stay as they were, to be applied again.
    [[nodiscard]] bool Apply();
    // The device has everything that was written. False: it may have lost what was written since the last time.
    [[nodiscard]] bool FlushStream();
    // Drops the changes. Bytes that went to the container behind the committed length lie there until CutBack.
    void Cancel();
    // What was written ahead belongs to a commit that is in the log.
    void AheadIsCommitted() { mAhead = mAheadFlushed = 0; }
    // Whether the container's file may have bytes that neither a commit nor what was written ahead accounts for.
    [[nodiscard]] bool NeedsCutBack() const;
    [[nodiscard]] bool CutBack();

private:
    // The changed stretches of the file, the tail among them.
    struct Extents {
        uint32_t count = 0;
        uint64_t bytes = 0;
    };

    [[nodiscard]] Extents CountExtents();
    size_t ReadStream(int64_t position, char* to, size_t count);
    size_t ReadChanged(int64_t position, char* to, size_t count);
    bool WriteStream(int64_t position, const char* from, size_t count);
    bool WriteThrough(int64_t position, const char* from, size_t count);
    bool Overwrite(int64_t position, const char* from, size_t count);
    bool NoteChange();
    bool BeginGrowing();
    bool Spill();
    void Settle();
    bool FailWith(int errorNumber);
    bool FailWithStream();

    CommitFileAccess* mOwner;
    std::string mName;
    std::unique_ptr<RandomAccessMechanism> mStream;
    bool mIsNew;
    bool mBeside = false;
    int64_t mCommitted = 0;   // bytes of mStream that the commit under way must not touch
    int64_t mKept = 0;
    CommitPages mPages;
    std::string mTail;
    bool mChanged = false;
    int64_t mAhead = 0;             // bytes of mStream behind mCommitted that were written ahead
    int64_t mAheadFlushed = 0;      // of these, those that the device has for certain
    bool mGrowing = false;          // mStream has, or had, bytes behind mCommitted
    bool mWrittenThrough = false;   // outside a commit, and not flushed since
    bool mFlushFailed = false;
    int64_t mReserved = 0;
    Extents mExtents;   // as SizeInLog has counted them
    int mErrorNumber = 0;
};

}   // namespace vela
