#pragma once

#include "engine/storage/VelaFileAccess.h"
#include "runtime/FileLocator.h"

namespace vela {

// A database in a folder of the host file system, one ordinary file per name.
class VelaFolderFileAccess : public VelaFileAccess {
public:
    enum class Mode { kReadOnly, kReadWrite, kCreate };

    // kCreate makes the folder when it is missing (its parent must exist). Nothing else is created or opened here.
    VelaFolderFileAccess(const FileLocator& folder, Mode mode);

    [[nodiscard]] bool IsOpen() const override { return mOpen; }
    [[nodiscard]] bool IsReadOnly() const override { return mMode == Mode::kReadOnly; }
    [[nodiscard]] string ErrorText() const override { return mErrorText; }
    [[nodiscard]] std::unique_ptr<RandomAccessMechanism> OpenFile(const string& name, bool create) override;
    bool CreateFile(const string& name) override;
    bool DeleteFile(const string& name) override;
    bool RenameFile(const string& from, const string& to) override;
    [[nodiscard]] bool ContainsFile(const string& name) const override;
    void FindFiles(const string& pattern, SimpleVector<string>* names) const override;

private:
    FileLocator mFolder;
    Mode mMode;
    bool mOpen = false;
    string mErrorText;
};

}  // namespace vela
