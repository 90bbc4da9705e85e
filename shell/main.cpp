#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <exception>
#include <memory>

#include "shell/ExitStatus.h"
#include "shell/OpenDatabase.h"
#include "shell/Options.h"
#include "shell/RescueCommands.h"
#include "shell/ScriptRunner.h"

using namespace vela::shell;

namespace {

// Keeps files of the database from being opened in the place of a standard stream that the caller
// has closed. The stand-in is opened the wrong way round, so that using the stream fails as it
// would have.
void OccupyStandardDescriptors()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) != -1)
            continue;
        const int opened = open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        if (opened != descriptor)
            _exit(kExitFailure);
    }
}

// True when all of the input was run; see ScriptRunner.
bool RunInput(const Options& options, ScriptRunner* runner)
{
    if (options.sql.empty())
        return runner->RunStandardInput();
    for (size_t i = 0; i < options.sql.size() && !runner->GetSession().QuitRequested(); i++)
        if (!runner->RunText(options.sql[i], "argument " + std::to_string(i + 1)))
            return false;
    return true;
}

int Run(int argc, char** argv)
{
    if (IsRescueCommand(argc, argv))
        return RunRescueCommand(argc, argv);
    Options options;
    int exitStatus = kExitSuccess;
    if (!ParseOptions(argc, argv, &options, &exitStatus))
        return exitStatus;
    std::string problem;
    const std::unique_ptr<vela::VelaDatabase> database = OpenDatabase(options, &problem);
    if (!database) {
        PrintNote(problem);
        return kExitNoDatabase;
    }
    FileOutput output(STDOUT_FILENO);
    Session session(options, *database, output);
    ScriptRunner runner(session);
    return session.Finish(RunInput(options, &runner));
}

}   // namespace

int main(int argc, char** argv)
{
    OccupyStandardDescriptors();
    std::signal(SIGPIPE, SIG_IGN);   // a closed pipe is an error of write(), which is reported
    try {
        return Run(argc, argv);
    } catch (const std::exception&
                 error) {   // memory ran out, most likely; nothing is half-written but by a commit
        PrintNote(std::string("can't go on: ") + error.what());
        return kExitFailure;
    }
}
