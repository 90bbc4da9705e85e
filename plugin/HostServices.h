#pragma once

#include <initializer_list>

#include "plugin/MOXAPlugin.h"

namespace vela {

// The services of the host, each behind a function of this side.
//
// A service's address is asked for by name when its function is first called, and kept. While it is
// missing, each call asks again, does nothing and gives 0, false or null. Arguments, results and
// who owns them: MOXAPlugin.h.

// Keeps the resolver for all services. Another one than before makes every kept address void. Null
// stands for a host without services.
void SetHostResolver(MOXAresolver resolver);
// The resolver's answer; nothing is kept.
[[nodiscard]] void* HCallResolver(const char* name);
// Whether the host has all of these services, which must be among those below. What is found is
// kept.
[[nodiscard]] bool HostHasServices(std::initializer_list<const char*> names);

void MOXARegisterPluginVersion(int32_t version);
double MOXAGetMXVersion();

void MOXARegisterDBEngine(const MOXAdbEngineDefinition* definition);
void MOXARegisterDBCursor(const MOXAdbCursorDefinition* definition);
void MOXARegisterClass(const MOXAclassDefinition* definition);
void MOXARegisterDataSourceInterface(const char* name, MOXAdataSourceInterfaceProc run);
void MOXARegisterDataSource(const char* kind, MOXAopenDataSourceProc open);
void MOXADesignAddDataSource(const char* name, const char* kind, const char* data, int32_t length);

MOXAstring MOXABuildString(const char* bytes, int32_t length);
void MOXASetStringEncoding(MOXAstring text, uint32_t encoding);
void MOXALockString(MOXAstring text);
void MOXAUnlockString(MOXAstring text);
const char* MOXACString(MOXAstring text);
int32_t MOXAStringLength(MOXAstring text);

void MOXAUnlockObject(MOXAobject object);
void* MOXAGetClassData(const MOXAclassDefinition* definition, MOXAobject object);
// False also when the service is missing; *value is then unchanged.
bool MOXAGetPropValue(MOXAobject object, const char* name, int32_t* value);
bool MOXAGetPropValue(MOXAobject object, const char* name, MOXAstring* value);
bool MOXAGetPropValue(MOXAobject object, const char* name, double* value);
bool MOXAGetPropValue(MOXAobject object, const char* name, MOXAobject* value);
bool MOXAGetPropValue(MOXAobject object, const char* name, bool* value);

void MOXAConstructDBDatabase(MOXAdbDatabase object, dbDatabase* database,
                             const MOXAdbEngineDefinition* engine);
dbDatabase* MOXAGetDBFromMOXAdbDatabase(MOXAdbDatabase object);
MOXAdbDatabase MOXAdbDatabaseFromDBDatabase(dbDatabase* database,
                                            const MOXAdbEngineDefinition* engine);
void MOXASetDBIsConnected(MOXAdbDatabase object, bool isConnected);
MOXAdbCursor MOXAdbCursorFromDBCursor(dbCursor* cursor, const MOXAdbCursorDefinition* definition);

MOXAproc MOXALoadGlobalMethod(const char* declaration);
MOXAproc MOXALoadObjectMethod(MOXAobject object, const char* declaration);

}   // namespace vela
