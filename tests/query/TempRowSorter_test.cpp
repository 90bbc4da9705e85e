#include "engine/query/TempRowSorter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "tests/query/ExprTesting.h"

namespace vela {

namespace {

using Column = std::vector<VelaValue>;

VelaTempTable& Fill(VelaTempTable& table, const std::vector<Column>& rows)
{
    for (size_t i = 0; i < rows[0].size(); i++)
        table.AddColumn("c", kTypeNone);
    for (const Column& row : rows) {
        VelaValue* values = table.AppendRow(nullptr);
        std::copy(row.begin(), row.end(), values);
    }
    return table;
}

std::vector<uint32_t> Order(const VelaTempTable& table, SimpleVector<long> columns,
                            SimpleVector<long> directions)
{
    return TempRowSorter(table, columns, directions).SortedOrder();
}

std::vector<Column> OneColumn(const Column& values)
{
    std::vector<Column> rows;
    for (const VelaValue& value : values)
        rows.push_back({value});
    return rows;
}

}   // namespace

TEST(TempRowSorter, MissingColumnsAreNoKeys)
{
    VelaTempTable table;
    Fill(table, OneColumn({I(2), I(1)}));
    EXPECT_EQ((std::vector<uint32_t>{0, 1}), Order(table, {}, {}));
    EXPECT_EQ((std::vector<uint32_t>{0, 1}), Order(table, {1}, {1}));
    EXPECT_EQ((std::vector<uint32_t>{0, 1}), Order(table, {-1}, {1}));
    EXPECT_EQ((std::vector<uint32_t>{1, 0}), Order(table, {7, 0}, {1, 1}));
}

// In mixed columns the comparison contradicts itself (5 > 'a' and 'a' > 5). Whatever comes out, it
// is every row once, and it does come out.
TEST(TempRowSorter, MixedTypesAndNotANumberLoseNoRow)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Column values = {I(5),    Text("a"), D(nan),    D(1), Null(kTypeNone),
                           D(-nan), I(-1),     Text("7"), D(0), Date("2020-01-01")};
    const Column numbers = {D(nan), D(1), D(nan), D(-nan), D(-5), D(0)};
    std::mt19937 random(7);
    for (const Column& pool : {values, numbers}) {
        for (uint32_t count : {2u, 3u, 17u, 100u, 1000u}) {
            Column column;
            for (uint32_t i = 0; i < count; i++)
                column.push_back(pool[random() % pool.size()]);
            VelaTempTable table;
            Fill(table, OneColumn(column));
            auto order = Order(table, {0}, {1});
            std::sort(order.begin(), order.end());
            ASSERT_EQ(count, order.size());
            for (uint32_t i = 0; i < count; i++)
                EXPECT_EQ(i, order[i]) << "seed 7, " << count << " rows";
        }
    }
}

TEST(TempRowSorter, CompareAsksTheTypeOfTheFirstRow)
{
    VelaTempTable table;
    Fill(table, OneColumn({I(5), Text("a"), D(5.5), Text("5")}));
    const TempRowSorter up(table, {0}, {1});
    const TempRowSorter down(table, {0}, {-1});
    const struct {
        uint32_t a, b;
        int order;
        const char* why;
    } cases[] = {
        {0, 1, 1, "5 > 0, what 'a' is as an integer"},
        {1, 0, 1, "'a' > '5' as texts"},
        {0, 2, 0, "5.5 is 5 as an integer"},
        {2, 0, 1, "5.5 > 5.0 as doubles"},
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
