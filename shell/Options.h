#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vela::shell {

enum class OutputMode { kTable, kCsv, kJsonLines };

// What the command line asks for.
struct Options {
    std::string database;   // the database's folder
    std::vector<std::string>
        sql;                  // statements to run, in order; none: standard input is the script
    bool create = false;      // make a database that is not there
    bool readOnly = false;    // write no file
    bool keepGoing = false;   // go on after a failure
    bool timer = false;       // print each statement's run time
    bool headers = true;      // column names above rows, in tables and CSV
    OutputMode mode = OutputMode::kTable;
    // How a null is shown in tables and CSV; absent: the format's own way.
    std::optional<std::string> nullText;
};

// Reads the command line. Options may stand anywhere, and their order doesn't matter. True:
// options hold what was asked for. False: the program is to end now with *exitStatus; the text
// that --help or --version asked for has been printed to standard output, or what is wrong with
// the usage to standard error.
[[nodiscard]] bool ParseOptions(int argc, const char* const* argv, Options* options,
                                int* exitStatus);

// The mode of that name ("table", "csv", "jsonl"); nothing for any other name.
[[nodiscard]] std::optional<OutputMode> ModeFromName(const std::string& name);
[[nodiscard]] const char* ModeName(OutputMode mode);

}   // namespace vela::shell
