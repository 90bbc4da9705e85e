#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/storage/DamageLog.h"
#include "engine/storage/RandomAccessMechanism.h"

namespace vela {

// What is wrong with a record header.
enum class RecordError { kNone = 0, kCorruptHeader = 1, kReadFailed = 2 };

struct RecordHeader {
    bool live = false;
    uint32_t rowID = 0;
    uint32_t bodySize = 0;
};

// Reads a header from its 12 bytes. bytesAfter is how much of the file follows them: a body that is empty or longer than
// that is a corrupt header, as is an unknown tag.
RecordError ParseRecordHeader(const char* bytes, int64_t bytesAfter, RecordHeader* header);

// Writes the line "VelaStorage error" + the number to the standard error stream.
void ReportRecordError(RecordError error);

// What the damage is that a header with this error is.
[[nodiscard]] DamageKind DamageOf(RecordError error);

// RecordScanner walks all records of a record file in file order, live and deleted ones, reading large blocks. It moves the
// stream's position. Memory: one block, or the largest record if that is larger.
class RecordScanner {
public:
    // file stays the caller's, and unchanged while the scan runs.
    explicit RecordScanner(RandomAccessMechanism* file);
    // Of the records from one position to another alone, which may lie behind the file's length.
    RecordScanner(RandomAccessMechanism* file, int64_t position, int64_t end);

    // The next record; false at the end, and at the first bad header, which is reported.
    bool Next();
    // Whether the scan ended before the file did: at a bad header, or because reading failed.
    [[nodiscard]] bool Failed() const { return mFailed; }

    // Of the current record:
    [[nodiscard]] const RecordHeader& Header() const { return mHeader; }
    [[nodiscard]] uint32_t Position() const { return static_cast<uint32_t>(mPosition); }
    [[nodiscard]] std::string_view Body() const
    {
        return {mBlock.data() + mBodyOffset, mHeader.bodySize};
    }

private:
    // Makes size bytes from the file position available in the block; false when they can't be read.
    bool Provide(int64_t position, size_t size);

    RandomAccessMechanism* mFile;
    int64_t mEnd;
    int64_t mPosition = 0;
    int64_t mNext;
    RecordHeader mHeader;
    bool mFailed = false;
    std::vector<char> mBlock;
    int64_t mBlockStart = 0;
    size_t mBlockSize = 0;
    size_t mNextBlockSize;
    size_t mBodyOffset = 0;
};

}   // namespace vela
