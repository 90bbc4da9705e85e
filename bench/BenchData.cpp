#include "bench/BenchData.h"

#include <cstdio>

namespace vela::bench {

const char* const kRareWord = "saffron";
const char* const kItemColumns =
    "k integer, grp integer, cat integer, owner integer, qty integer, price double, "
    "name varchar, note varchar, day date";
const char* const kOwnerColumns = "id integer, code integer, city varchar, region integer";
const char* const kRegionColumns = "id integer, title varchar";

namespace {

constexpr size_t kWordCount = 64;
const char* const kWords[kWordCount] = {
    "amber",  "anchor",  "apple",  "arrow",  "basket", "beacon",  "birch",  "blue",
    "bottle", "bread",   "bridge", "button", "candle", "canvas",  "carbon", "cedar",
    "chalk",  "cherry",  "clock",  "cloud",  "copper", "cotton",  "cream",  "dapple",
    "dinner", "dragon",  "dusk",   "eagle",  "ember",  "fabric",  "falcon", "feather",
    "fern",   "flint",   "forest", "garden", "ginger", "glass",   "gold",   "granite",
    "hammer", "harbor",  "hazel",  "honey",  "indigo", "island",  "ivory",  "jasper",
    "kettle", "lantern", "lemon",  "linen",  "maple",  "marble",  "meadow", "nutmeg",
    "oak",    "olive",   "pepper", "quartz", "river",  "saffron", "silver", "walnut"};

constexpr uint64_t kStride = 2654435761;   // a prime: steps through every count of ours

std::string Format(const char* format, unsigned first, unsigned second = 0, unsigned third = 0)
{
    char text[64];
    std::snprintf(text, sizeof text, format, first, second, third);
    return text;
}

std::string MakeNote(uint64_t random)
{
    std::string note;
    for (int word = 0; word < 6; word++) {
        if (word > 0)
            note += ' ';
        note += kWords[random % kWordCount];
        random /= kWordCount;
    }
    return note;
}

std::string MakeDay(uint64_t random)
{
    return Format("%04u-%02u-%02u", static_cast<unsigned>(2000 + random % 20),
                  static_cast<unsigned>(1 + random / 20 % 12),
                  static_cast<unsigned>(1 + random / 240 % 28));
}

}   // namespace

uint64_t Scatter(uint64_t seed)
{
    uint64_t bits = seed + 0x9E3779B97F4A7C15;
    bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9;
    bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EB;
    return bits ^ (bits >> 31);
}

uint32_t OwnerCount(uint32_t itemCount)
{
    return itemCount < 10 ? 1 : itemCount / 10;
}

int32_t ItemKey(uint32_t number, uint32_t itemCount)
{
    return static_cast<int32_t>((number + 1) * kStride % itemCount);
}

std::string ItemName(uint32_t number, uint32_t itemCount)
{
    uint64_t random = Scatter(number * 5 + 1);
    std::string name;
    for (int letter = 0; letter < 8; letter++) {
        name += static_cast<char>('a' + random % 26);
        random /= 26;
    }
    return name + Format("-%07u", static_cast<unsigned>(ItemKey(number, itemCount)));
}

Item MakeItem(uint32_t number, uint32_t itemCount)
{
    const uint64_t random = Scatter(number * 5 + 2);
    Item item;
    item.k = ItemKey(number, itemCount);
    item.grp = static_cast<int32_t>(random % 7);
    item.cat = static_cast<int32_t>(random / 7 % 1000);
    item.qty = static_cast<int32_t>(random / 7000 % 100);
    item.price = static_cast<double>(random / 700000 % 40000) / 4;
    item.owner = static_cast<int32_t>(Scatter(number * 5 + 3) % OwnerCount(itemCount));
    item.name = ItemName(number, itemCount);
    item.note = MakeNote(Scatter(number * 5 + 4));
    item.day = MakeDay(Scatter(number * 5));
    return item;
}

std::vector<Row> MakeItemRows(uint32_t first, uint32_t count, uint32_t itemCount)
{
    std::vector<Row> rows;
    rows.reserve(count);
    for (uint32_t i = 0; i < count; i++) {
        Item item = MakeItem(first + i, itemCount);
        rows.push_back({item.k, item.grp, item.cat, item.owner, item.qty, item.price,
                        std::move(item.name), std::move(item.note), std::move(item.day)});
    }
    return rows;
}

Row MakeOwnerRow(uint32_t number, uint32_t itemCount)
{
    const uint32_t id = static_cast<uint32_t>((number + 1) * kStride % OwnerCount(itemCount));
    const uint64_t random = Scatter(uint64_t{1} << 40 | id);
    const std::string city =
        std::string(kWords[random % kWordCount]) + "-" + kWords[random / kWordCount % kWordCount];
    const int32_t region = static_cast<int32_t>(random / 4096 % kRegionCount);
    return {static_cast<int32_t>(id), static_cast<int32_t>(id), city, region};
}

Row MakeRegionRow(int32_t number)
{
    return {number, "region " + std::to_string(number)};
}

std::string InsertItemText(const Item& item)
{
    char numbers[160];
    std::snprintf(numbers, sizeof numbers, "%d, %d, %d, %d, %d, %.2f", item.k, item.grp, item.cat,
                  item.owner, item.qty, item.price);
    return std::string(
               "INSERT INTO items (k, grp, cat, owner, qty, price, name, note, day) "
               "VALUES (") +
           numbers + ", '" + item.name + "', '" + item.note + "', '" + item.day + "')";
}

}   // namespace vela::bench
