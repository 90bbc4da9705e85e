#include "engine/storage/VelaSchema.h"

#include <gtest/gtest.h>

#include <cstring>

#include "tests/storage/TableFixture.h"

namespace vela {

namespace {

using Texts = std::vector<std::string>;

// One row of _schema as its record; the row's number, column id and type differ.
std::string SchemaRecord(int rowID, const std::string& name, int type)
{
    const auto text = [](const std::string& bytes) {
        const std::string length = FromHex("00 00 00") + static_cast<char>(bytes.size());
        return length + length + FromHex("00 00 06 00") + bytes;
    };
    const auto number = [](int value) { return FromHex("00 00 00") + static_cast<char>(value); };
    const std::string body = FromHex("07  01 05 02 03 03 05 04 03 05 03 06 03 07 05") +
                             text("_schema") + number(rowID) + text(name) + number(type) +
                             number(0) + number(1) + text("");
    return "RcSt" + number(rowID) + number(static_cast<int>(body.size())) + body;
}

class SchemaTest : public testing::Test {
protected:
    // In the machine's own order: the last used row id and column id that a record file tells.
    void ExpectMetadata(const char* file, uint32_t rowID, uint32_t columnID)
    {
        const std::string metadata = disk.Bytes(file).substr(0, 256);
        uint32_t numbers[2];
        std::memcpy(numbers, metadata.data(), sizeof numbers);
        EXPECT_EQ(rowID, numbers[0]);
        EXPECT_EQ(columnID, numbers[1]);
        EXPECT_EQ(Zeros(248), metadata.substr(8));
    }

    MemoryDisk disk;
    DatabaseOnDisk db{&disk};
};

}   // namespace

TEST_F(SchemaTest, FilesOfANewDatabaseToTheByte)
{
    EXPECT_EQ(Texts{}, disk.Names());
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ((Texts{"_schema.dat", "_schema.map"}), disk.Names());
    ExpectMetadata("_schema.dat", 7, 7);
    const std::string records = SchemaRecord(1, "TableName", 5) + SchemaRecord(2, "ColumnID", 3) +
                                SchemaRecord(3, "ColumnName", 5) + SchemaRecord(4, "TypeCode", 3) +
                                SchemaRecord(5, "Length", 3) + SchemaRecord(6, "NotNull", 3) +
                                SchemaRecord(7, "DefaultValue", 5);
    EXPECT_EQ(ToHex(records), ToHex(disk.Bytes("_schema.dat").substr(256)));
    EXPECT_EQ(ToHex(FromHex("52 4D 61 70 00 00 00 07"
                            "00 00 00 01 00 00 01 00  00 00 00 02 00 00 01 5F"
                            "00 00 00 03 00 00 01 BD  00 00 00 04 00 00 02 1D"
                            "00 00 00 05 00 00 02 7B  00 00 00 06 00 00 02 D7"
                            "00 00 00 07 00 00 03 34  4D 45 6E 64")),
              ToHex(disk.Bytes("_schema.map")));
}

TEST_F(SchemaTest, FilesOfANewTableToTheByte)
{
    db.Create("t", {kTypeInteger, kTypeString, kTypeDouble});
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ((Texts{"_schema.dat", "_schema.map", "t.dat", "t.map"}), disk.Names());
    ExpectMetadata("t.dat", 0, 3);
    EXPECT_EQ(256u, disk.Bytes("t.dat").size()) << "and nothing behind";
    EXPECT_EQ("", disk.Bytes("t.map")) << "no row has been told of yet";
}

TEST(VelaSchema, EmptySchemaFileIsFilled)
{
    for (const std::string& bytes : {std::string(), Zeros(256)}) {
        MemoryDisk disk;
        disk.Put("_schema.dat", bytes);
        DatabaseOnDisk db(&disk);
        EXPECT_EQ(7u, RowIDsOf(db.database->Schema()).size());
        EXPECT_TRUE(db.database->TransactionInProgress());
        ASSERT_TRUE(db.Commit());
        db.Open();
        EXPECT_EQ(7u, RowIDsOf(db.database->Schema()).size());
        EXPECT_FALSE(db.database->TransactionInProgress());
    }
}

TEST(VelaSchema, DefaultsAreMadeFromTheirTexts)
{
    const struct {
        VelaDataType type;
        const char* text;
        const char* value;
    } cases[] = {
        {kTypeInteger, "42", "Integer 42"},
        {kTypeInteger, "", "Integer 0"},
        {kTypeInteger, "4x", "Integer 4"},
        {kTypeBoolean, "", "Boolean FALSE"},
        {kTypeBoolean, "-3", "Boolean TRUE"},
        {kTypeBoolean, "TRUE", "Boolean FALSE"},
        {kTypeDouble, "2.5", "Double 2.5"},
        {kTypeDouble, "", "Double 0"},
        {kTypeString, "abc", "String[600] abc"},
        {kTypeString, "", "String[600] "},
        {kTypeDate, "1984-5-6", "Date 1984-5-6"},
        {kTypeTime, "", "Time "},
        {kTypeTimestamp, "x", "Timestamp x"},
        {kTypeBinary, "b", "Binary b"},
        {static_cast<VelaDataType>(4), "x", "NULL None"},
        {static_cast<VelaDataType>(200), "x", "NULL None"},
    };
    for (const auto& c : cases) {
        MemoryDisk disk;
        DatabaseOnDisk db(&disk);
        VelaTrans* table = db.Create("t", {c.type}, c.text);
        EXPECT_EQ(c.value, ValueText(table->Column(1)->defaultValue));
        TestRow row;
        const uint32_t rowID = table->AddRow(row, false);
        ASSERT_TRUE(db.Commit());
        EXPECT_EQ(c.value, ReadText(table, rowID, 1));
    }
}

TEST_F(SchemaTest, AbsentDefaultIsNullOfTheType)
{
    VelaSchema* schema = db.database->Schema();
    TestRow row{{VelaSchema::kTableName, Str("t")},
                {VelaSchema::kColumnID, Int(3)},
                {VelaSchema::kColumnName, Str("c")},
                {VelaSchema::kTypeCode, Int(kTypeDate)}};
    schema->AddRow(row, false);
    db.database->AddOpenTable(schema->CreateTable("t"));
    VelaTrans* table = db.Table("t");
    EXPECT_EQ("NULL Date", ValueText(table->Column(1)->defaultValue));
    EXPECT_EQ(4u, table->NextUnusedColumnID());
    TestRow empty;
    const uint32_t rowID = table->AddRow(empty, false);
    table->AddIndex("i", {3});
    ASSERT_TRUE(db.Commit());
    for (int reopened = 0; reopened < 2; reopened++) {
        table = db.Table("t");
        EXPECT_EQ("NULL Date", ReadText(table, rowID, 1));
        SimpleVector<uint32_t> rows;
        EXPECT_TRUE(table->FindRowsByIndex(1, VelaValue::Text(kTypeDate, string()), &rows));
        EXPECT_EQ(0u, rows.size());
        EXPECT_EQ("NULL Date", ReadText(table, rowID, 1)) << "now that the index is loaded";
        db.Open();
    }
}

TEST_F(SchemaTest, ColumnsStandInTheOrderOfTheirRows)
{
    db.Create("t", {kTypeInteger, kTypeString});
    ASSERT_TRUE(db.Commit());
    // Renaming moves the schema row of c1 to the end of the file, and with it the column.
    VelaSchema* schema = db.database->Schema();
    TestRow row{{VelaSchema::kColumnName, Str("a much longer name than before")}};
    schema->UpdateRow(8, row, false);
    ASSERT_TRUE(db.Commit());
    VelaTrans* table = db.Reload("t");
    EXPECT_TRUE(table->Column(1)->name == "c2");
    EXPECT_TRUE(table->Column(2)->name == "a much longer name than before");
    EXPECT_EQ(1u, table->Column(2)->columnID);
}

TEST(VelaSchema, ReloadTable_HandsNoIDOutTwice)
{
    MemoryDisk disk;
    DatabaseOnDisk db(&disk);
    VelaTrans* table = db.Create("t", {kTypeInteger});
    ASSERT_TRUE(db.Commit());
    TestRow row{{0, Int(50)}, {1, Int(1)}};
    table->AddRow(row, false);
    table->Rollback();
    TestRow plain{{1, Int(1)}};
    for (int i = 0; i < 3; i++)
        table->AddRow(plain, false);
    ASSERT_TRUE(db.Commit());
    table = db.Alter("t", kTypeString, "");
    EXPECT_EQ(4u, table->NextUnusedRowID());
    EXPECT_EQ(3u, table->NextUnusedColumnID());
    // Dropping the column that was added last doesn't give its id free.
    VelaSchema* schema = db.database->Schema();
    schema->DeleteRow(schema->NextUnusedRowID() - 1);
    table = db.Reload("t");
    EXPECT_EQ(2, table->QtyColumns());
    EXPECT_EQ(3u, table->NextUnusedColumnID());
    ASSERT_TRUE(db.Commit());
}

TEST_F(SchemaTest, ReloadTable_OfATableWithoutRowsInTheSchemaIsNone)
{
    VelaTrans* table = db.Create("t", {kTypeInteger});
    VelaSchema* schema = db.database->Schema();
    schema->DeleteRow(8);
    const size_t position = static_cast<size_t>(db.database->FindOpenTable("t"));
    db.database->OpenTables().erase(position);
    schema->ReloadTable(&table);
    EXPECT_EQ(nullptr, table);
}

TEST_F(SchemaTest, ManyTablesOpenWithoutLookingAtEachRowForEach)
{
    VelaSchema* schema = db.database->Schema();
    constexpr int kTables = 30000;   // a comparison of all with all would take minutes
    for (int i = 0; i < kTables; i++)
        schema->AddSchemaRow(string("t" + std::to_string(i), kEncodingASCII), 1, "c", kTypeInteger,
                             0, true, "");
    ASSERT_TRUE(db.Commit());
    db.Open();
    EXPECT_EQ(kTables + 1u, db.database->OpenTables().size());
}

// ---- _TABLES

TEST(VelaTablesTable, HasOneRowAndOneColumn)
{
    VelaTable* table = VelaSchema::GetTablesTable();
    EXPECT_TRUE(table->TableName() == "_TABLES");
    EXPECT_EQ(1, table->QtyColumns());
    EXPECT_TRUE(table->Column(0)->name.empty());
    EXPECT_EQ(nullptr, table->Column(1));
    EXPECT_EQ(1u, table->QtyRows());
    EXPECT_EQ(std::vector<uint32_t>{1}, RowIDsOf(table));
    EXPECT_FALSE(table->HasRow(2));
    EXPECT_EQ("String[600] _TABLES", ReadText(table, 1, 0));
    for (const auto& [rowID, number] : {std::pair{2u, 0l}, {0u, 0l}, {1u, 1l}, {1u, -1l}})
        EXPECT_EQ("none", ReadText(table, rowID, number)) << rowID << ", " << number;
}

TEST(VelaTablesTable, RefusesEveryChange)
{
    VelaTable* table = VelaSchema::GetTablesTable();
    TestRow row{{1, Int(1)}};
    EXPECT_EQ(kInvalidRowID, table->AddRow(row, false));
    EXPECT_FALSE(table->UpdateRow(1, row, false));
    EXPECT_EQ(1u, row.Values().size()) << "what the table was only lent stays";
    EXPECT_EQ(kInvalidRowID, table->AddRow(row, true));
    EXPECT_EQ(0u, row.Values().size());
    row.Add(1, Int(1));
    EXPECT_FALSE(table->UpdateRow(1, row, true));
    EXPECT_EQ(0u, row.Values().size());
    EXPECT_FALSE(table->AddIndex("i", {1}));
    table->DeleteRow(1);
    EXPECT_EQ(std::vector<uint32_t>{1}, RowIDsOf(table));
}

}   // namespace vela
