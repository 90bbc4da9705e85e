// A plug-in that does on purpose what a plug-in may not do: a statement names the fault. The tests
// of the stand-in host see that each is found.

#include <dlfcn.h>

#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "plugin/MOXAPlugin.h"

namespace {

MOXAresolver gResolver = nullptr;
MOXAobject gObject = nullptr;   // the last one that was constructed

// Asks once for each service, as is right.
template <typename Proc>
Proc Service(const std::string& name)
{
    static std::map<std::string, void*> known;
    if (known.find(name) == known.end())
        known[name] = gResolver(name.c_str());
    return reinterpret_cast<Proc>(known[name]);
}

MOXAstring Build()
{
    return Service<MOXABuildStringProc>("MOXABuildString")("some text", 9);
}

void Unlock(MOXAstring text)
{
    Service<MOXAUnlockStringProc>("MOXAUnlockString")(text);
}

std::string BytesOf(MOXAstring text)
{
    return Service<MOXACStringProc>("StringGetCString")(text);
}

MOXAobject DatabaseFile()
{
    MOXAobject item = nullptr;
    Service<MOXAGetPropValueObjectProc>("MOXAGetPropValueObject")(gObject, "DatabaseFile", &item);
    return item;
}

void UnlockObject(MOXAobject object)
{
    Service<MOXAUnlockObjectProc>("MOXAUnlockObject")(object);
}

void UseAfterTheEnd()
{
    const MOXAstring text = Build();
    Unlock(text);
    Service<MOXAStringLengthProc>("StringGetLength")(text);
}

void UnlockObjectTwice()
{
    const MOXAobject item = DatabaseFile();
    UnlockObject(item);
    UnlockObject(item);   // the object's own reference
}

// More with each call, though it is all given back at the end.
void KeepMemory()
{
    static std::vector<std::string> kept;
    kept.emplace_back(100, 'x');
}

void StayInMemory()
{
    Dl_info info;
    if (dladdr(reinterpret_cast<void*>(&gResolver), &info) != 0)
        static_cast<void>(dlopen(info.dli_fname, RTLD_NOW));
}

extern const MOXAdbEngineDefinition kEngine;
extern const MOXAdbCursorDefinition kCursor;
extern const MOXAclassDefinition kClass;

// ---- the engine

void Execute(dbDatabase*, MOXAstring sql)
{
    const std::string fault = BytesOf(sql);
    if (fault == "leak a string")
        static_cast<void>(Build());
    else if (fault == "leak a reference")
        Service<MOXALockStringProc>("MOXALockString")(sql);
    else if (fault == "unlock the argument")
        Unlock(sql);
    else if (fault == "use after the end")
        UseAfterTheEnd();
    else if (fault == "leak an object")
        static_cast<void>(DatabaseFile());
    else if (fault == "unlock an object twice")
        UnlockObjectTwice();
    else if (fault == "keep memory")
        KeepMemory();
    else if (fault == "ask for nonsense")
        gResolver("MOXANonsense");
    else if (fault == "ask again")
        gResolver("StringGetCString");
    else if (fault == "register again")
        Service<MOXARegisterDBEngineProc>("PluginRegisterDBEngine")(&kEngine);
    else if (fault == "stay in memory")
        StayInMemory();
    else if (fault == "crash")
        std::abort();
}

MOXAdbCursor Select(dbDatabase*, MOXAstring)
{
    static char cursor;
    return Service<MOXAdbCursorFromDBCursorProc>("MOXAdbCursorFromDBCursor")(
        reinterpret_cast<dbCursor*>(&cursor), &kCursor);
}

// A string that the host has been given before, and gave back.
MOXAstring LastErrorString(dbDatabase*)
{
    static const MOXAstring kText = Build();
    return kText;
}

void Close(dbDatabase*) {}
MOXAdbCursor TableSchema(dbDatabase*)
{
    return nullptr;
}
MOXAdbCursor FieldSchema(dbDatabase*, MOXAstring)
{
    return nullptr;
}
int32_t LastErrorCode(dbDatabase*)
{
    return 0;
}

const MOXAdbEngineDefinition kEngine = {
    MOXA_INTERFACE_VERSION,
    0,
    "Integer,VarChar,Boolean,Date,Time,Timestamp,Double,Binary",
    Close,
    TableSchema,
    FieldSchema,
    Select,
    Execute,
    FieldSchema,
    LastErrorCode,
    LastErrorString,
    Close,
};

// ---- a cursor that doesn't know where it stands, with a column for each fault

int32_t ColumnCount(dbCursor*)
{
    return 4;
}

MOXAstring ColumnName(dbCursor*, int32_t)
{
    return nullptr;
}

int32_t ColumnType(dbCursor*, int32_t)
{
    return kMOXATypeBoolean;
}

MOXAbool ColumnValue(dbCursor*, int32_t column, MOXAdbValue* value)
{
    *value = {};
    value->type = kMOXATypeBoolean;
    value->value.integer = 2;   // column 0: neither true nor false
    if (column == 1) {          // a time with a day
        value->type = kMOXATypeTime;
        value->value.moment = {0, 0, 7, 12, 0, 0};
    }
    if (column == 2)   // no type
        value->type = 99;
    return column != 3;   // false, and yet a value
}

int32_t RowCount(dbCursor*)
{
    return 3;
}
MOXAbool Move(dbCursor*)
{
    return 1;
}
MOXAbool MoveTo(dbCursor*, int32_t)
{
    return 1;
}
int32_t CurrentRow(dbCursor*)
{
    return 3;
}
MOXAbool Update(dbCursor*, const MOXAdbChange*, int32_t)
{
    return 1;
}

const MOXAdbCursorDefinition kCursor = {
    MOXA_INTERFACE_VERSION,
    0,
    [](dbCursor*) {},
    ColumnCount,
    ColumnName,
    ColumnType,
    ColumnValue,
    RowCount,
    Move,
    Move,
    Move,
    Move,
    MoveTo,
    CurrentRow,
    Move,
    Move,
    Update,
};

// ---- the class and the data sources

void Construct(MOXAobject object)
{
    gObject = object;
    Service<MOXAConstructDBDatabaseProc>("MOXAConstructDBDatabase")(object, nullptr, &kEngine);
}

void Destruct(MOXAobject object)
{
    auto* item = static_cast<MOXAobject*>(
        Service<MOXAGetClassDataProc>("MOXAGetClassData")(&kClass, object));
    UnlockObject(*item);
}

const MOXApropertyDefinition kProperties[] = {
    {"DatabaseFile", "FolderItem", 0, 0, nullptr, nullptr}};

const MOXAclassDefinition kClass = {MOXA_INTERFACE_VERSION,
                                    sizeof(MOXAobject),
                                    "MOXADatabase",
                                    "Database",
                                    Construct,
                                    Destruct,
                                    kProperties,
                                    nullptr,
                                    1,
                                    0};

MOXAbool RunInterface(MOXAstring*)
{
    return 0;
}

MOXAdbDatabase Open(const char*, int32_t, MOXAstring*)
{
    return nullptr;
}

}   // namespace

// Registers everything, whatever is missing.
void MOXAPluginMain(MOXAresolver resolver)
{
    gResolver = resolver;
    const auto registerEngine = Service<MOXARegisterDBEngineProc>("PluginRegisterDBEngine");
    const auto registerCursor = Service<MOXARegisterDBCursorProc>("PluginRegisterDBCursor");
    const auto registerClass = Service<MOXARegisterClassProc>("PluginRegisterClass");
    const auto registerInterface =
        Service<MOXARegisterDataSourceInterfaceProc>("RegisterDataSourceInterface");
    const auto registerSource = Service<MOXARegisterDataSourceProc>("RegisterDataSource");
    registerEngine(&kEngine);
    registerCursor(&kCursor);
    registerClass(&kClass);
    registerInterface("#566", RunInterface);
    registerInterface("#567", RunInterface);
    registerSource("veladb", Open);
}
