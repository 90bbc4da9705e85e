#pragma once

#include "engine/storage/RandomAccessMechanism.h"

namespace vela {

// StringStorageMechanism is a stream over a string in memory. It shares the bytes of the string it
// was opened on and copies them at the first write: the opener's string never changes, Storage()
// gives the result. While it is closed, every operation fails and the length is 0.
class StringStorageMechanism final : public RandomAccessMechanism {
public:
    // At position 0. Closes what was open.
    void Open(const string& storage);
    // The bytes as they are now, shared, with the encoding that the opened string had.
    [[nodiscard]] const string& Storage() const { return mText; }

    bool ReadData(void* buffer, int count, int* bytesRead) override;
    // False also when there is no memory for a longer string.
    bool WriteData(const void* buffer, int count) override;
    void Close() override;
    bool IsEOF() override { return mPosition >= GetLength(); }
    bool SeekFromStart(int64_t offset) override;
    int64_t GetLength() override { return static_cast<int64_t>(mText.length()); }
    bool SetLength(int64_t length) override;
    int64_t GetPosition() override { return mPosition; }

private:
    string mText;
    int64_t mPosition = 0;
    bool mOpen = false;
};

}   // namespace vela
