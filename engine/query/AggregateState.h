#pragma once

#include <cstdint>
#include <memory>

#include "engine/core/VelaValue.h"
#include "engine/query/DistinctValues.h"
#include "engine/query/VelaFunctions.h"
#include "engine/query/VelaRecSet.h"
#include "engine/storage/TableColumns.h"

namespace vela {

// AggregateState takes the operand values of one group, one after another, and gives what an
// aggregate function makes of them. VExprAggregate.h tells the rules.
class AggregateState {
public:
    // func is kFuncAvg to kFuncSum. distinct counts for AVG, COUNT and SUM.
    AggregateState(VelaFuncCode func, bool distinct);
    // SUM or AVG after count values that are not null, Integers and Booleans or Doubles, with that sum.
    [[nodiscard]] static AggregateState OfIntegers(VelaFuncCode func, uint64_t count, int64_t sum);
    [[nodiscard]] static AggregateState OfDoubles(VelaFuncCode func, uint64_t count, double sum);

    // NULLs are skipped.
    void Take(const VelaValue& value);
    // Takes a column's values of the rows that the group has of a table, in the group's order, without making them. False:
    // this can't be done here, and nothing was taken; Take each one then.
    [[nodiscard]] bool TakeColumn(const ColumnData& column, const VelaRecSetGroup& group,
                                  size_t table);
    // The result for the values taken so far; may be NULL.
    [[nodiscard]] VelaValue Result() const;

private:
    void Add(const VelaValue& value);
    void AddInteger(int32_t number);
    void KeepIfBeyond(const VelaValue& value);
    template <class Number>
    [[nodiscard]] bool TakeNumbers(const ColumnData& column, const LargeVector<Number>& numbers,
                                   const VelaRecSetGroup& group, size_t table);
    [[nodiscard]] VelaValue Sum() const;

    VelaFuncCode mFunc;
    std::unique_ptr<DistinctValues> mSeen;   // null when all values count
    uint64_t mCount = 0;                     // values taken
    int64_t mIntegers = 0;                   // SUM, AVG: what Integers and Booleans add up to
    double mDoubles = 0.0;                   // what the others add up to
    bool mAreDoubles = false;                // whether the sum is a Double
    VelaValue mExtreme;                      // MIN, MAX
};

// A count as a value: an Integer when it fits one, else a Double.
[[nodiscard]] VelaValue CountValue(uint64_t count);

}   // namespace vela
