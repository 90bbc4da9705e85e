// MOXAPlugin.h: everything that a host and the Vela plug-in know of each other.
//
// The plug-in is a shared library with one exported function, MOXAPluginMain. The host loads the
// library and calls that function once, on the thread on which it will make all later calls. It
// passes a resolver: a function that gives the address of a host service by its name, or null. The
// plug-in asks for services when it first needs them and keeps the answers; a service that was
// missing is asked for again on the next occasion. At the end of MOXAPluginMain the plug-in has
// registered with the host a database engine, a cursor, the class "MOXADatabase" and data sources;
// from then on the host calls the functions in the registered records. The host must have ended
// every database and every cursor before it unloads the library.
//
// This file needs nothing but a C99 or C++ compiler. All functions use the C calling convention of
// the platform (cdecl on 32-bit x86). No exception may cross the boundary in either direction.
// Records are laid out naturally; pointers take 4 bytes on 32-bit and 8 on 64-bit platforms, and
// the checks at the end of this file hold the offsets of both.
//
// Ownership, wherever nothing else is said:
// - A string or object that a function RETURNS, or stores through a pointer argument, carries one
//   reference that now belongs to the caller, who gives it back with MOXAUnlockString or
//   MOXAUnlockObject (a host does what those do).
// - A string, object, record or buffer that is passed as an ARGUMENT stays the caller's and is good
//   for the time of the call. Definition records and the texts in them are good, at the same
//   address, until the library is unloaded.
#ifndef MOXA_PLUGIN_H
#define MOXA_PLUGIN_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// The version of the interface described here: the argument of "RegisterPluginVersion" and the
// first field of every definition record.
#define MOXA_INTERFACE_VERSION 7

// False is 0, true is anything else. Only this byte counts, whatever else a register holds.
typedef unsigned char MOXAbool;

// ---- references to things of the host

// An object of the host: a database, a cursor, a folder item. The plug-in never looks inside.
typedef struct MOXAobjectStruct* MOXAobject;
typedef MOXAobject MOXAdbDatabase;   // an object of class "Database" or one derived from it
typedef MOXAobject MOXAdbCursor;     // what programs walk; the host's object around a dbCursor
typedef MOXAobject MOXAfolderItem;   // an object of class "FolderItem"

// A text of the host: counted references to any bytes. A null reference is the empty text.
//
// The record that a reference points at starts with the field below, which the plug-in reads; what
// follows is the host's own. Bytes and their number come from "StringGetCString" and
// "StringGetLength".
typedef struct MOXAstringStruct {
    uint32_t encoding;   // one of the numbers below, or any other, which is kept and given back
#ifdef __cplusplus
    // The plug-in's own accessors, which call the two services. Not part of the layout; a host
    // need not define them.
    const char* CString() const;   // never null
    int32_t Length() const;        // bytes, never negative
#endif
} MOXAstringStruct;
typedef MOXAstringStruct* MOXAstring;

// Text encodings. Texts go into the database and come back with the number they had.
enum {
    kMOXAEncodingMacRoman = 0x0000,
    kMOXAEncodingMacGreek = 0x0006,
    kMOXAEncodingMacCyrillic = 0x0007,
    kMOXAEncodingMacCentralEurope = 0x001D,
    kMOXAEncodingMacTurkish = 0x0023,
    kMOXAEncodingMacCroatian = 0x0024,
    kMOXAEncodingMacIcelandic = 0x0025,
    kMOXAEncodingMacRomanian = 0x0026,
    kMOXAEncodingUTF16 = 0x0100,    // two bytes a unit, in the machine's byte order
    kMOXAEncodingLatin1 = 0x0201,   // ISO 8859-1; 0x0201 + n is ISO 8859-(n + 1)
    kMOXAEncodingWindows1252 = 0x0500,
    kMOXAEncodingWindows1250 = 0x0501,
    kMOXAEncodingWindows1251 = 0x0502,
    kMOXAEncodingWindows1253 = 0x0503,
    kMOXAEncodingWindows1254 = 0x0504,
    kMOXAEncodingWindows1255 = 0x0505,
    kMOXAEncodingWindows1256 = 0x0506,
    kMOXAEncodingWindows1257 = 0x0507,
    kMOXAEncodingWindows1258 = 0x0508,
    kMOXAEncodingASCII = 0x0600,
    kMOXAEncodingUTF8 = 0x08000100
};

// ---- things of the plug-in: the host keeps and passes the pointers and never looks inside

// One database: the plug-in's data of one database object. It exists, connected or not, as long as
// that object.
typedef struct dbDatabase dbDatabase;
// One result of a query, with the row it stands on.
typedef struct dbCursor dbCursor;

// Any function; cast to its own type before it is called.
typedef void (*MOXAproc)(void);

// ---- entry

// Gives the address of the service of that name; null when the host has none.
typedef void* (*MOXAresolver)(const char* name);

// The one exported function. Calls "RegisterPluginVersion" with MOXA_INTERFACE_VERSION, then
// registers, in this order: the engine, the cursor, the class, the data-source interfaces "#566"
// and "#567", the data source "veladb". Registers nothing at all when "MOXAGetMXVersion" is missing
// or gives less than 5.5, and never a thing that could not work without a service that is missing
// (see each service). A null resolver is let pass.
void MOXAPluginMain(MOXAresolver resolver);
typedef void (*MOXAPluginMainProc)(MOXAresolver resolver);

// ---- values

// The field types: of columns ("columnType", and FieldType in the field schema) and of values.
enum {
    kMOXATypeNone = 0,         // no type of its own: a column of nulls
    kMOXATypeInteger = 3,      // "Integer": value.integer
    kMOXATypeText = 5,         // "VarChar": value.text
    kMOXATypeDouble = 7,       // "Double": value.number
    kMOXATypeDate = 8,         // "Date": value.moment, year to day
    kMOXATypeTime = 9,         // "Time": value.moment, hour to second
    kMOXATypeTimestamp = 10,   // "Timestamp": value.moment, all of it
    kMOXATypeBoolean = 12,     // "Boolean": value.integer, 0 or 1
    kMOXATypeBinary = 14       // "Binary": value.text, any bytes
};

// A date, a time or both, as numbers. Parts that the type does not have are 0. The database does
// not check them against the calendar, so that any numbers may come out; going in, a negative part
// counts as 0.
typedef struct MOXAmoment {
    int32_t year;
    int32_t month;    // January is 1
    int32_t day;      // of the month, from 1
    int32_t hour;     // 0 to 23
    int32_t minute;   // 0 to 59
    int32_t second;   // 0 to 59
} MOXAmoment;

// One value. type and isNull say which member of the union counts; none does when isNull is set.
typedef struct MOXAdbValue {
    int32_t type;     // kMOXAType...
    int32_t isNull;   // 1: NULL; 0: not
    union {
        int32_t integer;     // Integer; Boolean
        double number;       // Double
        MOXAstring text;     // Text, Binary; null is the empty text
        MOXAmoment moment;   // Date, Time, Timestamp
    } value;
} MOXAdbValue;

// A new value for one column of the row that a cursor stands on.
typedef struct MOXAdbChange {
    int32_t column;      // of the cursor, from 0
    int32_t reserved;    // 0
    MOXAdbValue value;   // of any type: it is converted to the column's
} MOXAdbChange;

// ---- the database engine

// Registered with "PluginRegisterDBEngine". A null database makes each function do nothing and give
// null or 0. What a function did is told by the last two of the calls: every call but those and
// releaseDatabase leaves a new last error.
typedef struct MOXAdbEngineDefinition {
    int32_t version;              // MOXA_INTERFACE_VERSION
    int32_t reserved;             // 0
    const char* fieldTypeNames;   // "Integer,VarChar,Boolean,Date,Time,Timestamp,Double,Binary"

    // Commits and closes. Without a connection it does nothing. When the commit fails, the database
    // is closed all the same, what was pending is lost, and the last error tells it. Cursors stay
    // good for reading; their edits are refused from now on.
    void (*closeDatabase)(dbDatabase* database);

    // The tables of the database but "_schema": one row each, with the column TableName.
    // All functions that give a cursor give null when there is none to give.
    MOXAdbCursor (*tableSchema)(dbDatabase* database);

    // The columns of a table: one row each, with the columns ColumnName, FieldType (kMOXAType...),
    // IsPrimary (always false), NotNull (non-zero: declared so) and Length. No rows for a table
    // that isn't there. The name becomes part of a statement as it is.
    MOXAdbCursor (*fieldSchema)(dbDatabase* database, MOXAstring tableName);

    // Runs a query, of which the first seven characters must be "select " in any case, and gives
    // its rows. A cursor also comes for a query without rows; null comes when the query failed. Any
    // other statement is executed, and null comes.
    MOXAdbCursor (*directSQLSelect)(dbDatabase* database, MOXAstring sql);

    // Runs a statement that gives no rows. Without a connection it does nothing. A SELECT has no
    // effect here. A COMMIT that could not be written is told by the last error.
    void (*directSQLExecute)(dbDatabase* database, MOXAstring sql);

    // The indexes of a table: one row each, with the column IndexName. Null for a table that isn't
    // there.
    MOXAdbCursor (*indexSchema)(dbDatabase* database, MOXAstring tableName);

    // 0: the last call succeeded, or found no rows; else the first two characters of the SQLSTATE
    // as a decimal number (42 for "42S02").
    int32_t (*lastErrorCode)(dbDatabase* database);

    // "DESCRIPTION [SQLSTATE]" of the last call, successful or not ("No records found. [02000]");
    // null when there is nothing to say.
    MOXAstring (*lastErrorString)(dbDatabase* database);

    // Ends a dbDatabase that came to the host through "MOXAdbDatabaseFromDBDatabase": the last call
    // for it, made when the host's object goes away. Closes it first when it is still open. Must
    // not be called for a database of class "MOXADatabase": its destructor does this.
    void (*releaseDatabase)(dbDatabase* database);
} MOXAdbEngineDefinition;

// ---- cursors

// Registered with "PluginRegisterDBCursor".
//
// A cursor holds the rows of its result as they were when the query ran; a row that is edited
// through it still shows its old values. It stands on one row, or before the first (a new cursor
// does), or after the last. Columns count from 0, rows from 0. A cursor must be closed and may
// outlive its database. A null cursor makes each function do nothing and give null, 0 or false
// (atEnd: true).
typedef struct MOXAdbCursorDefinition {
    int32_t version;    // MOXA_INTERFACE_VERSION
    int32_t reserved;   // 0

    // Ends the cursor: the last call for it.
    void (*closeCursor)(dbCursor* cursor);

    int32_t (*columnCount)(dbCursor* cursor);
    // The column's name: its alias, or what it shows. Null when there is no such column.
    MOXAstring (*columnName)(dbCursor* cursor, int32_t column);
    // The field type of the column: of a computed one, that of its value in the first row, if there
    // is one. kMOXATypeNone also when there is no such column.
    int32_t (*columnType)(dbCursor* cursor, int32_t column);
    // The value of a column in the current row. Its type is that of the column; computed columns,
    // whose type can differ from row to row, give each value with its own. A text or binary value
    // is a new reference. False, with *value a NULL of type None, when there is no such column, no
    // current row, or the row was deleted through this cursor.
    MOXAbool (*columnValue)(dbCursor* cursor, int32_t column, MOXAdbValue* value);

    int32_t (*rowCount)(dbCursor* cursor);
    // Each moves and tells whether the cursor now stands on a row. nextRow on or after the last row
    // stands after it, previousRow on or before the first stands before it.
    MOXAbool (*firstRow)(dbCursor* cursor);
    MOXAbool (*nextRow)(dbCursor* cursor);
    MOXAbool (*previousRow)(dbCursor* cursor);
    MOXAbool (*lastRow)(dbCursor* cursor);
    // Moves to the row of that number. Below 0 it stands before the first row, at or above
    // rowCount after the last.
    MOXAbool (*moveToRow)(dbCursor* cursor, int32_t row);
    // The number of the current row; -1 before the first, rowCount after the last.
    int32_t (*currentRow)(dbCursor* cursor);
    // Whether the cursor stands after the last row; of a result without rows, always.
    MOXAbool (*atEnd)(dbCursor* cursor);

    // Both change the row of the stored table from which the current row was made. The change is
    // part of the open transaction. False: nothing was changed (but for rows of several tables, of which
    // some may be when memory has run out), and the last error of the database says why.
    //
    // deleteRow deletes in the table that the first column taken from a table comes from; in the
    // first table of the FROM list when all columns are computed. The row stays in its place in the
    // cursor, without values.
    MOXAbool (*deleteRow)(dbCursor* cursor);
    // updateRow sets the columns named to new values, each in the table it comes from. Columns that
    // are computed can't be set. A NULL leaves the column without a value. A count of 0 changes
    // nothing and is true on a row that can be edited.
    MOXAbool (*updateRow)(dbCursor* cursor, const MOXAdbChange* changes, int32_t count);
} MOXAdbCursorDefinition;

// ---- classes

// A property whose value lies in the instance data of each object.
typedef struct MOXApropertyDefinition {
    const char* name;   // "DatabaseFile"
    const char* type;   // "FolderItem"
    uint32_t flags;     // 0
    // Bytes from the start of the instance data to the value, a MOXAobject. The host's assignment
    // stores the new reference, which it counts for the object, and gives back the one it replaces.
    uint32_t offset;
    MOXAproc getter;   // null: read from the instance data
    MOXAproc setter;   // null: written to the instance data
} MOXApropertyDefinition;

// A method. The declaration is written as in the host's language and fixes the C type of function:
// first the object, a MOXAobject, then each parameter, then the result. String is MOXAstring,
// Integer int32_t, Boolean MOXAbool, a class MOXAobject; no "As" at the end means no result.
// "LastRowID(tableName as String) As Integer" is int32_t (*)(MOXAobject, MOXAstring).
typedef struct MOXAmethodDefinition {
    MOXAproc function;
    const char* declaration;
} MOXAmethodDefinition;

// Registered with "PluginRegisterClass". The class "MOXADatabase" has the property
// "DatabaseFile" and the methods
//   Connect() As Boolean                          opens the database in the folder DatabaseFile
//   CreateDatabaseFile() As Boolean               the same, and makes folder and files if missing
//   LastRowID(tableName as String) As Integer     the row id given out last; 0 when there is none
//   GetSchemaData() As String                     the schema, for ReplaceSchemaData
//   ReplaceSchemaData(newSchema As String)
typedef struct MOXAclassDefinition {
    int32_t version;   // MOXA_INTERFACE_VERSION
    // Bytes of instance data in each object: the dbDatabase. The host gives each new object that
    // many, zeroed, aligned for a pointer, at an address that stays.
    uint32_t instanceSize;
    const char* name;         // "MOXADatabase"
    const char* superclass;   // "Database"
    // Called when the instance data is there, before anything else touches the object.
    void (*constructor)(MOXAobject object);
    // The last call for the object. Closes the database when the host has not.
    void (*destructor)(MOXAobject object);
    const MOXApropertyDefinition* properties;
    const MOXAmethodDefinition* methods;
    int32_t propertyCount;
    int32_t methodCount;
} MOXAclassDefinition;

// ---- data sources

// What a data-source interface does: the host calls it when the person at the development
// environment chooses its command ("#566" a new database, "#567" an existing one). It asks for a
// place with the host's file dialog and then calls "DesignAddDataSource". False: no data source was
// added, and *message, when message is not null, is a new string that says why ("user cancelled");
// null where a string can't be made. *message is null on success.
typedef MOXAbool (*MOXAdataSourceInterfaceProc)(MOXAstring* message);

// Opens the database of a data source. data and length are what the plug-in passed to
// "DesignAddDataSource". The result is connected: closeDatabase closes it, and releaseDatabase ends
// it. On failure null, with *message as above.
typedef MOXAdbDatabase (*MOXAopenDataSourceProc)(const char* data, int32_t length,
                                                 MOXAstring* message);

// ---- the services of the host, under the names by which the resolver is asked
//
// "required" services: without one of them the plug-in does not register what needs it.
//   start      needed for anything: MOXAGetMXVersion
//   engine     the engine, the cursor and all below: PluginRegisterDBEngine,
//              PluginRegisterDBCursor, MOXABuildString, StringGetCString, StringGetLength,
//              MOXAUnlockString, MOXAdbCursorFromDBCursor
//   class      PluginRegisterClass, MOXAGetClassData, MOXAConstructDBDatabase,
//              MOXAGetDBFromMOXAdbDatabase, MOXASetDBIsConnected, MOXAGetPropValueString,
//              MOXAUnlockObject
//   source     "veladb", "#566", "#567": RegisterDataSource, MOXAdbDatabaseFromDBDatabase,
//              MOXASetDBIsConnected, MOXALoadGlobalMethod, MOXALoadObjectMethod,
//              MOXAGetPropValueString, MOXAUnlockObject
//   design     "#566", "#567": RegisterDataSourceInterface, DesignAddDataSource
// The others make things better: RegisterPluginVersion, MOXALockString, and MOXASetStringEncoding,
// without which strings keep the encoding that the host gives to new ones.

// -- start
// "RegisterPluginVersion": the first call. version is MOXA_INTERFACE_VERSION.
typedef void (*MOXARegisterPluginVersionProc)(int32_t version);
// "MOXAGetMXVersion": the version of the host, e.g. 5.5.
typedef double (*MOXAGetMXVersionProc)(void);

// -- registration
// "PluginRegisterDBEngine", "PluginRegisterDBCursor", "PluginRegisterClass"
typedef void (*MOXARegisterDBEngineProc)(const MOXAdbEngineDefinition* definition);
typedef void (*MOXARegisterDBCursorProc)(const MOXAdbCursorDefinition* definition);
typedef void (*MOXARegisterClassProc)(const MOXAclassDefinition* definition);
// "RegisterDataSourceInterface": a command for people. A name of "#" and digits stands for a text
// of the host with that number.
typedef void (*MOXARegisterDataSourceInterfaceProc)(const char* name,
                                                    MOXAdataSourceInterfaceProc run);
// "RegisterDataSource": a kind of data source and how one is opened.
typedef void (*MOXARegisterDataSourceProc)(const char* kind, MOXAopenDataSourceProc open);
// "DesignAddDataSource": adds a data source to the program being developed. name is for people (the
// name of the database's folder), kind is "veladb", data is kept with the program for opening.
typedef void (*MOXADesignAddDataSourceProc)(const char* name, const char* kind, const char* data,
                                            int32_t length);

// -- strings
// "MOXABuildString": a new string with a copy of length bytes, which may be any; null when it can't
// be made. The plug-in sets its encoding at once.
typedef MOXAstring (*MOXABuildStringProc)(const char* bytes, int32_t length);
// "MOXASetStringEncoding": changes the number alone, never the bytes, of a new string.
typedef void (*MOXASetStringEncodingProc)(MOXAstring text, uint32_t encoding);
// "MOXALockString", "MOXAUnlockString": one reference more, one less.
typedef void (*MOXALockStringProc)(MOXAstring text);
typedef void (*MOXAUnlockStringProc)(MOXAstring text);
// "StringGetCString": the bytes, followed by a NUL, good as long as the string. "StringGetLength":
// how many bytes there are, that NUL not counted.
typedef const char* (*MOXACStringProc)(MOXAstring text);
typedef int32_t (*MOXAStringLengthProc)(MOXAstring text);

// -- objects
// "MOXAUnlockObject": one reference less.
typedef void (*MOXAUnlockObjectProc)(MOXAobject object);
// "MOXAGetClassData": the instance data that the object has for that class; null when it is not of
// that class.
typedef void* (*MOXAGetClassDataProc)(const MOXAclassDefinition* definition, MOXAobject object);
// "MOXAGetPropValueInt" and its like: reads a property. False when there is none of that name and
// type. The plug-in reads "AbsolutePath" of folder items: where the item is, existing or not.
typedef MOXAbool (*MOXAGetPropValueIntProc)(MOXAobject object, const char* name, int32_t* value);
typedef MOXAbool (*MOXAGetPropValueStringProc)(MOXAobject object, const char* name,
                                               MOXAstring* value);
typedef MOXAbool (*MOXAGetPropValueDoubleProc)(MOXAobject object, const char* name, double* value);
typedef MOXAbool (*MOXAGetPropValueObjectProc)(MOXAobject object, const char* name,
                                               MOXAobject* value);
typedef MOXAbool (*MOXAGetPropValueBoolProc)(MOXAobject object, const char* name, MOXAbool* value);

// -- databases and cursors
// "MOXAConstructDBDatabase": called in the constructor of an object of class "MOXADatabase". The
// host sets up the "Database" part of the object around the plug-in's data and engine.
typedef void (*MOXAConstructDBDatabaseProc)(MOXAdbDatabase object, dbDatabase* database,
                                            const MOXAdbEngineDefinition* engine);
// "MOXAGetDBFromMOXAdbDatabase": the data that the object was set up with; null when it was not.
typedef dbDatabase* (*MOXAGetDBFromMOXAdbDatabaseProc)(MOXAdbDatabase object);
// "MOXAdbDatabaseFromDBDatabase": a new object of class "Database" around the plug-in's data, which
// is then the host's to close and release; null, with the data left to the plug-in, when it can't.
typedef MOXAdbDatabase (*MOXAdbDatabaseFromDBDatabaseProc)(dbDatabase* database,
                                                           const MOXAdbEngineDefinition* engine);
// "MOXASetDBIsConnected": whether the object is connected now.
typedef void (*MOXASetDBIsConnectedProc)(MOXAdbDatabase object, MOXAbool isConnected);
// "MOXAdbCursorFromDBCursor": a new object around the plug-in's cursor, which is then the host's to
// close; null, with the cursor left to the plug-in, when it can't.
typedef MOXAdbCursor (*MOXAdbCursorFromDBCursorProc)(dbCursor* cursor,
                                                     const MOXAdbCursorDefinition* definition);

// -- functions of the host's language
// "MOXALoadGlobalMethod", "MOXALoadObjectMethod": the function behind a declaration, null when
// there is none. An object's function takes the object first. The plug-in loads
//   GetOpenFolderItem(filter As String) As FolderItem
//       asks for a folder or file that is there; null when the person cancels
//   GetSaveFolderItem(filter As String, defaultName As String) As FolderItem
//       asks for a place for something new; null when the person cancels
//   GetFolderItem(path As String) As FolderItem
//       called with the empty path: the folder of the program
// and of a folder item
//   GetSaveInfo(relativeTo As FolderItem) As String
//       a text that finds the item again from relativeTo; any bytes
//   GetRelative(saveInfo As String) As FolderItem
//       the item that such a text stands for, seen from this one; null when there is none
typedef MOXAproc (*MOXALoadGlobalMethodProc)(const char* declaration);
typedef MOXAproc (*MOXALoadObjectMethodProc)(MOXAobject object, const char* declaration);
typedef MOXAfolderItem (*MOXAGetOpenFolderItemProc)(MOXAstring filter);
typedef MOXAfolderItem (*MOXAGetSaveFolderItemProc)(MOXAstring filter, MOXAstring defaultName);
typedef MOXAfolderItem (*MOXAGetFolderItemProc)(MOXAstring path);
typedef MOXAstring (*MOXAGetSaveInfoProc)(MOXAfolderItem item, MOXAfolderItem relativeTo);
typedef MOXAfolderItem (*MOXAGetRelativeProc)(MOXAfolderItem item, MOXAstring saveInfo);

#ifdef __cplusplus
}
#endif

// ---- the layouts, for both sizes of a pointer

#if defined(__cplusplus) && __cplusplus >= 201103L
#define MOXA_CHECK(condition) static_assert(condition, #condition)
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
#define MOXA_CHECK(condition) _Static_assert(condition, #condition)
#else
#define MOXA_CHECK(condition) extern char MOXACheck[(condition) ? 1 : -1]
#endif
#define MOXA_CHECK_SIZE(type, size32, size64) \
    MOXA_CHECK(sizeof(type) == (sizeof(void*) == 4 ? (size32) : (size64)))
#define MOXA_CHECK_OFFSET(type, field, offset32, offset64) \
    MOXA_CHECK(offsetof(type, field) == (sizeof(void*) == 4 ? (offset32) : (offset64)))

MOXA_CHECK(sizeof(void*) == 4 || sizeof(void*) == 8);
MOXA_CHECK_SIZE(MOXAbool, 1, 1);
MOXA_CHECK_OFFSET(MOXAstringStruct, encoding, 0, 0);
MOXA_CHECK_OFFSET(MOXAmoment, year, 0, 0);
MOXA_CHECK_OFFSET(MOXAmoment, month, 4, 4);
MOXA_CHECK_OFFSET(MOXAmoment, day, 8, 8);
MOXA_CHECK_OFFSET(MOXAmoment, hour, 12, 12);
MOXA_CHECK_OFFSET(MOXAmoment, minute, 16, 16);
MOXA_CHECK_OFFSET(MOXAmoment, second, 20, 20);
MOXA_CHECK_SIZE(MOXAmoment, 24, 24);
MOXA_CHECK_OFFSET(MOXAdbValue, type, 0, 0);
MOXA_CHECK_OFFSET(MOXAdbValue, isNull, 4, 4);
MOXA_CHECK_OFFSET(MOXAdbValue, value, 8, 8);
MOXA_CHECK_SIZE(MOXAdbValue, 32, 32);
MOXA_CHECK_OFFSET(MOXAdbChange, column, 0, 0);
MOXA_CHECK_OFFSET(MOXAdbChange, reserved, 4, 4);
MOXA_CHECK_OFFSET(MOXAdbChange, value, 8, 8);
MOXA_CHECK_SIZE(MOXAdbChange, 40, 40);

MOXA_CHECK_OFFSET(MOXAdbEngineDefinition, version, 0, 0);
MOXA_CHECK_OFFSET(MOXAdbEngineDefinition, reserved, 4, 4);
MOXA_CHECK_OFFSET(MOXAdbEngineDefinition, fieldTypeNames, 8, 8);
MOXA_CHECK_OFFSET(MOXAdbEngineDefinition, closeDatabase, 12, 16);
MOXA_CHECK_OFFSET(MOXAdbEngineDefinition, tableSchema, 16, 24);
MOXA_CHECK_OFFSET(MOXAdbEngineDefinition, fieldSchema, 20, 32);
MOXA_CHECK_OFFSET(MOXAdbEngineDefinition, directSQLSelect, 24, 40);
MOXA_CHECK_OFFSET(MOXAdbEngineDefinition, directSQLExecute, 28, 48);
MOXA_CHECK_OFFSET(MOXAdbEngineDefinition, indexSchema, 32, 56);
MOXA_CHECK_OFFSET(MOXAdbEngineDefinition, lastErrorCode, 36, 64);
MOXA_CHECK_OFFSET(MOXAdbEngineDefinition, lastErrorString, 40, 72);
MOXA_CHECK_OFFSET(MOXAdbEngineDefinition, releaseDatabase, 44, 80);
MOXA_CHECK_SIZE(MOXAdbEngineDefinition, 48, 88);

MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, version, 0, 0);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, reserved, 4, 4);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, closeCursor, 8, 8);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, columnCount, 12, 16);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, columnName, 16, 24);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, columnType, 20, 32);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, columnValue, 24, 40);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, rowCount, 28, 48);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, firstRow, 32, 56);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, nextRow, 36, 64);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, previousRow, 40, 72);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, lastRow, 44, 80);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, moveToRow, 48, 88);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, currentRow, 52, 96);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, atEnd, 56, 104);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, deleteRow, 60, 112);
MOXA_CHECK_OFFSET(MOXAdbCursorDefinition, updateRow, 64, 120);
MOXA_CHECK_SIZE(MOXAdbCursorDefinition, 68, 128);

MOXA_CHECK_OFFSET(MOXApropertyDefinition, name, 0, 0);
MOXA_CHECK_OFFSET(MOXApropertyDefinition, type, 4, 8);
MOXA_CHECK_OFFSET(MOXApropertyDefinition, flags, 8, 16);
MOXA_CHECK_OFFSET(MOXApropertyDefinition, offset, 12, 20);
MOXA_CHECK_OFFSET(MOXApropertyDefinition, getter, 16, 24);
MOXA_CHECK_OFFSET(MOXApropertyDefinition, setter, 20, 32);
MOXA_CHECK_SIZE(MOXApropertyDefinition, 24, 40);
MOXA_CHECK_OFFSET(MOXAmethodDefinition, function, 0, 0);
MOXA_CHECK_OFFSET(MOXAmethodDefinition, declaration, 4, 8);
MOXA_CHECK_SIZE(MOXAmethodDefinition, 8, 16);

MOXA_CHECK_OFFSET(MOXAclassDefinition, version, 0, 0);
MOXA_CHECK_OFFSET(MOXAclassDefinition, instanceSize, 4, 4);
MOXA_CHECK_OFFSET(MOXAclassDefinition, name, 8, 8);
MOXA_CHECK_OFFSET(MOXAclassDefinition, superclass, 12, 16);
MOXA_CHECK_OFFSET(MOXAclassDefinition, constructor, 16, 24);
MOXA_CHECK_OFFSET(MOXAclassDefinition, destructor, 20, 32);
MOXA_CHECK_OFFSET(MOXAclassDefinition, properties, 24, 40);
MOXA_CHECK_OFFSET(MOXAclassDefinition, methods, 28, 48);
MOXA_CHECK_OFFSET(MOXAclassDefinition, propertyCount, 32, 56);
MOXA_CHECK_OFFSET(MOXAclassDefinition, methodCount, 36, 60);
MOXA_CHECK_SIZE(MOXAclassDefinition, 40, 64);

#endif
