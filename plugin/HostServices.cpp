#include "plugin/HostServices.h"

#include <cstring>

namespace vela {

namespace {

constinit MOXAresolver gResolver = nullptr;

// One service: the name that the host knows it by, and its address while that is known.
struct Service {
    const char* name;
    void* address = nullptr;

    // The address, asked for when it is not known; null when the host has none.
    void* Find()
    {
        if (!address)
            address = HCallResolver(name);
        return address;
    }
    // Calls it; a missing one gives 0 or nothing.
    template <class Result, class... Parameters, class... Arguments>
    Result Call(Result (*)(Parameters...), Arguments... arguments)
    {
        using Proc = Result (*)(Parameters...);
        const Proc proc = reinterpret_cast<Proc>(Find());
        return proc ? proc(arguments...) : Result();
    }
};

enum ServiceNumber {
    kRegisterPluginVersion,
    kGetMXVersion,
    kRegisterDBEngine,
    kRegisterDBCursor,
    kRegisterClass,
    kRegisterDataSourceInterface,
    kRegisterDataSource,
    kDesignAddDataSource,
    kBuildString,
    kSetStringEncoding,
    kLockString,
    kUnlockString,
    kCString,
    kStringLength,
    kUnlockObject,
    kGetClassData,
    kGetPropValueInt,
    kGetPropValueString,
    kGetPropValueDouble,
    kGetPropValueObject,
    kGetPropValueBool,
    kConstructDBDatabase,
    kGetDBFromDatabase,
    kDatabaseFromDB,
    kSetDBIsConnected,
    kCursorFromDBCursor,
    kLoadGlobalMethod,
    kLoadObjectMethod,
};

// In the order of the numbers. Some names differ from those of the functions; hosts know these.
constinit Service gServices[] = {
    {"RegisterPluginVersion"},
    {"MOXAGetMXVersion"},
    {"PluginRegisterDBEngine"},
    {"PluginRegisterDBCursor"},
    {"PluginRegisterClass"},
    {"RegisterDataSourceInterface"},
    {"RegisterDataSource"},
    {"DesignAddDataSource"},
    {"MOXABuildString"},
    {"MOXASetStringEncoding"},
    {"MOXALockString"},
    {"MOXAUnlockString"},
    {"StringGetCString"},
    {"StringGetLength"},
    {"MOXAUnlockObject"},
    {"MOXAGetClassData"},
    {"MOXAGetPropValueInt"},
    {"MOXAGetPropValueString"},
    {"MOXAGetPropValueDouble"},
    {"MOXAGetPropValueObject"},
    {"MOXAGetPropValueBool"},
    {"MOXAConstructDBDatabase"},
    {"MOXAGetDBFromMOXAdbDatabase"},
    {"MOXAdbDatabaseFromDBDatabase"},
    {"MOXASetDBIsConnected"},
    {"MOXAdbCursorFromDBCursor"},
    {"MOXALoadGlobalMethod"},
    {"MOXALoadObjectMethod"},
};
static_assert(sizeof gServices / sizeof gServices[0] == kLoadObjectMethod + 1);

bool HasService(const char* name)
{
    for (Service& service : gServices) {
        if (std::strcmp(service.name, name) == 0)
            return service.Find() != nullptr;
    }
    return false;
}

// Calls the service of that number, a function of type Proc.
template <class Proc, class... Arguments>
auto Call(ServiceNumber number, Arguments... arguments)
{
    return gServices[number].Call(static_cast<Proc>(nullptr), arguments...);
}

}   // namespace

void SetHostResolver(MOXAresolver resolver)
{
    if (resolver != gResolver) {
        for (Service& service : gServices)
            service.address = nullptr;
    }
    gResolver = resolver;
}

void* HCallResolver(const char* name)
{
    return gResolver ? gResolver(name) : nullptr;
}

bool HostHasServices(std::initializer_list<const char*> names)
{
    for (const char* name : names) {
        if (!HasService(name))
            return false;
    }
    return true;
}

void MOXARegisterPluginVersion(int32_t version)
{
    Call<MOXARegisterPluginVersionProc>(kRegisterPluginVersion, version);
}

double MOXAGetMXVersion()
{
    return Call<MOXAGetMXVersionProc>(kGetMXVersion);
}

void MOXARegisterDBEngine(const MOXAdbEngineDefinition* definition)
{
    Call<MOXARegisterDBEngineProc>(kRegisterDBEngine, definition);
}

void MOXARegisterDBCursor(const MOXAdbCursorDefinition* definition)
{
    Call<MOXARegisterDBCursorProc>(kRegisterDBCursor, definition);
}

void MOXARegisterClass(const MOXAclassDefinition* definition)
{
    Call<MOXARegisterClassProc>(kRegisterClass, definition);
}

void MOXARegisterDataSourceInterface(const char* name, MOXAdataSourceInterfaceProc run)
{
    Call<MOXARegisterDataSourceInterfaceProc>(kRegisterDataSourceInterface, name, run);
}

void MOXARegisterDataSource(const char* kind, MOXAopenDataSourceProc open)
{
    Call<MOXARegisterDataSourceProc>(kRegisterDataSource, kind, open);
}

void MOXADesignAddDataSource(const char* name, const char* kind, const char* data, int32_t length)
{
    Call<MOXADesignAddDataSourceProc>(kDesignAddDataSource, name, kind, data, length);
}

MOXAstring MOXABuildString(const char* bytes, int32_t length)
{
    return Call<MOXABuildStringProc>(kBuildString, bytes, length);
}

void MOXASetStringEncoding(MOXAstring text, uint32_t encoding)
{
    Call<MOXASetStringEncodingProc>(kSetStringEncoding, text, encoding);
}

void MOXALockString(MOXAstring text)
{
    Call<MOXALockStringProc>(kLockString, text);
}

void MOXAUnlockString(MOXAstring text)
{
    Call<MOXAUnlockStringProc>(kUnlockString, text);
}

const char* MOXACString(MOXAstring text)
{
    return Call<MOXACStringProc>(kCString, text);
}

int32_t MOXAStringLength(MOXAstring text)
{
    return Call<MOXAStringLengthProc>(kStringLength, text);
}

void MOXAUnlockObject(MOXAobject object)
{
    Call<MOXAUnlockObjectProc>(kUnlockObject, object);
}

void* MOXAGetClassData(const MOXAclassDefinition* definition, MOXAobject object)
{
    return Call<MOXAGetClassDataProc>(kGetClassData, definition, object);
}

bool MOXAGetPropValue(MOXAobject object, const char* name, int32_t* value)
{
    return Call<MOXAGetPropValueIntProc>(kGetPropValueInt, object, name, value) != 0;
}

bool MOXAGetPropValue(MOXAobject object, const char* name, MOXAstring* value)
{
    return Call<MOXAGetPropValueStringProc>(kGetPropValueString, object, name, value) != 0;
}

bool MOXAGetPropValue(MOXAobject object, const char* name, double* value)
{
    return Call<MOXAGetPropValueDoubleProc>(kGetPropValueDouble, object, name, value) != 0;
}

bool MOXAGetPropValue(MOXAobject object, const char* name, MOXAobject* value)
{
    return Call<MOXAGetPropValueObjectProc>(kGetPropValueObject, object, name, value) != 0;
}

bool MOXAGetPropValue(MOXAobject object, const char* name, bool* value)
{
    MOXAbool answer = 0;
    if (!Call<MOXAGetPropValueBoolProc>(kGetPropValueBool, object, name, &answer))
        return false;
    *value = answer != 0;
    return true;
}

void MOXAConstructDBDatabase(MOXAdbDatabase object, dbDatabase* database,
                             const MOXAdbEngineDefinition* engine)
{
    Call<MOXAConstructDBDatabaseProc>(kConstructDBDatabase, object, database, engine);
}

dbDatabase* MOXAGetDBFromMOXAdbDatabase(MOXAdbDatabase object)
{
    return Call<MOXAGetDBFromMOXAdbDatabaseProc>(kGetDBFromDatabase, object);
}

MOXAdbDatabase MOXAdbDatabaseFromDBDatabase(dbDatabase* database,
                                            const MOXAdbEngineDefinition* engine)
{
    return Call<MOXAdbDatabaseFromDBDatabaseProc>(kDatabaseFromDB, database, engine);
}

void MOXASetDBIsConnected(MOXAdbDatabase object, bool isConnected)
{
    const MOXAbool flag = isConnected ? 1 : 0;
    Call<MOXASetDBIsConnectedProc>(kSetDBIsConnected, object, flag);
}

MOXAdbCursor MOXAdbCursorFromDBCursor(dbCursor* cursor, const MOXAdbCursorDefinition* definition)
{
    return Call<MOXAdbCursorFromDBCursorProc>(kCursorFromDBCursor, cursor, definition);
}

MOXAproc MOXALoadGlobalMethod(const char* declaration)
{
    return Call<MOXALoadGlobalMethodProc>(kLoadGlobalMethod, declaration);
}

MOXAproc MOXALoadObjectMethod(MOXAobject object, const char* declaration)
{
    return Call<MOXALoadObjectMethodProc>(kLoadObjectMethod, object, declaration);
}

}   // namespace vela

const char* MOXAstringStruct::CString() const
{
    const char* bytes = vela::MOXACString(const_cast<MOXAstring>(this));
    return bytes ? bytes : "";
}

int32_t MOXAstringStruct::Length() const
{
    const int32_t length = vela::MOXAStringLength(const_cast<MOXAstring>(this));
    return length > 0 ? length : 0;
}
