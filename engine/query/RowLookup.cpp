#include "engine/query/RowLookup.h"

#include "engine/query/IndexKey.h"

namespace vela {

namespace {

std::optional<RowList> LookUpRowID(VelaTable* table, const VelaValue& value)
{
    const auto rowID = RowIDEqualTo(value);
    if (!rowID)
        return std::nullopt;
    return RowList::Range(table->HasRow(*rowID) ? 1 : 0, *rowID);
}

std::optional<RowList> LookUpIndex(VelaTable* table, long column, const VelaValue& key)
{
    SimpleVector<uint32_t> rowIDs;
    if (!table->FindRowsByIndex(column, key, &rowIDs))
        return std::nullopt;
    if (rowIDs.size() == 1)
        return RowList::Range(1, rowIDs[0]);
    return RowList(LargeVector<uint32_t>(rowIDs.begin(), rowIDs.end()));
}

}   // namespace

std::optional<RowList> LookUpRows(VelaTable* table, long column, bool columnIsLeft,
                                  const VelaValue& value)
{
    // Column 0 is the row id in tables that say so; in a result table it is a column like any
    // other.
    if (column == 0 && table->Column(0) == &RowIDColumn())
        return LookUpRowID(table, value);
    const auto key = IndexKeyEqualTo(table, column, columnIsLeft, value);
    return key ? LookUpIndex(table, column, *key) : std::nullopt;
}

}   // namespace vela
