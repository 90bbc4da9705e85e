#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/storage/VelaTable.h"
#include "tests/core/TestValues.h"

namespace vela {

// Bytes of a hexadecimal text; blanks and line feeds don't count.
std::string FromHex(std::string_view hex);
// "52 63 53 74 ..."; what a test prints when bytes differ.
std::string ToHex(std::string_view bytes);
// count zero bytes.
std::string Zeros(size_t count);

// Changes to the bytes of a file, for tables of damage: one byte, a big-endian number, the length.
using ByteDamage = std::function<void(std::string*)>;
ByteDamage SetByte(size_t place, int byte);
ByteDamage SetNumber(size_t place, uint32_t number);
ByteDamage CutTo(size_t size);

// A value and everything that tells it from another: "Integer 5", "NULL Date", "String[600] abc". Equal
// texts: equal values, encoding tags included.
std::string ValueText(const VelaValue& value);
std::string RowText(const VelaRow& row);

// A row that owns its values, for calls that borrow them.
class TestRow {
public:
    TestRow() = default;
    TestRow(std::initializer_list<std::pair<uint32_t, VelaValue>> values);
    explicit TestRow(const std::vector<std::pair<uint32_t, VelaValue>>& values);
    TestRow(const TestRow&) = delete;
    TestRow& operator=(const TestRow&) = delete;
    ~TestRow();

    void Add(uint32_t columnID, const VelaValue& value);
    // The same list, which stays this object's, unless the callee takes the values and empties it.
    operator VelaRow&() { return mValues; }
    VelaRow& Values() { return mValues; }

private:
    VelaRow mValues;
};

// Short forms for tables of cases.
VelaValue Int(int32_t number);
VelaValue Str(std::string_view text);   // tagged ASCII

std::vector<uint32_t> RowIDsOf(VelaTable* table);
// The value of a row and column number, as ValueText; "none" when GetValue refuses.
std::string ReadText(VelaTable* table, uint32_t rowID, long number);
// Every row of the table, in its order: "1: Integer 5, String[600] abc".
std::vector<std::string> TableText(VelaTable* table);

// Numbers that are the same on every platform for one seed.
class TestRandom {
public:
    explicit TestRandom(uint32_t seed) : mEngine(seed) {}
    uint32_t Next() { return static_cast<uint32_t>(mEngine()); }
    // 0 to count - 1.
    uint32_t Below(uint32_t count) { return Next() % count; }
    bool OneIn(uint32_t count) { return Below(count) == 0; }

private:
    std::mt19937 mEngine;
};

// What the engine printed on the standard error stream while this object lived; it goes no further.
class CapturedErrors {
public:
    CapturedErrors();
    ~CapturedErrors();
    std::string Text();

private:
    bool mTaken = false;
};

}   // namespace vela
