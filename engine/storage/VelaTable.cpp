#include "engine/storage/VelaTable.h"

#include <algorithm>

namespace vela {

long VelaTable::FindColumnNumber(uint32_t columnID) const
{
    for (long number = 0; number < QtyColumns(); number++)
        if (Column(number)->columnID == columnID)
            return number;
    return -1;
}

long VelaTable::FindColumnNamed(std::string_view name) const
{
    const long columns = QtyColumns();
    for (long number = 0; number < columns; number++) {
        const VelaColumnInfo* column = Column(number);
        if (column && column->name.View() == name)
            return number;
    }
    return -1;
}

uint32_t VelaTable::AddRow(VelaRow& values, bool takeOwnership)
{
    if (takeOwnership)
        Discard(values);
    return kInvalidRowID;
}

bool VelaTable::UpdateRow(uint32_t /*rowID*/, VelaRow& values, bool takeOwnership)
{
    if (takeOwnership)
        Discard(values);
    return false;
}

bool VelaTable::AddIndex(const string& /*name*/, const SimpleVector<uint32_t>& /*columnIDs*/)
{
    return false;
}

void VelaTable::GetIndexNames(SimpleVector<string>& /*names*/) {}

bool VelaTable::HasRow(uint32_t rowID)
{
    SimpleVector<uint32_t> rowIDs;
    GetRowIDs(&rowIDs);
    return std::find(rowIDs.begin(), rowIDs.end(), rowID) != rowIDs.end();
}

bool VelaTable::FindRowsByIndex(long /*number*/, const VelaValue& /*key*/,
                                SimpleVector<uint32_t>* rowIDs)
{
    rowIDs->clear();
    return false;
}

void VelaTable::Discard(VelaRow& values)
{
    for (VelaValueWithID* value : values)
        delete value;
    values.clear();
}

}   // namespace vela
