#include "tests/shell/ShellTesting.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "shell/ScriptRunner.h"

namespace vela::shell {

namespace {

// Becomes the program, in the child process.
[[noreturn]] void Become(const TemporaryFolder& folder, const std::vector<std::string>& arguments)
{
    const auto use = [](const std::string& path, int flags, int descriptor) {
        dup2(open(path.c_str(), flags, 0600), descriptor);
    };
    use(folder / ".stdin", O_RDONLY, STDIN_FILENO);
    use(folder / ".stdout", O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
    use(folder / ".stderr", O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
    std::vector<char*> words;
    for (const std::string& argument : arguments)
        words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    if (chdir(folder.Path().c_str()) == 0)
        execv(words[0], words.data());
    _exit(127);
}

ProgramRun RunAny(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                  const std::string& input)
{
    folder.Put(".stdin", input);
    const pid_t child = fork();
    if (child == 0)
        Become(folder, arguments);
    int status = 0;
    waitpid(child, &status, 0);
    ProgramRun run;
    run.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    run.output = FileContent(folder / ".stdout");
    run.errors = FileContent(folder / ".stderr");
    return run;
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

TemporaryFolder::TemporaryFolder()
{
    std::string path = (std::filesystem::temp_directory_path() / "veladb-test-XXXXXX").string();
    if (!mkdtemp(path.data()))
        ADD_FAILURE() << "no folder " << path;
    mPath = path;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
}

std::string TemporaryFolder::Put(const std::string& name, const std::string& content) const
{
    std::ofstream(*this / name, std::ios::binary) << content;
    return *this / name;
}

std::string FileContent(const std::string& path)
{
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

ProgramRun RunProgram(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                      const std::string& input)
{
    std::vector<std::string> words = {VELADB_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return RunAny(folder, words, input);
}

ProgramRun RunCommandLine(const TemporaryFolder& folder, const std::string& commandLine)
{
    return RunAny(folder, {"/bin/sh", "-c", "VELADB='" VELADB_PROGRAM "'; " + commandLine}, "");
}

}   // namespace vela::shell
