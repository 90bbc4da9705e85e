#include "engine/query/TempRowSorter.h"

#include <algorithm>
#include <numeric>

namespace vela {

namespace {

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

// The keys of rows, key column after key column.
class RowWords : public SortWords {
public:
    explicit RowWords(const std::vector<SortKeyColumn>& keys) : mKeys(keys) {}

    void SetWords(SortEntry* begin, SortEntry* end, SortStage stage) const override
    {
        for (SortEntry* entry = begin; entry < end; entry++)
            entry->word = mKeys[stage.key].Word(entry->item, stage.word);
    }
    [[nodiscard]] bool GoToNextStage(SortStage* stage, const SortEntry* begin,
                                     const SortEntry* end) const override
    {
        if (mKeys[stage->key].GoToNextWord(&stage->word, begin, end))
            return true;
        *stage = {stage->key + 1, 0};
        return stage->key < mKeys.size();
    }

private:
    const std::vector<SortKeyColumn>& mKeys;
};

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
    if (!LoadKeyColumns(&keys))
        return SortByComparing();
    return SortByWords(static_cast<uint32_t>(mTable.RowCount()), RowWords(keys));
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
