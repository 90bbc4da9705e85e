#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/query/VelaTempTable.h"
#include "engine/query/WordSorter.h"

namespace vela {

// SortKeyColumn gives one ORDER BY key of every row word by word (see WordSorter.h), the direction
// included.
//
// It serves columns whose values are all Integers, all Doubles, or all of other types (compared by
// their string forms). In a column that mixes these, the described comparison depends on which row
// is asked first, and no order of keys says that. Reads the table, which must stay as it is while
// the object lives.
class SortKeyColumn {
public:
    // False: the column mixes kinds of values; the object is then of no use.
    [[nodiscard]] bool Load(const VelaTempTable& table, size_t column, bool descending);

    [[nodiscard]] uint64_t Word(uint32_t row, size_t word) const
    {
        const uint64_t ascending = AscendingWord(row, word);
        return mDescending ? ~ascending : ascending;
    }
    // As SortWords, within this key.
    [[nodiscard]] bool GoToNextWord(size_t* word, const SortEntry* begin,
                                    const SortEntry* end) const;

private:
    enum class Kind { kUnknown, kIntegers, kDoubles, kTexts };

    [[nodiscard]] bool FindKind();
    [[nodiscard]] static Kind KindOf(const VelaValue& value);
    [[nodiscard]] const VelaValue& Cell(size_t row) const;
    [[nodiscard]] bool TextsCompareAsStored() const;
    void MakeTexts();
    [[nodiscard]] uint64_t AscendingWord(uint32_t row, size_t word) const;
    [[nodiscard]] std::string_view Text(size_t row) const;

    const VelaTempTable* mTable = nullptr;
    size_t mColumn = 0;
    bool mDescending = false;
    Kind mKind = Kind::kUnknown;
    // String forms that no value holds as they are: text i lies at mMadeStarts[i] to
    // mMadeStarts[i + 1].
    std::vector<char> mMadeTexts;
    std::vector<size_t> mMadeStarts;
};

}   // namespace vela
