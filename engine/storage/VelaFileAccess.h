#pragma once

#include <memory>

#include "engine/storage/DamageLog.h"
#include "engine/storage/RandomAccessMechanism.h"
#include "runtime/SimpleVector.h"

namespace vela {

// VelaFileAccess is the container that holds a database's files, by name. A name is one component
// of letters that the container takes; a name that is empty, holds "/" or NUL, or is "." or ".."
// names no file: every operation refuses it.
class VelaFileAccess {
public:
    VelaFileAccess() = default;
    VelaFileAccess(const VelaFileAccess&) = delete;
    VelaFileAccess& operator=(const VelaFileAccess&) = delete;
    virtual ~VelaFileAccess() = default;

    // Whether the container is there and usable. When it is not, ErrorText says why and every
    // operation refuses.
    [[nodiscard]] virtual bool IsOpen() const = 0;
    [[nodiscard]] virtual bool IsReadOnly() const = 0;
    // What went wrong in the last operation that failed, for people ("No space left on device");
    // never empty after one.
    [[nodiscard]] virtual string ErrorText() const = 0;

    // The stream of a file, big-endian, at position 0; null when it is missing (unless create) or
    // can't be opened. In a read-only container streams open for reading, and create is refused.
    // The stream must not outlive the container.
    [[nodiscard]] virtual std::unique_ptr<RandomAccessMechanism> OpenFile(const string& name,
                                                                          bool create) = 0;
    // A new, empty file, also over an existing one. False when it can't be made.
    virtual bool CreateFile(const string& name) = 0;
    // The stream of a file that a commit to come may make under the name. Until then nobody else sees it, and it takes what is
    // written ahead and nothing else. There may be one for a name at a time. Null where there are no commits, as in the base.
    [[nodiscard]] virtual std::unique_ptr<RandomAccessMechanism> OpenFileAhead(
        const string& /*name*/)
    {
        return nullptr;
    }
    // In a commit: makes the file of a stream that OpenFileAhead has given. What it has taken ahead is still to be taken.
    virtual bool CreateFileAhead(const string& /*name*/, RandomAccessMechanism* /*stream*/)
    {
        return false;
    }
    // True when the file is gone afterwards.
    virtual bool DeleteFile(const string& name) = 0;
    // Gives a file another name, atomically, over an existing one of that name.
    virtual bool RenameFile(const string& from, const string& to) = 0;
    [[nodiscard]] virtual bool ContainsFile(const string& name) const = 0;
    // The names that were made, given and deleted so far reach the device before this returns.
    // False: some of them may not have. The base does nothing and returns true.
    virtual bool FlushNames() { return true; }
    // Appends the names of the files that match, sorted by bytes. In pattern "*" stands for any run
    // of characters, every other character for itself.
    virtual void FindFiles(const string& pattern, SimpleVector<string>* names) const = 0;

    // What the tables that are opened on the files could not read.
    [[nodiscard]] DamageLog& Damage() { return mDamage; }

private:
    DamageLog mDamage;
};

}   // namespace vela
