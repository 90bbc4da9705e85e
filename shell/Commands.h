#pragma once

#include <string>

#include "shell/StatementSplitter.h"

namespace vela::shell {

class ScriptRunner;

// Runs one command of the shell, a line that begins with ".", in the runner's session. False: it
// failed, and that has been reported.
[[nodiscard]] bool RunCommand(ScriptRunner& runner, const SourceStatement& command,
                              const std::string& file);

}   // namespace vela::shell
