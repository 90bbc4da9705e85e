#include "plugin/host/Host.h"

#include <cassert>
#include <memory>
#include <utility>

namespace vela::host {

namespace {

Host* gHost = nullptr;

}   // namespace

Host::Host(std::string folder, double hostVersion)
    : version(hostVersion), mFolder(std::move(folder))
{
    assert(gHost == nullptr);
    gHost = this;
}

Host::~Host()
{
    gHost = nullptr;
}

Host& Host::Current()
{
    assert(gHost != nullptr);
    return *gHost;
}

std::string Host::PathOf(const std::string& path) const
{
    std::string absolute = path.starts_with('/') ? path : mFolder + "/" + path;
    while (absolute.size() > 1 && absolute.ends_with('/'))
        absolute.pop_back();
    return absolute;
}

FolderItem* Host::MakeFolderItem(const std::string& path)
{
    return objects.Add(std::make_unique<FolderItem>(PathOf(path)));
}

}   // namespace vela::host
