#include "plugin/FolderItem.h"

#include "plugin/DatabaseHandle.h"
#include "plugin/HostServices.h"
#include "plugin/HostText.h"

namespace vela {

namespace {

// The folder of the path when its last part is the schema's record file, else the path.
string WithoutSchemaFile(const string& path)
{
    const string ending = string("/") + kSchemaRecordFileName;
    const FileLocator locator(path);
    const bool isSchemaFile = path.length() > ending.length() &&
                              path.right(ending.length()) == ending && !locator.IsFolder();
    return isSchemaFile ? path.left(path.length() - ending.length()) : path;
}

}   // namespace

bool LocatorFromFolderItem(MOXAfolderItem item, FileLocator* locator)
{
    MOXAstring property = nullptr;
    if (!item || !MOXAGetPropValue(item, "AbsolutePath", &property))
        return false;
    const OwnedHostText text(property);
    string path = TextFromHost(text.Get());
    if (IconvName(path.Encoding()))
        path = ConvertEncoding(path, kEncodingUTF8);
    if (path.empty())
        return false;
    *locator = FileLocator(WithoutSchemaFile(path));
    return true;
}

OwnedFolderItem::~OwnedFolderItem()
{
    if (mItem)
        MOXAUnlockObject(mItem);
}

}   // namespace vela
