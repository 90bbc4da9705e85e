#include "engine/storage/ColumnMemory.h"

#include <gtest/gtest.h>

#include "engine/sql/VelaSQL.h"
#include "tests/storage/TableFixture.h"

namespace vela {
namespace {

constexpr int kRows = 2000;

class ColumnMemoryOfTwoTables : public testing::Test {
protected:
    ColumnMemoryOfTwoTables()
    {
        for (const char* name : {"a", "b"}) {
            VelaTrans* table = mFiles.Create(name, {kTypeInteger, kTypeString, kTypeDouble});
            for (int i = 0; i < kRows; i++) {
                TestRow row{{1, I(i % 10)}, {2, Str("text " + std::to_string(i))}, {3, D(i)}};
                table->AddRow(row, false);
            }
        }
        mFiles.database->Commit();
        mFiles.Open();
    }

    int32_t Number(const char* sql)
    {
        VelaStatus status;
        const auto result = VelaSQLQuery(string(sql), *mFiles.database, &status);
        VelaValue value;
        EXPECT_TRUE(result && result->GetValue(0, 0, &value)) << sql;
        return value.GetInteger();
    }

    // Each of the tables, again and again, and both together.
    void ExpectRightAnswers()
    {
        for (int i = 0; i < 3; i++) {
            EXPECT_EQ(kRows / 10, Number("SELECT COUNT(*) FROM a WHERE c1 = 3"));
            EXPECT_EQ(kRows / 10, Number("SELECT COUNT(*) FROM b WHERE c2 LIKE '%7'"));
            EXPECT_EQ(kRows * (kRows - 1) / 2, Number("SELECT SUM(c3) FROM a"));
            EXPECT_EQ(kRows / 10,
                      Number("SELECT COUNT(*) FROM a, b WHERE a.c2 = b.c2 AND b.c1 = 4"));
        }
    }

    const ColumnMemory& Memory() const { return mFiles.database->Columns(); }

    MemoryDisk mDisk;
    DatabaseOnDisk mFiles{&mDisk};
};

TEST_F(ColumnMemoryOfTwoTables, CountsWhatIsKeptAndGivesItBack)
{
    ExpectRightAnswers();
    const uint64_t used = Memory().Used();
    // Of each table at least the number, the text and, of one, the double.
    EXPECT_GE(used, uint64_t{kRows} * (4 + 8 + 8 + 4 + 8 + 8));
    EXPECT_FALSE(Memory().WasShort());

    mFiles.database->SetColumnMemoryLimit(used);
    EXPECT_EQ(0u, Memory().Used());
    ExpectRightAnswers();
    EXPECT_FALSE(Memory().WasShort());
}

TEST_F(ColumnMemoryOfTwoTables, IsNotExceededBetweenStatements)
{
    ExpectRightAnswers();
    const uint64_t enough = Memory().Used();
    for (const uint64_t limit : {enough - 1, enough / 2, enough / 10, uint64_t{1}, uint64_t{0}}) {
        mFiles.database->SetColumnMemoryLimit(limit);
        for (int i = 0; i < 3; i++) {
            ExpectRightAnswers();
            EXPECT_LE(Memory().Used(), limit);
        }
    }
    // What an earlier statement has brought doesn't keep later ones from their columns for good.
    mFiles.database->SetColumnMemoryLimit(enough / 2);
    Number("SELECT COUNT(*) FROM a WHERE c2 LIKE '%7' AND c1 = 7 AND c3 > 0");
    Number("SELECT COUNT(*) FROM b WHERE c2 LIKE '%7' AND c1 = 7 AND c3 > 0");
    Number("SELECT COUNT(*) FROM b WHERE c2 LIKE '%7' AND c1 = 7 AND c3 > 0");
    EXPECT_GE(Memory().Used(), uint64_t{kRows} * (4 + 8));
    EXPECT_EQ(kRows / 10, Number("SELECT COUNT(*) FROM b WHERE c1 = 7"));
}

TEST_F(ColumnMemoryOfTwoTables, IsToldOfRowsThatAreAddedChangedAndDropped)
{
    ExpectRightAnswers();
    const uint64_t before = Memory().Used();
    VelaStatus status;
    const string longText(std::string(100000, 'x'), kEncodingUTF8);
    VelaSQLExecute("UPDATE a SET c2 = '" + longText + "' WHERE c1 = 3", *mFiles.database, &status);
    EXPECT_EQ(kRows / 10, Number("SELECT COUNT(*) FROM a WHERE c2 LIKE 'xx%'"));
    EXPECT_GE(Memory().Used(), before + 100000 * (kRows / 10));
    mFiles.database->Rollback();
    ExpectRightAnswers();
    EXPECT_LE(Memory().Used(), 2 * before);
    for (const char* name : {"a", "b"})
        VelaSQLExecute(string("DROP TABLE ") + name, *mFiles.database, &status);
    mFiles.database->Commit();
    EXPECT_LT(Memory().Used(), before / 10);   // the schema alone
}

}   // namespace
}   // namespace vela
