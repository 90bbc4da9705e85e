#pragma once

#include <sys/types.h>

#include "engine/storage/FileDescriptor.h"

namespace vela {

// FolderLock is the kernel's lock on a folder, by which one writer or any number of readers have it. It is held until the
// object goes, or the process, however it ends; there is no lock file. It also keeps a second one out in the same process. A
// child that the process forks has part in it; a program that it starts has not.
class FolderLock {
public:
    enum class Kind { kForReading, kForWriting };

    // Doesn't wait for others, but up to a tenth of a second for a process that is ending. False: somebody has the folder in
    // a way that excludes this, or it can't be locked; ErrorText tells, with the other's process when the system tells it. A
    // file system without such locks refuses writers and lets readers in.
    [[nodiscard]] bool Take(const string& path, Kind kind);
    [[nodiscard]] const string& ErrorText() const { return mErrorText; }
    // Whether path still leads to the folder that was locked. One call of the system.
    [[nodiscard]] bool IsStillAt(const string& path) const;

private:
    bool Fail(const string& text);

    FileDescriptor mFolder;
    dev_t mDevice = 0;
    ino_t mInode = 0;
    string mErrorText;
};

}   // namespace vela
