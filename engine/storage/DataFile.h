#pragma once

#include <memory>

#include "engine/storage/RandomAccessMechanism.h"

namespace vela {

// DataFile is a buffered file of the host file system.
//
// It is closed, open, or temporarily closed: then it keeps path, mode and position but no system
// file, and every read and write fails until TemporaryReopen. What was written may stay in the
// buffer; FlushBuffer, FlushToDisk and Close bring it to the file.
class DataFile : public RandomAccessMechanism {
public:
    // Closes what was open, then makes an empty file at path, also over an existing one, and opens
    // it for reading and writing.
    [[nodiscard]] virtual bool Create(const string& path) = 0;
    // Closes what was open, then opens an existing ordinary file at position 0. mode 1: for
    // reading; 3: for reading and writing; any other fails.
    [[nodiscard]] virtual bool Open(const string& path, int mode) = 0;
    // Closes what was open, then makes a new file in the folder for temporary files and opens it
    // for reading and writing. name receives its path. The file stays on disk until somebody
    // deletes it; see DataFileCleaner.
    [[nodiscard]] virtual bool CreateTemporaryFile(string& name) = 0;

    // Gives the system file back for a while. False when buffered bytes could not be written: the
    // file is open still.
    [[nodiscard]] virtual bool TemporaryClose() = 0;
    // Opens it again, at the same position and with the length that it has now.
    [[nodiscard]] virtual bool TemporaryReopen() = 0;
    // Brings buffered bytes to the file, so that others can read them, and forgets what was read
    // ahead, so that what others wrote is seen. False when a write failed: the bytes stay in the
    // buffer for the next attempt.
    [[nodiscard]] virtual bool FlushBuffer() = 0;

    // The path of the file when it was made by CreateTemporaryFile, else the empty text. Stays
    // after Close.
    [[nodiscard]] virtual const string& TemporaryPath() const = 0;
};

}   // namespace vela
