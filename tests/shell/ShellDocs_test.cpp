// The examples of docs/shell.md: every command of its console blocks is run, one after the other in
// one folder, and must print what stands below it.

#include <gtest/gtest.h>
#include <unistd.h>

#include <sstream>

#include "tests/shell/ShellTesting.h"

namespace vela::shell {
namespace {

struct Example {
    std::string command;
    std::string output;
};

std::vector<Example> ExamplesOf(const std::string& page)
{
    std::vector<Example> examples;
    std::istringstream lines(page);
    bool isInBlock = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("```"))
            isInBlock = line == "```console";
        else if (isInBlock && line.starts_with("$ "))
            examples.push_back({line.substr(2), ""});
        else if (isInBlock && !examples.empty())
            examples.back().output += line + "\n";
    }
    return examples;
}

// Run times differ from run to run: what stands between " in " and " rows per second" goes.
std::string WithoutTimes(std::string text)
{
    const std::string end = " rows per second";
    for (size_t at = text.find(end); at != std::string::npos; at = text.find(end, at + 1)) {
        const size_t start = text.rfind(" in ", at) + 4;
        text.replace(start, at - start, "TIME");
        at = text.find(end, start);   // passed over by the next step
    }
    return text;
}

TEST(ShellDocs, ExamplesPrintWhatThePageSays)
{
    TemporaryFolder folder;
    ASSERT_EQ(0, symlink(VELADB_PROGRAM, (folder / "veladb").c_str()));
    const std::vector<Example> examples = ExamplesOf(FileContent(VELA_SOURCE_DIR "/docs/shell.md"));
    EXPECT_GE(examples.size(), 10u);
    for (const Example& example : examples) {
        const ProgramRun run =
            RunCommandLine(folder, "PATH=\"$PWD:$PATH\"; exec 2>&1; " + example.command);
        EXPECT_EQ(WithoutTimes(example.output), WithoutTimes(run.output)) << example.command;
    }
}

}   // namespace
}   // namespace vela::shell
