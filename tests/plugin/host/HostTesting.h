#pragma once

#include <string>

namespace vela {

struct HostRun {
    int status = -1;      // the exit status; -1: ended by a signal
    std::string output;   // all that was printed
};

// Runs moxa-host on a library and the text of a program, with options before them. Programs are
// called "program" in messages.
[[nodiscard]] HostRun RunHost(const std::string& library, const std::string& program,
                              const std::string& options = "");

}   // namespace vela
