#include "plugin/DatabaseHandle.h"

#include <memory>

#include "engine/sql/VelaSQL.h"
#include "engine/storage/CommitFileAccess.h"
#include "engine/storage/VelaFolderFileAccess.h"
#include "plugin/Cursor.h"

namespace vela {

namespace {

constexpr char kCantConnect[] = "08001";
constexpr char kInputOutput[] = "58030";

bool IsBlank(char byte)
{
    return byte >= 1 && byte <= ' ';
}

// Whether the statement's first word is COMMIT.
bool IsCommit(std::string_view statement)
{
    constexpr std::string_view kWord = "COMMIT";
    size_t start = 0;
    while (start < statement.size() && IsBlank(statement[start]))
        start++;
    statement.remove_prefix(start);
    return EqualsIgnoringCase(statement.substr(0, kWord.size()), kWord);
}

// Makes what went wrong with the last commit the status; true when nothing did.
bool CheckCommit(dbDatabase* handle, const char* consequence)
{
    if (!handle->database->LastCommitFailed())
        return true;
    return Fail(&handle->status, kStateInputOutput,
                "Error: COMMIT failed: " + handle->database->CommitErrorText() + "." + consequence);
}

}   // namespace

const VelaState kStateCantConnect = kCantConnect;
const VelaState kStateInputOutput = kInputOutput;
const char* const kSchemaRecordFileName = "_schema.dat";

bool OpenDatabase(dbDatabase* handle, const FileLocator& folder, bool create)
{
    using Mode = VelaFolderFileAccess::Mode;
    auto files =
        std::make_unique<VelaFolderFileAccess>(folder, create ? Mode::kCreate : Mode::kReadWrite);
    if (!files->IsOpen())
        return Fail(&handle->status, kStateCantConnect,
                    "Error: Can't open the database: " + files->ErrorText() + ".");
    auto database = std::make_unique<VelaDatabase>(std::move(files));
    if (const string reason = database->OpenErrorText(); !reason.empty())
        return Fail(&handle->status, kStateCantConnect,
                    "Error: Can't open the database: " + reason + ".");
    // Asked when a crash has been recovered from: the file may have been in the log.
    if (!create && !database->Files()->ContainsFile(kSchemaRecordFileName))
        return Fail(&handle->status, kStateCantConnect, "Error: The folder holds no database.");
    if (!database->IsValid())
        return Fail(&handle->status, kStateCantConnect, "Error: The schema can't be read.");
    handle->database = database.release();
    handle->status = VelaStatus();
    return true;
}

void CloseDatabase(dbDatabase* handle)
{
    if (!handle->database)
        return;
    // Whatever Commit meets, the database goes, and what refers to it is told.
    struct Closer {
        dbDatabase* handle;
        ~Closer()
        {
            dbCursor::DatabaseClosed(handle);
            delete handle->database;
            handle->database = nullptr;
        }
    } const closer{handle};
    handle->status = VelaStatus();
    handle->database->Commit();
    if (!CatchOutOfMemory([&] { CheckCommit(handle, " The changes are lost."); }))
        handle->status = VelaStatus(kVETransactionLost, string());
}

void EndOutOfMemory(dbDatabase* handle)
{
    if (!handle)
        return;
    handle->status = VelaStatus(kVEOutOfMemory, string());
    if (handle->database)
        handle->database->EndOutOfMemory(&handle->status);
}

void EndHandle(dbDatabase* handle)
{
    struct Ender {
        dbDatabase* handle;
        ~Ender() { dbCursor::HandleEnded(handle); }
    } const ender{handle};
    CloseDatabase(handle);
}

void ExecuteStatement(dbDatabase* handle, const string& sql)
{
    handle->database->UpdateClock();
    VelaSQLExecute(sql, *handle->database, &handle->status);
    if (handle->status.State() == kVEStateSuccess && IsCommit(sql.View()))
        CheckCommit(handle, " The changes are still open.");
}

}   // namespace vela
