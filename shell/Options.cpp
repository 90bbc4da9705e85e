#include "shell/Options.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <iostream>
#include <memory>

#include "shell/ExitStatus.h"

namespace vela::shell {

namespace {

constexpr const char* kUsage = "Usage: veladb [options] DATABASE [SQL ...]";

constexpr const char* kDescription =
    "\n"
    "Runs SQL statements on a Vela database, which is a folder of files.\n"
    "\n"
    "  DATABASE   the folder\n"
    "  SQL        statements or commands, each argument one or more; without any, a script is "
    "read\n"
    "             from standard input\n"
    "\n"
    "       veladb check DATABASE [--json]\n"
    "       veladb repair DATABASE NEWDATABASE [--json]\n"
    "\n"
    "Tells what is wrong with a database's files, and writes nothing; or saves what can be read of "
    "them\n"
    "in a new database. --json prints the report as one JSON document.\n";

constexpr const char* kFooter =
    "Statements end with \";\"; the last one of an argument or a script needs none. A line that "
    "begins\n"
    "with \"--\" is a comment. A line that begins with \".\" is a command of the shell; \".help\" "
    "lists them.\n"
    "\n"
    "Examples:\n"
    "  veladb --create shop \"CREATE TABLE items (name String, price Double)\"\n"
    "  veladb shop \".import items.csv items\" \"SELECT COUNT(*) FROM items\"\n"
    "  veladb --format csv shop \"SELECT name, price FROM items ORDER BY price\" > items.csv\n"
    "  veladb shop < script.sql\n"
    "\n"
    "Exit status: 0 all succeeded; 1 a statement failed; 2 wrong usage; 3 the database can't be "
    "opened;\n"
    "4 check found faults, or repair could not save everything.\n";

// The words that an option may be followed by, as enumerators.
const std::vector<std::pair<const char*, OutputMode>>& ModeNames()
{
    static const std::vector<std::pair<const char*, OutputMode>> names = {
        {"table", OutputMode::kTable},
        {"csv", OutputMode::kCsv},
        {"jsonl", OutputMode::kJsonLines}};
    return names;
}

std::string CheckMode(const std::string& name)
{
    return ModeFromName(name) ? std::string() : "\"" + name + "\" is none of table, csv, jsonl";
}

std::string CheckSwitch(const std::string& name)
{
    return name == "on" || name == "off" ? std::string() : "\"" + name + "\" is neither on nor off";
}

// --help in our own arrangement.
class HelpFormatter : public CLI::Formatter {
public:
    std::string make_usage(const CLI::App*, std::string) const override { return ""; }
    std::string make_description(const CLI::App* app) const override
    {
        return std::string(kUsage) + "\n" + app->get_description();
    }
    // The name of the text that the option takes, and nothing else.
    std::string make_option_opts(const CLI::Option* option) const override
    {
        return option->get_type_size() == 0 ? "" : " " + option->get_type_name();
    }
};

// The command line as CLI11 sees it, and the texts that it fills before they become Options. What
// is no option is left to us: CLI11 would take an SQL argument in brackets apart.
struct CommandLine {
    CLI::App app{kDescription, "veladb"};
    std::string format = "table";
    std::string headers = "on";
    std::string nullText;
    CLI::Option* nullOption = nullptr;
};

void DescribeOptions(CommandLine* line, Options* options)
{
    CLI::App& app = line->app;
    app.set_help_flag("-h,--help", "Print this text and end");
    app.set_version_flag("--version", "veladb " VELA_VERSION "\n", "Print the version and end");
    CLI::Option* create =
        app.add_flag("--create", options->create, "Make the database if it is missing");
    app.add_flag("--readonly", options->readOnly, "Write nothing to the database's files")
        ->excludes(create);
    app.add_flag("--keep-going", options->keepGoing, "Go on after a failure");
    app.add_option("--format", line->format, "How rows are printed: table, csv or jsonl (table)")
        ->type_name("FORMAT")
        ->check(CheckMode, "");
    app.add_option("--headers", line->headers, "Column names above tables and CSV: on or off (on)")
        ->type_name("on|off")
        ->check(CheckSwitch, "");
    line->nullOption = app.add_option("--null", line->nullText,
                                      "How tables and CSV show a null (NULL; nothing in CSV)");
    line->nullOption->type_name("TEXT");
    app.add_flag("--timer", options->timer, "Print the run time of each statement");
}

// Ends a run of the program before it began. Returns false, for callers to pass on.
bool RefuseUsage(const std::string& problem, int* exitStatus)
{
    std::cerr << "veladb: " << problem << "\n" << kUsage << "; \"veladb --help\" tells more.\n";
    *exitStatus = kExitWrongUsage;
    return false;
}

// The arguments in the order in which CLI11 takes them from a vector, the last one first. It
// would take "--null=" for an option whose text is the next argument; here it is "--null" with an
// empty text.
std::vector<std::string> ArgumentsForParser(int argc, const char* const* argv)
{
    std::vector<std::string> arguments;
    bool mayBeOption = true;
    for (int i = 1; i < argc; i++) {
        std::string argument = argv[i];
        mayBeOption = mayBeOption && argument != "--";
        const bool hasEmptyText =
            mayBeOption && argument.starts_with("--") && argument.ends_with('=');
        if (hasEmptyText)
            argument.pop_back();
        arguments.push_back(argument);
        if (hasEmptyText)
            arguments.emplace_back();
    }
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

bool LooksLikeOption(const std::string& argument)
{
    return argument.size() > 1 && argument.starts_with('-') && !argument.starts_with("-- ");
}

// DATABASE and SQL: what the parser left over, in order. Behind a "--" everything is one of these.
bool TakePositionals(const std::vector<std::string>& remaining, Options* options, int* exitStatus)
{
    std::vector<std::string> positionals;
    bool mayBeOption = true;
    for (const std::string& argument : remaining) {
        if (mayBeOption && argument == "--")
            mayBeOption = false;
        else if (mayBeOption && LooksLikeOption(argument))
            return RefuseUsage("unknown option " + argument, exitStatus);
        else
            positionals.push_back(argument);
    }
    if (positionals.empty())
        return RefuseUsage("DATABASE is missing", exitStatus);
    options->database = positionals.front();
    options->sql.assign(positionals.begin() + 1, positionals.end());
    return true;
}

}   // namespace

std::optional<OutputMode> ModeFromName(const std::string& name)
{
    for (const auto& [modeName, mode] : ModeNames())
        if (name == modeName)
            return mode;
    return std::nullopt;
}

const char* ModeName(OutputMode mode)
{
    for (const auto& [name, candidate] : ModeNames())
        if (mode == candidate)
            return name;
    return "";
}

bool ParseOptions(int argc, const char* const* argv, Options* options, int* exitStatus)
{
    CommandLine line;
    DescribeOptions(&line, options);
    line.app.formatter(std::make_shared<HelpFormatter>());
    line.app.footer(kFooter);
    line.app.allow_extras();
    try {
        line.app.parse(ArgumentsForParser(argc, argv));
    } catch (const CLI::Success& helpOrVersion) {
        *exitStatus = line.app.exit(helpOrVersion, std::cout, std::cerr);
        return false;
    } catch (const CLI::ParseError& error) {
        return RefuseUsage(error.what(), exitStatus);
    }
    options->mode = *ModeFromName(line.format);
    options->headers = line.headers == "on";
    if (line.nullOption->count() > 0)
        options->nullText = line.nullText;
    return TakePositionals(line.app.remaining(), options, exitStatus);
}

}   // namespace vela::shell
