#pragma once

#include <cstdint>

namespace vela {

// ColumnMemory counts the bytes that the tables of one database keep as columns (StoredTableColumns), and limits them. What
// doesn't fit is not kept, and its values are read from the files one by one; results are the same with any limit, 0 too.
class ColumnMemory {
public:
    // A quarter of the machine's memory, at most 512 MiB in a 32-bit process.
    [[nodiscard]] static uint64_t DefaultLimit();

    void SetLimit(uint64_t bytes) { mLimit = bytes; }
    [[nodiscard]] uint64_t Limit() const { return mLimit; }
    [[nodiscard]] uint64_t Used() const { return mUsed; }

    // Whether so many bytes more fit; if not, WasShort tells from then on.
    [[nodiscard]] bool HasRoomFor(uint64_t bytes);
    // A user's bytes have changed.
    void Replace(uint64_t oldBytes, uint64_t newBytes)
    {
        mUsed += newBytes - oldBytes;
        mWasShort = mWasShort || mUsed > mLimit;
    }

    // Whether something has not fitted since the last ForgetShortage. Then it's time to drop what other statements have
    // brought into memory.
    [[nodiscard]] bool WasShort() const { return mWasShort; }
    void ForgetShortage() { mWasShort = false; }

private:
    uint64_t mLimit = DefaultLimit();
    uint64_t mUsed = 0;
    bool mWasShort = false;
};

}   // namespace vela
