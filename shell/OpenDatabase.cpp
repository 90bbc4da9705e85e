#include "shell/OpenDatabase.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "engine/storage/CommitFileAccess.h"
#include "engine/storage/VelaFolderFileAccess.h"
#include "shell/Messages.h"

namespace vela::shell {

namespace {

std::string Quoted(const std::string& path)
{
    return "\"" + path + "\"";
}

// What is wrong with the place as it is; empty when it can be tried. A missing database is no
// problem for --create.
std::string FindProblem(const Options& options)
{
    const std::string& path = options.database;
    if (path.empty())
        return "the name of the database is empty";
    struct stat info {};
    if (stat(path.c_str(), &info) != 0) {
        if (errno != ENOENT)
            return "can't open " + Quoted(path) + ": " + SystemErrorText(errno);
        return options.create
                   ? ""
                   : "there is no database " + Quoted(path) + "; use --create to make it";
    }
    if (!S_ISDIR(info.st_mode))
        return Quoted(path) + " is not a database: a database is a folder, this is a file";
    if (access(path.c_str(), options.readOnly ? R_OK | X_OK : R_OK | W_OK | X_OK) != 0) {
        const std::string reason = SystemErrorText(errno);
        const bool readable = access(path.c_str(), R_OK | X_OK) == 0;
        return readable ? "can't write in " + Quoted(path) + ": " + reason +
                              "; use --readonly to read it"
                        : "can't open " + Quoted(path) + ": " + reason;
    }
    return "";
}

VelaFolderFileAccess::Mode AccessMode(const Options& options)
{
    if (options.readOnly)
        return VelaFolderFileAccess::Mode::kReadOnly;
    return options.create ? VelaFolderFileAccess::Mode::kCreate
                          : VelaFolderFileAccess::Mode::kReadWrite;
}

// For a writer whom readers alone keep out.
std::string HintAtReading(const Options& options, const FileLocator& folder)
{
    using Mode = VelaFolderFileAccess::Mode;
    const bool canBeRead =
        !options.readOnly && VelaFolderFileAccess(folder, Mode::kReadOnly).IsOpen();
    return canBeRead ? "; use --readonly to read it as well" : "";
}

}   // namespace

std::unique_ptr<VelaDatabase> OpenDatabase(const Options& options, std::string* problem)
{
    *problem = FindProblem(options);
    if (!problem->empty())
        return nullptr;
    const FileLocator folder(string(options.database, kEncodingUTF8));
    auto files = std::make_unique<VelaFolderFileAccess>(folder, AccessMode(options));
    if (!files->IsOpen()) {
        *problem = std::string("can't open the database: ") + files->ErrorText().CString() +
                   HintAtReading(options, folder);
        return nullptr;
    }
    auto database = std::make_unique<VelaDatabase>(std::move(files));
    if (const string reason = database->OpenErrorText(); !reason.empty()) {
        *problem = "can't open " + Quoted(options.database) + ": " + reason.CString();
        return nullptr;
    }
    // Asked when a crash has been recovered from: the file may have been in the log.
    const std::string schemaFile = std::string(kSchemaTableName) + ".dat";
    if (!options.create && !database->Files()->ContainsFile(string(schemaFile, kEncodingUTF8))) {
        *problem = Quoted(options.database) + " is a folder without a database (it has no " +
                   schemaFile + "); use --create to make one in it";
        return nullptr;
    }
    if (!database->IsValid()) {
        if (!database->Files()->OpenFile(string(schemaFile, kEncodingUTF8), false))
            *problem = "can't open " + Quoted(options.database) + ": " +
                       database->Files()->ErrorText().CString();
        else
            *problem =
                Quoted(options.database) + " holds no readable schema; its files are damaged";
        return nullptr;
    }
    if (options.create && HasOpenChanges(*database)) {
        database->Commit();
        if (database->LastCommitFailed()) {
            *problem = "can't create " + Quoted(options.database) + ": " +
                       database->CommitErrorText().CString();
            return nullptr;
        }
    }
    return database;
}

bool HasOpenChanges(VelaDatabase& database)
{
    if (database.TransactionInProgress())
        return true;
    for (VelaTable* table : database.OpenTables()) {
        const VelaTrans* stored = table->AsStoredTable();
        if (stored && stored->IsTouched())
            return true;
    }
    return false;
}

VelaTrans* FindStoredTable(VelaDatabase& database, const std::string& name)
{
    const long position = database.FindOpenTable(string(name, kEncodingUTF8));
    return position < 0 ? nullptr
                        : database.OpenTables()[static_cast<size_t>(position)]->AsStoredTable();
}

}   // namespace vela::shell
