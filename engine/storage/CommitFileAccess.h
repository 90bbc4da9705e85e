#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/storage/CommitFile.h"
#include "engine/storage/CommitLog.h"
#include "engine/storage/VelaFileAccess.h"

namespace vela {

// CommitFileAccess is the door to a database's files through which commits are atomic and durable. It stands in front of the
// container, which it owns.
//
// Between BeginCommit and EndCommit everything that is written, created and deleted is visible to whoever uses this object
// and to nobody else; EndCommit makes all of it permanent at once, CancelCommit takes it back. Outside a commit all calls
// pass through to the container. What was committed before a crash and has not reached the files is brought there by the
// constructor. How all that works, and what a device must do for it: docs/durability.md.
class CommitFileAccess final : public VelaFileAccess {
public:
    // Recovers the database, when it needs that. In a read-only container nothing is written: the recovered state is there
    // to be read. IsOpen is false when recovery has failed; ErrorText says why, and the next attempt may succeed.
    explicit CommitFileAccess(std::unique_ptr<VelaFileAccess> files);
    // Brings everything to the files and removes the log; what can't be brought there is recovered by the next opening. All
    // streams must be gone.
    ~CommitFileAccess() override;

    // False: an earlier failure could not be mended yet, and no commit is possible; ErrorText says why.
    [[nodiscard]] bool BeginCommit();
    // True: the device has the whole commit. False: it is not committed, and CancelCommit must follow.
    [[nodiscard]] bool EndCommit();
    // Everything is as it was at BeginCommit; streams that were opened on files of this commit are of no use any more. Takes
    // no memory that it must have.
    void CancelCommit();
    [[nodiscard]] bool IsCommitting() const { return mCommitting; }

    struct Limits {
        size_t largestTail = size_t{1} << 20;     // appended bytes of one file that wait in memory
        int64_t largestLog = int64_t{16} << 20;   // bytes of log after which the files are flushed
        size_t aheadPiece = size_t{4} << 20;      // AheadBytes::AheadPiece
    };
    void SetLimits(const Limits& limits) { mLimits = limits; }

    // VelaFileAccess. The log is not among the files.
    [[nodiscard]] bool IsOpen() const override { return mRecovered && mFiles->IsOpen(); }
    [[nodiscard]] bool IsReadOnly() const override { return mFiles->IsReadOnly(); }
    [[nodiscard]] string ErrorText() const override { return mErrorText; }
    [[nodiscard]] std::unique_ptr<RandomAccessMechanism> OpenFile(const string& name,
                                                                  bool create) override;
    bool CreateFile(const string& name) override;
    [[nodiscard]] std::unique_ptr<RandomAccessMechanism> OpenFileAhead(const string& name) override;
    bool CreateFileAhead(const string& name, RandomAccessMechanism* stream) override;
    bool DeleteFile(const string& name) override;
    // Not during a commit, nor while the file is open.
    bool RenameFile(const string& from, const string& to) override;
    [[nodiscard]] bool ContainsFile(const string& name) const override;
    bool FlushNames() override;
    void FindFiles(const string& pattern, SimpleVector<string>* names) const override;

private:
    friend class CommitFile;
    friend class CommitStream;

    using OpenFiles = std::map<std::string, std::shared_ptr<CommitFile>>;

    // What the commit under way, or one that has not reached the files yet, does to a name.
    struct NameChange {
        bool created = false;
        bool deleted = false;
        std::shared_ptr<CommitFile> before;   // the file that had the name, if it was open
        OpenFiles::node_type place;           // of a deleted name, so that it needs no new one
    };

    // For files and their streams.
    [[nodiscard]] bool WritesPassThrough() const { return !mCommitting && !mRecovering; }
    [[nodiscard]] size_t LargestTail() const
    {
        return mRecovering ? static_cast<size_t>(-1) : mLimits.largestTail;
    }
    // False: the container can't be written.
    [[nodiscard]] bool NoteChange(const CommitFile* file);
    // Says in the log that the bytes behind the file's committed length, or those of the file beside, are unfinished.
    [[nodiscard]] bool BeginGrowing(const std::shared_ptr<CommitFile>& file);
    [[nodiscard]] int LogErrorNumber() const { return mLog.ErrorNumber(); }
    [[nodiscard]] size_t AheadPiece() const { return IsReadOnly() ? 0 : mLimits.aheadPiece; }
    void NoteFailedFlush() { mFlushFailed = true; }
    void AheadWasDropped();
    [[nodiscard]] std::unique_ptr<RandomAccessMechanism> OpenInContainer(const std::string& name);
    void StreamCloses(std::shared_ptr<CommitFile> file);
    void GoBack(const std::string& name, NameChange* change);

    // Else every operation refuses.
    [[nodiscard]] bool IsUsable() const { return mRecovered || mRecovering; }
    std::shared_ptr<CommitFile> FindFile(const std::string& name);
    std::shared_ptr<CommitFile> NewFile(const std::string& name);
    void CreateName(const std::string& name, std::shared_ptr<CommitFile> file);
    void MarkDeleted(const std::string& name);
    NameChange& ChangeOf(const std::string& name);
    void Prune(const std::string& name);
    void Prune(OpenFiles::iterator open);

    [[nodiscard]] bool IsOfTheLog(std::string_view name) const;
    bool CheckChange(const std::string& name);
    bool MakeCutsSafe();
    bool FlushLargeParts();
    bool WriteCommitRecord();
    void FollowCommit();
    bool ApplyChanges();
    bool ApplyChange(const std::string& name, NameChange& change);
    bool Checkpoint();
    bool WriteLogAgain();
    bool MendFailures();
    bool RemoveUnfinished();
    void Close();

    bool Recover();
    bool TakeRecord(LogRecordKind kind, std::string_view payload);
    void TakeEntry(const LogEntry& entry);
    void TakeFile(const LogEntry& entry);
    void TakeReplacement(const LogEntry& entry);
    void TakeUnfinished();
    bool FinishRecovery();

    bool Fail(const string& text);
    bool FailWithFile(const CommitFile& file);
    bool FailWithContainer() { return Fail(mFiles->ErrorText()); }

    std::unique_ptr<VelaFileAccess> mFiles;
    CommitLog mLog;
    Limits mLimits;
    bool mCommitting = false;
    bool mRecovering = false;
    bool mRecovered = false;
    string mErrorText;

    OpenFiles mOpenFiles;
    std::map<std::string, NameChange> mChanges;
    std::map<std::string, std::shared_ptr<CommitFile>>
        mUnflushed;   // written by Apply since the last checkpoint
    bool mNamesUnflushed = false;
    bool mFlushFailed = false;   // what the log holds may be lost in the files
    bool mCheckpointDue = false;
    std::vector<std::shared_ptr<CommitFile>>
        mGrowing;   // by the commit under way, one that has failed, or ahead of the next one

    // While recovering.
    std::vector<std::pair<std::string, int64_t>>
        mUnfinished;                 // growing files and their committed lengths, by notes
                                     // that no commit has followed yet
    std::set<std::string> mBeside;   // files that may lie beside
    std::map<std::string, std::string> mDamage;   // file name to what is wrong with it
    bool mUnreadable = false;
};

}   // namespace vela
