#pragma once

#include <optional>
#include <set>
#include <string>

namespace vela::host {

// What the program tells its caller when it ends.
enum ExitStatus : int {
    kExitSuccess = 0,      // all expectations held, and everything was given back
    kExitFailure = 1,      // an expectation failed, or something was not given back
    kExitWrongUsage = 2,   // the command line or the program makes no sense
    kExitNoPlugin = 3,     // the plug-in can't be loaded
};

// What the command line asks for.
struct Options {
    std::string plugin;    // the shared library
    std::string program;   // the text to run
    std::string folder;    // relative paths of the program begin here; empty: a folder for this run
    double version = 5.5;             // what the host says it is
    bool noServices = false;          // the resolver knows nothing
    std::set<std::string> withheld;   // services that the resolver doesn't know
    bool withholdEach = false;        // run once for every service, without it
    bool lenient = false;             // failed expectations are told, and don't count
    bool trace = false;               // print every line before it is run
    bool listServices = false;        // print the services' names and end
};

// Reads the command line. True: options hold what was asked for. False: the program is to end now
// with *exitStatus; what there is to say has been printed.
[[nodiscard]] bool ParseOptions(int argc, const char* const* argv, Options* options,
                                int* exitStatus);

}   // namespace vela::host
