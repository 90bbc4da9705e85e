#pragma once

#include <vector>

#include "engine/query/HashChains.h"
#include "engine/query/VelaTempTable.h"

namespace vela {

// DistinctRows tells, for each new row of a result table, whether it equals one of the rows before
// it, column by column in the sense of VelaValue::Equals, asked of the new row's values. Of equal
// rows the first one stays.
//
// That equality is not symmetric across types, nor even reflexive (a Date never equals a Date,
// not-a-number equals nothing). As long as a column holds values of one class only, besides nulls,
// equal rows have equal hashes and the look-up is constant time; from the first value of another
// class on, each row is compared with all rows before it.
class DistinctRows {
public:
    // table is borrowed. It has no rows yet.
    explicit DistinctRows(const VelaTempTable& table);

    // For the row added last, which was not asked about before; all other rows have stayed. False:
    // it equals an earlier one, and the caller takes it away again.
    [[nodiscard]] bool IsNew();
    // For a table of one column whose rows all come by way of this: whether a row of that Integer has come before, so that
    // another need not be made. Answers no for numbers that it keeps no account of.
    [[nodiscard]] bool HasCome(int32_t number);

private:
    // Values of one class equal each other in one way.
    enum class ValueClass : uint8_t {
        kUnknown,    // only nulls so far
        kIntegers,   // Integer and Boolean: by integer
        kDoubles,
        kTexts,   // String and Binary: by text
        kDates,   // a date or time equals no value of its own type
        kTimes,
        kTimestamps,
        kOther
    };

    [[nodiscard]] static ValueClass ClassOf(const VelaValue& value);
    [[nodiscard]] bool FitsClasses(const VelaValue* row);
    [[nodiscard]] bool CanEqual(const VelaValue* row) const;
    [[nodiscard]] uint64_t Hash(const VelaValue* row) const;
    [[nodiscard]] bool FindByHash(const VelaValue* row, uint64_t hash) const;
    [[nodiscard]] bool FindByComparing(const VelaValue* row) const;
    [[nodiscard]] bool RowsEqual(const VelaValue* row, size_t earlier) const;

    const VelaTempTable& mTable;
    size_t mWidth;
    std::vector<ValueClass> mClasses;   // per column
    bool mIsHashed = true;              // false: classes are mixed, mRows is given up
    HashChains mRows;                   // entry i is row i
    std::vector<bool> mHasCome;         // by number
};

}   // namespace vela
