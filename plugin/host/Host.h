#pragma once

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "plugin/host/Complaints.h"
#include "plugin/host/HostObject.h"
#include "plugin/host/HostString.h"
#include "plugin/host/Registrations.h"

namespace vela::host {

// What the person in front of the host will answer to the next file dialogs.
struct Dialogs {
    // In order; an absent path: the person cancels.
    std::deque<std::optional<std::string>> answers;
    // What the last dialog asked for: its filter, and the name it proposed.
    std::string filter;
    std::string defaultName;
    int asked = 0;
};

// Host is all that there is on this side: strings, objects, registrations, dialogs, and which
// services are offered. There is one at a time, since services are functions that can't be told
// for whom they work.
class Host {
public:
    // The program's relative paths begin in folder, an absolute path.
    Host(std::string folder, double version);
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // The one there is. There must be one.
    [[nodiscard]] static Host& Current();

    // Names of services, and of functions of the host's language, that are not to be had.
    std::set<std::string> withheld;
    bool withholdsAll = false;
    [[nodiscard]] bool Offers(const std::string& name) const
    {
        return !withholdsAll && !withheld.contains(name);
    }
    const double version;

    Complaints complaints;
    StringStore strings{complaints};
    ObjectStore objects{complaints};
    Registrations registrations{complaints};
    Dialogs dialogs;
    std::map<std::string, DataSource> dataSources;
    // Which services the resolver gave an address for, since the plug-in was loaded.
    std::set<std::string> resolved;

    // An absolute path for one of the program.
    [[nodiscard]] std::string PathOf(const std::string& path) const;
    // A new folder item, whose reference is the caller's.
    [[nodiscard]] FolderItem* MakeFolderItem(const std::string& path);

private:
    std::string mFolder;
};

}   // namespace vela::host
