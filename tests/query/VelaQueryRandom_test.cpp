#include <gtest/gtest.h>

#include "tests/query/RandomQuery.h"

namespace vela::test {

namespace {

constexpr uint32_t kCases = 20000;

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
    for (uint32_t outputs = 1 + random->Pick(3); outputs > 0; outputs--)
        RandomQuery::AddOutput(random->Output(aggregate), pair);
    VelaExprPtr where = random->Where();
    pair->reference.where = where.get();
    pair->query.SetWhere(std::move(where));
    const uint32_t groupColumns = random->Chance(aggregate ? 60 : 5) ? 1 + random->Pick(2) : 0;
    for (uint32_t i = 0; i < groupColumns; i++)
        RandomQuery::AddGroupBy(random->Field(), pair);
    VelaExprPtr having = random->Having();
    pair->reference.having = having.get();
    pair->query.SetHaving(std::move(having));
    pair->reference.distinct = random->Chance(30);
    pair->query.SetDistinct(pair->reference.distinct);
    if (random->Chance(50))
        pair->query.SetLeastSharedRows(0);
    if (random->Chance(40))
        random->AddSortKeys(pair);
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
