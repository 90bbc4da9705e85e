#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "plugin/host/Options.h"
#include "plugin/host/Runner.h"
#include "plugin/host/Services.h"
#include "plugin/host/Session.h"

using namespace vela::host;

namespace {

constexpr size_t kMaxLeaksTold = 10;

// The folder in which relative paths begin: the one that was asked for, or a new one that is
// removed at the end.
class WorkFolder {
public:
    explicit WorkFolder(const std::string& wanted) : mPath(wanted), mIsOurs(wanted.empty())
    {
        std::error_code error;
        if (!mIsOurs) {
            mPath = std::filesystem::absolute(wanted, error).string();
            std::filesystem::create_directories(mPath, error);
            return;
        }
        mPath = (std::filesystem::temp_directory_path(error) / "moxa-host-XXXXXX").string();
        if (mkdtemp(mPath.data()) == nullptr)
            mPath.clear();
    }
    ~WorkFolder()
    {
        std::error_code ignored;   // a folder that stays behind changes no result
        if (mIsOurs && !mPath.empty())
            std::filesystem::remove_all(mPath, ignored);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    // Empty: there is none.
    [[nodiscard]] const std::string& Path() const { return mPath; }

private:
    std::string mPath;
    bool mIsOurs;
};

int Refuse(ExitStatus status, const std::string& problem)
{
    std::cerr << "moxa-host: " << problem << '\n';
    return status;
}

bool ReadFile(const std::string& path, std::string* content)
{
    std::ifstream file(path, std::ios::binary);
    content->assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    return file.is_open() && !file.bad();
}

// What nobody uses any more and somebody has not given back.
void ComplainOfLeaks(Host& host)
{
    const auto complain = [&host](const char* things, size_t count,
                                  const std::vector<std::string>& lines) {
        if (count == 0)
            return;
        host.complaints.Add(std::to_string(count) + " " + things + " not given back:");
        for (const std::string& line : lines)
            host.complaints.Add("    " + line);
    };
    complain("objects", host.objects.Count(), host.objects.DescribeLive(kMaxLeaksTold));
    complain("strings", host.strings.Count(), host.strings.DescribeLive(kMaxLeaksTold));
}

void PrintSummary(const Host& host, const Report& report)
{
    std::cout << "moxa-host: " << report.Held() << " expectations held, " << report.Failures()
              << " failures; " << host.strings.Made() << " strings and " << host.objects.Made()
              << " objects made, " << host.strings.Count() << " and " << host.objects.Count()
              << " left\n";
    std::cout.flush();
}

// One run of a program, from loading to unloading.
ExitStatus RunProgram(const Options& options, const std::vector<ProgramLine>& program,
                      const std::string& folder)
{
    Host host(folder, options.version);
    host.withheld = options.withheld;
    host.withholdsAll = options.noServices;
    Report report(options.program, options.lenient);
    Plugin plugin(host, options.plugin);
    std::string problem;
    if (!plugin.Load(&problem)) {
        Refuse(kExitNoPlugin, problem);
        return kExitNoPlugin;
    }
    report.Complain(host.complaints.Take());
    {
        Session session(host, plugin, report);
        Runner(session, options.trace).Run(program);
    }
    report.SetLine(0);
    if (!host.dialogs.answers.empty())
        report.Fail("a dialog that was to be answered did not open");
    ComplainOfLeaks(host);
    // What is left can still need the plug-in: then it stays.
    if (plugin.IsLoaded() && host.objects.Count() == 0)
        plugin.Unload();
    report.Complain(host.complaints.Take());
    PrintSummary(host, report);
    return report.Status();
}

// Runs the program in a process of its own, so that a crash is an answer, too.
bool SurvivesWithout(const std::string& service, Options options,
                     const std::vector<ProgramLine>& program)
{
    options.withheld = {service};
    std::cout << "without " << service << ": " << std::flush;
    std::cerr.flush();
    const pid_t child = fork();
    if (child == 0) {
        int status = kExitFailure;
        {
            const WorkFolder folder(options.folder);
            status = RunProgram(options, program, folder.Path());
        }
        std::exit(status);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) {
        std::cerr << "moxa-host: no process can be made\n";
        return false;
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == kExitSuccess)
        return true;
    std::cerr << "moxa-host: without " << service << ": "
              << (WIFSIGNALED(status) ? "ended by signal " + std::to_string(WTERMSIG(status))
                                      : "exit status " + std::to_string(WEXITSTATUS(status)))
              << '\n';
    return false;
}

ExitStatus RunWithoutEach(const Options& options, const std::vector<ProgramLine>& program)
{
    bool survivesAll = true;
    for (const std::string& service : ServiceNames())
        survivesAll = SurvivesWithout(service, options, program) && survivesAll;
    return survivesAll ? kExitSuccess : kExitFailure;
}

int Run(Options options)
{
    if (options.listServices) {
        for (const std::string& service : ServiceNames())
            std::cout << service << '\n';
        return kExitSuccess;
    }
    for (const std::string& name : options.withheld) {
        const std::vector<std::string> names = ServiceNames();
        if (std::find(names.begin(), names.end(), name) == names.end())
            return Refuse(kExitWrongUsage, "no service is called " + name);
    }
    std::string text;
    if (!ReadFile(options.program, &text))
        return Refuse(kExitWrongUsage, options.program + " can't be read");
    std::vector<ProgramLine> program;
    ProgramError error;
    if (!ReadProgram(text, &program, &error)) {
        Report report(options.program, false);
        report.SetLine(error.line);
        report.Stop(error.problem);
        return report.Status();
    }
    // dlopen looks for a name without a slash elsewhere than a person does.
    if (options.plugin.find('/') == std::string::npos)
        options.plugin.insert(0, "./");
    if (options.withholdEach)
        return RunWithoutEach(options, program);
    const WorkFolder folder(options.folder);
    if (folder.Path().empty())
        return Refuse(kExitFailure, "no folder can be made for this run");
    return RunProgram(options, program, folder.Path());
}

}   // namespace

int main(int argc, char** argv)
{
    Options options;
    int exitStatus = kExitSuccess;
    if (!ParseOptions(argc, argv, &options, &exitStatus))
        return exitStatus;
    try {
        return Run(std::move(options));
    } catch (const std::exception& error) {
        return Refuse(kExitFailure, std::string("can't go on: ") + error.what());
    }
}
