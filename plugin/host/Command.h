#pragma once

#include <cstddef>
#include <vector>

namespace vela::host {

class Session;
struct ProgramLine;

// A word that a line of a program can begin with. run does what the line says: it puts the result
// of a call into the session, and what goes wrong into its report.
struct Command {
    const char* name;
    size_t minTokens;   // with the name
    size_t maxTokens;
    void (*run)(Session& session, const ProgramLine& line);
    const char* usage;
};

constexpr size_t kAnyNumber = 1000000;

// new, set, get, call, drop, keep, print; files and folders; loading and services.
[[nodiscard]] const std::vector<Command>& ObjectCommands();
[[nodiscard]] const std::vector<Command>& HostCommands();
// execute, select, tables, fields, indexes, close; data sources.
[[nodiscard]] const std::vector<Command>& EngineCommands();
// first, next, previous, last, move, value, update, delete, show.
[[nodiscard]] const std::vector<Command>& CursorCommands();
// What may follow "expect"; the number of tokens is without that word.
[[nodiscard]] const std::vector<Command>& Expectations();

}   // namespace vela::host
