#include "plugin/host/Services.h"

#include <cstring>
#include <memory>
#include <string_view>

#include "plugin/host/Host.h"
#include "plugin/host/LanguageFunctions.h"

namespace vela::host {

namespace {

Host& TheHost()
{
    return Host::Current();
}

// ---- start and registration

void RegisterPluginVersion(int32_t version)
{
    TheHost().registrations.SetInterfaceVersion(version);
}

double GetMXVersion()
{
    return TheHost().version;
}

void RegisterDBEngine(const MOXAdbEngineDefinition* definition)
{
    TheHost().registrations.AddEngine(definition);
}

void RegisterDBCursor(const MOXAdbCursorDefinition* definition)
{
    TheHost().registrations.AddCursor(definition);
}

void RegisterClass(const MOXAclassDefinition* definition)
{
    TheHost().registrations.AddClass(definition);
}

void RegisterDataSourceInterface(const char* name, MOXAdataSourceInterfaceProc run)
{
    TheHost().registrations.AddInterface(name, run);
}

void RegisterDataSource(const char* kind, MOXAopenDataSourceProc open)
{
    TheHost().registrations.AddSourceKind(kind, open);
}

void DesignAddDataSource(const char* name, const char* kind, const char* data, int32_t length)
{
    TheHost().dataSources[name] = {kind, std::string(data, static_cast<size_t>(length))};
}

// ---- strings

// New strings come in an encoding that no program of ours uses, so that one whose encoding was
// forgotten shows.
constexpr uint32_t kEncodingOfNewStrings = kMOXAEncodingMacRomanian;

MOXAstring BuildString(const char* bytes, int32_t length)
{
    if (length < 0 || (bytes == nullptr && length > 0)) {
        TheHost().complaints.Add("MOXABuildString of a length that can't be");
        return nullptr;
    }
    return TheHost().strings.Make(
        length == 0 ? std::string() : std::string(bytes, static_cast<size_t>(length)),
        kEncodingOfNewStrings);
}

void SetStringEncoding(MOXAstring text, uint32_t encoding)
{
    if (HostString* found = TheHost().strings.Find(text, "MOXASetStringEncoding of"))
        found->encoding = encoding;
}

void LockString(MOXAstring text)
{
    TheHost().strings.AddReference(text);
}

void UnlockString(MOXAstring text)
{
    TheHost().strings.Release(text);
}

const char* StringGetCString(MOXAstring text)
{
    const HostString* found = TheHost().strings.Find(text, "StringGetCString of");
    return found == nullptr ? "" : found->bytes.c_str();
}

int32_t StringGetLength(MOXAstring text)
{
    const HostString* found = TheHost().strings.Find(text, "StringGetLength of");
    return found == nullptr ? 0 : static_cast<int32_t>(found->bytes.size());
}

// ---- objects

void UnlockObject(MOXAobject object)
{
    ObjectStore& objects = TheHost().objects;
    objects.Release(objects.Find<HostObject>(object, "MOXAUnlockObject of"));
}

void* GetClassData(const MOXAclassDefinition* definition, MOXAobject object)
{
    auto* found = TheHost().objects.Find<DatabaseObject>(object, "MOXAGetClassData of");
    return found != nullptr && found->ClassDefinition() == definition ? found->InstanceData()
                                                                      : nullptr;
}

// No object of this host has properties of these types.
MOXAbool GetPropValueInt(MOXAobject, const char*, int32_t*)
{
    return 0;
}

MOXAbool GetPropValueDouble(MOXAobject, const char*, double*)
{
    return 0;
}

MOXAbool GetPropValueBool(MOXAobject, const char*, MOXAbool*)
{
    return 0;
}

MOXAbool GetPropValueString(MOXAobject object, const char* name, MOXAstring* value)
{
    const auto* item = TheHost().objects.Find<FolderItem>(object, "MOXAGetPropValueString of");
    if (item == nullptr || name == nullptr)
        return 0;
    const bool isPath = std::strcmp(name, "AbsolutePath") == 0;
    if (!isPath && std::strcmp(name, "Name") != 0)
        return 0;
    *value = TheHost().strings.Make(isPath ? item->Path() : item->Name(), kMOXAEncodingUTF8);
    return 1;
}

MOXAbool GetPropValueObject(MOXAobject object, const char* name, MOXAobject* value)
{
    ObjectStore& objects = TheHost().objects;
    auto* found = objects.Find<DatabaseObject>(object, "MOXAGetPropValueObject of");
    if (found == nullptr || found->ClassDefinition() == nullptr || name == nullptr)
        return 0;
    const MOXAclassDefinition& definition = *found->ClassDefinition();
    for (int32_t i = 0; i < definition.propertyCount; i++) {
        if (std::strcmp(definition.properties[i].name, name) != 0)
            continue;
        *value = *found->PropertyPlace(definition.properties[i]);
        if (*value != nullptr)
            objects.AddReference(HostObject::FromReference(*value));
        return 1;
    }
    return 0;
}

// ---- databases and cursors

void ConstructDBDatabase(MOXAdbDatabase object, dbDatabase* database,
                         const MOXAdbEngineDefinition* engine)
{
    auto* found = TheHost().objects.Find<DatabaseObject>(object, "MOXAConstructDBDatabase of");
    if (found != nullptr)
        found->SetUp(database, engine);
}

dbDatabase* GetDBFromMOXAdbDatabase(MOXAdbDatabase object)
{
    const auto* found =
        TheHost().objects.Find<DatabaseObject>(object, "MOXAGetDBFromMOXAdbDatabase of");
    return found == nullptr ? nullptr : found->Database();
}

MOXAdbDatabase DatabaseFromDBDatabase(dbDatabase* database, const MOXAdbEngineDefinition* engine)
{
    if (database == nullptr || engine == nullptr)
        return nullptr;
    return TheHost().objects.Add(std::make_unique<DatabaseObject>(database, engine))->Reference();
}

void SetDBIsConnected(MOXAdbDatabase object, MOXAbool isConnected)
{
    auto* found = TheHost().objects.Find<DatabaseObject>(object, "MOXASetDBIsConnected of");
    if (found != nullptr)
        found->SetIsConnected(isConnected != 0);
}

MOXAdbCursor CursorFromDBCursor(dbCursor* cursor, const MOXAdbCursorDefinition* definition)
{
    if (cursor == nullptr || definition == nullptr)
        return nullptr;
    return TheHost().objects.Add(std::make_unique<CursorObject>(cursor, definition))->Reference();
}

// ---- the table of services

// What the plug-in can't register without a service, as a set of these bits.
enum Need : unsigned {
    kHelpful = 0,
    kStart = 1,
    kEngine = 2,   // and all below
    kClass = 4,
    kDesign = 8,
    kSource = 16,
};

struct Service {
    const char* name;
    void* address;
    unsigned needs;
};

template <typename Result, typename... Arguments>
void* AsAddress(Result (*service)(Arguments...))
{
    return reinterpret_cast<void*>(service);
}

// A service is assigned to the type of its declaration before it becomes an address, so that the
// compiler compares the two.
template <typename Declared>
void* Checked(Declared service)
{
    return AsAddress(service);
}

const std::vector<Service>& Services()
{
    static const std::vector<Service> services = {
        {"RegisterPluginVersion", Checked<MOXARegisterPluginVersionProc>(RegisterPluginVersion),
         kHelpful},
        {"MOXAGetMXVersion", Checked<MOXAGetMXVersionProc>(GetMXVersion), kStart},
        {"PluginRegisterDBEngine", Checked<MOXARegisterDBEngineProc>(RegisterDBEngine), kEngine},
        {"PluginRegisterDBCursor", Checked<MOXARegisterDBCursorProc>(RegisterDBCursor), kEngine},
        {"PluginRegisterClass", Checked<MOXARegisterClassProc>(RegisterClass), kClass},
        {"RegisterDataSourceInterface",
         Checked<MOXARegisterDataSourceInterfaceProc>(RegisterDataSourceInterface), kDesign},
        {"RegisterDataSource", Checked<MOXARegisterDataSourceProc>(RegisterDataSource), kSource},
        {"DesignAddDataSource", Checked<MOXADesignAddDataSourceProc>(DesignAddDataSource), kDesign},
        {"MOXABuildString", Checked<MOXABuildStringProc>(BuildString), kEngine},
        {"MOXASetStringEncoding", Checked<MOXASetStringEncodingProc>(SetStringEncoding), kHelpful},
        {"MOXALockString", Checked<MOXALockStringProc>(LockString), kHelpful},
        {"MOXAUnlockString", Checked<MOXAUnlockStringProc>(UnlockString), kEngine},
        {"StringGetCString", Checked<MOXACStringProc>(StringGetCString), kEngine},
        {"StringGetLength", Checked<MOXAStringLengthProc>(StringGetLength), kEngine},
        {"MOXAUnlockObject", Checked<MOXAUnlockObjectProc>(UnlockObject), kClass | kSource},
        {"MOXAGetClassData", Checked<MOXAGetClassDataProc>(GetClassData), kClass},
        {"MOXAGetPropValueInt", Checked<MOXAGetPropValueIntProc>(GetPropValueInt), kHelpful},
        {"MOXAGetPropValueString", Checked<MOXAGetPropValueStringProc>(GetPropValueString),
         kClass | kSource},
        {"MOXAGetPropValueDouble", Checked<MOXAGetPropValueDoubleProc>(GetPropValueDouble),
         kHelpful},
        {"MOXAGetPropValueObject", Checked<MOXAGetPropValueObjectProc>(GetPropValueObject),
         kHelpful},
        {"MOXAGetPropValueBool", Checked<MOXAGetPropValueBoolProc>(GetPropValueBool), kHelpful},
        {"MOXAConstructDBDatabase", Checked<MOXAConstructDBDatabaseProc>(ConstructDBDatabase),
         kClass},
        {"MOXAGetDBFromMOXAdbDatabase",
         Checked<MOXAGetDBFromMOXAdbDatabaseProc>(GetDBFromMOXAdbDatabase), kClass},
        {"MOXAdbDatabaseFromDBDatabase",
         Checked<MOXAdbDatabaseFromDBDatabaseProc>(DatabaseFromDBDatabase), kSource},
        {"MOXASetDBIsConnected", Checked<MOXASetDBIsConnectedProc>(SetDBIsConnected),
         kClass | kSource},
        {"MOXAdbCursorFromDBCursor", Checked<MOXAdbCursorFromDBCursorProc>(CursorFromDBCursor),
         kEngine},
        {"MOXALoadGlobalMethod", Checked<MOXALoadGlobalMethodProc>(FindGlobalFunction), kSource},
        {"MOXALoadObjectMethod", Checked<MOXALoadObjectMethodProc>(FindObjectFunction), kSource},
    };
    return services;
}

void* Resolve(const char* name)
{
    Host& host = TheHost();
    if (name == nullptr || !host.Offers(name))
        return nullptr;
    for (const Service& service : Services()) {
        if (std::strcmp(name, service.name) != 0)
            continue;
        if (!host.resolved.insert(name).second)
            host.complaints.Add(std::string("asking again for the service ") + name);
        return service.address;
    }
    host.complaints.Add(std::string("asking for a service that this host doesn't know: ") + name);
    return nullptr;
}

// Whether every service is offered that something with these needs is not registered without.
bool CanWork(const Host& host, unsigned needs)
{
    for (const Service& service : Services())
        if ((service.needs & needs) != 0 && !host.Offers(service.name))
            return false;
    return true;
}

void CheckRegistration(Host& host, const std::string& name, unsigned needs)
{
    constexpr double kOldestVersion = 5.5;
    const bool canWork = host.version >= kOldestVersion && CanWork(host, kStart | kEngine | needs);
    if (canWork != host.registrations.Has(name))
        host.complaints.Add(name + (canWork ? " is not registered, although it can work"
                                            : " is registered, although it can't work"));
}

}   // namespace

MOXAresolver ServiceResolver()
{
    return Resolve;
}

std::vector<std::string> ServiceNames()
{
    std::vector<std::string> names;
    for (const Service& service : Services())
        names.emplace_back(service.name);
    return names;
}

void CheckRegistrations(Host& host)
{
    CheckRegistration(host, "engine", kEngine);
    CheckRegistration(host, "cursor", kEngine);
    CheckRegistration(host, "MOXADatabase", kClass);
    CheckRegistration(host, "#566", kDesign | kSource);
    CheckRegistration(host, "#567", kDesign | kSource);
    CheckRegistration(host, "veladb", kSource);
}

}   // namespace vela::host
