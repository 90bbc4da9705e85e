#include "engine/query/TempRowSorter.h"

#include <algorithm>
#include <numeric>

namespace vela {

namespace {

struct SortEntry {
    uint64_t prefix;   // of the first key
    uint32_t row;
};

template <class T>
int CompareNumbers(T a, T b)
{
    return a < b ? -1 : (a > b ? 1 : 0);
}

int CompareCells(const VelaValue& a, const VelaValue& b)
{
    if (a.GetType() == kTypeInteger)
        return CompareNumbers(a.GetInteger(), b.GetInteger());
    if (a.GetType() == kTypeDouble)
        return CompareNumbers(a.GetDouble(), b.GetDouble());
    return a.GetString().CompareWithCase(b.GetString());
}

// What follows the first key's prefix. The row number as the last key keeps equal rows in their
// order.
bool ComesBefore(const std::vector<SortKeyColumn>& keys, uint32_t a, uint32_t b)
{
    if (const int order = keys[0].CompareBeyondPrefix(a, b))
        return order < 0;
    for (size_t k = 1; k < keys.size(); k++) {
        if (keys[k].Prefix(a) != keys[k].Prefix(b))
            return keys[k].Prefix(a) < keys[k].Prefix(b);
        if (const int order = keys[k].CompareBeyondPrefix(a, b))
            return order < 0;
    }
    return a < b;
}

std::vector<uint32_t> Identity(size_t count)
{
    std::vector<uint32_t> order(count);
    std::iota(order.begin(), order.end(), 0u);
    return order;
}

}   // namespace

TempRowSorter::TempRowSorter(const VelaTempTable& table, const SimpleVector<long>& columns,
                             const SimpleVector<long>& directions)
    : mTable(table)
{
    for (size_t k = 0; k < columns.size(); k++) {
        if (table.Column(columns[k]) != nullptr)
            mKeys.push_back({static_cast<size_t>(columns[k]), directions[k] < 0});
    }
}

std::vector<uint32_t> TempRowSorter::SortedOrder() const
{
    if (mTable.RowCount() < 2 || mKeys.empty())
        return Identity(mTable.RowCount());
    std::vector<SortKeyColumn> keys;
    return LoadKeyColumns(&keys) ? SortByKeyColumns(keys) : SortByComparing();
}

int TempRowSorter::Compare(uint32_t a, uint32_t b) const
{
    for (const Key& key : mKeys) {
        const int order = CompareCells(Cell(a, key.column), Cell(b, key.column));
        if (order != 0)
            return key.descending ? -order : order;
    }
    return 0;
}

bool TempRowSorter::LoadKeyColumns(std::vector<SortKeyColumn>* keys) const
{
    keys->resize(mKeys.size());
    for (size_t k = 0; k < mKeys.size(); k++) {
        if (!(*keys)[k].Load(mTable, mKeys[k].column, mKeys[k].descending))
            return false;
    }
    return true;
}

std::vector<uint32_t> TempRowSorter::SortByKeyColumns(const std::vector<SortKeyColumn>& keys) const
{
    std::vector<SortEntry> entries(mTable.RowCount());
    for (uint32_t row = 0; row < entries.size(); row++)
        entries[row] = {keys[0].Prefix(row), row};
    std::sort(entries.begin(), entries.end(), [&keys](const SortEntry& a, const SortEntry& b) {
        return a.prefix != b.prefix ? a.prefix < b.prefix : ComesBefore(keys, a.row, b.row);
    });
    std::vector<uint32_t> order;
    order.reserve(entries.size());
    for (const SortEntry& entry : entries)
        order.push_back(entry.row);
    return order;
}

// For columns of mixed types, in which the comparison need not be an order. A merge sort ends
// whatever it is told; the library's sorts may not.
std::vector<uint32_t> TempRowSorter::SortByComparing() const
{
    std::vector<uint32_t> order = Identity(mTable.RowCount());
    std::vector<uint32_t> merged(order.size());
    for (size_t runSize = 1; runSize < order.size(); runSize *= 2) {
        MergeRuns(order, runSize, &merged);
        order.swap(merged);
    }
    return order;
}

void TempRowSorter::MergeRuns(const std::vector<uint32_t>& from, size_t runSize,
                              std::vector<uint32_t>* to) const
{
    for (size_t start = 0; start < from.size(); start += 2 * runSize) {
        const size_t middle = std::min(start + runSize, from.size());
        const size_t end = std::min(middle + runSize, from.size());
        size_t left = start;
        size_t right = middle;
        for (size_t i = start; i < end; i++) {
            const bool takeLeft =
                right == end || (left < middle && Compare(from[left], from[right]) <= 0);
            (*to)[i] = from[takeLeft ? left++ : right++];
        }
    }
}

const VelaValue& TempRowSorter::Cell(uint32_t row, size_t column) const
{
    return column < mTable.RowWidth(row) ? mTable.RowValues(row)[column] : mMissing;
}

}   // namespace vela
