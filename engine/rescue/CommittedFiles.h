#pragma once

#include <functional>
#include <memory>

#include "engine/storage/VelaFileAccess.h"

namespace vela {

// Opens a container for reading; called again when what it gave was of no use. Null: it can't be.
using OpenForReading = std::function<std::unique_ptr<VelaFileAccess>()>;

// The files of a database with all that was committed: what a crash has kept from them is read from
// the log of commits (docs/durability.md), as the next opening would do. Nothing is written. When
// the log can't be read, the files as they are, the log among them. The container that open gave
// when it is not open; null when it gave none.
[[nodiscard]] std::unique_ptr<VelaFileAccess> OpenCommittedFiles(const OpenForReading& open);

}   // namespace vela
