#pragma once

#include "engine/storage/FileDescriptor.h"
#include "engine/storage/RandomAccessMechanism.h"

namespace vela {

// FileHandle is a stream over a POSIX file descriptor, unbuffered: its position is the descriptor's
// own, so that the descriptor can be handed in and out at any time. It owns the descriptor. While
// it has none, every operation fails and the length is 0.
class FileHandle final : public RandomAccessMechanism {
public:
    // flags are those of open(), such as O_RDWR | O_CREAT. Closes what was open.
    [[nodiscard]] bool Open(const string& path, int flags);
    // Closes what was open and takes over another descriptor; -1 for none.
    void Reset(int descriptor = -1);
    // Gives up the descriptor, which is the caller's to close. -1 when there is none.
    [[nodiscard]] int ExtractHandle();

    bool ReadData(void* buffer, int count, int* bytesRead) override;
    bool WriteData(const void* buffer, int count) override;
    void Close() override;
    bool IsEOF() override;
    bool SeekFromStart(int64_t offset) override;
    int64_t GetLength() override;
    bool SetLength(int64_t length) override;
    int64_t GetPosition() override;
    bool FlushToDisk() override;
    [[nodiscard]] bool Reserve(int64_t length) override;
    [[nodiscard]] int ErrorNumber() const override { return mErrorNumber; }

private:
    // Keeps errno when the operation failed. Returns ok.
    bool Note(bool ok);

    FileDescriptor mFile;
    int mErrorNumber = 0;
};

}   // namespace vela
