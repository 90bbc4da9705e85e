#include "engine/rescue/CommittedFiles.h"

#include <utility>

#include "engine/storage/CommitFileAccess.h"

namespace vela {

std::unique_ptr<VelaFileAccess> OpenCommittedFiles(const OpenForReading& open)
{
    std::unique_ptr<VelaFileAccess> files = open();
    if (!files || !files->IsOpen())
        return files;
    auto committed = std::make_unique<CommitFileAccess>(std::move(files));
    if (committed->IsOpen())
        return committed;
    return open();
}

}   // namespace vela
