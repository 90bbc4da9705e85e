#include "shell/ScriptRunner.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

#include "engine/core/OutOfMemory.h"
#include "runtime/ScopeExit.h"
#include "shell/Commands.h"
#include "shell/StatementSplitter.h"

namespace vela::shell {

namespace {

constexpr size_t kPieceSize = 1 << 16;

// Reads what is there, up to the buffer's size. 0: the end. Below 0: errno tells.
ssize_t ReadSome(int descriptor, std::vector<char>* buffer)
{
    for (;;) {
        const ssize_t size = read(descriptor, buffer->data(), buffer->size());
        if (size >= 0 || errno != EINTR)
            return size;
    }
}

}   // namespace

bool ScriptRunner::RunText(const std::string& text, const std::string& name)
{
    StatementSplitter splitter;
    splitter.Feed(text);
    splitter.Finish();
    return RunComplete(&splitter, name, false) != Progress::kStopped;
}

bool ScriptRunner::RunFile(const std::string& path, const SourcePlace& reader)
{
    if (mDepth >= kMaxDepth)
        return mSession.Fail(
            reader, kVEInvalidParameter,
            "Error: .read is nested more than " + std::to_string(kMaxDepth) + " deep.");
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return mSession.Fail(reader, kStateInputOutput,
                             "Error: Can't open " + path + ": " + SystemErrorText(errno) + ".");
    mDepth++;
    const ScopeExit leave([&] {
        mDepth--;
        close(descriptor);
    });
    return RunDescriptor(descriptor, path, false);
}

bool ScriptRunner::RunStandardInput()
{
    const bool isTerminal = isatty(STDIN_FILENO) == 1;
    if (isTerminal)
        PrintRaw("veladb " VELA_VERSION
                 ", \".help\" lists the commands, \".quit\" or Ctrl-D ends.\n");
    return RunDescriptor(STDIN_FILENO, "stdin", isTerminal);
}

bool ScriptRunner::RunDescriptor(int descriptor, const std::string& name, bool isTerminal)
{
    StatementSplitter splitter;
    std::vector<char> buffer(kPieceSize);
    for (;;) {
        const Progress progress = RunComplete(&splitter, name, isTerminal);
        if (progress != Progress::kNeedsText)
            return progress == Progress::kEnded;
        if (isTerminal)
            PrintRaw(splitter.InStatement() ? "   ...> " : "veladb> ");
        const ssize_t size = ReadSome(descriptor, &buffer);
        if (size < 0)
            return mSession.Fail({name, TextPlace()}, kStateInputOutput,
                                 "Error: Can't read " + name + ": " + SystemErrorText(errno) + ".");
        if (size > 0) {
            splitter.Feed(std::string_view(buffer.data(), static_cast<size_t>(size)));
            continue;
        }
        if (isTerminal) {   // what was not ended with ";" was not meant to run yet
            PrintRaw("\n");
            return true;
        }
        splitter.Finish();
    }
}

ScriptRunner::Progress ScriptRunner::RunComplete(StatementSplitter* splitter,
                                                 const std::string& name, bool isTerminal)
{
    SourceStatement statement;
    for (;;) {
        const StatementSplitter::Result result = splitter->Next(mSession.Escape(), &statement);
        if (result != StatementSplitter::Result::kStatement)
            return result == StatementSplitter::Result::kEnd ? Progress::kEnded
                                                             : Progress::kNeedsText;
        const bool succeeded = RunOne(statement, name);
        if (mSession.OutputFailed())
            return Progress::kStopped;
        if (!succeeded && !isTerminal && !mSession.KeepsGoing())
            return Progress::kStopped;
        if (mSession.QuitRequested())
            return Progress::kEnded;
    }
}

bool ScriptRunner::RunOne(const SourceStatement& statement, const std::string& name)
{
    bool succeeded = false;
    const bool hadMemory = CatchOutOfMemory([&] {
        const bool isCommand = statement.kind == SourceStatement::Kind::kCommand;
        succeeded =
            isCommand ? RunCommand(*this, statement, name) : mSession.RunStatement(statement, name);
        if (isCommand)
            mSession.TellDamage();
    });
    if (hadMemory)
        return succeeded;
    VelaStatus status;
    mSession.Database().EndOutOfMemory(&status);
    return mSession.Fail({name, statement.PlaceOf(0)}, status.State(), status.Description().View());
}

}   // namespace vela::shell
