#pragma once

namespace vela::shell {

// The verbs "check" and "repair": what the program does in place of running statements when one of
// them is its first argument. A database folder of that name is said as "./check".

[[nodiscard]] bool IsRescueCommand(int argc, const char* const* argv);

// Runs the verb. Returns the exit status: see ExitStatus.h.
int RunRescueCommand(int argc, const char* const* argv);

}   // namespace vela::shell
