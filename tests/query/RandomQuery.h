#pragma once

#include <memory>
#include <random>
#include <vector>

#include "engine/query/VelaExpr.h"
#include "tests/query/MemoryTable.h"
#include "tests/query/QueryPair.h"

namespace vela::test {

// RandomQuery makes tables and expressions from a seed: few distinct values, so that rows join, tie
// and repeat; and every oddity that a table may have (nulls, cells of another type than their
// column's, cells that can't be read).
class RandomQuery {
public:
    explicit RandomQuery(uint32_t seed) : mRandom(seed) {}

    // 0 to count - 1.
    uint32_t Pick(uint32_t count) { return static_cast<uint32_t>(mRandom() % count); }
    bool Chance(uint32_t percent) { return Pick(100) < percent; }

    // Makes the tables that the expressions are then about.
    void MakeTables();
    [[nodiscard]] const std::vector<std::unique_ptr<MemoryTable>>& Tables() const
    {
        return mTables;
    }

    // A condition; null now and then.
    VelaExprPtr Where();
    VelaExprPtr Having();
    // A select item: a field, an expression, and where aggregates are wanted mostly an aggregate.
    VelaExprPtr Output(bool aggregate);
    VelaExprPtr Field();
    VelaExprPtr Aggregate();

    // Give both queries of the pair the same: an output; a column to group by; sort keys among its outputs.
    static void AddOutput(VelaExprPtr output, QueryPair* pair);
    static void AddGroupBy(VelaExprPtr column, QueryPair* pair);
    void AddSortKeys(QueryPair* pair);

protected:
    std::mt19937 mRandom;
    std::vector<std::unique_ptr<MemoryTable>> mTables;

private:
    VelaDataType AnyType();
    VelaValue ValueOf(VelaDataType type);
    Cell AnyCell(VelaDataType type, bool clean);
    void FillTable(MemoryTable* table, uint32_t rowCount, bool clean);
    VelaExprPtr Constant();
    VelaExprPtr ConstantFor(const VelaExpr& field);
    VelaExprPtr Operand(int depth);
    uint16_t AnyOp();
    VelaExprPtr Term();
    VelaExprPtr FieldAndConstant();
    VelaExprPtr Like();
    VelaExprPtr Condition(int depth);
    VelaExprPtr Terms(bool conjunction, int depth);

    SimpleVector<VelaTable*> mTableList;
    std::vector<VelaDataType> mTypes =
        std::vector<VelaDataType>(4, kTypeInteger);   // that this query's columns prefer
    bool mUsesAggregates = false;
};

}   // namespace vela::test
