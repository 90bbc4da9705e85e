#include "engine/storage/VelaTablesTable.h"

namespace vela {

VelaTablesTable::VelaTablesTable()
    : mName("_TABLES"), mColumn{string(), VelaValue::Null(kTypeString), 0}
{}

void VelaTablesTable::GetRowIDs(SimpleVector<uint32_t>* rowIDs)
{
    rowIDs->clear();
    rowIDs->push_back(1);
}

bool VelaTablesTable::GetValue(uint32_t rowID, long number, VelaValue* value)
{
    if (rowID != 1 || number != 0)
        return false;
    value->SetString(mName);
    return true;
}

void VelaTablesTable::DeleteRow(uint32_t /*rowID*/) {}

}   // namespace vela
