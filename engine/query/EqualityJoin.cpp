#include "engine/query/EqualityJoin.h"

#include <algorithm>

namespace vela {

namespace {

// Probes of more combinations of types than this are left to comparing row by row.
constexpr size_t kMostIndexes = 4;

// Reads a column of rows named by row number, or by row id.
struct ColumnReader {
    VelaTable* table;
    TableColumns* columns;
    long number;

    [[nodiscard]] bool Read(uint32_t row, VelaValue* value) const
    {
        return columns ? columns->GetValue(row, number, value)
                       : table->GetValue(row, number, value);
    }
};

// Whether values of the column hash in that class without being made.
bool HashesInPlace(const ColumnData* data, CompareClass compareClass)
{
    if (data == nullptr || !data->nulls.empty())
        return false;
    switch (data->form) {
        case ColumnData::Form::kIntegers:
            return compareClass == CompareClass::kIntegers ||
                   compareClass == CompareClass::kDoubles;
        case ColumnData::Form::kDoubles:
            return compareClass == CompareClass::kDoubles;
        case ColumnData::Form::kTexts:
            return compareClass == CompareClass::kTexts;
        default:
            return false;
    }
}

uint64_t HashInPlace(const ColumnData& data, CompareClass compareClass, uint32_t row)
{
    if (data.form == ColumnData::Form::kTexts)
        return HashOfText(data.Text(row));
    if (data.form == ColumnData::Form::kDoubles)
        return HashOfDouble(data.doubles[row]);
    return compareClass == CompareClass::kDoubles ? HashOfDouble(data.integers[row])
                                                  : HashOfInteger(data.integers[row]);
}

}   // namespace

EqualityJoin::EqualityJoin(VelaTable* table, TableColumns* columns, const RowList& rows,
                           bool reversed, std::vector<ColumnEquality> equalities)
    : mTable(table),
      mColumns(columns),
      mRows(rows),
      mReversed(reversed),
      mEqualities(std::move(equalities))
{
    mIndexes.reserve(kMostIndexes);   // so that mIndex stays good
}

bool EqualityJoin::Probe(const VelaEvalContext& context)
{
    Classes classes;
    uint64_t hash = 0;
    for (const ColumnEquality& equality : mEqualities) {
        VelaValue value;
        if (!equality.other->Evaluate(context, &value))
            return false;
        classes.push_back(ClassFor(equality, value.GetType()));
        hash = CombineHash(hash, HashInClass(classes.back(), value));
    }
    mIndex = FindOrBuild(classes);
    if (mIndex == nullptr)
        return false;
    mEntry = mIndex->chains.First(hash);
    mUnreadablePosition = 0;
    return true;
}

// Entries come in descending order, from the chain and from the unreadable ones.
bool EqualityJoin::Next(uint32_t* row)
{
    const bool hasUnreadable = mUnreadablePosition < mIndex->unreadable.size();
    if (hasUnreadable &&
        (mEntry == HashChains::kNone || mIndex->unreadable[mUnreadablePosition] > mEntry)) {
        *row = RowOfEntry(mIndex->unreadable[mUnreadablePosition++]);
        return true;
    }
    if (mEntry == HashChains::kNone)
        return false;
    *row = RowOfEntry(mEntry);
    mEntry = mIndex->chains.Next(mEntry);
    return true;
}

CompareClass EqualityJoin::ClassFor(const ColumnEquality& equality, VelaDataType type) const
{
    const VelaColumnInfo* column = mTable->Column(static_cast<long>(equality.column));
    const VelaDataType columnType = column ? column->Type() : kTypeNone;
    return equality.columnIsLeft ? ClassOfComparison(columnType, type)
                                 : ClassOfComparison(type, columnType);
}

const EqualityJoin::Index* EqualityJoin::FindOrBuild(const Classes& classes)
{
    for (const Index& index : mIndexes) {
        if (index.classes == classes)
            return &index;
    }
    if (mIndexes.size() == kMostIndexes)
        return nullptr;
    mIndexes.emplace_back();
    mIndexes.back().classes = classes;
    Build(&mIndexes.back());
    return &mIndexes.back();
}

void EqualityJoin::Build(Index* index) const
{
    std::vector<uint64_t> hashes(mRows.Count());
    std::vector<bool> unreadable(mRows.Count());
    for (size_t i = 0; i < mEqualities.size(); i++)
        AddHashes(mEqualities[i], index->classes[i], &hashes, &unreadable);
    index->chains.Reserve(mRows.Count());
    for (uint32_t entry = 0; entry < mRows.Count(); entry++) {
        if (unreadable[entry]) {
            index->chains.AddUnfindable();
            index->unreadable.push_back(entry);
        } else {
            index->chains.Add(hashes[entry]);
        }
    }
    std::reverse(index->unreadable.begin(), index->unreadable.end());
}

// A value of another type than its column's is compared in a class of its own: any key may match
// it.
void EqualityJoin::AddHashes(const ColumnEquality& equality, CompareClass compareClass,
                             std::vector<uint64_t>* hashes, std::vector<bool>* unreadable) const
{
    const auto number = static_cast<long>(equality.column);
    const ColumnReader reader{mTable, mColumns, number};
    const VelaColumnInfo* column = mTable->Column(number);
    const ColumnData* data = mColumns ? mColumns->Load(number) : nullptr;
    const bool inPlace = HashesInPlace(data, compareClass);
    for (uint32_t entry = 0; entry < mRows.Count(); entry++) {
        const uint32_t row = RowOfEntry(entry);
        VelaValue value;
        uint64_t hash = 0;
        if (inPlace)
            hash = HashInPlace(*data, compareClass, row);
        else if (reader.Read(row, &value) && value.GetType() == column->Type())
            hash = HashInClass(compareClass, value);
        else
            (*unreadable)[entry] = true;
        (*hashes)[entry] = CombineHash((*hashes)[entry], hash);
    }
}

}   // namespace vela
