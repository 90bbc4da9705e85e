#include "engine/storage/FolderLock.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

namespace vela {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using SystemFile = std::unique_ptr<std::FILE, CloseFile>;

struct Holder {
    int process = 0;   // 0: the system doesn't tell
    bool reads = false;
};

// Who has a lock on this file. A line of /proc/locks: "1: FLOCK  ADVISORY  WRITE 4711 fe:00:1234 0 EOF", with the device in
// hexadecimal and the inode in decimal.
Holder FindHolder(const struct stat& info)
{
    const SystemFile locks(std::fopen("/proc/locks", "re"));
    char line[256];
    while (locks && std::fgets(line, sizeof line, locks.get()) != nullptr) {
        char kind[16] = "";
        int process = 0;
        unsigned deviceMajor = 0;
        unsigned deviceMinor = 0;
        unsigned long long inode = 0;
        if (std::sscanf(line, "%*d: FLOCK %*s %15s %d %x:%x:%llu", kind, &process, &deviceMajor,
                        &deviceMinor, &inode) == 5 &&
            deviceMajor == major(info.st_dev) && deviceMinor == minor(info.st_dev) &&
            inode == info.st_ino)
            return {process, std::strcmp(kind, "READ") == 0};
    }
    return {};
}

// "process 4711 (veladb)"
std::string ProcessText(int process)
{
    if (process <= 0)
        return "another process";
    if (process == getpid())
        return "this process";
    char name[64] = "";
    const SystemFile comm(std::fopen(("/proc/" + std::to_string(process) + "/comm").c_str(), "re"));
    if (comm && std::fgets(name, sizeof name, comm.get()) != nullptr)
        name[std::strcspn(name, "\n")] = '\0';
    const std::string number = "process " + std::to_string(process);
    return name[0] == '\0' ? number : number + " (" + name + ")";
}

string HeldText(const struct stat& info)
{
    const Holder holder = FindHolder(info);
    const char* what = holder.reads ? "The database is being read by " : "The database is open in ";
    return string(what + ProcessText(holder.process), kEncodingUTF8);
}

// EBADF: where locks are those of a server, a folder can only be locked for reading.
bool IsWithoutLocks(int error)
{
    return error == EOPNOTSUPP || error == ENOLCK || error == ENOSYS || error == EBADF ||
           error == EINVAL;
}

// A process that is being killed may have gone from the list while the system is still closing its files.
constexpr int kTriesForNobody = 20;
constexpr long kPauseForNobody = 5000000;   // nanoseconds

int LockFolder(int folder, int operation)
{
    int result = flock(folder, operation);
    while (result != 0 && errno == EINTR)
        result = flock(folder, operation);
    return result;
}

}   // namespace

bool FolderLock::Take(const string& path, Kind kind)
{
    struct stat info {};
    if (!mFolder.OpenForReading(path, O_DIRECTORY) || fstat(mFolder.Get(), &info) != 0)
        return Fail(string(std::strerror(errno)));
    mDevice = info.st_dev;
    mInode = info.st_ino;
    const int operation = (kind == Kind::kForWriting ? LOCK_EX : LOCK_SH) | LOCK_NB;
    int result = LockFolder(mFolder.Get(), operation);
    for (int i = 0; result != 0 && errno == EWOULDBLOCK && i < kTriesForNobody; i++) {
        if (FindHolder(info).process != 0)
            return Fail(HeldText(info));
        const timespec pause{0, kPauseForNobody};
        nanosleep(&pause, nullptr);
        result = LockFolder(mFolder.Get(), operation);
    }
    if (result == 0)
        return true;
    if (errno == EWOULDBLOCK)
        return Fail(HeldText(info));
    if (!IsWithoutLocks(errno))
        return Fail(string(std::strerror(errno)));
    return kind == Kind::kForReading || Fail("The file system can't lock folders");
}

bool FolderLock::IsStillAt(const string& path) const
{
    struct stat here {};
    return stat(path.CString(), &here) == 0 && here.st_dev == mDevice && here.st_ino == mInode;
}

bool FolderLock::Fail(const string& text)
{
    mFolder.Close();
    mErrorText = text;
    return false;
}

}   // namespace vela
