#include "engine/storage/DataFileCleaner.h"

#include <unistd.h>

#include <utility>

namespace vela {

DataFileCleaner::DataFileCleaner(std::unique_ptr<DataFile> file) : mFile(std::move(file)) {}

DataFileCleaner::~DataFileCleaner()
{
    if (!mFile)
        return;
    mFile->Close();
    const string& path = mFile->TemporaryPath();
    if (!path.empty())
        unlink(path.CString());
}

}   // namespace vela
