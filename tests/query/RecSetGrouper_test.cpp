#include "engine/query/RecSetGrouper.h"

#include <gtest/gtest.h>

#include "tests/query/ExprTesting.h"
#include "tests/query/MemoryTable.h"

namespace vela {

namespace {

using test::MemoryTable;

// Groups a table's rows by its columns 1 and, when there is one, 2; the row ids, groups apart.
std::string Groups(MemoryTable* table)
{
    SimpleVector<VelaTable*> tables{table};
    VelaEvalContext context;
    context.tables = &tables;
    std::vector<VelaExprPtr> columns;
    for (long column = 1; column < table->QtyColumns(); column++)
        columns.push_back(ExprField(0, static_cast<uint32_t>(column)));
    SimpleVector<uint32_t> rowIDs;
    table->GetRowIDs(&rowIDs);
    RecSetList list(1);
    for (const uint32_t rowID : rowIDs)
        list.Add(&rowID);
    const auto starts = RecSetGrouper(columns, context).SortIntoGroups(&list);
    std::string text;
    size_t group = 0;
    for (size_t i = 0; i < list.Count(); i++) {
        if (group < starts.size() && starts[group] == i) {
            text += group > 0 ? " |" : "";
            group++;
        }
        text += " " + std::to_string(list.At(i).RowID(0));
    }
    EXPECT_EQ(group, starts.size());
    return text;
}

std::string GroupsOf(VelaDataType type, const std::vector<test::Cell>& cells)
{
    MemoryTable table("t");
    table.AddColumn("a", type);
    uint32_t rowID = 1;
    for (const test::Cell& cell : cells)
        table.Row(rowID++, {cell});
    return Groups(&table);
}

}   // namespace

TEST(RecSetGrouper, GroupsComeByKeyBytesAndKeepTheirOrderInside)
{
    const auto i = [](int32_t number) { return VelaValue::Integer(number); };
    const struct {
        const char* why;
        VelaDataType type;
        std::vector<test::Cell> cells;
        const char* groups;
    } cases[] = {
        {"no rows, no groups", kTypeInteger, {}, ""},
        {"texts by their bytes",
         kTypeString,
         {Text("b"), Text("a"), Text("b"), Text("B")},
         " 4 | 2 | 1 3"},
        {"a shorter text first",
         kTypeString,
         {Text("ab"), Text("a"), Text(""), Text("abcdefghi"), Text("abcdefgh")},
         " 3 | 2 | 1 | 5 | 4"},
        // 1 is 01 00 00 00, 256 is 00 01 00 00, -1 is FF FF FF FF in memory.
        {"NUL bytes at the end count",
         kTypeString,
         {VelaValue::String(string("a\0", 2, kEncodingUTF8)), Text("a")},
         " 2 | 1"},
        {"integers by their bytes in memory",
         kTypeInteger,
         {i(1), i(256), i(-1), i(0), i(1)},
         " 4 | 2 | 1 5 | 3"},
        {"a null Integer is 0", kTypeInteger, {i(0), VelaValue::Null(kTypeInteger)}, " 1 2"},
        {"any other null is the text NULL",
         kTypeString,
         {Text("NULL"), VelaValue::Null(kTypeString), std::nullopt},
         " 1 2 3"},
        {"a Boolean is TRUE or FALSE",
         kTypeBoolean,
         {VelaValue::Boolean(true), Text("FALSE"), VelaValue::Boolean(false), Text("TRUE")},
         " 2 3 | 1 4"},
        {"a Double is its text",
         kTypeDouble,
         {VelaValue::Double(10), VelaValue::Double(9), VelaValue::Double(1e1), Text("9")},
         " 1 3 | 2 4"},
        {"a Date has its prefix",
         kTypeDate,
         {Date("2020-01-01"), Text("2020-01-01"), Text("DATE 2020-01-01")},
         " 2 | 1 3"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.groups, GroupsOf(c.type, c.cells)) << c.why;
}

TEST(RecSetGrouper, ColumnsAreJoinedWithoutSeparators)
{
    for (const bool inColumns : {false, true}) {
        MemoryTable table("t");
        table.AddColumn("a", kTypeString).AddColumn("b", kTypeString);
        table.Row(1, {Text("ab"), Text("c")});
        table.Row(2, {Text("a"), Text("bc")});
        table.Row(3, {Text("a"), Text("bd")});
        if (inColumns)
            table.OfferColumns();
        EXPECT_EQ(" 1 2 | 3", Groups(&table));
    }
}

TEST(RecSetGrouper, ManyGroupsAreFoundAgain)
{
    constexpr int32_t kGroups = 5000;
    MemoryTable table("t");
    table.AddColumn("a", kTypeInteger);
    for (uint32_t row = 0; row < 3 * kGroups; row++)
        table.Row(row, {VelaValue::Integer(static_cast<int32_t>(row) % kGroups)});
    const std::string groups = Groups(&table);
    EXPECT_EQ(kGroups - 1, std::count(groups.begin(), groups.end(), '|'));
    EXPECT_NE(std::string::npos, groups.find("| 4660 9660 14660 |"));
}

}   // namespace vela
