#pragma once

#include <string>
#include <vector>

namespace vela::host {

// What the plug-in did that a plug-in may not do, in the order in which it did it.
class Complaints {
public:
    void Add(std::string complaint) { mComplaints.push_back(std::move(complaint)); }
    // Those since the last call.
    [[nodiscard]] std::vector<std::string> Take()
    {
        std::vector<std::string> taken;
        taken.swap(mComplaints);
        return taken;
    }

private:
    std::vector<std::string> mComplaints;
};

}   // namespace vela::host
