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

extern const MOXAdbEngineDefinition kEngine;
extern const MOXAdbCursorDefinition kCursor;
extern const MOXAclassDefinition kClass;

// ---- the engine

const std::map<std::string, void (*)(MOXAstring)> kFaults = {
    {"leak a string", [](MOXAstring) { static_cast<void>(Build()); }},
    {"leak a reference",
     [](MOXAstring sql) { Service<MOXALockStringProc>("MOXALockString")(sql); }},
    {"unlock the argument", Unlock},
    {"use after the end",
     [](MOXAstring) {
         const MOXAstring text = Build();
         Unlock(text);
         Service<MOXAStringLengthProc>("StringGetLength")(text);
     }},
    {"leak an object", [](MOXAstring) { static_cast<void>(DatabaseFile()); }},
    {"unlock an object twice",
     [](MOXAstring) {
         const MOXAobject item = DatabaseFile();
         UnlockObject(item);
         UnlockObject(item);   // the object's own reference
     }},
    {"keep memory",   // more with each call, though it is all given back at the end
     [](MOXAstring) {
         static std::vector<std::string> kept;
         kept.emplace_back(100, 'x');
     }},
    {"ask for nonsense", [](MOXAstring) { gResolver("MOXANonsense"); }},
    {"ask again", [](MOXAstring) { gResolver("StringGetCString"); }},
    {"register again",
     [](MOXAstring) { Service<MOXARegisterDBEngineProc>("PluginRegisterDBEngine")(&kEngine); }},
    {"stay in memory",
     [](MOXAstring) {
         Dl_info info;
         if (dladdr(reinterpret_cast<void*>(&gResolver), &info) != 0)
             static_cast<void>(dlopen(info.dli_fname, RTLD_NOW));
     }},
    {"crash", [](MOXAstring) { std::abort(); }},
};

void Execute(dbDatabase*, MOXAstring sql)
{
    const auto fault = kFaults.find(BytesOf(sql));
    if (fault != kFaults.end())
        fault->second(sql);
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

MOXAdbCursor NoSchema(dbDatabase*, MOXAstring)
{
    return nullptr;
}

const MOXAdbEngineDefinition kEngine = {
    .version = MOXA_INTERFACE_VERSION,
    .reserved = 0,
    .fieldTypeNames = "Integer,VarChar,Boolean,Date,Time,Timestamp,Double,Binary",
    .closeDatabase = [](dbDatabase*) {},
    .tableSchema = [](dbDatabase*) -> MOXAdbCursor { return nullptr; },
    .fieldSchema = NoSchema,
    .directSQLSelect = Select,
    .directSQLExecute = Execute,
    .indexSchema = NoSchema,
    .lastErrorCode = [](dbDatabase*) -> int32_t { return 0; },
    .lastErrorString = LastErrorString,
    .releaseDatabase = [](dbDatabase*) {},
};

// ---- a cursor that doesn't know where it stands, with a column for each fault

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

MOXAbool Yes(dbCursor*)
{
    return 1;
}

const MOXAdbCursorDefinition kCursor = {
    .version = MOXA_INTERFACE_VERSION,
    .reserved = 0,
    .closeCursor = [](dbCursor*) {},
    .columnCount = [](dbCursor*) -> int32_t { return 4; },
    .columnName = [](dbCursor*, int32_t) -> MOXAstring { return nullptr; },
    .columnType = [](dbCursor*, int32_t) -> int32_t { return kMOXATypeBoolean; },
    .columnValue = ColumnValue,
    .rowCount = [](dbCursor*) -> int32_t { return 3; },
    .firstRow = Yes,
    .nextRow = Yes,
    .previousRow = Yes,
    .lastRow = Yes,
    .moveToRow = [](dbCursor*, int32_t) -> MOXAbool { return 1; },
    .currentRow = [](dbCursor*) -> int32_t { return 3; },
    .atEnd = Yes,
    .deleteRow = Yes,
    .updateRow = [](dbCursor*, const MOXAdbChange*, int32_t) -> MOXAbool { return 1; },
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
