#pragma once

#include <cstdint>
#include <vector>

#include "engine/query/SortKeyColumn.h"
#include "engine/query/VelaTempTable.h"

namespace vela {

// TempRowSorter finds the order in which ORDER BY puts the rows of a result table.
//
// Rows are compared key by key, until one differs. The type of the first row's value decides how:
// an Integer or a Double by number, any other value by its string form (a null, too: "NULL", or 0).
// Rows equal on all keys keep their order. Not-a-number is nowhere in particular. Borrows the
// table.
class TempRowSorter {
public:
    // Parallel lists, in key order; +1 sorts ascending, -1 descending. Columns that are not there
    // are passed over.
    TempRowSorter(const VelaTempTable& table, const SimpleVector<long>& columns,
                  const SimpleVector<long>& directions);

    // The row positions in sorted order. n log n comparisons.
    [[nodiscard]] std::vector<uint32_t> SortedOrder() const;
    // The comparison by itself, of two rows: below 0 when a comes first, above 0 when b does.
    [[nodiscard]] int Compare(uint32_t a, uint32_t b) const;

private:
    struct Key {
        size_t column;
        bool descending;
    };

    [[nodiscard]] bool LoadKeyColumns(std::vector<SortKeyColumn>* keys) const;
    [[nodiscard]] std::vector<uint32_t> SortByComparing() const;
    void MergeRuns(const std::vector<uint32_t>& from, size_t runSize,
                   std::vector<uint32_t>* to) const;
    [[nodiscard]] const VelaValue& Cell(uint32_t row, size_t column) const;

    const VelaTempTable& mTable;
    std::vector<Key> mKeys;
    VelaValue mMissing;
};

}   // namespace vela
