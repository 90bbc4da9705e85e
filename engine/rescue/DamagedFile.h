#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/rescue/RescueWatch.h"
#include "engine/storage/VelaFileAccess.h"

namespace vela {

// DamagedFile reads a file of which nothing is believed, at any position, through one block in
// memory. Bytes that the device can't read are zeros here, and are remembered.
class DamagedFile {
public:
    struct Range {
        int64_t position;
        int64_t size;
    };

    // watch must outlive the object. blockSize is how much is read at once. A file that can't be
    // opened is empty.
    DamagedFile(VelaFileAccess* files, const std::string& name, RescueWatch* watch,
                size_t blockSize);

    [[nodiscard]] bool IsOpen() const { return mStream != nullptr; }
    [[nodiscard]] const std::string& Name() const { return mName; }
    [[nodiscard]] int64_t Length() const { return mLength; }
    // The bytes from position on, good until the next call; null when they reach over the end of
    // the file or don't fit into memory.
    [[nodiscard]] const char* Bytes(int64_t position, size_t count);
    // What could not be read so far, ascending within each pass over the file.
    [[nodiscard]] const std::vector<Range>& Unreadable() const { return mUnreadable; }
    [[nodiscard]] bool IsReadable(int64_t position, int64_t end) const;
    [[nodiscard]] RescueWatch* Watch() const { return mWatch; }

private:
    void ReadBlock(int64_t position, size_t count);
    bool ReadAt(int64_t position, char* bytes, size_t count);
    void NoteUnreadable(int64_t position, int64_t size);

    std::unique_ptr<RandomAccessMechanism> mStream;
    std::string mName;
    RescueWatch* mWatch;
    size_t mBlockSize;
    int64_t mLength = 0;
    std::vector<char> mBlock;
    int64_t mBlockStart = 0;
    std::vector<Range> mUnreadable;
};

}   // namespace vela
