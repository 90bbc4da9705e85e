#pragma once

#include "plugin/MOXAPlugin.h"
#include "runtime/FileLocator.h"

namespace vela {

// Where a folder item of the host is: what its property "AbsolutePath" says, in UTF-8 when its
// encoding is another known one. For the schema's record file inside a database's folder, which is
// what a file dialog can choose of it, that folder. False: the item is null or has no path.
[[nodiscard]] bool LocatorFromFolderItem(MOXAfolderItem item, FileLocator* locator);

// A folder item that is owned here, and given back.
class OwnedFolderItem {
public:
    explicit OwnedFolderItem(MOXAfolderItem item) : mItem(item) {}
    ~OwnedFolderItem();
    OwnedFolderItem(const OwnedFolderItem&) = delete;
    OwnedFolderItem& operator=(const OwnedFolderItem&) = delete;

    [[nodiscard]] MOXAfolderItem Get() const { return mItem; }

private:
    MOXAfolderItem mItem;
};

}   // namespace vela
