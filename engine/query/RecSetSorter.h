#pragma once

#include <vector>

#include "engine/query/RecSetList.h"
#include "engine/query/VExprField.h"
#include "engine/query/WordSorter.h"

namespace vela {

// RecSetSorter brings the record sets of a query into the order of its ORDER BY before any result row is made: then rows
// and texts are written in the order in which they will be read. The order is that of TempRowSorter.
//
// It serves keys that are columns in memory: Integers, Doubles, or texts of one type, without nulls.
class RecSetSorter : private SortWords {
public:
    // Adds the next key. False: it is of another kind; the object is then of no use. Borrows the context, whose record
    // sets are meant.
    [[nodiscard]] bool AddKey(const VelaExpr& output, bool descending,
                              const VelaEvalContext& context);
    // At least one key was added.
    void Sort(RecSetList* list);

private:
    struct Key {
        const ColumnData* column;
        size_t table;
        bool descending;
    };

    void SetWords(SortEntry* begin, SortEntry* end, SortStage stage) const override;
    template <class WordOf>
    void SetWords(SortEntry* begin, SortEntry* end, const Key& key, const WordOf& wordOf) const;
    [[nodiscard]] bool GoToNextStage(SortStage* stage, const SortEntry* begin,
                                     const SortEntry* end) const override;
    [[nodiscard]] bool GoToNextWord(SortStage* stage, const SortEntry* begin,
                                    const SortEntry* end) const;

    std::vector<Key> mKeys;
    const RecSetList* mList = nullptr;   // while it is sorted
};

}   // namespace vela
