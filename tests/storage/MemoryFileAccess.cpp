#include "tests/storage/MemoryFileAccess.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "engine/storage/CommitLogFormat.h"
#include "engine/storage/NamePattern.h"

namespace vela {

namespace {

bool NamesAFile(const string& name)
{
    const std::string_view text = name.View();
    return !text.empty() && text != "." && text != ".." &&
           text.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos;
}

std::string KeyOf(const string& name)
{
    return std::string(name.View());
}

}   // namespace

// ---- MemoryDisk

void MemoryDisk::FailAt(int64_t number, Fault fault)
{
    mFault = fault;
    mFailAt = mOperations + number;
    mHasFailed = false;
}

bool MemoryDisk::Begin()
{
    mOperations++;
    const bool fails = (mFault == Fault::kOnce && mOperations == mFailAt) ||
                       (mFault == Fault::kForGood && mOperations >= mFailAt);
    mHasFailed = mHasFailed || fails;
    return !fails;
}

std::string MemoryDisk::Bytes(const std::string& name) const
{
    const auto found = mFiles.find(name);
    return found == mFiles.end() ? std::string() : *found->second;
}

void MemoryDisk::Put(const std::string& name, const std::string& bytes)
{
    mFiles[name] = std::make_shared<std::string>(bytes);
}

std::vector<std::string> MemoryDisk::Names() const
{
    std::vector<std::string> names;
    for (const auto& [name, bytes] : Snapshot())
        names.push_back(name);
    return names;
}

std::map<std::string, std::string> MemoryDisk::Snapshot() const
{
    std::map<std::string, std::string> files = AllFiles();
    files.erase(kCommitLogName);
    return files;
}

std::map<std::string, std::string> MemoryDisk::AllFiles() const
{
    std::map<std::string, std::string> files;
    for (const auto& [name, file] : mFiles)
        files[name] = *file;
    return files;
}

void MemoryDisk::Apply(const NameStep& step, FilesByName* names)
{
    if (!step.from.empty() && names->count(step.from) == 0)
        return;   // the name that it takes was never there
    // In this order a disk without memory for the new name still has the old one.
    if (step.file)
        (*names)[step.name] = step.file;
    names->erase(step.file ? step.from : step.name);
}

void MemoryDisk::Restore(const std::map<std::string, std::string>& files)
{
    mFiles.clear();
    for (const auto& [name, bytes] : files)
        Put(name, bytes);
}

// ---- MemoryStream

MemoryStream::MemoryStream(MemoryDisk* disk, std::shared_ptr<std::string> file, bool readOnly,
                           int64_t badSector)
    : mDisk(disk), mFile(std::move(file)), mReadOnly(readOnly), mBadSector(badSector)
{}

bool MemoryStream::ReadData(void* buffer, int count, int* bytesRead)
{
    const int64_t left = mPosition < GetLength() ? GetLength() - mPosition : 0;
    const bool isBad = mBadSector >= 0 && mPosition + count > mBadSector &&
                       mPosition < mBadSector + MemoryFileAccess::kSector;
    const int64_t done = isBad ? 0 : std::max<int64_t>(std::min<int64_t>(count, left), 0);
    if (done > 0)
        std::memcpy(buffer, mFile->data() + mPosition, static_cast<size_t>(done));
    mPosition += done;
    if (bytesRead != nullptr)
        *bytesRead = static_cast<int>(done);
    return mFile != nullptr && done == count;
}

bool MemoryStream::WriteData(const void* buffer, int count)
{
    if (mReadOnly || mFile == nullptr || count < 0)
        return FailWith(EBADF);
    const bool whole = mDisk->Begin();
    const std::string_view bytes(static_cast<const char*>(buffer),
                                 static_cast<size_t>(whole ? count : count / 2));
    const size_t start = static_cast<size_t>(mPosition);
    if (!bytes.empty() && mFile->size() < start + bytes.size())
        mFile->resize(start + bytes.size());
    bytes.copy(mFile->data() + start, bytes.size());
    mDisk->HasWritten(mFile, mPosition, bytes);
    if (!whole)
        return FailWith(ENOSPC);
    mPosition += count;
    return true;
}

void MemoryStream::Close()
{
    mFile.reset();
    mPosition = 0;
}

bool MemoryStream::SeekFromStart(int64_t offset)
{
    if (offset < 0)
        return FailWith(EINVAL);
    mPosition = offset;
    return true;
}

bool MemoryStream::SetLength(int64_t length)
{
    if (!BeginChange())
        return false;
    if (length < 0)
        return FailWith(EINVAL);
    mFile->resize(static_cast<size_t>(length));
    mDisk->HasSetLength(mFile);
    return true;
}

bool MemoryStream::FlushToDisk()
{
    const bool reached = BeginChange() && !mFlushFailed;
    mFlushFailed = !reached && !mDisk->ForgivesFailedFlushes();
    if (mFile != nullptr)
        mDisk->HasFlushed(mFile, reached);
    return reached;
}

bool MemoryStream::Reserve(int64_t)
{
    return BeginChange();
}

bool MemoryStream::BeginChange()
{
    if (mReadOnly || mFile == nullptr)
        return FailWith(EBADF);
    return mDisk->Begin() || FailWith(ENOSPC);
}

bool MemoryStream::FailWith(int errorNumber)
{
    mErrorNumber = errorNumber;
    return false;
}

// ---- MemoryFileAccess

std::unique_ptr<RandomAccessMechanism> MemoryFileAccess::OpenFile(const string& name, bool create)
{
    if (!ContainsFile(name) && (!create || !CreateFile(name))) {
        FailWith(ENOENT);
        return nullptr;
    }
    const auto unreadable = mUnreadable.find(KeyOf(name));
    const bool isBad = unreadable != mUnreadable.end();
    if (isBad && unreadable->second < 0)
        return nullptr;
    auto stream = std::make_unique<MemoryStream>(mDisk, mDisk->mFiles[KeyOf(name)], mReadOnly,
                                                 isBad ? unreadable->second : -1);
    stream->SetBigEndian();
    return stream;
}

// An existing file is emptied.
bool MemoryFileAccess::CreateFile(const string& name)
{
    if (ContainsFile(name))
        return OpenFile(name, false)->SetLength(0) || FailWith(mReadOnly ? EROFS : ENOSPC);
    MemoryDisk::NameStep step;
    step.name = KeyOf(name);
    step.file = std::make_shared<std::string>();
    return Change(name, step);
}

bool MemoryFileAccess::DeleteFile(const string& name)
{
    if (!ContainsFile(name))   // nothing reaches the disk
        return NamesAFile(name) && !mReadOnly;
    MemoryDisk::NameStep step;
    step.name = KeyOf(name);
    return Change(name, step);
}

bool MemoryFileAccess::RenameFile(const string& from, const string& to)
{
    if (!NamesAFile(to))
        return FailWith(EINVAL);
    if (!ContainsFile(from))
        return FailWith(ENOENT);
    MemoryDisk::NameStep step;
    step.from = KeyOf(from);
    step.name = KeyOf(to);
    step.file = mDisk->mFiles[step.from];
    return Change(from, step);
}

bool MemoryFileAccess::Change(const string& name, const MemoryDisk::NameStep& step)
{
    if (!NamesAFile(name))
        return FailWith(EINVAL);
    if (mReadOnly)
        return FailWith(EROFS);
    if (!mDisk->Begin())
        return FailWith(ENOSPC);
    MemoryDisk::Apply(step, &mDisk->mFiles);
    mDisk->HasChangedNames(step);
    return true;
}

bool MemoryFileAccess::ContainsFile(const string& name) const
{
    return NamesAFile(name) && mDisk->Contains(KeyOf(name));
}

bool MemoryFileAccess::FlushNames()
{
    if (!mDisk->Begin())
        return FailWith(ENOSPC);
    mDisk->HasFlushedNames();
    return true;
}

void MemoryFileAccess::FindFiles(const string& pattern, SimpleVector<string>* names) const
{
    for (const auto& [name, file] : mDisk->mFiles)
        if (MatchesNamePattern(name, pattern.View()))
            names->push_back(string(name, kEncodingASCII));
}

bool MemoryFileAccess::FailWith(int errorNumber)
{
    mErrorText = string(std::strerror(errorNumber));
    return false;
}

}   // namespace vela
