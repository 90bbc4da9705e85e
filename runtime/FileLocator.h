#pragma once

#include "runtime/String.h"

namespace vela {

// FileLocator names a place in the host file system: a file or folder, existing or not. It is a
// path and no more: holding one opens nothing. Paths are bytes as the platform takes them.
class FileLocator {
public:
    FileLocator() = default;
    explicit FileLocator(string path) : mPath(static_cast<string&&>(path)) {}

    [[nodiscard]] const string& Path() const { return mPath; }
    // The place called name in this folder. name is one path component.
    [[nodiscard]] FileLocator Child(const string& name) const;
    // What stands after the last "/", without trailing ones.
    [[nodiscard]] string Name() const;

    [[nodiscard]] bool Exists() const;
    [[nodiscard]] bool IsFolder() const;

private:
    string mPath;
};

}   // namespace vela
