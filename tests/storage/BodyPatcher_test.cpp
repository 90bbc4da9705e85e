#include "engine/storage/BodyPatcher.h"

#include <gtest/gtest.h>

#include <random>

#include "engine/storage/BodyMerge.h"
#include "engine/storage/RecordFormat.h"
#include "tests/storage/StorageTesting.h"

namespace vela {
namespace {

VelaValue RandomValue(VelaDataType type, std::mt19937* random)
{
    const int32_t number = static_cast<int32_t>((*random)());
    const std::string text(number & 7, 'x');
    switch (type) {
        case kTypeInteger:
            return VelaValue::Integer(number);
        case kTypeDouble:
            return VelaValue::Double(number / 3.0);
        case kTypeBoolean:
            return VelaValue::Boolean((number & 1) != 0);
        case kTypeNone:
            return VelaValue::Null(kTypeInteger);
        default:
            return VelaValue::Text(type, string(text, kEncodingUTF8));
    }
}

std::string RandomBody(const std::vector<std::pair<uint32_t, VelaDataType>>& columns,
                       std::mt19937* random)
{
    TestRow row;
    for (const auto& [id, type] : columns)
        row.Add(id, RandomValue(type, random));
    std::string body(CalcSchemaAndDataSize(row), '?');
    EncodeRecordBody(body.data(), row);
    return body;
}

std::vector<std::pair<uint32_t, VelaDataType>> RandomColumns(size_t count, std::mt19937* random)
{
    const VelaDataType types[] = {kTypeInteger, kTypeDouble, kTypeBoolean,
                                  kTypeString,  kTypeDate,   kTypeInteger};
    std::vector<std::pair<uint32_t, VelaDataType>> columns;
    for (size_t i = 0; i < count; i++)
        columns.emplace_back(1 + (*random)() % 12,
                             (*random)() % 40 == 0 ? kTypeNone : types[(*random)() % 6]);
    return columns;
}

// What the patcher makes of base: false when it leaves that to others.
bool Patch(BodyPatcher* patcher, const std::string& base, const std::string& changes,
           std::vector<char>* patched)
{
    std::vector<BodyPatcher::Difference> differences;
    size_t size = 0;
    if (!patcher->FindDifferences(base, changes, &differences, &size))
        return false;
    patched->assign(base.begin(), base.begin() + static_cast<std::ptrdiff_t>(size));
    for (const auto& [at, bytes] : differences)
        bytes.copy(patched->data() + at, bytes.size());
    return true;
}

}   // namespace

// One patcher sees bodies of all kinds, many of one kind in a row, some with room behind them and some damaged.
TEST(BodyPatcher, GivesWhatMergingGivesOrNothing)
{
    size_t patched = 0;
    for (unsigned seed = 1; seed <= 300; seed++) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        BodyPatcher patcher;
        for (int kind = 0; kind < 6; kind++) {
            const auto columns = RandomColumns(random() % 8, &random);
            auto changed = columns;
            std::shuffle(changed.begin(), changed.end(), random);
            changed.resize(std::min<size_t>(changed.size(), random() % 3));
            if (random() % 6 == 0)
                changed = RandomColumns(1 + random() % 2, &random);
            for (int i = 0; i < 10; i++) {
                std::string base = RandomBody(columns, &random);
                const std::string changes = RandomBody(changed, &random);
                base.append(random() % 3, static_cast<char>(random()));
                if (random() % 3 == 0)
                    base[random() % base.size()] = static_cast<char>(random());
                if (random() % 12 == 0)
                    base.resize(random() % base.size());
                std::vector<char> merged;
                std::vector<char> fast;
                MergeBodies(base, changes, MergedNulls::kTakeOut, &merged);
                if (!Patch(&patcher, base, changes, &fast))
                    continue;
                patched++;
                ASSERT_EQ(merged, fast);
            }
        }
    }
    EXPECT_GT(patched, 1000u);
}

TEST(BodyPatcher, ServesRowsOfOneTable)
{
    std::mt19937 random(1);
    BodyPatcher patcher;
    std::vector<char> merged;
    for (int i = 0; i < 10; i++)
        EXPECT_TRUE(Patch(
            &patcher,
            RandomBody({{1, kTypeInteger}, {2, kTypeString}, {3, kTypeDouble}, {4, kTypeDate}},
                       &random),
            RandomBody({{3, kTypeDouble}, {1, kTypeInteger}}, &random), &merged));
    EXPECT_FALSE(Patch(&patcher, RandomBody({{1, kTypeInteger}}, &random),
                       RandomBody({{2, kTypeInteger}}, &random), &merged));
}

}   // namespace vela
