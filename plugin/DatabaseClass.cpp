#include "plugin/DatabaseClass.h"

#include <new>

#include "plugin/DatabaseEngine.h"
#include "plugin/Door.h"
#include "plugin/FolderItem.h"
#include "plugin/HostServices.h"
#include "plugin/HostText.h"
#include "plugin/SessionSentry.h"

namespace vela {

namespace {

// ---- the object

// The instance data comes zeroed and becomes a handle here.
void Construct(MOXAobject object)
{
    void* data = MOXAGetClassData(&kDatabaseClass, object);
    if (!data)
        return;
    dbDatabase* handle = new (data) dbDatabase;
    MOXAConstructDBDatabase(object, handle, &kDatabaseEngine);
}

void Destruct(MOXAobject object)
{
    auto* handle = static_cast<dbDatabase*>(MOXAGetClassData(&kDatabaseClass, object));
    if (!handle)
        return;
    const SessionSentry sentry;
    Door(nullptr, [&] { EndHandle(handle); });
    if (handle->databaseFile)
        MOXAUnlockObject(handle->databaseFile);
    handle->~dbDatabase();
}

// ---- its methods

// Connect and CreateDatabaseFile.
bool CreateOrConnect(MOXAobject object, dbDatabase* handle, bool create)
{
    if (handle->database)
        return true;
    FileLocator folder;
    if (!LocatorFromFolderItem(handle->databaseFile, &folder))
        return Fail(&handle->status, kStateCantConnect, "Error: No DatabaseFile.");
    if (!OpenDatabase(handle, folder, create))
        return false;
    MOXASetDBIsConnected(object, true);
    return true;
}

MOXAbool Open(MOXAobject object, bool create)
{
    dbDatabase* handle = MOXAGetDBFromMOXAdbDatabase(object);
    if (!handle)
        return 0;
    const SessionSentry sentry;
    return Door(handle, false, [&] { return CreateOrConnect(object, handle, create); }) ? 1 : 0;
}

MOXAbool Connect(MOXAobject object)
{
    return Open(object, false);
}

MOXAbool CreateDatabaseFile(MOXAobject object)
{
    return Open(object, true);
}

// The handle of an object with an open database; null for any other.
dbDatabase* ConnectedHandle(MOXAobject object)
{
    dbDatabase* handle = MOXAGetDBFromMOXAdbDatabase(object);
    return handle && handle->database ? handle : nullptr;
}

int32_t LastRowID(MOXAobject object, MOXAstring tableName)
{
    dbDatabase* handle = ConnectedHandle(object);
    if (!handle)
        return 0;
    return Door(handle, int32_t{0}, [&] {
        uint32_t rowID = 0;
        const bool found = handle->database->LastRowID(StatementFromHost(tableName), &rowID);
        return found ? static_cast<int32_t>(rowID) : 0;
    });
}

MOXAstring GetSchemaData(MOXAobject object)
{
    dbDatabase* handle = ConnectedHandle(object);
    if (!handle)
        return nullptr;
    const SessionSentry sentry;
    return Door(handle, MOXAstring(), [&] {
        handle->status = VelaStatus();
        return TextToHost(handle->database->GetSchemaData(&handle->status));
    });
}

void ReplaceSchemaData(MOXAobject object, MOXAstring newSchema)
{
    dbDatabase* handle = ConnectedHandle(object);
    if (!handle)
        return;
    const SessionSentry sentry;
    Door(handle, [&] {
        handle->status = VelaStatus();
        handle->database->ReplaceSchemaData(TextFromHost(newSchema), &handle->status);
    });
}

// ---- the record

const MOXApropertyDefinition kProperties[] = {{
    .name = "DatabaseFile",
    .type = "FolderItem",
    .flags = 0,
    .offset = offsetof(dbDatabase, databaseFile),
    .getter = nullptr,
    .setter = nullptr,
}};

template <class Function>
MOXAproc Proc(Function function)
{
    return reinterpret_cast<MOXAproc>(function);
}

const MOXAmethodDefinition kMethods[] = {
    {Proc(Connect), "Connect() As Boolean"},
    {Proc(CreateDatabaseFile), "CreateDatabaseFile() As Boolean"},
    {Proc(LastRowID), "LastRowID(tableName as String) As Integer"},
    {Proc(GetSchemaData), "GetSchemaData() As String"},
    {Proc(ReplaceSchemaData), "ReplaceSchemaData(newSchema As String)"},
};

}   // namespace

constinit const MOXAclassDefinition kDatabaseClass = {
    .version = MOXA_INTERFACE_VERSION,
    .instanceSize = sizeof(dbDatabase),
    .name = "MOXADatabase",
    .superclass = "Database",
    .constructor = Construct,
    .destructor = Destruct,
    .properties = kProperties,
    .methods = kMethods,
    .propertyCount = sizeof kProperties / sizeof kProperties[0],
    .methodCount = sizeof kMethods / sizeof kMethods[0],
};

}   // namespace vela
