// What could not be read is told once, with file and offset: each kind of damage met in ordinary
// reading.

#include "engine/storage/DamageLog.h"

#include <gtest/gtest.h>

#include "engine/storage/VelaFileAccess.h"
#include "tests/storage/StorageTesting.h"
#include "tests/storage/TableFixture.h"

namespace vela {
namespace {

// Table t of an Integer and a String with rows 1 "aaaa", 2 "bbbb", 3 "cccc", and an index k on the
// String. Records take 37 bytes, row n at 256 + 37 (n - 1); entries 31, at 256 + 31 (n - 1).
void FillDisk(MemoryDisk* disk)
{
    DatabaseOnDisk database(disk);
    VelaTrans* table = database.Create("t", {kTypeInteger, kTypeString});
    for (const char* text : {"aaaa", "bbbb", "cccc"}) {
        TestRow row{{1, Int(7)}, {2, Str(text)}};
        table->AddRow(row, false);
    }
    SimpleVector<uint32_t> columnIDs;
    columnIDs.push_back(2);
    EXPECT_TRUE(table->AddIndex("k", columnIDs));
    EXPECT_TRUE(database.Commit());
}

// "file:offset" and the kind, for each place; reads everything twice, as a statement and a look-up
// by the index would.
std::vector<std::string> PlacesMet(MemoryDisk* disk)
{
    CapturedErrors errors;
    DatabaseOnDisk database(disk);
    for (int i = 0; i < 2; i++) {
        for (size_t number = 0; number < database.database->OpenTables().size(); number++)
            TableText(database.database->OpenTables()[number]);
        SimpleVector<uint32_t> found;
        if (VelaTrans* table = database.Table("t"))
            table->FindRowsByIndex(2, Str("bbbb"), &found);
        database.Rollback();
    }
    std::vector<std::string> places;
    for (const DamagedPlace& place : database.database->Damage().Places())
        places.push_back(place.file + ":" + std::to_string(place.offset) + " " +
                         std::to_string(static_cast<int>(place.kind)));
    return places;
}

TEST(DamageLog, EachKindOfDamageIsNotedOnceWithItsPlace)
{
    struct {
        const char* why;
        const char* file;
        ByteDamage damage;
        std::vector<std::string> places;
    } cases[] = {
        {"nothing", "t.dat", CutTo(256 + 3 * 37), {}},
        {"a tag that is none", "t.dat", SetByte(293, 'X'), {"t.dat:293 0"}},
        {"a body length over the end", "t.dat", SetByte(302, 1), {"t.dat:293 0"}},
        {"a file that ends within a header", "t.dat", CutTo(335), {"t.dat:330 1"}},
        {"a text over its record", "t.dat", SetByte(293 + 21 + 3, 99), {"t.dat:293 2"}},
        {"more values than fit", "t.dat", SetByte(293 + 12, 99), {"t.dat:293 2"}},
        {"an entry of another column", "t.k.idx", SetByte(287 + 13, 9), {"t.k.idx:287 3"}},
        {"an index without its second record", "t.k.idx", SetByte(287, 'X'), {"t.k.idx:287 0"}},
        {"an index without columns", "t.k.idx", SetByte(256 + 12, 99), {"t.k.idx:256 2"}},
        {"a map that has to be made anew", "t.map", SetByte(0, 'X'), {}},
    };
    MemoryDisk good;
    FillDisk(&good);
    ASSERT_EQ(256u + 3 * 37, good.Bytes("t.dat").size());
    for (const auto& c : cases) {
        MemoryDisk disk;
        disk.Restore(good.Snapshot());
        std::string bytes = good.Bytes(c.file);
        c.damage(&bytes);
        disk.Put(c.file, bytes);
        EXPECT_EQ(c.places, PlacesMet(&disk)) << c.why;
    }
    good.Remove("t.dat");
    EXPECT_EQ(std::vector<std::string>{"t.dat:0 4"}, PlacesMet(&good)) << "no record file";
}

TEST(DamageLog, ANewDatabaseLacksNothing)
{
    MemoryDisk disk;
    EXPECT_TRUE(PlacesMet(&disk).empty());
}

TEST(DamageLog, KeepsNoMoreThanItsMost)
{
    DamageLog log;
    for (size_t i = 0; i < DamageLog::kMostPlaces + 5; i++)
        log.Note("t.dat", static_cast<int64_t>(i), DamageKind::kHeader);
    EXPECT_EQ(DamageLog::kMostPlaces, log.Places().size());
}

}   // namespace
}   // namespace vela
