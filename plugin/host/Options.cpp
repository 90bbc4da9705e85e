#include "plugin/host/Options.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <iostream>
#include <string>
#include <vector>

namespace vela::host {

namespace {

constexpr const char* kDescription =
    "Loads the plug-in as a host does, and runs a program of calls on it. Everything that the\n"
    "plug-in takes is counted: references, locks, objects, cursors.\n";

constexpr const char* kFooter =
    "docs/plugin-host.md describes programs; plugin/host/programs holds examples.\n"
    "\n"
    "Exit status: 0 all expectations held and everything was given back; 1 not so; 2 wrong usage,\n"
    "or a program that makes no sense; 3 the plug-in can't be loaded.\n";

void DescribeOptions(CLI::App* app, Options* options, std::vector<std::string>* withheld)
{
    app->footer(kFooter);
    app->add_option("PLUGIN", options->plugin, "The shared library");
    app->add_option("PROGRAM", options->program, "The program's file");
    app->add_option("--folder", options->folder,
                    "Where the program's relative paths begin (a new folder, removed at the end)")
        ->type_name("DIR");
    app->add_option("--version", options->version, "What the host says it is (5.5)")
        ->type_name("NUMBER");
    CLI::Option* withhold =
        app->add_option("--withhold", *withheld, "Services that this host does not have")
            ->type_name("NAME[,NAME...]")
            ->delimiter(',')
            ->allow_extra_args(false);
    CLI::Option* none =
        app->add_flag("--no-services", options->noServices, "A host that has no service at all");
    CLI::Option* each = app->add_flag("--withhold-each", options->withholdEach,
                                      "One run for each service, without it; implies --lenient");
    withhold->excludes(none)->excludes(each);
    none->excludes(each);
    app->add_flag("--lenient", options->lenient,
                  "Expectations that fail and things not given back are told, and don't count");
    app->add_flag("--trace", options->trace, "Print each line before it is run");
    app->add_flag("--list-services", options->listServices, "Print the services' names and end");
}

bool RefuseUsage(const std::string& problem, int* exitStatus)
{
    std::cerr
        << "moxa-host: " << problem
        << "\nUsage: moxa-host [options] PLUGIN.so PROGRAM; \"moxa-host --help\" tells more.\n";
    *exitStatus = kExitWrongUsage;
    return false;
}

}   // namespace

bool ParseOptions(int argc, const char* const* argv, Options* options, int* exitStatus)
{
    CLI::App app(kDescription, "moxa-host");
    std::vector<std::string> withheld;
    DescribeOptions(&app, options, &withheld);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        *exitStatus = app.exit(help, std::cout, std::cerr);
        return false;
    } catch (const CLI::ParseError& error) {
        return RefuseUsage(error.what(), exitStatus);
    }
    options->withheld.insert(withheld.begin(), withheld.end());
    options->lenient = options->lenient || options->withholdEach;
    if (options->listServices)
        return true;
    if (options->plugin.empty() || options->program.empty())
        return RefuseUsage("PLUGIN.so or PROGRAM is missing", exitStatus);
    return true;
}

}   // namespace vela::host
