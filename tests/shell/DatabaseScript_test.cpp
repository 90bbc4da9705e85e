#include "shell/DatabaseScript.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

#include "engine/storage/VelaSchema.h"
#include "runtime/NumberText.h"
#include "shell/OpenDatabase.h"
#include "tests/shell/ShellTesting.h"
#include "tests/storage/StorageTesting.h"

namespace vela::shell {
namespace {

std::string Dump(TestDatabase* database)
{
    StringOutput output;
    WriteDumpScript(UserTables(database->Database()), &output);
    return output.Text();
}

std::string Schema(TestDatabase* database)
{
    StringOutput output;
    WriteSchemaScript(UserTables(database->Database()), &output);
    return output.Text();
}

// Tables, indexes and every row under its row id, as a program sees them.
std::string Everything(TestDatabase* database)
{
    std::string text = Schema(database);
    for (VelaTrans* table : UserTables(database->Database())) {
        const std::string name(table->TableName().View());
        text += database->Run("SELECT " + name + ".* FROM " + name);
        text += "next row id " + std::to_string(table->NextUnusedRowID()) + "\n";
    }
    return text;
}

TEST(DatabaseScript, CommentsWhatStatementsCantSay)
{
    TestDatabase database;
    database.Run(
        "CREATE TABLE t (b String, c Date, e Binary, a Integer); CREATE TABLE u (z Integer)");
    const auto table = [&database] { return FindStoredTable(database.Database(), "t"); };
    TestRow row{{1, VelaValue::String(string("a\0b", 3, kEncodingUTF8))},
                {2, VelaValue::Text(kTypeDate, string("soon"))},
                {3, VelaValue::Text(kTypeBinary, string("\x01\xFF"))}};
    table()->AddRow(row, false);
    database.Run(
        "COMMIT; UPDATE _schema SET DefaultValue = '7' WHERE TableName = 't' AND ColumnName = 'a'; "
        "COMMIT;"
        "ALTER TABLE u ADD y Integer; ALTER TABLE u DROP z");
    database.Reopen();
    EXPECT_EQ(
        "SET ESCAPE;\n"
        "-- Column 4 of t loses its default, 7.\n"
        "CREATE TABLE t (b String, c Date, e Binary, a Integer);\n"
        "-- The columns of u get new column ids, from 1 in their order.\n"
        "CREATE TABLE u (y Integer);\n"
        "-- Row 1 of t loses in column b its NUL bytes, in hexadecimal it is 610062\n"
        "-- Row 1 of t loses in column c its text soon\n"
        "-- Row 1 of t loses in column e its type Binary, it becomes a String; in hexadecimal it "
        "is 01ff\n"
        "INSERT INTO t VALUES ('ab', '0000-00-00', '\x01\xFF', 7);\n"
        "COMMIT;\n",
        Dump(&database));
}

TEST(DatabaseScript, NamesThatCantBeSaidAreLeftOutOrReplaced)
{
    TestDatabase database;
    VelaSchema* schema = database.Database().Schema();
    schema->AddSchemaRow(string("my table"), 1, string("a"), kTypeInteger, 0, true, string());
    schema->AddSchemaRow(string("t"), 1, string("my column"), kTypeInteger, 0, true, string());
    database.Run("COMMIT");
    database.Reopen();
    EXPECT_EQ(
        "-- Table my table is left out: a statement can't say its name.\n"
        "-- Column 1 of t is called my_column: a statement can't say my column.\n"
        "CREATE TABLE t (my_column Integer);\n",
        Schema(&database));
}

// Random databases, made of everything that statements can put into one.
class RandomDatabase {
public:
    explicit RandomDatabase(uint32_t seed) : mRandom(seed) {}

    std::string Script()
    {
        std::string script;
        for (int table = 0, count = 1 + Below(3); table < count; table++) {
            const std::string name = "t" + std::to_string(table);
            const std::vector<std::string> types = CreateTable(name, &script);
            for (int row = Below(12); row > 0; row--)
                script += Insert(name, types);
            if (Below(2) == 0)
                script += "DELETE FROM " + name + " WHERE c0 = 0 OR _rowid > " +
                          std::to_string(Below(9)) + ";";
            if (Below(2) == 0)
                script += "CREATE INDEX i" + std::to_string(table) + " ON " + name + " (c0);";
            if (Below(2) == 0)
                script += "COMMIT;ALTER TABLE " + name + " ADD added " + kTypes[Below(8)] + ";" +
                          Insert(name, types);
        }
        return script;
    }

private:
    static constexpr const char* kTypes[] = {"Integer", "String", "Double",    "Boolean",
                                             "Date",    "Time",   "Timestamp", "Binary"};

    int Below(int limit) { return static_cast<int>(mRandom() % static_cast<uint32_t>(limit)); }

    std::vector<std::string> CreateTable(const std::string& name, std::string* script)
    {
        std::vector<std::string> types;
        std::string columns;
        for (int i = 0, count = 1 + Below(4); i < count; i++) {
            types.emplace_back(kTypes[Below(8)]);
            columns += (i > 0 ? ", c" : "c") + std::to_string(i) + " " + types.back();
        }
        *script += "CREATE TABLE " + name + " (" + columns + ");";
        return types;
    }

    std::string Insert(const std::string& table, const std::vector<std::string>& types)
    {
        const bool givesRowID = Below(4) == 0;
        std::string columns = givesRowID ? "_rowid" : "c0";
        // Row ids go up by more than one table gets rows, so that none is taken.
        mRowID += 20 + Below(100);
        std::string values = givesRowID ? std::to_string(mRowID) : Value();
        for (size_t i = givesRowID ? 0 : 1; i < types.size(); i++) {
            if (Below(4) == 0)
                continue;
            columns += ", c" + std::to_string(i);
            values += ", " + Value();
        }
        return "INSERT INTO " + table + " (" + columns + ") VALUES (" + values + ");";
    }

    std::string Value()
    {
        const double number = std::bit_cast<double>(uint64_t{mRandom()} << 32 | mRandom());
        if (Below(8) == 0 && std::isfinite(number))
            return DoubleText(number).CString();
        if (Below(8) == 0)
            return std::to_string(static_cast<int32_t>(mRandom()));
        static const char* const values[] = {
            "0", "-1", "2147483647", "-2147483648", "1.5", "-0.25", "1.0e+300", "2.5e-7",
            // As a Double these are not-a-number, minus infinity and minus zero.
            "0.0/0.0", "-1.0/0.0", "0.0*-1.0", "TRUE", "FALSE", "NULL", "DEFAULT", "''", "'it''s'",
            "'a;b'", "'--c\n-- d\n'", "'\\'", "'K\xC3\xB6ln'", "'\xFF\xFE'", "'\r\n\t'", "'DATE 1'",
            "DATE '1994-7-9'", "TIME '1:2'", "TIMESTAMP '1994-7-9 1:2'", "'2026-11-21 9:5:1'",
            "CURRENT_DATE"};
        return values[Below(static_cast<int>(std::size(values)))];
    }

    std::mt19937 mRandom;
    int mRowID = 100;
};

TEST(DatabaseScript, ADumpRebuildsRandomDatabases)
{
    uint32_t seed = std::random_device()();
    for (int round = 0; round < 150; round++, seed++) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TestDatabase database;
        const std::string script = RandomDatabase(seed).Script();
        database.Run(script);
        database.Reopen();
        const std::string dump = Dump(&database);
        TestDatabase rebuilt;
        rebuilt.Run(dump);
        rebuilt.Reopen();
        ASSERT_EQ(Everything(&database), Everything(&rebuilt)) << script << "\n\n" << dump;
        ASSERT_EQ(dump.substr(0, dump.find("-- The columns")),
                  Dump(&rebuilt).substr(0, dump.find("-- The columns")));
    }
}

}   // namespace
}   // namespace vela::shell
