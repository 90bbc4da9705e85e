#include "engine/rescue/SavedTable.h"

namespace vela {

bool SavedTable::AddRowAs(uint32_t rowID, VelaRow* row)
{
    // A new row gets the next unused id, and the caller knows which one that should be. Row 0 has
    // none before it.
    if (rowID == 0)
        row->push_back(new VelaValueWithID(VelaValue::Integer(0), 0));
    else
        mLastUsedRowID = rowID - 1;
    return AddRow(*row, false) == rowID && rowID != kInvalidRowID;
}

void SavedTable::SetLastUsed(uint32_t rowID, uint32_t columnID)
{
    mLastUsedRowID = rowID;
    mLastUsedColumnID = columnID;
}

}   // namespace vela
