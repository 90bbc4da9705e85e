#pragma once

#include <string>

#include "shell/Session.h"

namespace vela::shell {

// ScriptRunner runs scripts in a session: it splits their text, one statement at a time, and has
// each statement and command run before the next is looked for.
//
// Each Run function is true when the script ran to its end, or to a .quit; with --keep-going also
// when statements failed. False: it stopped early at a failure, which has been reported.
class ScriptRunner {
public:
    // How deep .read may nest.
    static constexpr int kMaxDepth = 32;

    explicit ScriptRunner(Session& session) : mSession(session) {}

    [[nodiscard]] Session& GetSession() { return mSession; }

    // name is what messages call the script.
    [[nodiscard]] bool RunText(const std::string& text, const std::string& name);
    // reader is the .read command, for the message that the file can't be read.
    [[nodiscard]] bool RunFile(const std::string& path, const SourcePlace& reader);
    // The script on standard input; from a terminal with prompts, going on after failures.
    [[nodiscard]] bool RunStandardInput();

private:
    enum class Progress { kNeedsText, kEnded, kStopped };

    [[nodiscard]] bool RunDescriptor(int descriptor, const std::string& name, bool isTerminal);
    [[nodiscard]] Progress RunComplete(StatementSplitter* splitter, const std::string& name,
                                       bool isTerminal);
    [[nodiscard]] bool RunOne(const SourceStatement& statement, const std::string& name);

    Session& mSession;
    int mDepth = 0;   // .read commands under way
};

}   // namespace vela::shell
