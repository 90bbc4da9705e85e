#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace vela::bench {

// Values to be added to a table, in the order of its columns, without the row id.
using Cell = std::variant<int32_t, double, std::string>;
using Row = std::vector<Cell>;

// The made-up shop that all workloads work on; every value follows from the row's number alone.
//
//   items    N rows        k number price grp cat owner qty name note day, about 110 bytes
//   owners   N / 10 rows   id code city region
//   regions  kRegionCount  id title
//
// k is unique, 0 .. N - 1 in scattered order; grp has 7 values, cat 1,000, owner is an id of owners;
// price is a multiple of 0.25, so that sums are exact in any order; name is unique and starts with
// scattered letters; note is six words, of which kRareWord is about one in 64; day is a date.
struct Item {
    int32_t k;
    int32_t grp;
    int32_t cat;
    int32_t owner;
    int32_t qty;    // 0 .. 99
    double price;   // below 10,000
    std::string name;
    std::string note;
    std::string day;
};

constexpr int32_t kRegionCount = 10;
extern const char* const kRareWord;

// The definitions, without the row id column that every Vela table has.
extern const char* const kItemColumns;
extern const char* const kOwnerColumns;
extern const char* const kRegionColumns;

[[nodiscard]] Item MakeItem(uint32_t number, uint32_t itemCount);
[[nodiscard]] std::vector<Row> MakeItemRows(uint32_t first, uint32_t count, uint32_t itemCount);
// The value of k of an item, and its name.
[[nodiscard]] int32_t ItemKey(uint32_t number, uint32_t itemCount);
[[nodiscard]] std::string ItemName(uint32_t number, uint32_t itemCount);
[[nodiscard]] uint32_t OwnerCount(uint32_t itemCount);

[[nodiscard]] Row MakeOwnerRow(uint32_t number, uint32_t itemCount);
[[nodiscard]] Row MakeRegionRow(int32_t number);

// A statement that all engines understand.
[[nodiscard]] std::string InsertItemText(const Item& item);

// Numbers that are scattered, and the same in each run.
[[nodiscard]] uint64_t Scatter(uint64_t seed);

}   // namespace vela::bench
