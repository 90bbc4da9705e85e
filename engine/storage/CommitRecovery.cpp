// What CommitFileAccess does with a log that it finds when it opens a database.

#include <algorithm>
#include <cstdio>
#include <utility>

#include "engine/storage/CommitFileAccess.h"

namespace vela {

namespace {

void Tell(const std::string& name, const std::string& what)
{
    std::fprintf(stderr, "Vela recovery: %s: %s\n", name.c_str(), what.c_str());
}

string NameOf(std::string_view name)
{
    return string(name, kEncodingUTF8);
}

}   // namespace

// Takes the log's commits in, as if they had just been made, and lets them reach the files as those do.
bool CommitFileAccess::Recover()
{
    if (!mLog.Exists())
        return true;
    mRecovering = true;
    const bool read = mLog.Read(INT64_MAX, [this](LogRecordKind kind, std::string_view payload) {
        return TakeRecord(kind, payload);
    });
    if (read)
        TakeUnfinished();
    else if (!mUnreadable)
        Fail(mLog.ErrorText());
    mRecovering = false;
    for (const auto& [name, what] : mDamage)
        Tell(name, what);
    mDamage.clear();
    if (read && (IsReadOnly() || FinishRecovery()))
        return true;
    mErrorText = "The last commits could not be recovered: " + mErrorText;
    return false;
}

// Until the log is removed, at the end, a crash leaves as much to be recovered as there was.
bool CommitFileAccess::FinishRecovery()
{
    if (!ApplyChanges())
        return false;
    // Files beside that were never finished, or whose names a later commit has deleted.
    for (const std::string& name : mBeside) {
        mNamesUnflushed = true;
        if (!mFiles->DeleteFile(NameOf(BesideName(name))))
            return FailWithContainer();
    }
    if (!Checkpoint())
        return false;
    return mLog.Remove() || Fail(mLog.ErrorText());
}

bool CommitFileAccess::TakeRecord(LogRecordKind kind, std::string_view payload)
{
    std::vector<LogEntry> entries;
    if (!DecodeLogPayload(payload, &entries)) {
        mUnreadable = true;
        return Fail(string(kCommitLogName) + " holds a record that can't be understood");
    }
    if (kind == LogRecordKind::kCommit)
        mUnfinished.clear();   // it has finished them
    for (const LogEntry& entry : entries)
        TakeEntry(entry);
    return true;
}

void CommitFileAccess::TakeEntry(const LogEntry& entry)
{
    const std::string name(entry.name);
    switch (entry.kind) {
        case LogEntryKind::kFile:
            TakeFile(entry);
            break;
        case LogEntryKind::kDeletion:
            mDamage.erase(name);
            MarkDeleted(name);
            break;
        case LogEntryKind::kReplacement:
            mBeside.insert(name);
            TakeReplacement(entry);
            break;
        case LogEntryKind::kGrowing:
            mUnfinished.emplace_back(name, entry.length);
            break;
        case LogEntryKind::kBeside:
            mBeside.insert(name);
            break;
    }
}

// A file that has gone, or become shorter than the log knows it, may be one that a later record deletes: what is wrong with
// it is told at the end.
void CommitFileAccess::TakeFile(const LogEntry& entry)
{
    const std::string name(entry.name);
    if (entry.kept == 0)
        mDamage.erase(name);
    std::shared_ptr<CommitFile> file = ContainsFile(NameOf(name)) ? FindFile(name) : nullptr;
    if (!file && entry.kept == 0)
        file = NewFile(name);
    if (!file)
        mDamage[name] = "the file of a commit is missing";
    else if (!file->TakeFromLog(entry))
        mDamage[name] = "the file of a commit is too short, or can't be read";
}

// When the file beside is not there it has its name already.
void CommitFileAccess::TakeReplacement(const LogEntry& entry)
{
    const std::string name(entry.name);
    const std::string beside = BesideName(name);
    mDamage.erase(name);
    if (!mFiles->ContainsFile(NameOf(beside)))
        return;
    auto stream = OpenInContainer(beside);
    if (!stream || stream->GetLength() < entry.length) {
        mDamage[name] = "the file of a commit is too short, or can't be read";
        return;
    }
    NewFile(name)->SetStreamBeside(std::move(stream), entry.length);
}

// What was begun by a commit that never came.
void CommitFileAccess::TakeUnfinished()
{
    for (const auto& [name, length] : mUnfinished) {
        const auto file = ContainsFile(NameOf(name)) ? FindFile(name) : nullptr;
        if (file && file->Length() > length && !file->SetLength(length))
            mDamage[name] = "an unfinished commit can't be taken back";
    }
}

}   // namespace vela
