#include "shell/RescueCommands.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/rescue/CommittedFiles.h"
#include "engine/rescue/DatabaseCheck.h"
#include "engine/rescue/DatabaseRepair.h"
#include "engine/storage/VelaFolderFileAccess.h"
#include "shell/ExitStatus.h"
#include "shell/Messages.h"
#include "shell/RescueProgress.h"
#include "shell/RescueReport.h"

namespace vela::shell {

namespace {

constexpr std::string_view kCheck = "check";
constexpr std::string_view kRepair = "repair";
constexpr mode_t kNewFolderRights = 0777;

struct RescueOptions {
    ReportForm form = ReportForm::kText;
    std::vector<std::string> folders;
};

std::string Quoted(const std::string& path)
{
    return "\"" + path + "\"";
}

int RefuseUsage(std::string_view verb, const std::string& problem)
{
    PrintNote(problem);
    PrintRaw("Usage: veladb " + std::string(verb) +
             (verb == kCheck ? " DATABASE" : " DATABASE NEWDATABASE") +
             " [--json]; \"veladb --help\" tells more.\n");
    return kExitWrongUsage;
}

// What is wrong with the arguments behind the verb; empty when nothing is.
std::string ReadOptions(int argc, const char* const* argv, size_t folderCount,
                        RescueOptions* options)
{
    bool mayBeOption = true;
    for (int i = 2; i < argc; i++) {
        const std::string argument = argv[i];
        if (mayBeOption && argument == "--")
            mayBeOption = false;
        else if (mayBeOption && argument == "--json")
            options->form = ReportForm::kJson;
        else if (mayBeOption && argument.size() > 1 && argument.starts_with('-'))
            return "unknown option " + argument;
        else
            options->folders.push_back(argument);
    }
    const char* const names[] = {"DATABASE", "NEWDATABASE"};
    if (options->folders.size() < folderCount)
        return std::string(names[options->folders.size()]) + " is missing";
    return options->folders.size() > folderCount
               ? "too many arguments: " + Quoted(options->folders[folderCount])
               : "";
}

// The damaged database, to be read only; null, after saying why, when it can't be opened.
std::unique_ptr<VelaFileAccess> OpenDamaged(const std::string& path)
{
    std::unique_ptr<VelaFileAccess> files = OpenCommittedFiles([&path] {
        return std::make_unique<VelaFolderFileAccess>(FileLocator(string(path, kEncodingUTF8)),
                                                      VelaFolderFileAccess::Mode::kReadOnly);
    });
    if (files->IsOpen())
        return files;
    PrintNote("can't open the database: " + std::string(files->ErrorText().View()));
    return nullptr;
}

int NoDatabase(const std::string& path)
{
    PrintNote(Quoted(path) + " is a folder without a database: it has no file of any table");
    return kExitNoDatabase;
}

int Interrupted(const char* what)
{
    PrintNote(what);
    return kExitFailure;
}

// Prints what is left; a report that could not be printed is a failure.
int Finish(Output* output, int exitStatus)
{
    if (output->Flush())
        return exitStatus;
    PrintNote("can't write the output: " + SystemErrorText(output->Error()));
    return kExitFailure;
}

int RunCheck(const RescueOptions& options)
{
    const std::string& path = options.folders[0];
    const std::unique_ptr<VelaFileAccess> files = OpenDamaged(path);
    if (!files)
        return kExitNoDatabase;
    if (!HoldsDatabase(*files))
        return NoDatabase(path);
    FileOutput output(STDOUT_FILENO);
    CheckReport report(path, options.form, &output);
    RescueProgress progress("checking");
    CheckDatabase(files.get(), &report, &progress);
    progress.Clear();
    report.Finish(!progress.Stopped());
    const int status = Finish(&output, report.Faults() == 0 ? kExitSuccess : kExitFaults);
    return progress.Stopped() ? Interrupted("interrupted; the check is not complete") : status;
}

// ---- repair

// The path without links and "..", of a place whose last name need not exist; empty when the rest
// of it doesn't.
std::string RealPathOf(const std::string& path)
{
    char resolved[PATH_MAX];
    if (realpath(path.c_str(), resolved) != nullptr)
        return resolved;
    std::string plain = path;
    while (plain.size() > 1 && plain.ends_with('/'))
        plain.pop_back();
    const size_t slash = plain.rfind('/');
    const std::string parent = slash == std::string::npos ? "."
                               : slash == 0               ? "/"
                                                          : plain.substr(0, slash);
    if (realpath(parent.c_str(), resolved) == nullptr)
        return "";
    return std::string(resolved) + "/" + plain.substr(slash == std::string::npos ? 0 : slash + 1);
}

// Makes the folder of the new database, which must not be there. False, after saying why.
bool MakeNewFolder(const std::string& path, const std::string& damaged)
{
    if ((RealPathOf(path) + "/").starts_with(RealPathOf(damaged) + "/")) {
        PrintNote("the new database would lie within the damaged one, which is not to be touched");
        return false;
    }
    if (mkdir(path.c_str(), kNewFolderRights) == 0)
        return true;
    PrintNote(errno == EEXIST ? Quoted(path) + " is there already; a repair makes a new database"
                              : "can't make " + Quoted(path) + ": " + SystemErrorText(errno));
    return false;
}

// Takes the half-made database away again. The folder is ours, and so is all that lies in it.
void RemoveNewFolder(const std::string& path)
{
    {
        VelaFolderFileAccess files(FileLocator(string(path, kEncodingUTF8)),
                                   VelaFolderFileAccess::Mode::kReadWrite);
        SimpleVector<string> names;
        files.FindFiles("*", &names);
        for (const string& name : names)
            files.DeleteFile(name);
    }
    if (rmdir(path.c_str()) != 0)
        PrintNote("can't remove " + Quoted(path) + ": " + SystemErrorText(errno));
}

// A folder that goes again unless it is kept, also when memory runs out in between.
class NewFolder {
public:
    explicit NewFolder(const std::string& path) : mPath(path) {}
    ~NewFolder()
    {
        if (!mIsKept)
            RemoveNewFolder(mPath);
    }
    NewFolder(const NewFolder&) = delete;
    NewFolder& operator=(const NewFolder&) = delete;
    void Keep() { mIsKept = true; }

private:
    std::string mPath;
    bool mIsKept = false;
};

int RunRepair(const RescueOptions& options)
{
    const std::string& path = options.folders[0];
    const std::string& newPath = options.folders[1];
    const std::unique_ptr<VelaFileAccess> files = OpenDamaged(path);
    if (!files)
        return kExitNoDatabase;
    if (!HoldsDatabase(*files))
        return NoDatabase(path);
    RescueProgress progress("saving");   // from now on a signal leaves nothing half-made behind
    if (!MakeNewFolder(newPath, path))
        return kExitFailure;
    NewFolder folder(newPath);
    const auto openNew = [&newPath]() -> std::unique_ptr<VelaFileAccess> {
        return std::make_unique<VelaFolderFileAccess>(FileLocator(string(newPath, kEncodingUTF8)),
                                                      VelaFolderFileAccess::Mode::kReadWrite);
    };
    RepairReport report;
    const bool saved = RepairDatabase(files.get(), openNew, &report, &progress);
    progress.Clear();
    if (!saved && report.error.empty())
        return Interrupted("interrupted; nothing was saved");
    if (!saved)
        return Interrupted(("can't write the new database: " + report.error).c_str());
    folder.Keep();
    FileOutput output(STDOUT_FILENO);
    PrintRepairReport(report, path, newPath, options.form, &output);
    return Finish(&output, report.IsComplete() ? kExitSuccess : kExitFaults);
}

}   // namespace

bool IsRescueCommand(int argc, const char* const* argv)
{
    return argc > 1 && (argv[1] == kCheck || argv[1] == kRepair);
}

int RunRescueCommand(int argc, const char* const* argv)
{
    const std::string_view verb = argv[1];
    const bool isCheck = verb == kCheck;
    RescueOptions options;
    const std::string problem = ReadOptions(argc, argv, isCheck ? 1 : 2, &options);
    if (!problem.empty())
        return RefuseUsage(verb, problem);
    return isCheck ? RunCheck(options) : RunRepair(options);
}

}   // namespace vela::shell
