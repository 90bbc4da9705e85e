// The program veladb as its users meet it. Commands are run one after the other in one folder, and
// must answer as is written below them: in tests/shell/transcripts, and in docs/shell.md.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <sstream>

#include "tests/shell/ShellTesting.h"

namespace vela::shell {
namespace {

struct Example {
    std::string command;
    std::string input;
    std::string answer;
};

// A transcript's command follows "$ ", lines of its standard input "> ". Below come standard output,
// the lines of standard error behind "! ", and behind "= " an exit status that isn't 0, up to an empty
// line. Lines that begin with "# " tell what is shown.
std::vector<Example> ExamplesOfTranscript(const std::string& text)
{
    std::vector<Example> examples;
    std::istringstream lines(text);
    bool isOpen = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("$ "))
            examples.push_back({line.substr(2), "", ""});
        else if (isOpen && line.starts_with(">"))
            examples.back().input += line.substr(std::min<size_t>(line.size(), 2)) + "\n";
        else if (isOpen && !line.empty())
            examples.back().answer += line + "\n";
        isOpen = !line.empty() && (isOpen || line.starts_with("$ "));
    }
    return examples;
}

// In a page, commands and what a terminal shows of them are in the console blocks.
std::vector<Example> ExamplesOfPage(const std::string& page)
{
    std::vector<Example> examples;
    std::istringstream lines(page);
    bool isInBlock = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("```"))
            isInBlock = line == "```console";
        else if (isInBlock && line.starts_with("$ "))
            examples.push_back({"exec 2>&1; " + line.substr(2), "", ""});
        else if (isInBlock && !examples.empty())
            examples.back().answer += line + "\n";
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

std::string AnswerOf(const ProgramRun& run, bool showsStatus)
{
    std::string text = run.output;
    std::istringstream errors(run.errors);
    for (std::string line; std::getline(errors, line);)
        text += "! " + line + "\n";
    if (showsStatus && run.exitStatus != 0)
        text += "= " + std::to_string(run.exitStatus) + "\n";
    return WithoutTimes(text);
}

void RunExamples(const std::vector<Example>& examples, bool showStatus)
{
    const TemporaryFolder folder;
    ASSERT_EQ(0, symlink(VELADB_PROGRAM, folder.File("veladb").c_str()));
    EXPECT_GE(examples.size(), 4u);
    for (const Example& example : examples) {
        const ProgramRun run =
            RunCommandLine(folder, "PATH=\"$PWD:$PATH\"; " + example.command, example.input);
        EXPECT_EQ(WithoutTimes(example.answer), AnswerOf(run, showStatus))
            << example.command << "\n"
            << example.input;
    }
}

class Transcripts : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Of, Transcripts,
                         testing::Values("program", "formats", "import", "dump", "explain",
                                         "rescue"),
                         [](const auto& name) { return name.param; });

TEST_P(Transcripts, AnswersAreThoseWrittenDown)
{
    const std::string file = std::string("tests/shell/transcripts/") + GetParam() + ".txt";
    RunExamples(ExamplesOfTranscript(FileContent(VELA_SOURCE_DIR "/" + file)), true);
}

TEST(ShellDocs, ExamplesPrintWhatThePageSays)
{
    RunExamples(ExamplesOfPage(FileContent(VELA_SOURCE_DIR "/docs/shell.md")), false);
}

}   // namespace
}   // namespace vela::shell
