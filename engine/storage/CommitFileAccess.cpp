#include "engine/storage/CommitFileAccess.h"

#include <cerrno>

#include <algorithm>
#include <cstring>
#include <utility>

#include "engine/core/OutOfMemory.h"
#include "engine/storage/CommitStream.h"
#include "engine/storage/NamePattern.h"

namespace vela {

namespace {

string NameOf(const std::string& name)
{
    return string(name, kEncodingUTF8);
}

bool SortsBefore(const string& a, const string& b)
{
    return a.Compare(b) < 0;
}

}   // namespace

CommitFileAccess::CommitFileAccess(std::unique_ptr<VelaFileAccess> files)
    : mFiles(std::move(files)), mLog(mFiles.get())
{
    if (mFiles->IsOpen())
        mRecovered = Recover();
    else
        FailWithContainer();
}

CommitFileAccess::~CommitFileAccess()
{
    if (IsOpen() && !IsReadOnly())
        (void)CatchOutOfMemory([this] { Close(); });
}

// What fails here leaves the log, which the next opening goes by.
void CommitFileAccess::Close()
{
    if (mCommitting)
        CancelCommit();
    if ((mLog.IsOpen() || mLog.IsDoubtful()) && MendFailures() && Checkpoint())
        (void)mLog.Remove();
}

// ---- files and names

std::unique_ptr<RandomAccessMechanism> CommitFileAccess::OpenFile(const string& name, bool create)
{
    if (!IsUsable())
        return nullptr;
    const std::string key(name.View());
    std::shared_ptr<CommitFile> file = FindFile(key);
    if (!file && create && !ContainsFile(name)) {
        if (!CreateFile(name))
            return nullptr;
        file = FindFile(key);
    }
    if (!file)
        return nullptr;
    auto stream = std::make_unique<CommitStream>(this, std::move(file));
    stream->SetBigEndian();
    return stream;
}

std::unique_ptr<RandomAccessMechanism> CommitFileAccess::OpenInContainer(const std::string& name)
{
    auto stream = mFiles->OpenFile(NameOf(name), false);
    if (!stream)
        FailWithContainer();
    return stream;
}

// The file of that name as its users see it; null when there is none, or it can't be opened.
std::shared_ptr<CommitFile> CommitFileAccess::FindFile(const std::string& name)
{
    const auto open = mOpenFiles.find(name);
    if (open != mOpenFiles.end())
        return open->second;
    const auto change = mChanges.find(name);
    if (change != mChanges.end() && change->second.deleted) {
        Fail(NameOf(name) + ": " + string(std::strerror(ENOENT)));
        return nullptr;
    }
    auto stream = OpenInContainer(name);
    if (!stream)
        return nullptr;
    return mOpenFiles[name] = std::make_shared<CommitFile>(this, name, std::move(stream));
}

void CommitFileAccess::StreamCloses(std::shared_ptr<CommitFile> file)
{
    const auto open = mOpenFiles.find(file->Name());
    file.reset();
    Prune(open);
}

void CommitFileAccess::Prune(const std::string& name)
{
    Prune(mOpenFiles.find(name));
}

// Gives a file of the container up that nobody uses and that has nothing to be flushed.
void CommitFileAccess::Prune(OpenFiles::iterator open)
{
    if (open != mOpenFiles.end() && open->second.use_count() == 1 && !open->second->HasChanges() &&
        mChanges.count(open->first) == 0)
        mOpenFiles.erase(open);
}

bool CommitFileAccess::CreateFile(const string& name)
{
    if (!IsUsable())
        return false;
    const std::string key(name.View());
    if (WritesPassThrough()) {
        if (mChanges.count(key) != 0 || mOpenFiles.count(key) != 0)
            return Fail(name + ": " + string(std::strerror(EBUSY)));
        return mFiles->CreateFile(name) || FailWithContainer();
    }
    if (!CheckChange(key))
        return false;
    NewFile(key);
    return true;
}

// A new, empty file in the commit.
std::shared_ptr<CommitFile> CommitFileAccess::NewFile(const std::string& name)
{
    auto file = std::make_shared<CommitFile>(this, name, nullptr);
    CreateName(name, file);
    return file;
}

// The name stands for the new file in the commit.
void CommitFileAccess::CreateName(const std::string& name, std::shared_ptr<CommitFile> file)
{
    NameChange& change = ChangeOf(name);
    change.created = true;
    change.deleted = false;
    mOpenFiles[name] = std::move(file);
}

std::unique_ptr<RandomAccessMechanism> CommitFileAccess::OpenFileAhead(const string& name)
{
    const std::string key(name.View());
    if (!IsUsable() || IsReadOnly() || !IsLogFileName(key))
        return nullptr;
    auto stream =
        std::make_unique<CommitStream>(this, std::make_shared<CommitFile>(this, key, nullptr));
    stream->SetBigEndian();
    return stream;
}

bool CommitFileAccess::CreateFileAhead(const string& name, RandomAccessMechanism* stream)
{
    const std::string key(name.View());
    if (WritesPassThrough() || !CheckChange(key))
        return false;
    CreateName(key, static_cast<CommitStream*>(stream)->File());
    return true;
}

// The first change of a name in a commit remembers the file that had it.
CommitFileAccess::NameChange& CommitFileAccess::ChangeOf(const std::string& name)
{
    const auto [place, isNew] = mChanges.try_emplace(name);
    const auto open = mOpenFiles.find(name);
    if (isNew && open != mOpenFiles.end())
        place->second.before = open->second;
    return place->second;
}

bool CommitFileAccess::DeleteFile(const string& name)
{
    if (!IsUsable())
        return false;
    const std::string key(name.View());
    if (WritesPassThrough()) {
        if (mChanges.count(key) != 0)
            return Fail(name + ": " + string(std::strerror(EBUSY)));
        mOpenFiles.erase(key);
        mUnflushed.erase(key);
        return mFiles->DeleteFile(name) || FailWithContainer();
    }
    if (!ContainsFile(name))
        return true;
    if (!CheckChange(key))
        return false;
    MarkDeleted(key);
    return true;
}

// Whether a name can be changed in a commit. A file that has begun to grow in the container must come to its end there.
bool CommitFileAccess::CheckChange(const std::string& name)
{
    if (IsReadOnly())
        return Fail("The database is open for reading only");
    if (!IsLogFileName(name))
        return Fail(NameOf(name) + ": Not the name of a table's file");
    const auto open = mOpenFiles.find(name);
    if (open != mOpenFiles.end() &&
        std::find(mGrowing.begin(), mGrowing.end(), open->second) != mGrowing.end())
        return Fail(NameOf(name) + ": " + string(std::strerror(EBUSY)));
    return true;
}

void CommitFileAccess::MarkDeleted(const std::string& name)
{
    NameChange& change = ChangeOf(name);
    change.created = false;
    change.deleted = true;
    if (auto place = mOpenFiles.extract(name))
        change.place = std::move(place);
}

bool CommitFileAccess::RenameFile(const string& from, const string& to)
{
    const std::string fromKey(from.View());
    const std::string toKey(to.View());
    if (!IsUsable())
        return false;
    if (!WritesPassThrough() || mOpenFiles.count(fromKey) != 0 || mOpenFiles.count(toKey) != 0 ||
        mChanges.count(fromKey) != 0 || mChanges.count(toKey) != 0)
        return Fail(from + ": " + string(std::strerror(EBUSY)));
    return mFiles->RenameFile(from, to) || FailWithContainer();
}

bool CommitFileAccess::ContainsFile(const string& name) const
{
    if (!IsUsable() || IsOfTheLog(name.View()))
        return false;
    const auto change = mChanges.find(std::string(name.View()));
    if (change != mChanges.end() && (change->second.created || change->second.deleted))
        return change->second.created;
    return mFiles->ContainsFile(name);
}

bool CommitFileAccess::FlushNames()
{
    return !WritesPassThrough() || mFiles->FlushNames() || FailWithContainer();
}

// The log itself, and the files beside that recovery has found.
bool CommitFileAccess::IsOfTheLog(std::string_view name) const
{
    return name == kCommitLogName ||
           std::any_of(mBeside.begin(), mBeside.end(),
                       [name](const std::string& beside) { return BesideName(beside) == name; });
}

void CommitFileAccess::FindFiles(const string& pattern, SimpleVector<string>* names) const
{
    if (!IsUsable())
        return;
    SimpleVector<string> found;
    mFiles->FindFiles(pattern, &found);
    const size_t firstNew = names->size();
    for (const string& name : found)
        if (!IsOfTheLog(name.View()) && mChanges.count(std::string(name.View())) == 0)
            names->push_back(name);
    for (const auto& [name, change] : mChanges)
        if (!change.deleted && MatchesNamePattern(name, pattern.View()))
            names->push_back(NameOf(name));
    std::sort(names->begin() + static_cast<std::ptrdiff_t>(firstNew), names->end(), SortsBefore);
}

// ---- a commit

bool CommitFileAccess::BeginCommit()
{
    if (!mRecovered)
        return false;
    if (!mFiles->IsOpen())
        return FailWithContainer();
    // What is written to a log that has been taken away is written nowhere.
    if (mLog.IsOpen() && !mLog.Exists())
        return Fail(string(kCommitLogName) + ": " + string(std::strerror(ENOENT)));
    if (!IsReadOnly() && !MendFailures())
        return false;
    mCommitting = true;
    return true;
}

bool CommitFileAccess::NoteChange(const CommitFile* file)
{
    if (!mRecovering && IsReadOnly())
        return Fail("The database is open for reading only");
    if (!IsLogFileName(file->Name()))
        return Fail(NameOf(file->Name()) + ": Not the name of a table's file");
    const auto open = mOpenFiles.find(file->Name());
    if (open == mOpenFiles.end() || open->second.get() != file)
        return Fail(NameOf(file->Name()) + ": The file has been deleted");
    ChangeOf(file->Name());
    return true;
}

// The first note of a commit begins a generation of the log: a record that adds to what lies in a file already must not
// follow one that would be written to that file once more. Ahead of a commit, what an earlier file of the name has left goes first.
bool CommitFileAccess::BeginGrowing(const std::shared_ptr<CommitFile>& file)
{
    if ((!mCommitting && !MendFailures()) || (mGrowing.empty() && !Checkpoint()))
        return false;
    const bool isNew = file->IsNew();
    std::string note;
    AppendLogEntry(&note, isNew ? LogEntryKind::kBeside : LogEntryKind::kGrowing, file->Name());
    if (!isNew)
        AppendLogNumber(&note, file->CommittedLength());
    const auto tell = [&note](LogPayload* payload) { payload->Room()->append(note); };
    if (!mLog.Append(LogRecordKind::kNote, note.size(), tell))
        return Fail(mLog.ErrorText());
    mGrowing.push_back(file);
    if (!isNew)
        return true;
    file->SetStreamBeside(nullptr, 0);   // from now on there may be such a file
    const std::string beside = BesideName(file->Name());
    if (!mFiles->CreateFile(NameOf(beside)))
        return FailWithContainer();
    file->SetStreamBeside(OpenInContainer(beside), 0);
    return file->HasStream();
}

bool CommitFileAccess::EndCommit()
{
    if (!mChanges.empty() && !IsReadOnly()) {
        if (!MakeCutsSafe() || !FlushLargeParts() || !WriteCommitRecord())
            return false;
        // From here on the commit has happened, whatever fails: it is in the log.
        mCheckpointDue = mCheckpointDue || !mGrowing.empty() || mLog.Size() >= mLimits.largestLog;
        for (const auto& file : mGrowing)
            file->AheadIsCommitted();
        mGrowing.clear();
    }
    mCommitting = false;
    if (!IsReadOnly())
        FollowCommit();
    return true;
}

// What fails here is tried again later; the log has it all.
void CommitFileAccess::FollowCommit()
{
    const bool hadMemory = CatchOutOfMemory([this] {
        if (ApplyChanges() && mCheckpointDue)
            (void)Checkpoint();
    });
    mCheckpointDue = mCheckpointDue || !hadMemory;
}

// A record that cuts a file must not follow one that changes what is cut off: after a crash the file may have been cut
// already, and that record would speak of bytes that aren't there. A commit that has begun to grow has an empty log.
bool CommitFileAccess::MakeCutsSafe()
{
    const bool cuts = std::any_of(mChanges.begin(), mChanges.end(), [this](const auto& change) {
        return !change.second.deleted && mOpenFiles[change.first]->IsCut();
    });
    return !cuts || !mGrowing.empty() || Checkpoint();
}

// Everything that the log will not repeat reaches the device before the log says that it counts.
bool CommitFileAccess::FlushLargeParts()
{
    for (const auto& [name, change] : mChanges) {
        if (change.deleted)
            continue;
        CommitFile& file = *mOpenFiles[name];
        if (!file.FlushLargeParts()) {
            mFlushFailed = true;
            return FailWithFile(file);
        }
        if (!file.ReserveTail())
            return FailWithFile(file);
    }
    const bool newNames =
        std::any_of(mGrowing.begin(), mGrowing.end(),
                    [](const std::shared_ptr<CommitFile>& file) { return file->LiesBeside(); });
    return !newNames || mFiles->FlushNames() || FailWithContainer();
}

bool CommitFileAccess::WriteCommitRecord()
{
    std::string deletions;
    std::vector<CommitFile*> files;
    uint64_t size = 0;
    for (const auto& [name, change] : mChanges) {
        if (change.deleted && mFiles->ContainsFile(NameOf(name)))
            AppendLogEntry(&deletions, LogEntryKind::kDeletion, name);
        if (change.deleted)
            continue;
        files.push_back(mOpenFiles[name].get());
        size += files.back()->SizeInLog();
    }
    const auto tell = [&](LogPayload* payload) {
        payload->Room()->append(deletions);
        for (CommitFile* file : files)
            file->AppendToLog(payload);
    };
    return mLog.Append(LogRecordKind::kCommit, deletions.size() + size, tell) ||
           Fail(mLog.ErrorText());
}

void CommitFileAccess::CancelCommit()
{
    mCommitting = false;
    if (IsReadOnly())
        return;
    for (auto& [name, change] : mChanges)
        GoBack(name, &change);
    const auto changes = std::move(mChanges);
    mChanges.clear();
    for (const auto& [name, change] : changes)
        Prune(name);
    // What fails now is tried again before the next commit. The reason of the failure that led here is kept.
    const string reason = mErrorText;
    (void)CatchOutOfMemory([this] { (void)MendFailures(); });
    mErrorText = reason;
}

void CommitFileAccess::GoBack(const std::string& name, NameChange* change)
{
    auto open = mOpenFiles.find(name);
    if (open != mOpenFiles.end() && change->created)
        open->second->Cancel();   // somebody may have written to it ahead of the commit, and go on
    if (change->before && open != mOpenFiles.end()) {
        open->second = change->before;
    } else if (change->before) {
        change->place.mapped() = change->before;
        open = mOpenFiles.insert(std::move(change->place)).position;
    } else if (open != mOpenFiles.end() && change->created) {
        mOpenFiles.erase(open);
        return;
    }
    if (open != mOpenFiles.end())
        open->second->Cancel();
}

// ---- what follows a commit

// Brings what the log has to the files, without a flush.
bool CommitFileAccess::ApplyChanges()
{
    bool applied = true;
    for (auto change = mChanges.begin(); change != mChanges.end();) {
        if (!ApplyChange(change->first, change->second)) {
            applied = false;
            ++change;
            continue;
        }
        const std::string name = change->first;
        change = mChanges.erase(change);
        Prune(name);
    }
    return applied;
}

bool CommitFileAccess::ApplyChange(const std::string& name, NameChange& change)
{
    if (change.deleted) {
        mUnflushed.erase(name);
        mNamesUnflushed = true;
        return mFiles->DeleteFile(NameOf(name)) || FailWithContainer();
    }
    CommitFile& file = *mOpenFiles[name];
    if (file.LiesBeside()) {
        mNamesUnflushed = true;
        if (!mFiles->RenameFile(NameOf(BesideName(name)), NameOf(name)))
            return FailWithContainer();
        file.TakeOwnName();
        change.created = false;
    } else if (change.created) {
        mNamesUnflushed = true;
        // A file of its own, not the old one emptied: whoever has that open may still have bytes to write to it.
        if (!mFiles->DeleteFile(NameOf(name)) || !mFiles->CreateFile(NameOf(name)))
            return FailWithContainer();
        file.SetStream(OpenInContainer(name));
        if (!file.HasStream())
            return false;
        change.created = false;
    }
    change.before.reset();
    mUnflushed[name] = mOpenFiles[name];
    return file.Apply() || FailWithFile(file);
}

// After this nothing of the log is needed any more. Called between commits, and by a commit of which nothing has gone to
// the container yet.
bool CommitFileAccess::Checkpoint()
{
    mCheckpointDue = true;
    if ((!mCommitting && !ApplyChanges()) || (mFlushFailed && !WriteLogAgain()))
        return false;
    while (!mUnflushed.empty()) {
        const std::string name = mUnflushed.begin()->first;
        CommitFile& file = *mUnflushed.begin()->second;
        if (!file.FlushStream()) {
            mFlushFailed = true;
            return FailWithFile(file);
        }
        mUnflushed.erase(name);
        Prune(name);
    }
    if (mNamesUnflushed && !mFiles->FlushNames())
        return FailWithContainer();
    mNamesUnflushed = false;
    // A log that is in doubt is removed instead.
    if (!mLog.IsDoubtful() && !mLog.Restart())
        return Fail(mLog.ErrorText());
    mCheckpointDue = false;
    return true;
}

// A flush that has failed may have lost what was to be flushed, without the system saying so a second time.
bool CommitFileAccess::WriteLogAgain()
{
    for (const auto& [name, file] : mUnflushed)
        if (!file->Reopen())
            return false;
    const auto writeAgain = [this](LogRecordKind, std::string_view payload) {
        std::vector<LogEntry> entries;
        if (!DecodeLogPayload(payload, &entries))
            return Fail("The log can't be read");
        for (const LogEntry& entry : entries) {
            const auto file = mUnflushed.find(std::string(entry.name));
            if (entry.kind == LogEntryKind::kFile && file != mUnflushed.end() &&
                !file->second->WriteAgain(entry))
                return FailWithFile(*file->second);
        }
        return true;
    };
    if (!mLog.Read(mLog.Size(), writeAgain))
        return false;
    mFlushFailed = false;
    return true;
}

// Before anything is committed: a record of which nobody knows whether the device has it must be void, and what a failed
// commit has begun must be gone. In this order: as long as the record may count, so may what it speaks of. At the end the
// files, as they are read, have everything that was committed.
bool CommitFileAccess::MendFailures()
{
    if (mLog.IsDoubtful() && !mLog.Mend()) {
        Fail(mLog.ErrorText());
        if (!mGrowing.empty() || !Checkpoint())
            return false;
        if (!mLog.Remove())
            return Fail(mLog.ErrorText());
    }
    return RemoveUnfinished() && ApplyChanges() && (!mFlushFailed || WriteLogAgain());
}

// What was written ahead of a commit stays, and with it the log's notes, which may then speak of what has been removed, too.
bool CommitFileAccess::RemoveUnfinished()
{
    const auto isUnfinished = [](const std::shared_ptr<CommitFile>& file) {
        return file->AheadLength() == 0 || file->NeedsCutBack();
    };
    if (std::none_of(mGrowing.begin(), mGrowing.end(), isUnfinished))
        return true;
    for (const auto& file : mGrowing) {
        if (file->LiesBeside() && file->AheadLength() == 0) {
            file->CloseStream();
            if (!mFiles->DeleteFile(NameOf(BesideName(file->Name()))))
                return FailWithContainer();
        } else if (!file->CutBack()) {
            return FailWithFile(*file);
        }
    }
    if (!mFiles->FlushNames())
        return FailWithContainer();
    std::erase_if(mGrowing,
                  [](const std::shared_ptr<CommitFile>& file) { return file->AheadLength() == 0; });
    return !mGrowing.empty() || mLog.Restart() || Fail(mLog.ErrorText());
}

// What fails here is tried again before the next commit.
void CommitFileAccess::AheadWasDropped()
{
    if (!mCommitting)
        (void)CatchOutOfMemory([this] { (void)MendFailures(); });
}

// ---- failures

bool CommitFileAccess::Fail(const string& text)
{
    mErrorText = text;
    return false;
}

bool CommitFileAccess::FailWithFile(const CommitFile& file)
{
    const int number = file.ErrorNumber();
    return Fail(NameOf(file.Name()) + ": " +
                string(number == 0 ? "unknown error" : std::strerror(number)));
}

}   // namespace vela
