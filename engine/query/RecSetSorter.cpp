#include "engine/query/RecSetSorter.h"

#include "engine/query/ExprShape.h"

namespace vela {

namespace {

// Booleans compare as "FALSE" and "TRUE": not here.
bool ComparesAsStored(const ColumnData& column)
{
    return column.nulls.empty() && column.type != kTypeBoolean;
}

}   // namespace

bool RecSetSorter::AddKey(const VelaExpr& output, bool descending, const VelaEvalContext& context)
{
    const VExprField* field = AsField(&output);
    const ColumnData* column = field ? field->LoadedColumn(context) : nullptr;
    if (column == nullptr || !ComparesAsStored(*column))
        return false;
    mKeys.push_back({column, field->Table(), descending});
    return true;
}

void RecSetSorter::Sort(RecSetList* list)
{
    mList = list;
    const std::vector<uint32_t> order = SortByWords(static_cast<uint32_t>(list->Count()), *this);
    list->Arrange(order);
}

void RecSetSorter::SetWords(SortEntry* begin, SortEntry* end, SortStage stage) const
{
    const Key& key = mKeys[stage.key];
    const ColumnData& column = *key.column;
    if (column.form == ColumnData::Form::kIntegers)
        SetWords(begin, end, key, [&](uint32_t row) { return IntegerWord(column.integers[row]); });
    else if (column.form == ColumnData::Form::kDoubles)
        SetWords(begin, end, key, [&](uint32_t row) { return DoubleWord(column.doubles[row]); });
    else
        SetWords(begin, end, key,
                 [&](uint32_t row) { return TextWord(column.Text(row), stage.word); });
}

template <class WordOf>
void RecSetSorter::SetWords(SortEntry* begin, SortEntry* end, const Key& key,
                            const WordOf& wordOf) const
{
    const uint64_t direction = key.descending ? ~uint64_t{0} : 0;
    const VelaRecSetGroup all = mList->Group(0, mList->Count());
    for (SortEntry* entry = begin; entry < end; entry++)
        entry->word = wordOf(all.RowID(entry->item, key.table)) ^ direction;
}

bool RecSetSorter::GoToNextStage(SortStage* stage, const SortEntry* begin,
                                 const SortEntry* end) const
{
    if (mKeys[stage->key].column->form == ColumnData::Form::kTexts &&
        GoToNextWord(stage, begin, end))
        return true;
    *stage = {stage->key + 1, 0};
    return stage->key < mKeys.size();
}

bool RecSetSorter::GoToNextWord(SortStage* stage, const SortEntry* begin,
                                const SortEntry* end) const
{
    const Key& key = mKeys[stage->key];
    const VelaRecSetGroup all = mList->Group(0, mList->Count());
    uint32_t shortest = UINT32_MAX;
    uint32_t longest = 0;
    for (const SortEntry* entry = begin; entry < end; entry++) {
        const uint32_t length = key.column->textLengths[all.RowID(entry->item, key.table)];
        shortest = std::min(shortest, length);
        longest = std::max(longest, length);
    }
    return GoToNextTextWord(&stage->word, shortest, longest);
}

}   // namespace vela
