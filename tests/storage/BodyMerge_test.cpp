#include "engine/storage/BodyMerge.h"

#include <gtest/gtest.h>

#include "engine/storage/RecordFormat.h"
#include "engine/storage/VTChangedRow.h"
#include "tests/storage/StorageTesting.h"

namespace vela {

namespace {

std::string BodyOf(const VelaRow& row)
{
    std::string body(CalcSchemaAndDataSize(row), '?');
    EncodeRecordBody(body.data(), row);
    return body;
}

std::string TextOf(std::string_view body)
{
    VelaRow values;
    EXPECT_TRUE(DecodeRecordBody(body, &values));
    const std::string text = RowText(values);
    DeleteValues(&values);
    return text;
}

std::string Merged(const std::string& base, const std::string& changes, MergedNulls nulls,
                   bool* holdsNull)
{
    std::vector<char> merged;
    *holdsNull = MergeBodies(base, changes, nulls, &merged);
    return TextOf({merged.data(), merged.size()});
}

}   // namespace

TEST(MergeBodies, ReplacesAppendsAndTakesOut)
{
    TestRow base{{1, Int(1)}, {2, Str("two")}, {3, Int(3)}};
    TestRow twice{{1, Int(1)}, {2, Int(2)}, {1, Int(11)}};
    TestRow none;
    TestRow first{{1, Str("longer than before")}};
    TestRow mixed{{9, Int(9)}, {2, Int(22)}};
    TestRow null{{2, Null(kTypeString)}};
    TestRow absentNull{{8, Null(kTypeInteger)}, {3, Int(33)}};
    TestRow sameTwice{{2, Int(5)}, {2, Int(6)}};
    TestRow newTwice{{7, Int(5)}, {7, Int(6)}};
    TestRow nullThenValue{{2, Null(kTypeInteger)}, {2, Int(6)}};
    TestRow valueThenNull{{2, Int(6)}, {2, Null(kTypeInteger)}};
    TestRow nullOfTwice{{1, Null(kTypeInteger)}};
    const struct {
        const VelaRow& base;
        const VelaRow& changes;
        const char* taken;   // with nulls taken out
        const char* kept;    // with nulls kept
        const char* why;
    } cases[] = {
        {base, none, "1=Integer 1, 2=String[600] two, 3=Integer 3", nullptr, "nothing to change"},
        {none, base, "1=Integer 1, 2=String[600] two, 3=Integer 3", nullptr,
         "nothing to start from"},
        {base, first, "1=String[600] longer than before, 2=String[600] two, 3=Integer 3", nullptr,
         "in its place, with another type"},
        {base, mixed, "1=Integer 1, 2=Integer 22, 3=Integer 3, 9=Integer 9", nullptr,
         "a new column goes to the end"},
        {base, null, "1=Integer 1, 3=Integer 3", "1=Integer 1, 2=NULL None, 3=Integer 3",
         "a null goes, or keeps the place"},
        {base, absentNull, "1=Integer 1, 2=String[600] two, 3=Integer 33",
         "1=Integer 1, 2=String[600] two, 3=Integer 33, 8=NULL None", "a null of a new column"},
        {base, sameTwice, "1=Integer 1, 2=Integer 6, 3=Integer 3", nullptr, "the last one wins"},
        {none, newTwice, "7=Integer 6", nullptr, "the last one wins, once"},
        {base, nullThenValue, "1=Integer 1, 2=Integer 6, 3=Integer 3", nullptr, "last one wins"},
        {base, valueThenNull, "1=Integer 1, 3=Integer 3", "1=Integer 1, 2=NULL None, 3=Integer 3",
         "last one wins"},
        {twice, first, "1=String[600] longer than before, 2=Integer 2, 1=Integer 11", nullptr,
         "the first of two is the one that is read"},
        {twice, nullOfTwice, "2=Integer 2", "1=NULL None, 2=Integer 2, 1=Integer 11",
         "taken out, the column is gone"},
    };
    for (const auto& c : cases) {
        bool holdsNull = true;
        EXPECT_EQ(c.taken,
                  Merged(BodyOf(c.base), BodyOf(c.changes), MergedNulls::kTakeOut, &holdsNull))
            << c.why;
        EXPECT_FALSE(holdsNull) << c.why;
        EXPECT_EQ(c.kept != nullptr ? c.kept : c.taken,
                  Merged(BodyOf(c.base), BodyOf(c.changes), MergedNulls::kKeep, &holdsNull))
            << c.why;
        EXPECT_EQ(c.kept != nullptr, holdsNull) << c.why;
    }
}

TEST(MergeBodies, SlackAndOddTruthsAreTidied)
{
    const std::string base = FromHex(
        "04 01 05 02 0C 03 00 04 03"
        "00 00 00 04 00 00 00 01 00 00 06 00 61 2D 2D 2D  07  00 00 00 01  EE EE EE");
    std::vector<char> merged;
    EXPECT_FALSE(MergeBodies(base, FromHex("00"), MergedNulls::kTakeOut, &merged));
    EXPECT_EQ(ToHex(FromHex("03 01 05 02 0C 04 03"
                            "00 00 00 01 00 00 00 01 00 00 06 00 61  01  00 00 00 01")),
              ToHex({merged.data(), merged.size()}));
}

TEST(MergeBodies, DamagedBaseKeepsWhatCanBeRead)
{
    bool holdsNull = false;
    EXPECT_EQ("1=Integer 1, 2=Integer 5",
              Merged(FromHex("02 01 03 02 03 00 00 00 01 00 00"), FromHex("01 02 03 00 00 00 05"),
                     MergedNulls::kTakeOut, &holdsNull));
    EXPECT_EQ("2=Integer 5",
              Merged("", FromHex("01 02 03 00 00 00 05"), MergedNulls::kTakeOut, &holdsNull));
}

// ---- VTChangedRow

}   // namespace vela
