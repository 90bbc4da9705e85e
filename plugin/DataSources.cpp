#include "plugin/DataSources.h"

#include <memory>

#include "engine/storage/FilePtr.h"
#include "plugin/DatabaseEngine.h"
#include "plugin/Door.h"
#include "plugin/FolderItem.h"
#include "plugin/HostServices.h"
#include "plugin/HostText.h"
#include "plugin/SessionSentry.h"

namespace vela {

namespace {

// What a step that failed says to the person; null when it succeeded.
using Problem = const char*;

const char* const kDefaultName = "Database";

template <class Proc>
Proc GlobalMethod(const char* declaration)
{
    return reinterpret_cast<Proc>(MOXALoadGlobalMethod(declaration));
}

template <class Proc>
Proc ObjectMethod(MOXAobject object, const char* declaration)
{
    return reinterpret_cast<Proc>(MOXALoadObjectMethod(object, declaration));
}

MOXAbool Answer(Problem problem, MOXAstring* message)
{
    if (message)
        *message = problem ? TextToHost(problem) : nullptr;
    return problem ? 0 : 1;
}

// ---- the dialogs

Problem AskForNewPlace(MOXAfolderItem* item)
{
    const auto dialog = GlobalMethod<MOXAGetSaveFolderItemProc>(
        "GetSaveFolderItem(filter As String, defaultName As String) As FolderItem");
    if (!dialog)
        return "couldn't load GetSaveFolderItem";
    const OwnedHostText filter(TextToHost(string()));
    const OwnedHostText name(TextToHost(kDefaultName));
    *item = dialog(filter.Get(), name.Get());
    return *item ? nullptr : "user cancelled";
}

Problem AskForDatabase(MOXAfolderItem* item)
{
    const auto dialog = GlobalMethod<MOXAGetOpenFolderItemProc>(
        "GetOpenFolderItem(filter As String) As FolderItem");
    if (!dialog)
        return "couldn't load GetOpenFolderItem";
    const OwnedHostText filter(TextToHost(string()));
    *item = dialog(filter.Get());
    return *item ? nullptr : "user cancelled";
}

// ---- the folder

// A database lies in a folder. A file in its place might be a container of another kind, which is
// not supported; the person learns how far it could be used.
Problem ProblemWithFile(const FileLocator& place, bool create)
{
    if (create)
        return "unable to create file for virtual volume";
    FilePtr file;
    return file.Open(place.Path(), "r") ? "unable to access virtual volume"
                                        : "unable to open file for virtual volume";
}

// Opens the database at the place; the handle has none.
Problem OpenPlace(const FileLocator& place, bool create, dbDatabase* handle)
{
    if (place.Exists() && !place.IsFolder())
        return ProblemWithFile(place, create);
    return OpenDatabase(handle, place, create) ? nullptr : "unable to access database folder";
}

// Whether a database can be opened there; with create, it is then written to the disk.
Problem TryPlace(const FileLocator& place, bool create)
{
    dbDatabase handle;
    if (const Problem problem = OpenPlace(place, create, &handle))
        return problem;
    EndHandle(&handle);
    return handle.status.State() == kVEStateSuccess ? nullptr : "unable to access database folder";
}

// ---- save info: how a program finds the folder again from its own

Problem GetProgramFolder(MOXAfolderItem* folder)
{
    const auto getFolderItem =
        GlobalMethod<MOXAGetFolderItemProc>("GetFolderItem(path As String) As FolderItem");
    if (!getFolderItem)
        return "couldn't load GetFolderItem";
    const OwnedHostText path(TextToHost(string()));
    *folder = getFolderItem(path.Get());
    return *folder ? nullptr : "couldn't resolve save info";
}

Problem MakeSaveInfo(MOXAfolderItem item, string* info)
{
    MOXAfolderItem folder = nullptr;
    if (const Problem problem = GetProgramFolder(&folder))
        return problem;
    const OwnedFolderItem owner(folder);
    const auto getSaveInfo =
        ObjectMethod<MOXAGetSaveInfoProc>(item, "GetSaveInfo(relativeTo As FolderItem) As String");
    if (!getSaveInfo)
        return "couldn't load GetSaveInfo";
    const OwnedHostText text(getSaveInfo(item, folder));
    if (!text.Get())
        return "couldn't resolve save info";
    *info = TextFromHost(text.Get());
    return nullptr;
}

Problem ResolveSaveInfo(const string& info, MOXAfolderItem* item)
{
    MOXAfolderItem folder = nullptr;
    if (const Problem problem = GetProgramFolder(&folder))
        return problem;
    const OwnedFolderItem owner(folder);
    const auto getRelative =
        ObjectMethod<MOXAGetRelativeProc>(folder, "GetRelative(saveInfo As String) As FolderItem");
    if (!getRelative)
        return "couldn't load getRelative";
    const OwnedHostText text(TextToHost(info));
    *item = getRelative(folder, text.Get());
    return *item ? nullptr : "couldn't resolve save info";
}

// ---- the whole

Problem AddDataSource(bool create)
{
    MOXAfolderItem item = nullptr;
    if (const Problem problem = create ? AskForNewPlace(&item) : AskForDatabase(&item))
        return problem;
    const OwnedFolderItem owner(item);
    FileLocator place;
    if (!LocatorFromFolderItem(item, &place))
        return "couldn't extract FolderItemImp";
    if (const Problem problem = TryPlace(place, create))
        return problem;
    string info;
    if (const Problem problem = MakeSaveInfo(item, &info))
        return problem;
    MOXADesignAddDataSource(place.Name().CString(), kDataSourceKind, info.CString(),
                            static_cast<int32_t>(info.length()));
    return nullptr;
}

MOXAbool RunInterface(bool create, MOXAstring* message)
{
    if (message)
        *message = nullptr;
    const SessionSentry sentry;
    MOXAbool answer = 0;
    const bool answered = Door(nullptr, false, [&] {
        answer = Answer(AddDataSource(create), message);
        return true;
    });
    if (!answered && message)
        *message = OutOfMemoryToHost();
    return answer;
}

// Opens the database that the save info stands for, with a handle of its own.
Problem OpenSaved(const string& info, MOXAdbDatabase* object)
{
    MOXAfolderItem item = nullptr;
    if (const Problem problem = ResolveSaveInfo(info, &item))
        return problem;
    const OwnedFolderItem owner(item);
    FileLocator place;
    if (!LocatorFromFolderItem(item, &place))
        return "couldn't extract FolderItemImp";
    auto handle = std::make_unique<dbDatabase>();
    if (const Problem problem = OpenPlace(place, false, handle.get()))
        return problem;
    *object = MOXAdbDatabaseFromDBDatabase(handle.get(), &kDatabaseEngine);
    if (!*object) {
        EndHandle(handle.get());
        return "unable to access database folder";
    }
    static_cast<void>(handle.release());
    MOXASetDBIsConnected(*object, true);
    return nullptr;
}

}   // namespace

const char* const kDataSourceKind = "veladb";

MOXAbool NewDataSource(MOXAstring* message)
{
    return RunInterface(true, message);
}

MOXAbool SelectDataSource(MOXAstring* message)
{
    return RunInterface(false, message);
}

MOXAdbDatabase OpenDataSource(const char* data, int32_t length, MOXAstring* message)
{
    if (message)
        *message = nullptr;
    const SessionSentry sentry;
    MOXAdbDatabase object = nullptr;
    const bool answered = Door(nullptr, false, [&] {
        string info;
        if (data && length > 0)
            info = string(data, static_cast<size_t>(length), kEncodingUTF8);
        Answer(OpenSaved(info, &object), message);
        return true;
    });
    if (!answered && message)
        *message = OutOfMemoryToHost();
    return object;
}

}   // namespace vela
