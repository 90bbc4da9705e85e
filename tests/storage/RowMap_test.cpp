#include "engine/storage/RowMap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <vector>

#include "tests/storage/StorageTesting.h"

namespace vela {

namespace {

// What a RowMap is: a list of keys, and the values by key.
class RowMapModel {
public:
    void Append(uint32_t rowID, int value)
    {
        keys.push_back(rowID);
        values[rowID] = value;
    }
    void Set(uint32_t rowID, int value)
    {
        if (values.count(rowID))
            values[rowID] = value;
        else
            Append(rowID, value);
    }
    bool Remove(uint32_t rowID)
    {
        if (values.erase(rowID) == 0)
            return false;
        keys.erase(std::find(keys.begin(), keys.end(), rowID));
        return true;
    }
    int Value(uint32_t rowID) const
    {
        const auto found = values.find(rowID);
        return found == values.end() ? 0 : found->second;
    }
    long FindIndex(uint32_t rowID) const
    {
        const auto found = std::find(keys.begin(), keys.end(), rowID);
        return found == keys.end() ? -1 : found - keys.begin();
    }

    std::vector<uint32_t> keys;
    std::map<uint32_t, int> values;
};

void ExpectSame(RowMap<int>& map, const RowMapModel& model, const std::vector<uint32_t>& rowIDs)
{
    ASSERT_EQ(model.keys.size(), map.Count());
    const bool listsTwice = model.keys.size() != model.values.size();
    for (size_t i = 1; i < model.keys.size() && !listsTwice; i++)
        ASSERT_LT(map.OrderOf(model.keys[i - 1]), map.OrderOf(model.keys[i])) << "at " << i;
    for (size_t i = 0; i < model.keys.size(); i++) {
        ASSERT_EQ(model.keys[i], map.GetRowIDByIndex(i)) << "at " << i;
        ASSERT_EQ(model.Value(model.keys[i]), map.GetItemByIndex(i)) << "at " << i;
    }
    EXPECT_EQ(kInvalidRowID, map.GetRowIDByIndex(model.keys.size()));
    EXPECT_EQ(0, map.GetItemByIndex(model.keys.size()));
    for (uint32_t rowID : rowIDs) {
        ASSERT_EQ(model.values.count(rowID) != 0, map.Contains(rowID)) << rowID;
        ASSERT_EQ(model.Value(rowID), map.GetItem(rowID)) << rowID;
        ASSERT_EQ(model.FindIndex(rowID), map.FindIndex(rowID)) << rowID;
    }
}

// Keys that make trouble: neighbours, regular distances, both ends of the range.
std::vector<uint32_t> KeyPool(TestRandom& random, size_t count)
{
    std::vector<uint32_t> pool;
    const uint32_t start = random.Next();
    const uint32_t step = random.OneIn(3) ? 1 : 1u << random.Below(24);
    for (uint32_t i = 0; pool.size() < count; i++)
        pool.push_back(random.OneIn(16) ? random.Next() : start + i * step);
    pool[0] = 0;
    pool[1] = kInvalidRowID;
    return pool;
}

// Keys that run on, of which the last ones come and go; they join the pool.
void AppendRun(TestRandom& random, RowMap<int>* map, RowMapModel* model,
               std::vector<uint32_t>* pool)
{
    uint32_t next = random.OneIn(4) ? kInvalidRowID - 20 : random.Below(3);
    for (uint32_t left = random.Below(300); left > 0; left--) {
        map->Append(next, static_cast<int>(left));
        if (random.OneIn(8)) {
            map->TakeBack(next);
            continue;
        }
        model->Append(next, static_cast<int>(left));
        pool->push_back(next++);
        if (random.OneIn(8)) {
            const uint32_t absent = random.OneIn(2) ? next : random.Next() | 1u << 30;
            ASSERT_EQ(model->Remove(absent), map->RemoveItem(absent));
            ASSERT_EQ(model->Remove(next - 1), map->RemoveItem(next - 1));
            pool->pop_back();
            next--;
        }
    }
    ExpectSame(*map, *model, *pool);
}

}   // namespace

TEST(RowMap, AgreesWithAListAndAMap)
{
    for (uint32_t seed = 1; seed <= 60; seed++) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TestRandom random(seed);
        std::vector<uint32_t> pool = KeyPool(random, 4 + random.Below(400));
        const bool listsTwice = seed % 2 == 0;
        RowMap<int> map(random.OneIn(2) ? 1000 : random.Below(3000));
        RowMapModel model;
        AppendRun(random, &map, &model, &pool);
        for (int step = 1; step <= 2000; step++) {
            const uint32_t rowID = pool[random.Below(static_cast<uint32_t>(pool.size()))];
            switch (random.Below(8)) {
                case 0:
                case 1:
                case 2:
                    if (listsTwice || !model.values.count(rowID)) {
                        map.Append(rowID, step);
                        model.Append(rowID, step);
                        break;
                    }
                    [[fallthrough]];
                case 3:
                    map.Set(rowID, step);
                    model.Set(rowID, step);
                    break;
                case 4:
                case 5:
                case 6:
                    ASSERT_EQ(model.Remove(rowID), map.RemoveItem(rowID)) << "step " << step;
                    break;
                default:
                    if (int* value = map.FindNode(rowID)) {
                        *value = -step;
                        model.values[rowID] = -step;
                    }
                    break;
            }
            if (step % 97 == 0)
                ExpectSame(map, model, pool);
            if (random.OneIn(700)) {
                map.Presize(random.Below(6000));   // empties it
                model = RowMapModel();
            }
            if (HasFatalFailure())
                return;
        }
        ExpectSame(map, model, pool);
    }
}

}   // namespace vela
