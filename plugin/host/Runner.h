#pragma once

#include <cstddef>
#include <map>
#include <string_view>
#include <vector>

#include "plugin/host/ProgramText.h"

namespace vela::host {

class Session;
struct Command;

// Runner runs a program, line by line.
class Runner {
public:
    // trace: every line's number is printed before it is run.
    Runner(Session& session, bool trace);

    // Runs lines until the report says stop. What goes wrong is in the session's report.
    void Run(const std::vector<ProgramLine>& lines);

private:
    using CommandsByName = std::map<std::string_view, const Command*>;

    void RunLine(const ProgramLine& line);
    void RunCommand(const ProgramLine& line, const Command& command, size_t tokenCount);
    void Expect(const ProgramLine& line);
    void Repeat(const ProgramLine& line);
    void Walk(const ProgramLine& line);
    void Every(const ProgramLine& line);
    // The name after "as", when there is one at index.
    std::string CounterName(const ProgramLine& line, size_t index);

    Session& mSession;
    bool mTrace;
    CommandsByName mCommands;
    CommandsByName mExpectations;
};

}   // namespace vela::host
