#pragma once

#include <cstdint>

#include "engine/storage/VelaTrans.h"

namespace vela {

// SavedTable is a new table that takes rows under the row ids that they had, with their values as
// they were stored: as it has no columns of its own, nothing is coerced. It is one of the open
// tables of a database until that is closed.
class SavedTable : public VelaTrans {
public:
    SavedTable(VelaFileAccess* files, const string& name) : VelaTrans(files, name, Files::kNew) {}

    // Copies the values; the row id must be new in the table. False when no row can have it.
    bool AddRowAs(uint32_t rowID, VelaRow* row);
    // The counters that the next commit writes.
    void SetLastUsed(uint32_t rowID, uint32_t columnID);
};

}   // namespace vela
