#include "engine/storage/BodyMerge.h"

#include <gtest/gtest.h>

#include "engine/storage/RecordFormat.h"
#include "tests/storage/StorageTesting.h"

// What tables of up to 32 columns make of rows, nulls and columns that are named twice, VelaTransRandom_test compares with
// its model.

namespace vela {

TEST(MergeBodies, SlackOddTruthsAndDamageAreTidied)
{
    const struct {
        const char* base;
        const char* changes;
        const char* merged;
        const char* why;
    } cases[] = {
        {"04 01 05 02 0C 03 00 04 03"
         "00 00 00 04 00 00 00 01 00 00 06 00 61 2D 2D 2D  07  00 00 00 01  EE EE EE",
         "00", "03 01 05 02 0C 04 03 00 00 00 01 00 00 00 01 00 00 06 00 61  01  00 00 00 01",
         "space behind the text, a TRUE of 7, a null, slack"},
        {"02 01 03 02 03 00 00 00 01 00 00", "01 02 03 00 00 00 05",
         "02 01 03 02 03 00 00 00 01 00 00 00 05", "what can be read stays"},
        {"", "01 02 03 00 00 00 05", "01 02 03 00 00 00 05", "nothing can"},
    };
    for (const auto& c : cases) {
        std::vector<char> merged;
        EXPECT_FALSE(
            MergeBodies(FromHex(c.base), FromHex(c.changes), MergedNulls::kTakeOut, &merged));
        EXPECT_EQ(ToHex(FromHex(c.merged)), ToHex({merged.data(), merged.size()})) << c.why;
    }
}

TEST(MergeBodies, RowsMayBeWiderThanUsual)
{
    TestRow base;
    TestRow changes;
    TestRow expected;
    for (uint32_t id = 1; id <= 100; id++) {
        const int32_t changed = id % 2 == 0 ? static_cast<int32_t>(id) : 0;
        base.Add(id, Int(0));
        if (changed != 0)
            changes.Add(id, Int(changed));
        expected.Add(id, Int(changed));
    }
    const auto bodyOf = [](const VelaRow& row) {
        std::string body(CalcSchemaAndDataSize(row), '?');
        EncodeRecordBody(body.data(), row);
        return body;
    };
    std::vector<char> merged;
    EXPECT_FALSE(MergeBodies(bodyOf(base), bodyOf(changes), MergedNulls::kTakeOut, &merged));
    EXPECT_EQ(bodyOf(expected), std::string(merged.data(), merged.size()));
}

}   // namespace vela
