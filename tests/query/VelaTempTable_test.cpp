#include "engine/query/VelaTempTable.h"

#include <gtest/gtest.h>

#include "engine/query/VelaQuery.h"
#include "tests/query/ExprTesting.h"
#include "tests/storage/StorageTesting.h"

namespace vela {

namespace {

// A row buffer whose values the test owns.
struct Buffer {
    explicit Buffer(const std::vector<VelaValue>& contents)
    {
        for (const VelaValue& value : contents)
            values.emplace_back(value, 99);
        for (VelaValueWithID& value : values)
            row.push_back(&value);
    }

    std::vector<VelaValueWithID> values;
    VelaRow row;
};

std::string ShownCell(VelaTempTable* table, uint32_t row, long column)
{
    VelaValue value = I(-77);
    return table->GetValue(row, column, &value) ? Shown(value) : "none, " + Shown(value);
}

// Rows 10, 20, 30 with the Integers 7, 5, 6, whose columns the result shares.
std::unique_ptr<VelaTempTable> SharedRows(test::MemoryTable* source)
{
    source->AddColumn("a", kTypeInteger).OfferColumns();
    source->Row(10, {I(7)}).Row(20, {I(5)}).Row(30, {I(6)});
    VelaQuery query(nullptr);
    query.AddTable(source);
    query.AddOutput(ExprField(0, 1));
    query.SetLeastSharedRows(1);
    std::unique_ptr<VelaTempTable> result = query.RunQuery();
    EXPECT_EQ(3, source->Columns()->Share(1).use_count()) << "the table, the result and this";
    return result;
}

std::string ShownRows(VelaTempTable* table)
{
    std::string text;
    for (uint32_t row = 0; row < table->QtyRows(); row++) {
        const auto source = table->GetSourceRecSet(row);
        text += ShownCell(table, row, 0) + (source ? " < " : "");
        text += source ? std::to_string(source->RowID(0)) + "; " : "; ";
    }
    return text;
}

void AddInteger(VelaTempTable* table, int32_t number)
{
    Buffer buffer({I(number)});
    table->AddRow(buffer.row, false);
}

}   // namespace

TEST(VelaTempTable, RowsMayBeShorterAndLongerThanTheColumns)
{
    VelaTempTable table;
    table.AddColumn("a", kTypeInteger);
    table.AddColumn("b", kTypeInteger);
    const std::vector<VelaValue> three(3, I(3));
    for (const size_t width : {2u, 1u, 3u, 2u, 0u}) {
        Buffer buffer(
            std::vector<VelaValue>(three.begin(), three.begin() + static_cast<long>(width)));
        const uint32_t row = table.AddRow(buffer.row, false);
        for (VelaValueWithID& value : buffer.values)
            value.SetInteger(4);   // the table has a copy
        for (long column = 0; column < 4; column++) {
            const bool isThere = column < static_cast<long>(width);
            EXPECT_EQ(isThere ? "Integer 3" : "none, Integer -77", ShownCell(&table, row, column))
                << "width " << width << ", column " << column;
        }
    }
    EXPECT_EQ("Integer 3", ShownCell(&table, 0, 1)) << "the first row kept its width";
    EXPECT_EQ(5u, RowIDsOf(&table).size());
    EXPECT_TRUE(table.HasRow(4));
    EXPECT_FALSE(table.HasRow(5));
    EXPECT_EQ("none, Integer -77", ShownCell(&table, 5, 0)) << "no such row";
    EXPECT_EQ("none, Integer -77", ShownCell(&table, kInvalidRowID, 0));
    EXPECT_EQ("none, Integer -77", ShownCell(&table, 0, -1));
    table.RemoveLastRow();
    AddInteger(&table, 3);
    EXPECT_EQ("Integer 3", ShownCell(&table, 4, 0)) << "not as narrow as the one before";
}

TEST(VelaTempTable, TakesValuesAndRefusesOtherChanges)
{
    VelaTempTable table;
    table.AddColumn("a", kTypeString);
    VelaRow row;
    row.push_back(new VelaValueWithID(Text("mine"), 1));
    table.AddRow(row, true);
    EXPECT_TRUE(row.empty()) << "freed by the table";
    Buffer buffer({Text("other")});
    EXPECT_FALSE(table.UpdateRow(0, buffer.row, false));
    table.DeleteRow(0);
    EXPECT_EQ("String mine", ShownCell(&table, 0, 0));
    EXPECT_EQ(1u, table.QtyRows());
    EXPECT_FALSE(table.AddIndex("i", SimpleVector<uint32_t>{0}));
}

TEST(VelaTempTable, ColumnsAreDescribedByNumber)
{
    VelaTempTable table;
    table.AddColumn("a", kTypeDate);
    table.AddColumn("b", kTypeNone);
    EXPECT_EQ(string("a"), table.Column(0)->name);
    EXPECT_EQ(kTypeDate, table.Column(0)->Type());
    EXPECT_EQ(nullptr, table.Column(-1));
    EXPECT_EQ(nullptr, table.Column(2));
    EXPECT_EQ(1, table.FindColumnNumber(1));
    EXPECT_EQ(-1, table.FindColumnNumber(2));
}

TEST(VelaTempTable, SourceIsToldOnlyOfRowsThatHaveOne)
{
    VelaTempTable table(2);
    table.AddColumn("a", kTypeInteger);
    const uint32_t rows[] = {11, 12};
    const VelaRecSet source(rows);
    AddInteger(&table, 1);
    EXPECT_FALSE(table.GetSourceRecSet(0).has_value()) << "before the first one";
    table.AppendRow(&source);
    AddInteger(&table, 2);
    AddInteger(&table, 3);
    table.RemoveLastRow();   // which had none
    table.AppendRow(&source);
    for (const long row : {-1l, 0l, 2l, 4l})
        EXPECT_FALSE(table.GetSourceRecSet(row).has_value()) << row;
    for (const long row : {1l, 3l}) {
        ASSERT_TRUE(table.GetSourceRecSet(row).has_value()) << row;
        EXPECT_EQ(12u, table.GetSourceRecSet(row)->RowID(1)) << row;
    }
    VelaTempTable ofNoTables(0);
    const VelaRecSet empty;
    ofNoTables.AppendRow(&empty);
    EXPECT_TRUE(ofNoTables.GetSourceRecSet(0).has_value()) << "an empty source is one";
}

TEST(VelaTempTable, ManyRowsStayWhereTheyAre)
{
    VelaTempTable table;
    for (int i = 0; i < 3; i++)
        table.AddColumn("a", kTypeInteger);
    VelaValue* first = table.AppendRow(nullptr);
    first[2].SetInteger(-1);
    constexpr uint32_t kRows = 50000;   // many blocks, which rows of 3 don't fill evenly
    for (uint32_t row = 1; row < kRows; row++)
        table.AppendRow(nullptr)[2].SetInteger(static_cast<int32_t>(row));
    EXPECT_EQ(first, table.RowValues(0));
    for (uint32_t row = 1; row < kRows; row++)
        ASSERT_EQ(static_cast<int32_t>(row), table.RowValues(row)[2].GetInteger());
    EXPECT_EQ(-1, first[2].GetInteger());
    const VelaValue* removed = table.RowValues(kRows - 1);
    table.RemoveLastRow();
    EXPECT_EQ(removed, table.AppendRow(nullptr)) << "the place is used again";
    EXPECT_TRUE(removed[2].IsNull()) << "but not what it held";
}

TEST(VelaTempTable, ChangesWorkOnRowsThatShareColumns)
{
    const struct {
        const char* what;
        void (*change)(VelaTempTable*);
        const char* rows;
    } cases[] = {
        {"nothing", [](VelaTempTable*) {}, "Integer 7 < 10; Integer 5 < 20; Integer 6 < 30; "},
        {"a row more", [](VelaTempTable* table) { AddInteger(table, 9); },
         "Integer 7 < 10; Integer 5 < 20; Integer 6 < 30; Integer 9; "},
        {"a row in place", [](VelaTempTable* table) { table->AppendRow(nullptr)->SetInteger(9); },
         "Integer 7 < 10; Integer 5 < 20; Integer 6 < 30; Integer 9; "},
        {"rows at once",
         [](VelaTempTable* table) {
             const uint32_t source = 40;
             table->AppendRows(1, &source)->SetInteger(9);
         },
         "Integer 7 < 10; Integer 5 < 20; Integer 6 < 30; Integer 9 < 40; "},
        {"room for rows", [](VelaTempTable* table) { table->ReserveRows(5); },
         "Integer 7 < 10; Integer 5 < 20; Integer 6 < 30; "},
        {"a row less", [](VelaTempTable* table) { table->RemoveLastRow(); },
         "Integer 7 < 10; Integer 5 < 20; "},
        {"sorted",
         [](VelaTempTable* table) { table->Sort(SimpleVector<long>{0}, SimpleVector<long>{1}); },
         "Integer 5 < 20; Integer 6 < 30; Integer 7 < 10; "},
    };
    for (const auto& c : cases) {
        test::MemoryTable source("t");
        const std::unique_ptr<VelaTempTable> table = SharedRows(&source);
        c.change(table.get());
        EXPECT_EQ(c.rows, ShownRows(table.get())) << c.what;
    }
}

TEST(VelaTempTable, SortTakesWidthsAndSourcesAlong)
{
    VelaTempTable table(1);
    table.AddColumn("a", kTypeInteger);
    const uint32_t rowIDs[] = {30, 10, 20};
    for (const uint32_t& rowID : rowIDs) {
        const VelaRecSet source(&rowID);
        Buffer buffer({I(static_cast<int32_t>(rowID))});
        VelaValueWithID more(Text("wide"), 5);
        if (rowID == 10)
            buffer.row.push_back(&more);
        table.AddRow(buffer.row, false, &source);
    }
    table.Sort(SimpleVector<long>{0}, SimpleVector<long>{1});
    const int32_t expected[] = {10, 20, 30};
    for (uint32_t row = 0; row < 3; row++) {
        EXPECT_EQ("Integer " + std::to_string(expected[row]), ShownCell(&table, row, 0));
        EXPECT_EQ(static_cast<uint32_t>(expected[row]), table.GetSourceRecSet(row)->RowID(0));
    }
    EXPECT_EQ("String wide", ShownCell(&table, 0, 1));
    EXPECT_EQ("none, Integer -77", ShownCell(&table, 1, 1));
    AddInteger(&table, 5);
    EXPECT_EQ("Integer 5", ShownCell(&table, 3, 0)) << "rows added after a sort come last";
}

}   // namespace vela
