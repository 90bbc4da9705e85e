#include <gtest/gtest.h>

#include "tests/query/QueryPair.h"
#include "tests/query/RandomQuery.h"

namespace vela::test {

namespace {

constexpr uint32_t kCases = 20000;

void AddOutputs(RandomQuery* random, bool aggregate, QueryPair* pair)
{
    const uint32_t outputs = 1 + random->Pick(3);
    for (uint32_t i = 0; i < outputs; i++) {
        VelaExprPtr output = random->Output(aggregate);
        pair->reference.outputs.push_back(output.get());
        pair->query.AddOutput(std::move(output));
    }
}

void AddGrouping(RandomQuery* random, QueryPair* pair)
{
    const uint32_t columns = 1 + random->Pick(2);
    for (uint32_t i = 0; i < columns; i++) {
        VelaExprPtr column = random->Field();
        pair->reference.groupBy.push_back(column.get());
        pair->query.AddGroupBy(std::move(column));
    }
}

void AddSortKeys(RandomQuery* random, QueryPair* pair)
{
    const uint32_t keys = 1 + random->Pick(2);
    for (uint32_t i = 0; i < keys; i++) {
        const auto outputs = static_cast<uint32_t>(pair->reference.outputs.size());
        const auto column = static_cast<long>(random->Pick(outputs));
        const long direction = random->Chance(50) ? 1 : -1;
        pair->reference.sortColumns.push_back(column);
        pair->reference.sortDirections.push_back(direction);
        pair->query.AddSortKey(column, direction);
    }
}

void MakePair(RandomQuery* random, QueryPair* pair)
{
    random->MakeTables();
    for (const auto& table : random->Tables()) {
        // Now and then the same table twice.
        VelaTable* listed = random->Chance(5) ? random->Tables()[0].get() : table.get();
        if (listed->QtyColumns() < table->QtyColumns())
            listed = table.get();
        pair->reference.tables.push_back(listed);
        pair->query.AddTable(listed);
    }
    const bool aggregate = random->Chance(35);
    AddOutputs(random, aggregate, pair);
    VelaExprPtr where = random->Where();
    pair->reference.where = where.get();
    pair->query.SetWhere(std::move(where));
    if (random->Chance(aggregate ? 60 : 5))
        AddGrouping(random, pair);
    VelaExprPtr having = random->Having();
    pair->reference.having = having.get();
    pair->query.SetHaving(std::move(having));
    pair->reference.distinct = random->Chance(30);
    pair->query.SetDistinct(pair->reference.distinct);
    if (random->Chance(50))
        pair->query.SetLeastSharedRows(0);
    if (random->Chance(40))
        AddSortKeys(random, pair);
}

void CheckSeed(uint32_t seed)
{
    RandomQuery random(seed);
    QueryPair pair;
    MakePair(&random, &pair);
    ExpectAgreement(pair);
}

}   // namespace

TEST(VelaQueryRandom, AgreesWithTheDescribedEnumeration)
{
    ForEachSeed(kCases, CheckSeed);
}

}   // namespace vela::test
