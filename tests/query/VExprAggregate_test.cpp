#include "engine/query/VExprAggregate.h"

#include <gtest/gtest.h>

#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

VelaExprPtr Aggregate(VelaFuncCode func, VelaExprPtr operand)
{
    return std::make_unique<VExprAggregate>(func, std::move(operand), false);
}

// Of one row per value, in a column that has no type of its own.
std::string Over(const std::vector<VelaValue>& values, VelaFuncCode func)
{
    std::vector<std::vector<Cell>> rows;
    for (const VelaValue& value : values)
        rows.push_back({value});
    OneTable data({kTypeNone}, rows);
    return Outcome(Aggregate(func, ExprField(0, 1)), data.Group());
}

// tests/sql/aggregates has groups of one type, and aggregates of aggregates.
TEST(VExprAggregate, GroupsOfMixedTypes)
{
    const VelaValue null;
    const VelaValue yes = B(true);
    struct {
        std::vector<VelaValue> values;
        const char* outcomes;   // of COUNT, SUM, AVG, MIN, MAX
    } cases[] = {
        {{null, Null(kTypeString)},
         "Integer 0, NULL Integer, NULL Integer, NULL Integer, NULL Integer"},
        {{I(1), D(2.5)}, "Integer 2, Double 3.5, Double 1.75, Integer 1, Double 2.5"},
        {{I(2), D(2), yes},
         "Integer 3, Double 5, Double 1.6666666666666667, Boolean TRUE, Integer 2"},
        {{I(1), D(1), yes}, "Integer 3, Double 3, Double 1, Integer 1, Integer 1"},
        {{I(10), Text("9")}, "Integer 2, Double 19, Double 9.5, Integer 10, String 9"},
        {{I(2147483647), I(2147483647), I(-2147483647)},
         "Integer 3, Integer 2147483647, Double 715827882.3333334, Integer -2147483647, "
         "Integer 2147483647"},
    };
    for (const auto& c : cases) {
        std::string outcomes;
        for (const VelaFuncCode func : {kFuncCount, kFuncSum, kFuncAvg, kFuncMin, kFuncMax})
            outcomes += (outcomes.empty() ? "" : ", ") + Over(c.values, func);
        EXPECT_EQ(c.outcomes, outcomes);
    }
    OneTable data({kTypeInteger}, {{I(4)}, {std::nullopt}, {I(6)}});
    EXPECT_EQ("Double 5", Outcome(Aggregate(kFuncAvg, ExprField(0, 1)), data.Group()))
        << "what can't be read is passed over";
    EXPECT_EQ("Integer 3", Outcome(Aggregate(kFuncCount, nullptr), data.Group()))
        << "COUNT(*) looks at no operand";
}

}   // namespace
}   // namespace vela
