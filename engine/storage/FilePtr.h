#pragma once

#include <cstdio>

#include "engine/storage/RandomAccessMechanism.h"

namespace vela {

// FilePtr is a stream over a FILE of the C library, with that library's buffering. It owns the
// FILE. While it has none, every operation fails and the length is 0.
class FilePtr final : public RandomAccessMechanism {
public:
    FilePtr() = default;
    ~FilePtr() override { Close(); }

    // mode as for fopen: "r" reads, "r+" reads and writes, "w+" makes an empty file first. Closes
    // what was open.
    [[nodiscard]] bool Open(const string& path, const char* mode);

    bool ReadData(void* buffer, int count, int* bytesRead) override;
    bool WriteData(const void* buffer, int count) override;
    void Close() override;
    bool IsEOF() override;
    bool SeekFromStart(int64_t offset) override;
    int64_t GetLength() override;
    bool SetLength(int64_t length) override;
    int64_t GetPosition() override;
    bool FlushToDisk() override;
    [[nodiscard]] int ErrorNumber() const override { return mErrorNumber; }

private:
    enum class Direction { kNone, kReading, kWriting };

    // The C library wants a seek between reading and writing.
    bool Turn(Direction direction);
    bool Note(bool ok);

    std::FILE* mFile = nullptr;
    Direction mDirection = Direction::kNone;
    int mErrorNumber = 0;
};

}   // namespace vela
