#include "engine/query/DistinctRows.h"

#include <gtest/gtest.h>

#include "tests/core/TestValues.h"

namespace vela {

// Two hundred thousand dates, none equal to any: each look-up must be quick all the same. What is distinct, queries against
// the reference show.
TEST(DistinctRows, RowsThatEqualNothingDontPileUp)
{
    VelaTempTable table;
    table.AddColumn("c", kTypeNone);
    DistinctRows distinctRows(table);
    for (int i = 0; i < 200000; i++) {
        table.AppendRow(nullptr)[0] = Date("2020-01-01");
        ASSERT_TRUE(distinctRows.IsNew());
    }
}

}   // namespace vela
