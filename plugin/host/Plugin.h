#pragma once

#include <string>

namespace vela::host {

class Host;

// Plugin is the shared library, loaded and started. It knows the library by its one exported name.
class Plugin {
public:
    Plugin(Host& host, std::string path) : mHost(host), mPath(std::move(path)) {}
    ~Plugin();
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    // Loads the library, sees that this alone does nothing, calls its entry, and compares what is
    // registered then with what can work. False: there is no such library, or it has no entry;
    // *problem tells.
    [[nodiscard]] bool Load(std::string* problem);
    [[nodiscard]] bool IsLoaded() const { return mLibrary != nullptr; }
    // Forgets all that is registered and unloads the library. Nothing of the plug-in may be in use.
    // Complains when the library stays in memory.
    void Unload();

private:
    Host& mHost;
    std::string mPath;
    void* mLibrary = nullptr;
};

}   // namespace vela::host
