#include "engine/storage/VelaFolderFileAccess.h"

#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <new>

#include "engine/storage/NamePattern.h"
#include "engine/storage/UnixDataFile.h"
#include "runtime/ScopeExit.h"

namespace vela {

namespace {

constexpr int kModeRead = 1;
constexpr int kModeReadWrite = 3;
constexpr mode_t kNewFolderRights = 0777;

constexpr const char* kNotAnOrdinaryFile = "Not an ordinary file";

// Whether the name is one component that the folder can hold.
bool IsFileName(std::string_view name)
{
    constexpr std::string_view kRefused("/\0", 2);
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(kRefused) == std::string_view::npos;
}

bool SortsBefore(const string& a, const string& b)
{
    return a.Compare(b) < 0;
}

}   // namespace

VelaFolderFileAccess::VelaFolderFileAccess(const FileLocator& folder, Mode mode)
    : mFolder(folder), mMode(mode)
{
    mOpen = OpenFolder();
}

bool VelaFolderFileAccess::IsOpen() const
{
    return mOpen && (mLock.IsStillAt(mFolder.Path()) ||
                     FailWith(mFolder.Path(), "The folder has been moved or removed"));
}

std::unique_ptr<RandomAccessMechanism> VelaFolderFileAccess::OpenFile(const string& name,
                                                                      bool create)
{
    if (create ? !CheckChange(name) : !CheckName(name))
        return nullptr;
    const Kind kind = KindOf(name);
    if (kind == Kind::kOther) {
        FailWith(name, kNotAnOrdinaryFile);
        return nullptr;
    }
    const string path = mFolder.Child(name).Path();
    auto file = std::make_unique<UnixDataFile>();
    const bool opened = kind == Kind::kMissing && create
                            ? file->Create(path)
                            : file->Open(path, IsReadOnly() ? kModeRead : kModeReadWrite);
    if (!opened) {
        FailWith(name, file->ErrorNumber());
        return nullptr;
    }
    file->SetBigEndian();
    return file;
}

bool VelaFolderFileAccess::CreateFile(const string& name)
{
    if (!CheckChange(name))
        return false;
    if (KindOf(name) == Kind::kOther)
        return FailWith(name, kNotAnOrdinaryFile);
    UnixDataFile file;
    return file.Create(mFolder.Child(name).Path()) || FailWith(name, file.ErrorNumber());
}

bool VelaFolderFileAccess::DeleteFile(const string& name)
{
    if (!CheckChange(name))
        return false;
    if (KindOf(name) == Kind::kOther)
        return FailWith(name, kNotAnOrdinaryFile);
    const bool gone = unlink(mFolder.Child(name).Path().CString()) == 0 || errno == ENOENT;
    return gone || FailWith(name, errno);
}

bool VelaFolderFileAccess::RenameFile(const string& from, const string& to)
{
    if (!CheckChange(from) || !CheckChange(to))
        return false;
    if (KindOf(from) == Kind::kOther)
        return FailWith(from, kNotAnOrdinaryFile);
    if (KindOf(to) == Kind::kOther)
        return FailWith(to, kNotAnOrdinaryFile);
    const bool renamed =
        rename(mFolder.Child(from).Path().CString(), mFolder.Child(to).Path().CString()) == 0;
    return renamed || FailWith(from, errno);
}

bool VelaFolderFileAccess::ContainsFile(const string& name) const
{
    return CheckName(name) && KindOf(name) == Kind::kFile;
}

bool VelaFolderFileAccess::FlushNames()
{
    if (!IsOpen())
        return false;
    FileDescriptor folder;
    if (!folder.Open(mFolder.Path(), O_RDONLY | O_DIRECTORY))
        return FailWith(mFolder.Path(), errno);
    // EINVAL: a file system that keeps names on the device by itself.
    if (fsync(folder.Get()) != 0 && errno != EINVAL)
        return FailWith(mFolder.Path(), errno);
    if (!mIsNew)
        return true;
    // The folder's own name lies in the one above it.
    if (!folder.Open(mFolder.Path() + "/..", O_RDONLY | O_DIRECTORY) ||
        (fsync(folder.Get()) != 0 && errno != EINVAL))
        return FailWith(mFolder.Path(), errno);
    mIsNew = false;
    return true;
}

void VelaFolderFileAccess::FindFiles(const string& pattern, SimpleVector<string>* names) const
{
    if (!IsOpen())
        return;
    FileDescriptor descriptor;
    DIR* folder = descriptor.OpenForReading(mFolder.Path(), O_DIRECTORY)
                      ? fdopendir(descriptor.Get())
                      : nullptr;
    // A list that lacks files for want of memory would pass for one of all files.
    if (!folder && errno == ENOMEM)
        throw std::bad_alloc();
    if (!folder) {
        FailWith(mFolder.Path(), errno);
        return;
    }
    (void)descriptor.Release();   // it is the folder's now
    const ScopeExit close([folder] { closedir(folder); });
    const size_t firstNew = names->size();
    while (const dirent* entry = readdir(folder)) {
        if (!MatchesNamePattern(entry->d_name, pattern.View()))
            continue;
        const string name(entry->d_name, kEncodingUTF8);
        if (KindOf(name) == Kind::kFile)
            names->push_back(name);
    }
    std::sort(names->begin() + static_cast<std::ptrdiff_t>(firstNew), names->end(), SortsBefore);
}

bool VelaFolderFileAccess::OpenFolder()
{
    const string& path = mFolder.Path();
    if (path.empty() || path.View().find('\0') != std::string_view::npos)
        return FailWith(path, ENOENT);
    if (mMode == Mode::kCreate) {
        mIsNew = mkdir(path.CString(), kNewFolderRights) == 0;
        if (!mIsNew && errno != EEXIST)
            return FailWith(path, errno);
    }
    if (!mFolder.Exists())
        return FailWith(path, errno);
    if (!mFolder.IsFolder())
        return FailWith(path, ENOTDIR);
    const int rights = IsReadOnly() ? R_OK | X_OK : R_OK | W_OK | X_OK;
    const bool permitted = faccessat(AT_FDCWD, path.CString(), rights, AT_EACCESS) == 0;
    if (!permitted)
        return FailWith(path, errno);
    const auto kind = IsReadOnly() ? FolderLock::Kind::kForReading : FolderLock::Kind::kForWriting;
    return mLock.Take(path, kind) || FailWith(path, mLock.ErrorText());
}

bool VelaFolderFileAccess::CheckName(const string& name) const
{
    return mOpen && (IsFileName(name.View()) || FailWith(name, "Not a file name")) && IsOpen();
}

bool VelaFolderFileAccess::CheckChange(const string& name) const
{
    return CheckName(name) &&
           (!IsReadOnly() || FailWith(name, "The database is open for reading only"));
}

VelaFolderFileAccess::Kind VelaFolderFileAccess::KindOf(const string& name) const
{
    struct stat info;
    if (lstat(mFolder.Child(name).Path().CString(), &info) != 0)
        return Kind::kMissing;
    return S_ISREG(info.st_mode) ? Kind::kFile : Kind::kOther;
}

bool VelaFolderFileAccess::FailWith(const string& name, const string& reason) const
{
    mErrorText = name + ": " + reason;
    return false;
}

bool VelaFolderFileAccess::FailWith(const string& name, int errorNumber) const
{
    return FailWith(name, string(strerror(errorNumber), kEncodingUTF8));
}

}   // namespace vela
