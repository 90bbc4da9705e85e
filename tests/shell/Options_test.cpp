#include "shell/Options.h"

#include <gtest/gtest.h>

namespace vela::shell {
namespace {

// What a command line is understood as: "database <sql> ...", then what differs from the defaults.
// Wrong usage: "exit 2" and so on.
std::string Understood(const std::vector<const char*>& arguments)
{
    std::vector<const char*> words = {"veladb"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    Options options;
    int exitStatus = -1;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const bool goesOn =
        ParseOptions(static_cast<int>(words.size()), words.data(), &options, &exitStatus);
    const std::string printed = testing::internal::GetCapturedStdout();
    const std::string errors = testing::internal::GetCapturedStderr();
    if (!goesOn) {
        EXPECT_EQ(exitStatus == 0, errors.empty()) << errors;
        EXPECT_EQ(exitStatus == 0, !printed.empty()) << printed;
        EXPECT_TRUE(exitStatus == 0 || errors.find("--help") != std::string::npos) << errors;
        return "exit " + std::to_string(exitStatus);
    }
    std::string text = options.database;
    for (const std::string& sql : options.sql)
        text += " <" + sql + ">";
    text += options.create ? " create" : "";
    text += options.readOnly ? " readonly" : "";
    text += options.keepGoing ? " keep-going" : "";
    text += options.timer ? " timer" : "";
    text += options.headers ? "" : " no-headers";
    text += options.mode == OutputMode::kTable ? "" : std::string(" ") + ModeName(options.mode);
    text += options.nullText ? " null=" + *options.nullText : "";
    return text;
}

TEST(Options, AreUnderstoodInAnyOrder)
{
    const struct {
        std::vector<const char*> arguments;
        const char* understood;
    } cases[] = {
        {{"db"}, "db"},
        {{"db", "A;B", "C"}, "db <A;B> <C>"},
        {{"--create", "db", "A"}, "db <A> create"},
        {{"db", "A", "--create"}, "db <A> create"},
        {{"db", "A", "--format", "csv", "B"}, "db <A> <B> csv"},
        {{"--format=jsonl", "--timer", "db", "--keep-going"}, "db keep-going timer jsonl"},
        {{"--format", "table", "db", "--readonly"}, "db readonly"},
        {{"--headers", "off", "db"}, "db no-headers"},
        {{"--null", "", "db", "A"}, "db <A> null="},
        {{"--null=", "db", "A"}, "db <A> null="},
        {{"db", ""}, "db <>"},
        {{"db", "-- A\nB"}, "db <-- A\nB>"},
        {{"db", "--", "--A"}, "db <--A>"},
        {{"--", "--db", "A"}, "--db <A>"},
        {{"--help"}, "exit 0"},
        {{}, "exit 2"},
        {{"db", "--creat"}, "exit 2"},
        {{"db", "-x"}, "exit 2"},
        {{"db", "--format"}, "exit 2"},
        {{"db", "--format", "xml"}, "exit 2"},
        {{"db", "--headers", "yes"}, "exit 2"},
        {{"db", "--create", "--readonly"}, "exit 2"},
        {{"db", "--format", "csv", "--format", "csv"}, "exit 2"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.understood, Understood(c.arguments)) << testing::PrintToString(c.arguments);
}

}   // namespace
}   // namespace vela::shell
