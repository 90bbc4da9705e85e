#include <filesystem>
#include <fstream>

#include "plugin/host/Command.h"
#include "plugin/host/MemoryInUse.h"
#include "plugin/host/Session.h"

namespace vela::host {

namespace {

bool IsWord(const ProgramLine& line, size_t index, std::string_view word)
{
    return index < line.tokens.size() && line.tokens[index].Word() == word;
}

void FailOn(Session& session, const std::error_code& error, const std::string& path)
{
    if (error)
        session.report.Fail(path + ": " + error.message());
}

// folder NAME PATH
void RunFolder(Session& session, const ProgramLine& line)
{
    const auto name = session.ReadName(line, 1);
    const auto path = session.ReadPath(line, 2);
    if (name && path)
        session.names.Set(*name, static_cast<HostObject*>(session.host.MakeFolderItem(*path)));
}

// make folder PATH
void RunMake(Session& session, const ProgramLine& line)
{
    const auto path = session.ReadPath(line, 2);
    if (!IsWord(line, 1, "folder"))
        session.report.Stop("\"make folder\" is wanted");
    if (!path || session.report.IsStopped())
        return;
    std::error_code error;
    std::filesystem::create_directories(*path, error);
    FailOn(session, error, *path);
}

// write PATH TEXT
void RunWrite(Session& session, const ProgramLine& line)
{
    const auto path = session.ReadPath(line, 1);
    size_t index = 2;
    const std::optional<Operand> content = session.ReadValue(line, &index);
    if (!path || !content)
        return;
    std::ofstream file(*path, std::ios::binary);
    file << PastedText(content->value);
    file.close();
    if (!file)
        session.report.Fail(*path + " can't be written");
}

// remove PATH
void RunRemove(Session& session, const ProgramLine& line)
{
    const auto path = session.ReadPath(line, 1);
    if (!path)
        return;
    std::error_code error;
    if (std::filesystem::remove_all(*path, error) == 0)
        session.report.Fail(*path + " is not there");
    FailOn(session, error, *path);
}

// dialog answers PATH | dialog cancels
void RunDialog(Session& session, const ProgramLine& line)
{
    std::optional<std::string> answer;
    if (IsWord(line, 1, "answers")) {
        answer = session.ReadPath(line, 2);
        if (!answer)
            return;
    } else if (!IsWord(line, 1, "cancels") || line.tokens.size() > 2) {
        session.report.Stop("\"dialog answers PATH\" or \"dialog cancels\" is wanted");
        return;
    }
    session.host.dialogs.answers.push_back(answer);
}

// withhold NAME, offer NAME
void RunWithhold(Session& session, const ProgramLine& line)
{
    if (const auto name = session.ReadName(line, 1))
        session.host.withheld.insert(*name);
}

void RunOffer(Session& session, const ProgramLine& line)
{
    const auto name = session.ReadName(line, 1);
    if (name && session.host.withheld.erase(*name) == 0)
        session.report.Fail(*name + " was not withheld");
}

void RunUnload(Session& session, const ProgramLine&)
{
    session.SetLast(Nothing());
    if (session.host.objects.Count() > 0)
        session.report.Stop("the plug-in can't be unloaded: objects are in use");
    else if (!session.plugin.IsLoaded())
        session.report.Stop("the plug-in is not loaded");
    else
        session.plugin.Unload();
}

void RunLoad(Session& session, const ProgramLine&)
{
    std::string problem;
    if (session.plugin.IsLoaded())
        session.report.Stop("the plug-in is loaded already");
    else if (!session.plugin.Load(&problem))
        session.report.Stop(problem);
}

// mark | mark memory
void RunMark(Session& session, const ProgramLine& line)
{
    if (line.tokens.size() == 1)
        session.marked = session.CurrentBalance();
    else if (IsWord(line, 1, "memory"))
        session.markedMemory = MemoryInUse();
    else
        session.report.Stop("\"mark\" or \"mark memory\" is wanted");
}

}   // namespace

const std::vector<Command>& HostCommands()
{
    static const std::vector<Command> commands = {
        {"folder", 3, 3, RunFolder, "folder NAME PATH"},
        {"make", 3, 3, RunMake, "make folder PATH"},
        {"write", 3, 3, RunWrite, "write PATH VALUE"},
        {"remove", 2, 2, RunRemove, "remove PATH"},
        {"dialog", 2, 3, RunDialog, "dialog answers PATH | dialog cancels"},
        {"withhold", 2, 2, RunWithhold, "withhold NAME"},
        {"offer", 2, 2, RunOffer, "offer NAME"},
        {"unload", 1, 1, RunUnload, "unload"},
        {"load", 1, 1, RunLoad, "load"},
        {"mark", 1, 2, RunMark, "mark | mark memory"},
    };
    return commands;
}

}   // namespace vela::host
