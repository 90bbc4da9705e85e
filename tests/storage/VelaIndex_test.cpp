#include "engine/storage/VelaIndex.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "engine/storage/RecordFormat.h"
#include "tests/storage/MemoryFileAccess.h"
#include "tests/storage/StorageTesting.h"

namespace vela {

namespace {

using Key = SimpleVector<VelaValue>;

// What an index is: entries in insertion order, searched one after the other.
class IndexModel {
public:
    struct Entry {
        Key values;
        uint32_t rowID;
    };

    void Delete(uint32_t rowID)
    {
        std::erase_if(entries, [rowID](const Entry& e) { return e.rowID == rowID; });
    }
    uint32_t Lookup(const Key& values) const
    {
        for (const Entry& entry : entries) {
            bool matches = true;
            for (size_t i = 0; i < entry.values.size(); i++)
                matches = matches && entry.values[i].Equals(values[i]);
            if (matches)
                return entry.rowID;
        }
        return kInvalidRowID;
    }
    // Rows whose first value has the key's type and is the same.
    std::vector<uint32_t> FindRows(const VelaValue& key) const
    {
        std::vector<uint32_t> rows;
        for (const Entry& entry : entries) {
            const VelaValue& first = entry.values[0];
            if (!first.IsNull() && first.GetType() == key.GetType() &&
                (IsTextBacked(key.GetType()) ? first.TextView() == key.TextView()
                                             : first.GetDouble() == key.GetDouble()))
                rows.push_back(entry.rowID);
        }
        return rows;
    }
    // Whether the first values that are not null have one type, which the key has too.
    bool IsOfOneType(const VelaValue& key) const
    {
        return std::all_of(entries.begin(), entries.end(), [&key](const Entry& entry) {
            return entry.values[0].IsNull() || entry.values[0].GetType() == key.GetType();
        });
    }

    std::vector<Entry> entries;
};

using Entries = std::vector<std::string>;

std::string EntryText(uint32_t rowID, const Key& values)
{
    std::string text = std::to_string(rowID) + ":";
    for (const VelaValue& value : values)
        text += " " + ValueText(value);
    return text;
}

Entries EntriesOf(VelaIndex& index)
{
    Entries entries;
    for (size_t i = 0; i < index.Count(); i++) {
        Key values;
        for (size_t position = 0; position < index.ColumnIDs().size(); position++)
            values.push_back(index.EntryAt(i).Value(position));
        entries.push_back(EntryText(index.EntryAt(i).RowID(), values));
    }
    return entries;
}

Entries EntriesOf(const IndexModel& model)
{
    Entries entries;
    for (const IndexModel::Entry& entry : model.entries)
        entries.push_back(EntryText(entry.rowID, entry.values));
    return entries;
}

// An index file in memory.
class IndexFile {
public:
    std::unique_ptr<RandomAccessMechanism> Open() { return files.OpenFile("t.i.idx", true); }
    bool Save(VelaIndex& index)
    {
        files.CreateFile("t.i.idx");
        return index.SaveToFile(Open().get());
    }
    std::string Records() const { return ToHex(disk.Bytes("t.i.idx").substr(kMetadataSize)); }

    MemoryDisk disk;

private:
    MemoryFileAccess files{&disk};
};

}   // namespace

// ---- the file

TEST(VelaIndex, FileOfEntries)
{
    IndexFile file;
    VelaIndex index("i", {2, 300});
    index.Add({Str("b"), Int(-1)}, 3);
    index.Add({Str("a"), Int(7)}, 1);
    EXPECT_TRUE(file.Save(index));
    EXPECT_FALSE(index.IsChanged());
    EXPECT_EQ(Zeros(256), file.disk.Bytes("t.i.idx").substr(0, 256));
    EXPECT_EQ(ToHex(FromHex("52 63 53 74 00 00 00 03 00 00 00 17  02  02 05 FF 2E 03"
                            "00 00 00 01 00 00 00 01 00 00 06 00 62  FF FF FF FF"
                            "52 63 53 74 00 00 00 01 00 00 00 17  02  02 05 FF 2E 03"
                            "00 00 00 01 00 00 00 01 00 00 06 00 61  00 00 00 07")),
              file.Records());
    VelaIndex loaded("i", {});
    EXPECT_TRUE(loaded.LoadFromFile(file.Open().get()));
    EXPECT_EQ((Entries{"3: String[600] b Integer -1", "1: String[600] a Integer 7"}),
              EntriesOf(loaded));
    EXPECT_FALSE(loaded.IsChanged());
    EXPECT_TRUE(loaded.CanAppendToFile());
}

TEST(VelaIndex, FailedAppendLeavesTheFileAndWantsAWholeOne)
{
    IndexFile file;
    VelaIndex index("i", {1});
    index.Add({Int(1)}, 1);
    ASSERT_TRUE(file.Save(index));
    const std::string before = file.Records();
    index.Add({Int(2)}, 2);
    const auto stream = file.Open();
    for (int64_t failing : {1, 2}) {   // the write, the flush
        VelaIndex again("i", {});
        ASSERT_TRUE(again.LoadFromFile(stream.get()));
        again.Add({Int(2)}, 2);
        file.disk.FailAt(failing, MemoryDisk::Fault::kOnce);
        EXPECT_FALSE(again.AppendToFile(stream.get()));
        EXPECT_EQ(before, file.Records());
        EXPECT_TRUE(again.IsChanged());
        EXPECT_FALSE(again.CanAppendToFile());
        EXPECT_EQ(2u, again.Lookup({Int(2)}));
    }
    EXPECT_TRUE(index.AppendToFile(stream.get()));
}

TEST(VelaIndex, LoadsWhatTheRecordsSay)
{
    const std::string one = "52 63 53 74 00 00 00 01 00 00 00 07 01 05 03 00 00 00 01";
    const std::string two = "52 63 53 74 00 00 00 02 00 00 00 07 01 05 03 00 00 00 02";
    const std::string again = "52 63 53 74 00 00 00 01 00 00 00 07 01 05 03 00 00 00 09";
    const std::string noRow = "52 63 53 74 FF FF FF FF 00 00 00 07 01 05 03 00 00 00 00";
    const std::string deleted = "54 72 73 68 00 00 00 03 00 00 00 07 01 06 03 00 00 00 00";
    const std::string slack = "52 63 53 74 00 00 00 01 00 00 00 09 01 05 03 00 00 00 01 EE EE";
    const std::string otherColumn = "52 63 53 74 00 00 00 03 00 00 00 07 01 06 03 00 00 00 03";
    const std::string noColumn = "52 63 53 74 00 00 00 03 00 00 00 01 00";
    const std::string badHeader = "00 63 53 74 00 00 00 02 00 00 00 07 01 05 03 00 00 00 02";
    const Entries first = {"1: Integer 1"};
    const Entries second = {"2: Integer 2"};
    const Entries both = {"1: Integer 1", "2: Integer 2"};
    const struct {
        std::string records;
        Entries entries;
        bool whole;
        bool canAppend;
        const char* why;
    } cases[] = {
        {one + two, both, true, true, "plain"},
        {one + again + two, both, true, false, "the first one counts"},
        {noRow + two, second, true, false, "row -1 is no row"},
        {deleted + two, second, true, false, "deleted ones are passed over"},
        {slack + two, both, true, false, "slack"},
        {one + otherColumn + two, both, false, false, "of another column"},
        {one + noColumn + two, both, false, false, "of no column"},
        {one + two + "52 63", both, false, false, "rubbish behind"},
        {one + badHeader, first, false, false, "a bad header"},
    };
    for (const auto& c : cases) {
        const CapturedErrors errors;
        IndexFile file;
        file.disk.Put("t.i.idx", Zeros(256) + FromHex(c.records));
        VelaIndex index("i", {});
        EXPECT_EQ(c.whole, index.LoadFromFile(file.Open().get())) << c.why;
        EXPECT_EQ(c.entries, EntriesOf(index)) << c.why;
        EXPECT_EQ(c.canAppend, index.CanAppendToFile()) << c.why;
    }
}

TEST(VelaIndex, FileWithoutReadableColumnsIsNoIndex)
{
    const char* const kRecords[] = {
        "",
        "54 72 73 68 00 00 00 03 00 00 00 07 01 06 03 00 00 00 00",
        "52 63 53 74 00 00 00 03 00 00 00 01 00",
        "52 63 53 74 00 00 00 01 00 00 00 07 02 05 03 06 03 00 00",
        "52 63 53 74 00 00 00 01 00 00 00 09 02 05 03 06 04 00 00 00 00",
        "52 63",
    };
    for (const char* records : kRecords) {
        const CapturedErrors errors;
        IndexFile file;
        file.disk.Put("t.i.idx", Zeros(256) + FromHex(records));
        VelaIndex index("i", {1});
        index.LoadColumns(file.Open().get());
        EXPECT_TRUE(index.ColumnIDs().empty()) << records;
        EXPECT_FALSE(index.LoadFromFile(file.Open().get())) << records;
    }
}

// ---- against the plain model

namespace {

VelaValue RandomKey(TestRandom& random, int mix)
{
    const int32_t number = static_cast<int32_t>(random.Below(12)) - 3;
    if (random.OneIn(10))
        return Null(mix % 2 ? kTypeInteger : kTypeString);
    switch (mix < 4 ? static_cast<uint32_t>(mix) : random.Below(6)) {
        case 0:
            return Int(number);
        case 1:
            return Str(std::to_string(number));
        case 2:
            return VelaValue::Double(number / 2.0);
        case 3:
            return Date(("1984-05-0" + std::to_string(number + 3)).c_str());
        case 4:
            return VelaValue::Boolean(number > 0);
        default:
            return Str(number > 0 ? "TRUE" : "DATE 1984-05-01");
    }
}

}   // namespace

TEST(VelaIndex, AgreesWithAListSearchedFromItsStart)
{
    for (uint32_t seed = 1; seed <= 80; seed++) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TestRandom random(seed);
        const int mix = static_cast<int>(random.Below(6));   // one type, or from 4 on any
        const size_t columns = 1 + random.Below(2);
        IndexFile file;
        IndexModel model;
        auto index = std::make_unique<VelaIndex>(
            "i", columns == 1 ? SimpleVector<uint32_t>{9} : SimpleVector<uint32_t>{9, 4});
        const auto randomKey = [&] {
            Key key;
            for (size_t i = 0; i < columns; i++)
                key.push_back(RandomKey(random, mix));
            return key;
        };
        for (int step = 0; step < 400; step++) {
            const uint32_t rowID = 1 + random.Below(60);
            const Key key = randomKey();
            switch (random.Below(8)) {
                case 0:
                case 1:
                case 2:
                    index->Delete(rowID);
                    model.Delete(rowID);
                    index->Add(key, rowID);
                    model.entries.push_back({key, rowID});
                    break;
                case 3:
                    index->Delete(rowID);
                    model.Delete(rowID);
                    break;
                case 4: {
                    SimpleVector<uint32_t> rows;
                    if (key[0].IsNull())
                        break;
                    if (index->FindRows(key[0], &rows)) {
                        ASSERT_EQ(model.FindRows(key[0]),
                                  std::vector<uint32_t>(rows.begin(), rows.end()));
                    } else {
                        ASSERT_TRUE(mix >= 4 || !model.IsOfOneType(key[0]));
                    }
                    break;
                }
                case 5:
                    if (!random.OneIn(6))
                        break;
                    if (index->CanAppendToFile() && index->IsChanged())
                        ASSERT_TRUE(index->AppendToFile(file.Open().get()));
                    else
                        ASSERT_TRUE(file.Save(*index));
                    if (random.OneIn(2)) {
                        for (IndexModel::Entry& entry : model.entries)
                            for (VelaValue& value : entry.values)
                                if (value.IsNull())
                                    value = VelaValue();   // a stored null forgets its type
                        index = std::make_unique<VelaIndex>("i", SimpleVector<uint32_t>());
                        ASSERT_TRUE(index->LoadFromFile(file.Open().get()));
                    }
                    break;
                default:
                    ASSERT_EQ(model.Lookup(key), index->Lookup(key)) << "step " << step;
                    break;
            }
            ASSERT_EQ(model.entries.size(), index->Count());
        }
        EXPECT_EQ(EntriesOf(model), EntriesOf(*index));
    }
}

}   // namespace vela
