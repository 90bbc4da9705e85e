#include "engine/query/SortKeyColumn.h"

namespace vela {

namespace {

const VelaValue& MissingValue()
{
    static const VelaValue kMissing;
    return kMissing;
}

}   // namespace

bool SortKeyColumn::Load(const VelaTempTable& table, size_t column, bool descending)
{
    mTable = &table;
    mColumn = column;
    mDescending = descending;
    if (!FindKind())
        return false;
    if (mKind == Kind::kTexts && !TextsCompareAsStored())
        MakeTexts();
    return true;
}

bool SortKeyColumn::GoToNextWord(size_t* word, const SortEntry* begin, const SortEntry* end) const
{
    if (mKind != Kind::kTexts)
        return false;
    size_t shortest = SIZE_MAX;
    size_t longest = 0;
    for (const SortEntry* entry = begin; entry < end; entry++) {
        const size_t length = Text(entry->item).size();
        shortest = length < shortest ? length : shortest;
        longest = length > longest ? length : longest;
    }
    return GoToNextTextWord(word, shortest, longest);
}

bool SortKeyColumn::FindKind()
{
    mKind = KindOf(Cell(0));
    for (size_t row = 1; row < mTable->RowCount(); row++) {
        if (KindOf(Cell(row)) != mKind)
            return false;
    }
    return true;
}

SortKeyColumn::Kind SortKeyColumn::KindOf(const VelaValue& value)
{
    if (value.GetType() == kTypeInteger)
        return Kind::kIntegers;
    return value.GetType() == kTypeDouble ? Kind::kDoubles : Kind::kTexts;
}

// A row that is too short to have the column sorts like a null.
const VelaValue& SortKeyColumn::Cell(size_t row) const
{
    return mColumn < mTable->RowWidth(row) ? mTable->RowValues(row)[mColumn] : MissingValue();
}

// The string form of a String is the text that it holds; dates without a null among them all begin
// with the same word.
bool SortKeyColumn::TextsCompareAsStored() const
{
    const VelaDataType type = Cell(0).GetType();
    if (!IsTextBacked(type))
        return false;
    for (size_t row = 0; row < mTable->RowCount(); row++) {
        if (Cell(row).GetType() != type || Cell(row).IsNull())
            return false;
    }
    return true;
}

void SortKeyColumn::MakeTexts()
{
    mMadeStarts.reserve(mTable->RowCount() + 1);
    mMadeStarts.push_back(0);
    for (size_t row = 0; row < mTable->RowCount(); row++) {
        const string text = Cell(row).GetString();
        mMadeTexts.insert(mMadeTexts.end(), text.View().begin(), text.View().end());
        mMadeStarts.push_back(mMadeTexts.size());
    }
}

uint64_t SortKeyColumn::AscendingWord(uint32_t row, size_t word) const
{
    if (mKind == Kind::kIntegers)
        return IntegerWord(Cell(row).GetInteger());
    if (mKind == Kind::kDoubles)
        return DoubleWord(Cell(row).GetDouble());
    return TextWord(Text(row), word);
}

std::string_view SortKeyColumn::Text(size_t row) const
{
    if (mMadeStarts.empty())
        return Cell(row).TextView();
    const size_t start = mMadeStarts[row];
    return {mMadeTexts.data() + start, mMadeStarts[row + 1] - start};
}

}   // namespace vela
