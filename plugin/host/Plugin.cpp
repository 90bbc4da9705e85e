#include "plugin/host/Plugin.h"

#include <dlfcn.h>

#include "plugin/MOXAPlugin.h"
#include "plugin/host/Host.h"
#include "plugin/host/Services.h"

namespace vela::host {

Plugin::~Plugin()
{
    if (IsLoaded())
        Unload();
}

bool Plugin::Load(std::string* problem)
{
    mLibrary = dlopen(mPath.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (mLibrary == nullptr) {
        *problem = dlerror();
        return false;
    }
    if (!mHost.resolved.empty() || !mHost.registrations.Names().empty())
        mHost.complaints.Add("loading the library alone does something");
    const auto entry = reinterpret_cast<MOXAPluginMainProc>(dlsym(mLibrary, "MOXAPluginMain"));
    if (entry == nullptr) {
        *problem = mPath + " has no MOXAPluginMain";
        return false;
    }
    entry(ServiceResolver());
    CheckRegistrations(mHost);
    return true;
}

void Plugin::Unload()
{
    mHost.registrations.Clear();
    mHost.resolved.clear();
    dlclose(mLibrary);
    mLibrary = nullptr;
    if (void* left = dlopen(mPath.c_str(), RTLD_NOW | RTLD_NOLOAD)) {
        mHost.complaints.Add("the library stays in memory after it was unloaded");
        dlclose(left);
    }
}

}   // namespace vela::host
