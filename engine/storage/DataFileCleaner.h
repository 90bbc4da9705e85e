#pragma once

#include <memory>

#include "engine/storage/DataFile.h"

namespace vela {

// DataFileCleaner owns a DataFile and deletes it when it is destroyed. A temporary file goes from
// disk with it; any other file is closed and stays.
class DataFileCleaner {
public:
    // file may be null.
    explicit DataFileCleaner(std::unique_ptr<DataFile> file);
    ~DataFileCleaner();
    DataFileCleaner(const DataFileCleaner&) = delete;
    DataFileCleaner& operator=(const DataFileCleaner&) = delete;

    [[nodiscard]] DataFile* File() const { return mFile.get(); }

private:
    std::unique_ptr<DataFile> mFile;
};

}   // namespace vela
