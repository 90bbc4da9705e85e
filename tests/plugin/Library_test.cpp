// What the built plug-in library is, seen from outside: its symbol table, what it needs, what it asks
// a host for, and what is left when it is unloaded.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "plugin/MOXAPlugin.h"

namespace {

const char* const kLibrary = VELADB_PLUGIN;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kIsSanitized = true;
#else
constexpr bool kIsSanitized = false;
#endif

std::vector<std::string> LinesOf(const std::string& command)
{
    std::vector<std::string> lines;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return lines;
    char line[1024];
    while (std::fgets(line, sizeof line, pipe))
        lines.emplace_back(line, std::string(line).find_last_not_of('\n') + 1);
    EXPECT_EQ(0, pclose(pipe)) << command;
    return lines;
}

// ---- a host of a few services, which notes what it is asked for and what it is given

struct {
    double version = 5.5;
    bool knowsNothing = false;
    std::set<std::string> withheld;
    std::map<std::string, int> asked;
    std::vector<std::string> given;
    const MOXAdbEngineDefinition* engine = nullptr;
    const MOXAdbCursorDefinition* cursor = nullptr;
} gHost;

template <class... Parameters>
void* Address(void (*service)(Parameters...))
{
    return reinterpret_cast<void*>(service);
}

void Note(const std::string& given)
{
    gHost.given.push_back(given);
}

double GetMXVersion()
{
    return gHost.version;
}

void NotForUse()
{
    ADD_FAILURE() << "a service was called that start-up has no use for";
}

void* Resolve(const char* name)
{
    gHost.asked[name]++;
    if (gHost.knowsNothing || gHost.withheld.count(name))
        return nullptr;
    const std::map<std::string, void*> services = {
        {"RegisterPluginVersion",
         Address(+[](int32_t version) { Note("version " + std::to_string(version)); })},
        {"MOXAGetMXVersion", reinterpret_cast<void*>(GetMXVersion)},
        {"PluginRegisterDBEngine", Address(+[](const MOXAdbEngineDefinition* engine) {
             Note("engine " + std::to_string(engine->version) + " " + engine->fieldTypeNames);
             gHost.engine = engine;
         })},
        {"PluginRegisterDBCursor", Address(+[](const MOXAdbCursorDefinition* cursor) {
             Note("cursor " + std::to_string(cursor->version));
             gHost.cursor = cursor;
         })},
        {"PluginRegisterClass", Address(+[](const MOXAclassDefinition* type) {
             Note("class " + std::to_string(type->version) + " " + type->name + " " +
                  type->superclass);
         })},
        {"RegisterDataSourceInterface",
         Address(+[](const char* number, MOXAdataSourceInterfaceProc) {
             Note(std::string("interface ") + number);
         })},
        {"RegisterDataSource", Address(+[](const char* kind, MOXAopenDataSourceProc) {
             Note(std::string("source ") + kind);
         })},
    };
    const auto service = services.find(name);
    return service == services.end() ? Address(NotForUse) : service->second;
}

// The library, loaded for the time of a test.
class Library {
public:
    Library() : mHandle(dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL))
    {
        EXPECT_NE(nullptr, mHandle) << dlerror();
    }
    ~Library()
    {
        if (mHandle)
            dlclose(mHandle);
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    void Start(MOXAresolver resolver)
    {
        ASSERT_NE(nullptr, mHandle);
        const auto entry = reinterpret_cast<MOXAPluginMainProc>(dlsym(mHandle, "MOXAPluginMain"));
        ASSERT_NE(nullptr, entry);
        entry(resolver);
    }

private:
    void* mHandle;
};

// What a host with these services is given at start-up.
std::vector<std::string> GivenAtStart(double version, const std::set<std::string>& withheld)
{
    gHost = {};
    gHost.version = version;
    gHost.withheld = withheld;
    Library library;
    library.Start(Resolve);
    return gHost.given;
}

const std::vector<std::string> kAll = {
    "version 7",      "engine 7 Integer,VarChar,Boolean,Date,Time,Timestamp,Double,Binary",
    "cursor 7",       "class 7 MOXADatabase Database",
    "interface #566", "interface #567",
    "source veladb",
};

std::vector<std::string> Without(std::vector<std::string> list, const std::set<size_t>& positions)
{
    for (auto position = positions.rbegin(); position != positions.rend(); ++position)
        list.erase(list.begin() + static_cast<std::ptrdiff_t>(*position));
    return list;
}

}   // namespace

TEST(PluginLibrary, ExportsTheEntryPointAndNothingElse)
{
    std::vector<std::string> names;
    for (const std::string& line :
         LinesOf(std::string("nm -D --defined-only --format=posix '") + kLibrary + "'"))
        names.push_back(line.substr(0, line.find(' ')));
    EXPECT_EQ(std::vector<std::string>{"MOXAPluginMain"}, names);
}

TEST(PluginLibrary, NeedsNothingButTheCLibrary)
{
    if (kIsSanitized)
        GTEST_SKIP() << "the sanitizers' own libraries are needed too";
    const std::set<std::string> cLibrary = {"libc.so.6", "libm.so.6", "ld-linux.so.2",
                                            "ld-linux-x86-64.so.2"};
    size_t count = 0;
    for (const std::string& line : LinesOf(std::string("readelf -d '") + kLibrary + "'")) {
        if (line.find("(NEEDED)") == std::string::npos)
            continue;
        const size_t start = line.find('[') + 1;
        const std::string name = line.substr(start, line.find(']') - start);
        EXPECT_TRUE(cLibrary.count(name)) << name;
        count++;
    }
    EXPECT_LT(0u, count);
}

// The host's programs show that unloading unloads, and keeps no memory.
TEST(PluginLibrary, LoadingAsksForNothing)
{
    gHost = {};
    {
        const Library library;
    }
    EXPECT_TRUE(gHost.asked.empty());
}

TEST(PluginLibrary, RegistersInOrderAndNoEngineWithAHostBefore55)
{
    EXPECT_EQ(kAll, GivenAtStart(5.5, {}));
    EXPECT_EQ(kAll, GivenAtStart(9.25, {}));
    for (const double version : {5.4, 0.0, -1.0, __builtin_nan("")})
        EXPECT_EQ(std::vector<std::string>{"version 7"}, GivenAtStart(version, {})) << version;
}

TEST(PluginLibrary, AResolverThatKnowsNothingIsAskedAndLeft)
{
    gHost = {};
    gHost.knowsNothing = true;
    Library library;
    library.Start(Resolve);
    library.Start(nullptr);
    EXPECT_TRUE(gHost.given.empty());
    EXPECT_EQ(1, gHost.asked["RegisterPluginVersion"]);
    EXPECT_EQ(1, gHost.asked["MOXAGetMXVersion"]);
}

TEST(PluginLibrary, AServiceIsAskedForOnceWhileFoundAndAgainWhileMissing)
{
    gHost = {};
    gHost.withheld = {"PluginRegisterClass"};
    Library library;
    library.Start(Resolve);
    library.Start(Resolve);
    EXPECT_EQ(1, gHost.asked["MOXAGetMXVersion"]);
    EXPECT_EQ(1, gHost.asked["PluginRegisterDBEngine"]);
    EXPECT_EQ(2, gHost.asked["PluginRegisterClass"]);
}

TEST(PluginLibrary, NothingIsRegisteredThatCannotWork)
{
    const struct {
        std::vector<const char*> withheld;
        std::set<size_t> missing;   // positions in kAll of what is then left out
    } cases[] = {
        {{"RegisterPluginVersion"}, {0}},
        {{"MOXAGetMXVersion", "PluginRegisterDBEngine", "PluginRegisterDBCursor", "MOXABuildString",
          "StringGetCString", "StringGetLength", "MOXAUnlockString", "MOXAdbCursorFromDBCursor"},
         {1, 2, 3, 4, 5, 6}},
        {{"PluginRegisterClass", "MOXAGetClassData", "MOXAConstructDBDatabase",
          "MOXAGetDBFromMOXAdbDatabase"},
         {3}},
        {{"MOXASetDBIsConnected", "MOXAGetPropValueString", "MOXAUnlockObject"}, {3, 4, 5, 6}},
        {{"RegisterDataSource", "MOXAdbDatabaseFromDBDatabase", "MOXALoadGlobalMethod",
          "MOXALoadObjectMethod"},
         {4, 5, 6}},
        {{"RegisterDataSourceInterface", "DesignAddDataSource"}, {4, 5}},
        {{"MOXALockString", "MOXASetStringEncoding", "MOXAGetPropValueInt"}, {}},
    };
    for (const auto& c : cases)
        for (const char* service : c.withheld)
            EXPECT_EQ(Without(kAll, c.missing), GivenAtStart(5.5, {service})) << service;
}

TEST(PluginLibrary, ANullDatabaseOrCursorGivesNothing)
{
    gHost = {};
    Library library;
    library.Start(Resolve);
    ASSERT_NE(nullptr, gHost.engine);
    ASSERT_NE(nullptr, gHost.cursor);

    const MOXAdbEngineDefinition& engine = *gHost.engine;
    engine.closeDatabase(nullptr);
    engine.directSQLExecute(nullptr, nullptr);
    engine.releaseDatabase(nullptr);
    EXPECT_EQ(nullptr, engine.tableSchema(nullptr));
    EXPECT_EQ(nullptr, engine.fieldSchema(nullptr, nullptr));
    EXPECT_EQ(nullptr, engine.directSQLSelect(nullptr, nullptr));
    EXPECT_EQ(nullptr, engine.indexSchema(nullptr, nullptr));
    EXPECT_EQ(0, engine.lastErrorCode(nullptr));
    EXPECT_EQ(nullptr, engine.lastErrorString(nullptr));

    const MOXAdbCursorDefinition& cursor = *gHost.cursor;
    cursor.closeCursor(nullptr);
    EXPECT_EQ(0, cursor.columnCount(nullptr));
    EXPECT_EQ(nullptr, cursor.columnName(nullptr, 0));
    EXPECT_EQ(kMOXATypeNone, cursor.columnType(nullptr, 0));
    MOXAdbValue value;
    value.isNull = 0;
    value.type = kMOXATypeText;
    EXPECT_FALSE(cursor.columnValue(nullptr, 0, nullptr));
    EXPECT_FALSE(cursor.columnValue(nullptr, 0, &value));
    EXPECT_EQ(1, value.isNull);
    EXPECT_EQ(kMOXATypeNone, value.type);
    EXPECT_EQ(0, cursor.rowCount(nullptr));
    EXPECT_FALSE(cursor.firstRow(nullptr));
    EXPECT_FALSE(cursor.nextRow(nullptr));
    EXPECT_FALSE(cursor.previousRow(nullptr));
    EXPECT_FALSE(cursor.lastRow(nullptr));
    EXPECT_FALSE(cursor.moveToRow(nullptr, 3));
    EXPECT_EQ(-1, cursor.currentRow(nullptr));
    EXPECT_TRUE(cursor.atEnd(nullptr));
    EXPECT_FALSE(cursor.deleteRow(nullptr));
    EXPECT_FALSE(cursor.updateRow(nullptr, nullptr, 1));
}
