// Every allocation made to fail in turn in what a host calls: the plug-in's functions, linked into this program.

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <string_view>

#include "plugin/Cursor.h"
#include "plugin/DatabaseClass.h"
#include "plugin/DatabaseEngine.h"
#include "tests/memory/FailingAllocations.h"
#include "tests/storage/TemporaryFolder.h"

// The device has no part in this.
extern "C" int fdatasync(int)
{
    return 0;
}

extern "C" int fsync(int)
{
    return 0;
}

namespace vela {

namespace {

using Mode = FailingAllocations::Mode;

// ---- a host of the fewest services; its own memory never runs out

struct HostText : MOXAstringStruct {
    size_t size;
    char bytes[256];
};

int gTexts = 0;

HostText* AsHostText(MOXAstring text)
{
    return static_cast<HostText*>(text);
}

MOXAstring BuildString(const char* bytes, int32_t length)
{
    auto* text = static_cast<HostText*>(std::calloc(1, sizeof(HostText)));
    text->size = static_cast<size_t>(length) < sizeof text->bytes ? static_cast<size_t>(length) : 0;
    std::memcpy(text->bytes, bytes, text->size);
    gTexts++;
    return text;
}

void ReleaseString(MOXAstring text)
{
    if (text == nullptr)
        return;
    std::free(AsHostText(text));
    gTexts--;
}

const char* BytesOf(MOXAstring text)
{
    return AsHostText(text)->bytes;
}

int32_t LengthOf(MOXAstring text)
{
    return static_cast<int32_t>(AsHostText(text)->size);
}

template <class Result, class... Parameters>
void* Address(Result (*service)(Parameters...))
{
    return reinterpret_cast<void*>(service);
}

void Register(const void*) {}

// The host's object around a cursor is here the cursor itself, an object of class "MOXADatabase" its instance data, a folder
// item the text of its path.
void* Resolve(const char* name)
{
    static const std::map<std::string_view, void*> services = {
        {"MOXAGetMXVersion", Address(+[] { return 5.5; })},
        {"PluginRegisterDBEngine", Address(Register)},
        {"PluginRegisterDBCursor", Address(Register)},
        {"PluginRegisterClass", Address(Register)},
        {"MOXABuildString", Address(BuildString)},
        {"MOXAUnlockString", Address(ReleaseString)},
        {"StringGetCString", Address(BytesOf)},
        {"StringGetLength", Address(LengthOf)},
        {"MOXAdbCursorFromDBCursor", Address(+[](dbCursor* cursor, const MOXAdbCursorDefinition*) {
             return reinterpret_cast<MOXAdbCursor>(cursor);
         })},
        {"MOXAGetClassData",
         Address(+[](const MOXAclassDefinition*, MOXAobject object) -> void* { return object; })},
        {"MOXAConstructDBDatabase",
         Address(+[](MOXAdbDatabase, dbDatabase*, const MOXAdbEngineDefinition*) {})},
        {"MOXAGetDBFromMOXAdbDatabase",
         Address(+[](MOXAdbDatabase object) { return reinterpret_cast<dbDatabase*>(object); })},
        {"MOXASetDBIsConnected", Address(+[](MOXAdbDatabase, MOXAbool) {})},
        {"MOXAGetPropValueString",
         Address(+[](MOXAobject object, const char*, MOXAstring* value) -> MOXAbool {
             const auto* path = reinterpret_cast<HostText*>(object);
             *value = BuildString(path->bytes, static_cast<int32_t>(path->size));
             return 1;
         })},
        {"MOXAUnlockObject", Address(+[](MOXAobject) {})},
    };
    const auto service = services.find(name);
    return service == services.end() ? nullptr : service->second;
}

// ---- a program

class OwnedText {
public:
    explicit OwnedText(const char* text)
        : mText(BuildString(text, static_cast<int32_t>(std::strlen(text))))
    {}
    explicit OwnedText(const std::string& text) : OwnedText(text.c_str()) {}
    ~OwnedText() { ReleaseString(mText); }
    OwnedText(const OwnedText&) = delete;
    OwnedText& operator=(const OwnedText&) = delete;
    MOXAstring Get() const { return mText; }

private:
    MOXAstring mText;
};

// An object of class "MOXADatabase" with a database in a folder of its own.
class DatabaseObject {
public:
    DatabaseObject() : mPath(folder.Path())
    {
        MOXAPluginMain(Resolve);
        Construct();
    }
    ~DatabaseObject() { Destruct(); }

    void Construct()
    {
        std::memset(mData, 0, sizeof mData);
        kDatabaseClass.constructor(Object());
        Handle()->databaseFile = reinterpret_cast<MOXAfolderItem>(mPath.Get());
    }
    void Destruct() { kDatabaseClass.destructor(Object()); }
    MOXAobject Object() { return reinterpret_cast<MOXAobject>(mData); }
    dbDatabase* Handle() { return reinterpret_cast<dbDatabase*>(mData); }
    template <class Proc>
    Proc Method(size_t number)
    {
        return reinterpret_cast<Proc>(kDatabaseClass.methods[number].function);
    }
    bool Connect() { return Method<MOXAbool (*)(MOXAobject)>(0)(Object()) != 0; }
    bool Create() { return Method<MOXAbool (*)(MOXAobject)>(1)(Object()) != 0; }

    bool Execute(MOXAstring sql)
    {
        kDatabaseEngine.directSQLExecute(Handle(), sql);
        return ErrorCode() == 0;
    }
    int32_t ErrorCode() { return kDatabaseEngine.lastErrorCode(Handle()); }
    std::string ErrorText()
    {
        const MOXAstring text = kDatabaseEngine.lastErrorString(Handle());
        const std::string copy = text == nullptr ? "" : std::string(BytesOf(text));
        ReleaseString(text);
        return copy;
    }
    dbCursor* Select(MOXAstring sql)
    {
        return reinterpret_cast<dbCursor*>(kDatabaseEngine.directSQLSelect(Handle(), sql));
    }
    // All rows of the table, as one text.
    std::string Rows()
    {
        const OwnedText sql("select name, qty from t");
        dbCursor* cursor = Select(sql.Get());
        std::string rows;
        for (bool more = kCursorDefinition.firstRow(cursor) != 0; more;
             more = kCursorDefinition.nextRow(cursor) != 0) {
            MOXAdbValue name;
            MOXAdbValue qty;
            kCursorDefinition.columnValue(cursor, 0, &name);
            kCursorDefinition.columnValue(cursor, 1, &qty);
            rows += std::string(BytesOf(name.value.text)) + " " +
                    std::to_string(qty.value.integer) + "\n";
            ReleaseString(name.value.text);
        }
        kCursorDefinition.closeCursor(cursor);
        return rows;
    }
    void Run(const std::string& sql)
    {
        const OwnedText text(sql);
        EXPECT_TRUE(Execute(text.Get())) << sql << ": " << ErrorText();
    }

    TemporaryFolder folder;

private:
    OwnedText mPath;
    alignas(dbDatabase) char mData[sizeof(dbDatabase)];
};

constexpr const char* kRows = "bolt 1\ncam of some length, more than a few 2\n";

void Fill(DatabaseObject& object)
{
    ASSERT_TRUE(object.Create()) << object.ErrorText();
    object.Run("CREATE TABLE t (name STRING, qty INTEGER)");
    object.Run("CREATE INDEX i ON t (name)");
    object.Run("INSERT INTO t VALUES ('bolt', 1)");
    object.Run("INSERT INTO t VALUES ('cam of some length, more than a few', 2)");
    object.Run("COMMIT");
}

void CheckStillGood(DatabaseObject& object, const std::string& rows)
{
    EXPECT_EQ(rows, object.Rows());
    object.Run("COMMIT");
    object.Destruct();
    object.Construct();
    ASSERT_TRUE(object.Connect()) << object.ErrorText();
    EXPECT_EQ(rows, object.Rows());
}

// Something that a host calls; whether it succeeded.
struct Call {
    const char* name;
    std::function<bool(DatabaseObject&, dbCursor*)> run;
    const char* rowsAfter;
};

// Made before allocations fail: they are the host's.
const OwnedText kInsert("INSERT INTO t VALUES ('nut', 3)");
const OwnedText kQuery("select name from t where qty > 0 order by name");
const OwnedText kCommit("COMMIT");
const OwnedText kTable("t");

// Whether there was a cursor, which is closed.
bool Closed(MOXAdbCursor cursor)
{
    kCursorDefinition.closeCursor(reinterpret_cast<dbCursor*>(cursor));
    return cursor != nullptr;
}

// Whether there was a text, which is given back.
bool Released(MOXAstring text)
{
    ReleaseString(text);
    return text != nullptr;
}

const Call kCalls[] = {
    {"execute", [](DatabaseObject& object, dbCursor*) { return object.Execute(kInsert.Get()); },
     "bolt 1\ncam of some length, more than a few 2\nnut 3\n"},
    {"select",
     [](DatabaseObject& object, dbCursor*) {
         return Closed(kDatabaseEngine.directSQLSelect(object.Handle(), kQuery.Get()));
     },
     kRows},
    {"table schema",
     [](DatabaseObject& object, dbCursor*) {
         return Closed(kDatabaseEngine.tableSchema(object.Handle()));
     },
     kRows},
    {"index schema",
     [](DatabaseObject& object, dbCursor*) {
         return Closed(kDatabaseEngine.indexSchema(object.Handle(), kTable.Get()));
     },
     kRows},
    {"column name",
     [](DatabaseObject&, dbCursor* cursor) {
         return Released(kCursorDefinition.columnName(cursor, 2));
     },
     kRows},
    {"column value",
     [](DatabaseObject&, dbCursor* cursor) {
         MOXAdbValue value;
         const bool told = kCursorDefinition.columnValue(cursor, 0, &value) != 0;
         return told && Released(value.value.text);
     },
     kRows},
    {"update row",
     [](DatabaseObject&, dbCursor* cursor) {
         MOXAdbChange change = {};
         change.column = 1;
         change.value.type = kMOXATypeInteger;
         change.value.value.integer = 11;
         return kCursorDefinition.updateRow(cursor, &change, 1) != 0;
     },
     "bolt 11\ncam of some length, more than a few 2\n"},
    {"delete row",
     [](DatabaseObject&, dbCursor* cursor) { return kCursorDefinition.deleteRow(cursor) != 0; },
     "cam of some length, more than a few 2\n"},
    {"commit", [](DatabaseObject& object, dbCursor*) { return object.Execute(kCommit.Get()); },
     kRows},
    {"last row id",
     [](DatabaseObject& object, dbCursor*) {
         return object.Method<int32_t (*)(MOXAobject, MOXAstring)>(2)(object.Object(),
                                                                      kTable.Get()) == 2;
     },
     kRows},
    {"schema data",
     [](DatabaseObject& object, dbCursor*) {
         Released(object.Method<MOXAstring (*)(MOXAobject)>(3)(object.Object()));
         return object.ErrorCode() == 0;
     },
     kRows},
};

}   // namespace

TEST(PluginAllocationFaults, EveryCallTellsAndTheDatabaseStaysUsable)
{
    for (const Call& call : kCalls) {
        SCOPED_TRACE(call.name);
        FailEach([&call](int64_t number, Mode mode) {
            DatabaseObject object;
            Fill(object);
            const OwnedText sql("select name, qty, qty + 1 from t");
            dbCursor* cursor = object.Select(sql.Get());
            EXPECT_NE(0, kCursorDefinition.firstRow(cursor));
            const int texts = gTexts;
            bool done = false;
            const bool failed = FailDuring(number, mode, [&] { done = call.run(object, cursor); });
            EXPECT_EQ(texts, gTexts) << "a text of the host was not given back";
            EXPECT_TRUE(done || failed);
            if (!done) {
                EXPECT_TRUE(object.ErrorCode() == 53 || object.ErrorCode() == 58)
                    << object.ErrorText();
                EXPECT_TRUE(call.run(object, cursor)) << object.ErrorText();
            }
            kCursorDefinition.closeCursor(cursor);
            CheckStillGood(object, call.rowsAfter);
            return failed;
        });
    }
}

TEST(PluginAllocationFaults, OpeningTellsAndTheNextOneSucceeds)
{
    DatabaseObject object;
    Fill(object);
    FailEach([&object](int64_t number, Mode mode) {
        object.Destruct();
        object.Construct();
        bool connected = false;
        const bool failed = FailDuring(number, mode, [&] { connected = object.Connect(); });
        EXPECT_TRUE(connected || failed);
        EXPECT_TRUE(connected || object.ErrorCode() == 53 || object.ErrorCode() == 8)
            << object.ErrorText();
        EXPECT_TRUE(object.Connect()) << object.ErrorText();
        EXPECT_EQ(kRows, object.Rows());
        return failed;
    });
}

TEST(PluginAllocationFaults, ClosingCommitsOrTellsThatItCouldNot)
{
    FailEach([](int64_t number, Mode mode) {
        DatabaseObject object;
        Fill(object);
        object.Run("UPDATE t SET qty = 12 WHERE name = 'bolt'");
        const bool failed =
            FailDuring(number, mode, [&] { kDatabaseEngine.closeDatabase(object.Handle()); });
        const bool told = object.ErrorCode() != 0;
        EXPECT_TRUE(!told || failed);
        EXPECT_EQ(told, object.ErrorText().find("lost") != std::string::npos) << object.ErrorText();
        EXPECT_EQ(nullptr, object.Handle()->database);
        EXPECT_TRUE(object.Connect()) << object.ErrorText();
        EXPECT_EQ(told ? kRows : "bolt 12\ncam of some length, more than a few 2\n", object.Rows());
        return failed;
    });
}

TEST(PluginAllocationFaults, LastErrorIsToldWithoutMemory)
{
    DatabaseObject object;
    Fill(object);
    const OwnedText sql("DELETE FROM nowhere");
    EXPECT_FALSE(object.Execute(sql.Get()));
    MOXAstring text = nullptr;
    {
        const FailingAllocations faults(1, Mode::kForGood);
        text = kDatabaseEngine.lastErrorString(object.Handle());
    }
    ASSERT_NE(nullptr, text);
    EXPECT_STREQ("Error: Out of memory.", BytesOf(text));
    ReleaseString(text);
    EXPECT_EQ("Error: Table nowhere not found. [42S02]", object.ErrorText());
}

}   // namespace vela
