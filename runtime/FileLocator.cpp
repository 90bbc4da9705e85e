#include "runtime/FileLocator.h"

#include <sys/stat.h>

namespace vela {

namespace {

// What lies at the path, links followed. A path with a NUL inside names nothing: the system would
// read it only up to there.
bool GetFileInfo(const string& path, struct stat* info)
{
    if (path.View().find('\0') != std::string_view::npos)
        return false;
    return stat(path.CString(), info) == 0;
}

}   // namespace

FileLocator FileLocator::Child(const string& name) const
{
    if (mPath.empty())
        return FileLocator(name);
    string path = mPath;
    if (path[path.length() - 1] != '/')
        path += '/';
    return FileLocator(path + name);
}

string FileLocator::Name() const
{
    std::string_view path = mPath.View();
    while (!path.empty() && path.back() == '/')
        path.remove_suffix(1);
    const size_t slash = path.rfind('/');
    const size_t start = slash == std::string_view::npos ? 0 : slash + 1;
    return mPath.mid(start, path.size() - start);
}

bool FileLocator::Exists() const
{
    struct stat info;
    return GetFileInfo(mPath, &info);
}

bool FileLocator::IsFolder() const
{
    struct stat info;
    return GetFileInfo(mPath, &info) && S_ISDIR(info.st_mode);
}

}   // namespace vela
