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

}   // namespace

TEST(VelaSchema, FilesOfANewDatabaseToTheByte)
{
    MemoryDisk disk;
    DatabaseOnDisk db(&disk);
    EXPECT_EQ(Texts{}, disk.Names());
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ((Texts{"_schema.dat", "_schema.map"}), disk.Names());
    const std::string metadata = disk.Bytes("_schema.dat").substr(0, 256);
    uint32_t numbers[2];
    std::memcpy(numbers, metadata.data(), sizeof numbers);   // in the machine's own order
    EXPECT_EQ(7u, numbers[0]);
    EXPECT_EQ(7u, numbers[1]);
    EXPECT_EQ(Zeros(248), metadata.substr(8));
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
    db.Create("t", {kTypeInteger, kTypeString, kTypeDouble});
    ASSERT_TRUE(db.Commit());
    EXPECT_EQ(256u, disk.Bytes("t.dat").size());
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

TEST(VelaSchema, AbsentDefaultIsNullOfTheType)
{
    MemoryDisk disk;
    DatabaseOnDisk db(&disk);
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

TEST(VelaSchema, ReloadTable_OfATableWithoutRowsInTheSchemaIsNone)
{
    MemoryDisk disk;
    DatabaseOnDisk db(&disk);
    VelaTrans* table = db.Create("t", {kTypeInteger});
    VelaSchema* schema = db.database->Schema();
    schema->DeleteRow(8);
    const size_t position = static_cast<size_t>(db.database->FindOpenTable("t"));
    db.database->OpenTables().erase(position);
    schema->ReloadTable(&table);
    EXPECT_EQ(nullptr, table);
}

TEST(VelaSchema, ManyTablesOpenWithoutLookingAtEachRowForEach)
{
    MemoryDisk disk;
    DatabaseOnDisk db(&disk);
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

TEST(VelaTablesTable, HasOneRowAndOneColumnAndRefusesEveryChange)
{
    VelaTable* table = VelaSchema::GetTablesTable();
    EXPECT_TRUE(table->TableName() == "_TABLES");
    EXPECT_EQ(nullptr, table->Column(1));
    EXPECT_EQ(1u, table->QtyRows());
    EXPECT_EQ(std::vector<uint32_t>{1}, RowIDsOf(table));
    EXPECT_FALSE(table->HasRow(2));
    EXPECT_EQ("String[600] _TABLES", ReadText(table, 1, 0));
    for (const auto& [rowID, number] : {std::pair{2u, 0l}, {0u, 0l}, {1u, 1l}, {1u, -1l}})
        EXPECT_EQ("none", ReadText(table, rowID, number)) << rowID << ", " << number;
    for (const bool takes : {false, true}) {
        TestRow row{{1, Int(1)}};
        EXPECT_EQ(kInvalidRowID, table->AddRow(row, takes));
        EXPECT_EQ(takes, row.Values().empty()) << "what the table was only lent stays";
        TestRow update{{1, Int(1)}};
        EXPECT_FALSE(table->UpdateRow(1, update, takes));
        EXPECT_EQ(takes, update.Values().empty());
    }
    EXPECT_FALSE(table->AddIndex("i", {1}));
    table->DeleteRow(1);
    EXPECT_EQ(std::vector<uint32_t>{1}, RowIDsOf(table));
}

}   // namespace vela
