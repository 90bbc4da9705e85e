#pragma once

#include "engine/storage/FolderLock.h"
#include "engine/storage/VelaFileAccess.h"
#include "runtime/FileLocator.h"

namespace vela {

// A database in a folder of the host file system, one ordinary file per name. What else lies in the
// folder under a name, such as a folder or a link, is no file of the database: it is not listed,
// not opened, not replaced. The folder itself may be reached through links.
class VelaFolderFileAccess final : public VelaFileAccess {
public:
    enum class Mode { kReadOnly, kReadWrite, kCreate };

    // kCreate makes the folder when it is missing (its parent must exist). The folder is locked as
    // long as the object lives: for reading together with other readers, else alone (FolderLock.h).
    // It stays that very folder: when the path leads elsewhere later, every operation refuses.
    VelaFolderFileAccess(const FileLocator& folder, Mode mode);

    [[nodiscard]] bool IsOpen() const override;
    [[nodiscard]] bool IsReadOnly() const override { return mMode == Mode::kReadOnly; }
    [[nodiscard]] string ErrorText() const override { return mErrorText; }
    [[nodiscard]] std::unique_ptr<RandomAccessMechanism> OpenFile(const string& name,
                                                                  bool create) override;
    bool CreateFile(const string& name) override;
    bool DeleteFile(const string& name) override;
    bool RenameFile(const string& from, const string& to) override;
    [[nodiscard]] bool ContainsFile(const string& name) const override;
    bool FlushNames() override;
    void FindFiles(const string& pattern, SimpleVector<string>* names) const override;

private:
    enum class Kind { kMissing, kFile, kOther };

    bool OpenFolder();
    bool CheckName(const string& name) const;
    bool CheckChange(const string& name) const;
    [[nodiscard]] Kind KindOf(const string& name) const;
    // Keep the reason of a failure, with the name of what failed in front. Return false.
    bool FailWith(const string& name, const string& reason) const;
    bool FailWith(const string& name, int errorNumber) const;

    FileLocator mFolder;
    FolderLock mLock;
    Mode mMode;
    mutable bool mIsNew = false;   // made here, and its name not flushed yet
    bool mOpen = false;
    mutable string mErrorText;
};

}   // namespace vela
