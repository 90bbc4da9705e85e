#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/query/VelaTempTable.h"

namespace vela {

// SortKeyColumn holds one ORDER BY key of every row in a form that compares fast: 8 bytes a row
// that order the rows by themselves where they differ. The direction is already in them: the row
// that comes first has the smaller prefix.
//
// It serves columns whose values are all Integers, all Doubles, or all of other types (compared by
// their string forms). In a column that mixes these, the described comparison depends on which row
// is asked first, and no order of keys says that. Reads the table, which must stay as it is while
// the object lives.
class SortKeyColumn {
public:
    // False: the column mixes kinds of values; the object is then of no use.
    [[nodiscard]] bool Load(const VelaTempTable& table, size_t column, bool descending);

    [[nodiscard]] uint64_t Prefix(uint32_t row) const { return mPrefixes[row]; }
    // Below 0, 0 or above 0, where the prefixes are equal. Only texts have anything left to
    // compare.
    [[nodiscard]] int CompareBeyondPrefix(uint32_t a, uint32_t b) const
    {
        return mKind == Kind::kTexts ? CompareTexts(a, b) : 0;
    }
    // Whether rows with equal prefixes are equal.
    [[nodiscard]] bool PrefixIsAll() const { return mKind != Kind::kTexts; }

private:
    enum class Kind { kUnknown, kIntegers, kDoubles, kTexts };

    [[nodiscard]] bool FindKind();
    [[nodiscard]] static Kind KindOf(const VelaValue& value);
    [[nodiscard]] const VelaValue& Cell(size_t row) const;
    [[nodiscard]] bool TextsCompareAsStored() const;
    void MakeTexts();
    void MakePrefixes();
    [[nodiscard]] uint64_t AscendingPrefix(size_t row) const;
    [[nodiscard]] std::string_view Text(size_t row) const;
    [[nodiscard]] int CompareTexts(uint32_t a, uint32_t b) const;

    const VelaTempTable* mTable = nullptr;
    size_t mColumn = 0;
    bool mDescending = false;
    Kind mKind = Kind::kUnknown;
    std::vector<uint64_t> mPrefixes;
    // String forms that no value holds as they are: text i lies at mMadeStarts[i] to mMadeStarts[i
    // + 1].
    std::vector<char> mMadeTexts;
    std::vector<size_t> mMadeStarts;
};

}   // namespace vela
