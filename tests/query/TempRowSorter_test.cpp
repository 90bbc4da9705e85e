#include "engine/query/TempRowSorter.h"

#include <gtest/gtest.h>

#include "tests/query/ExprTesting.h"

namespace vela {

namespace {

// One column of these values.
void Fill(VelaTempTable* table, const std::vector<VelaValue>& values)
{
    table->AddColumn("c", kTypeNone);
    for (const VelaValue& value : values)
        table->AppendRow(nullptr)[0] = value;
}

std::vector<uint32_t> Order(const VelaTempTable& table, SimpleVector<long> columns,
                            SimpleVector<long> directions)
{
    return TempRowSorter(table, columns, directions).SortedOrder();
}

}   // namespace

TEST(TempRowSorter, MissingColumnsAreNoKeys)
{
    VelaTempTable table;
    Fill(&table, {I(2), I(1)});
    EXPECT_EQ((std::vector<uint32_t>{0, 1}), Order(table, {}, {}));
    EXPECT_EQ((std::vector<uint32_t>{0, 1}), Order(table, {1}, {1}));
    EXPECT_EQ((std::vector<uint32_t>{0, 1}), Order(table, {-1}, {1}));
    EXPECT_EQ((std::vector<uint32_t>{1, 0}), Order(table, {7, 0}, {1, 1}));
}

TEST(TempRowSorter, CompareAsksTheTypeOfTheFirstRow)
{
    VelaTempTable table;
    Fill(&table, {I(5), Text("a"), D(10.5), Text("5")});
    const TempRowSorter up(table, {0}, {1});
    const TempRowSorter down(table, {0}, {-1});
    const struct {
        uint32_t a, b;
        int order;
        const char* why;
    } cases[] = {
        {0, 1, 1, "5 > 0, what 'a' is as an integer"},
        {1, 0, 1, "'a' > '5' as texts"},
        {0, 2, -1, "10.5 is 10 as an integer"},
        {2, 0, 1, "10.5 > 5.0 as doubles"},
        {0, 3, 0, "'5' is 5"},
        {3, 0, 0, "'5' = '5'"},
    };
    for (const auto& c : cases) {
        const int order = up.Compare(c.a, c.b);
        EXPECT_EQ(c.order, (order > 0) - (order < 0)) << c.why;
        EXPECT_EQ(-order, down.Compare(c.a, c.b)) << c.why;
    }
}

}   // namespace vela
