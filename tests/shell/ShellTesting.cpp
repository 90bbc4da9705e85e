#include "tests/shell/ShellTesting.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "shell/ScriptRunner.h"

namespace vela::shell {

namespace {

// Becomes the command line, in the child process.
[[noreturn]] void Become(const TemporaryFolder& folder, const char* commandLine)
{
    const auto use = [&folder](const char* name, int flags, int descriptor) {
        dup2(open(folder.File(name).c_str(), flags, 0600), descriptor);
    };
    use(".stdin", O_RDONLY, STDIN_FILENO);
    use(".stdout", O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
    use(".stderr", O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
    if (chdir(folder.Path().c_str()) == 0)
        execl("/bin/sh", "sh", "-c", commandLine, nullptr);
    _exit(127);
}

}   // namespace

TestDatabase::TestDatabase()
{
    Reopen();
}

std::string TestDatabase::Run(const std::string& script, OutputMode mode)
{
    Options options;
    options.mode = mode;
    StringOutput output;
    Session session(options, *mDatabase, output);
    ScriptRunner runner(session);
    EXPECT_TRUE(runner.RunText(script, "script")) << script.substr(0, 2000);
    EXPECT_EQ(0, session.Finish(true));
    return output.Text();
}

void TestDatabase::Reopen()
{
    mDatabase.reset();
    mDatabase = std::make_unique<VelaDatabase>(std::make_unique<MemoryFileAccess>(&mDisk));
}

std::unique_ptr<VelaTempTable> ResultTable(const std::vector<VelaDataType>& types,
                                           const std::vector<std::vector<VelaValue>>& rows)
{
    auto table = std::make_unique<VelaTempTable>();
    char name = 'a';
    for (const VelaDataType type : types)
        table->AddColumn(string(&name, 1, kEncodingUTF8), type), name++;
    for (const std::vector<VelaValue>& row : rows) {
        VelaValue* values = table->AppendRow(nullptr);
        for (size_t i = 0; i < row.size(); i++)
            values[i] = row[i];
    }
    return table;
}

ProgramRun RunCommandLine(const TemporaryFolder& folder, const std::string& commandLine,
                          const std::string& input)
{
    folder.Write(".stdin", input);
    const pid_t child = fork();
    if (child == 0)
        Become(folder, commandLine.c_str());
    int status = 0;
    waitpid(child, &status, 0);
    ProgramRun run;
    run.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    run.output = folder.Read(".stdout");
    run.errors = folder.Read(".stderr");
    return run;
}

}   // namespace vela::shell
