#include "engine/query/SortKeyColumn.h"

#include <cstring>

#include "engine/query/TextPrefix.h"

namespace vela {

namespace {

constexpr uint64_t kSignBit = uint64_t{1} << 63;

// Numbers in the order of the integers; the sign bit would otherwise put the negative ones last.
uint64_t IntegerPrefix(int32_t number)
{
    return static_cast<uint32_t>(number) ^ 0x80000000u;
}

// The bits of a double order like the number once negative ones are complemented. Adding 0.0 makes
// -0.0 the 0.0 that it equals. Not-a-number lands beyond the infinities; any place will do.
uint64_t DoublePrefix(double number)
{
    const double normal = number + 0.0;
    uint64_t bits;
    std::memcpy(&bits, &normal, sizeof bits);
    return (bits & kSignBit) != 0 ? ~bits : bits | kSignBit;
}

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
    MakePrefixes();
    return true;
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

void SortKeyColumn::MakePrefixes()
{
    mPrefixes.reserve(mTable->RowCount());
    for (size_t row = 0; row < mTable->RowCount(); row++) {
        const uint64_t prefix = AscendingPrefix(row);
        mPrefixes.push_back(mDescending ? ~prefix : prefix);
    }
}

uint64_t SortKeyColumn::AscendingPrefix(size_t row) const
{
    if (mKind == Kind::kIntegers)
        return IntegerPrefix(Cell(row).GetInteger());
    if (mKind == Kind::kDoubles)
        return DoublePrefix(Cell(row).GetDouble());
    return TextPrefix(Text(row));
}

std::string_view SortKeyColumn::Text(size_t row) const
{
    if (mMadeStarts.empty())
        return Cell(row).TextView();
    const size_t start = mMadeStarts[row];
    return {mMadeTexts.data() + start, mMadeStarts[row + 1] - start};
}

int SortKeyColumn::CompareTexts(uint32_t a, uint32_t b) const
{
    const int order = string::CompareBytes(Text(a), Text(b));
    return mDescending ? -order : order;
}

}   // namespace vela
