#pragma once

#include "engine/rescue/DatabaseFault.h"
#include "engine/rescue/RescueWatch.h"
#include "engine/storage/VelaFileAccess.h"

namespace vela {

// Whether there is a file of any table.
[[nodiscard]] bool HoldsDatabase(const VelaFileAccess& files);

// Reads every file of a database whole and tells receiver every fault, table by table, and what
// each table holds. A log of commits among the files is one that could not be read (CommittedFiles.h).
// Writes nothing, and believes nothing of what it reads. When watch has stopped
// it, what was told is not all.
void CheckDatabase(VelaFileAccess* files, FaultReceiver* receiver, RescueWatch* watch);

}   // namespace vela
