#include "engine/query/VExprAggregate.h"

#include <gtest/gtest.h>

#include <random>

#include "engine/query/VExprMath.h"
#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

VelaExprPtr Aggregate(VelaFuncCode func, VelaExprPtr operand, bool distinct = false)
{
    return std::make_unique<VExprAggregate>(func, std::move(operand), distinct);
}

std::vector<std::vector<Cell>> RowsOf(const std::vector<VelaValue>& values)
{
    std::vector<std::vector<Cell>> rows;
    for (const VelaValue& value : values)
        rows.push_back({value});
    return rows;
}

// Of one row per value, in a column that has no type of its own.
std::string Over(const std::vector<VelaValue>& values, VelaFuncCode func, bool distinct = false)
{
    OneTable data({kTypeNone}, RowsOf(values));
    return Outcome(Aggregate(func, ExprField(0, 1), distinct), data.Group());
}

TEST(VExprAggregate, EveryFunctionOverGroups)
{
    const VelaValue null;
    const VelaValue yes = B(true);
    const VelaValue no = B(false);
    struct {
        std::vector<VelaValue> values;
        const char* outcomes;   // of COUNT, SUM, AVG, MIN, MAX
    } cases[] = {
        {{}, "Integer 0, NULL Integer, NULL Integer, NULL Integer, NULL Integer"},
        {{null, Null(kTypeString)},
         "Integer 0, NULL Integer, NULL Integer, NULL Integer, NULL Integer"},
        {{I(5), null, I(-2)}, "Integer 2, Integer 3, Double 1.5, Integer -2, Integer 5"},
        {{yes, no, yes},
         "Integer 3, Integer 2, Double 0.6666666666666666, Boolean FALSE, Boolean TRUE"},
        {{I(1), D(2.5)}, "Integer 2, Double 3.5, Double 1.75, Integer 1, Double 2.5"},
        {{D(0.1), D(0.2)},
         "Integer 2, Double 0.30000000000000004, Double 0.15000000000000002, Double 0.1, Double "
         "0.2"},
        {{I(2), D(2), yes},
         "Integer 3, Double 5, Double 1.6666666666666667, Boolean TRUE, Integer 2"},
        {{I(1), D(1), yes}, "Integer 3, Double 3, Double 1, Integer 1, Integer 1"},
        {{Text("10 eggs"), Text("9")},
         "Integer 2, Double 19, Double 9.5, String 10 eggs, String 9"},
        {{I(10), Text("9")}, "Integer 2, Double 19, Double 9.5, Integer 10, String 9"},
        {{Date("1994-10-01"), Date("1994-07-09")},
         "Integer 2, Integer 0, Double 0, Date 1994-07-09, Date 1994-10-01"},
        {{I(2147483647), I(1)},
         "Integer 2, Double 2147483648, Double 1073741824, Integer 1, Integer 2147483647"},
        {{I(-2147483647 - 1), I(-1)},
         "Integer 2, Double -2147483649, Double -1073741824.5, Integer -2147483648, Integer -1"},
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

TEST(VExprAggregate, NestedAggregatesRunOverTheSameGroup)
{
    OneTable data({kTypeInteger}, RowsOf({I(4), I(6), Null(kTypeInteger)}));
    const VelaEvalContext group = data.Group();
    EXPECT_EQ("Integer 9", Outcome(Aggregate(kFuncSum, Aggregate(kFuncCount, nullptr)), group));
    EXPECT_EQ("Integer 30",
              Outcome(Aggregate(kFuncSum, Aggregate(kFuncSum, ExprField(0, 1))), group));
    EXPECT_EQ("Integer 1",
              Outcome(Aggregate(kFuncCount, Aggregate(kFuncMax, ExprField(0, 1)), true), group));
    // The sum of each value times the number of values: 4 * 2 + 6 * 2, the NULL's form is 0.
    VelaExprPtr product =
        std::make_unique<VExprMath>(ExprField(0, 1), '*', Aggregate(kFuncCount, ExprField(0, 1)));
    EXPECT_EQ("Integer 20", Outcome(Aggregate(kFuncSum, std::move(product)), group));
    EXPECT_EQ("NULL Integer", Outcome(Aggregate(kFuncSum, Aggregate(kFuncSum, nullptr)), group))
        << "an incomplete one is UNKNOWN for every row";
}

TEST(VExprAggregate, NestedAggregatesAreComputedAnewForEachGroup)
{
    const VelaExprPtr nested = Aggregate(kFuncMax, Aggregate(kFuncSum, ExprField(0, 1)));
    OneTable first({kTypeInteger}, RowsOf({I(4), I(6)}));
    OneTable second({kTypeInteger}, RowsOf({I(1)}));
    EXPECT_EQ("Integer 10", Outcome(nested, first.Group()));
    EXPECT_EQ("Integer 1", Outcome(nested, second.Group()));
}

// Each level evaluated anew for every row would take 1000 to the power of 10 steps.
TEST(VExprAggregate, DeeplyNestedAggregatesEnd)
{
    std::vector<VelaValue> values(1000, I(7));
    VelaExprPtr nested = ExprField(0, 1);
    for (int level = 0; level < 10; level++)
        nested = Aggregate(kFuncMax, std::move(nested));
    OneTable data({kTypeInteger}, RowsOf(values));
    EXPECT_EQ("Integer 7", Outcome(nested, data.Group()));
}

}   // namespace
}   // namespace vela
