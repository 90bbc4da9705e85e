#include "plugin/PluginEntry.h"

#include "engine/core/VelaDataType.h"
#include "plugin/Cursor.h"
#include "plugin/DataSources.h"
#include "plugin/DatabaseClass.h"
#include "plugin/DatabaseEngine.h"
#include "plugin/HostServices.h"

namespace vela {

namespace {

// The type code under which integers are stored in every database.
constexpr int kStoredTypeInteger = 3;
constexpr double kOldestHost = 5.5;

// Statements come in and texts go out through these; cursors reach programs through the last.
bool CanOfferEngine()
{
    return HostHasServices({"PluginRegisterDBEngine", "PluginRegisterDBCursor", "MOXABuildString",
                            "StringGetCString", "StringGetLength", "MOXAUnlockString",
                            "MOXAdbCursorFromDBCursor"});
}

bool CanReadFolderItems()
{
    return HostHasServices({"MOXAGetPropValueString", "MOXAUnlockObject"});
}

bool CanOfferClass()
{
    return CanReadFolderItems() &&
           HostHasServices({"PluginRegisterClass", "MOXAGetClassData", "MOXAConstructDBDatabase",
                            "MOXAGetDBFromMOXAdbDatabase", "MOXASetDBIsConnected"});
}

bool CanCallHostMethods()
{
    return HostHasServices({"MOXALoadGlobalMethod", "MOXALoadObjectMethod"});
}

bool CanOfferInterfaces()
{
    return CanReadFolderItems() && CanCallHostMethods() &&
           HostHasServices({"RegisterDataSourceInterface", "DesignAddDataSource"});
}

bool CanOfferDataSource()
{
    return CanReadFolderItems() && CanCallHostMethods() &&
           HostHasServices(
               {"RegisterDataSource", "MOXAdbDatabaseFromDBDatabase", "MOXASetDBIsConnected"});
}

}   // namespace

void PluginEntry()
{
    if (kTypeInteger != kStoredTypeInteger)
        return;
    if (!(MOXAGetMXVersion() >= kOldestHost) || !CanOfferEngine())
        return;
    MOXARegisterDBEngine(&kDatabaseEngine);
    MOXARegisterDBCursor(&kCursorDefinition);
    if (CanOfferClass())
        MOXARegisterClass(&kDatabaseClass);
    // Data sources are no use to a program when they can be made but not opened.
    const bool canOpen = CanOfferDataSource();
    if (canOpen && CanOfferInterfaces()) {
        MOXARegisterDataSourceInterface("#566", NewDataSource);
        MOXARegisterDataSourceInterface("#567", SelectDataSource);
    }
    if (canOpen)
        MOXARegisterDataSource(kDataSourceKind, OpenDataSource);
}

}   // namespace vela

__attribute__((visibility("default"))) void MOXAPluginMain(MOXAresolver resolver)
{
    vela::SetHostResolver(resolver);
    vela::MOXARegisterPluginVersion(MOXA_INTERFACE_VERSION);
    vela::PluginEntry();
}
