#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/storage/AheadBytes.h"
#include "engine/storage/RandomAccessMechanism.h"
#include "runtime/ChunkedList.h"

namespace vela {

// AheadRows are the inserted rows of a running transaction whose records have gone to the record file before the commit, so
// that they need not stay in memory: always the first ones of the transaction, in the order in which it will append them.
//
// A record that was appended is safe after the next Flush: from then on it can be relied on until Clear, whatever happens to
// a commit. When anything fails, those that aren't safe are given up, and no more are taken until Clear.
class AheadRows {
public:
    // Of a record file, which is borrowed until Close. One that takes nothing ahead has no such rows.
    void Open(RandomAccessMechanism* records);
    void Close();
    // None, as at the beginning of a transaction. What was written and not taken by a commit is dropped. Takes no memory that it
    // must have.
    void Clear();

    // How many rows there are, and how many of them, the first ones, are safe.
    [[nodiscard]] size_t Count() const { return mPositions.size(); }
    [[nodiscard]] size_t SafeCount() const { return mSafeCount; }
    // Where a record lies in the file, and where the safe ones end.
    [[nodiscard]] uint32_t PositionOf(size_t number) const { return mPositions[number]; }
    [[nodiscard]] int64_t SafeEnd() const { return mSafeEnd; }

    // Whether so many bytes of rows in memory had better be written.
    [[nodiscard]] bool IsWorthwhile(size_t bytes) const { return bytes >= mPiece; }
    // Appends the record of a row; body without nulls. False: it was given up. Throws bad_alloc; GiveUp must follow then.
    [[nodiscard]] bool Append(uint32_t rowID, std::string_view body);
    // Ends a run of Appends: their bytes are on the way to the device. False: they were given up.
    [[nodiscard]] bool EndPiece();
    // Makes all of them safe. False: those that weren't are given up.
    [[nodiscard]] bool Flush();
    // Gives those up that aren't safe, and takes no more.
    void GiveUp();

    // The body of a safe row's record. False: it can't be read.
    [[nodiscard]] bool ReadBody(size_t number, uint32_t rowID, std::vector<char>* body) const;

    // In a commit, before anything is appended: the records are in the file. Once is enough.
    [[nodiscard]] bool Take();
    // After a commit that has failed: gives up what has not survived it.
    void CommitWasCancelled();

private:
    void Start();
    [[nodiscard]] bool WriteBuffer();

    RandomAccessMechanism* mRecords = nullptr;
    AheadBytes* mBytes = nullptr;
    size_t mPiece = SIZE_MAX;           // bytes from which on writing is worthwhile
    ChunkedList<uint32_t> mPositions;   // of the records
    int64_t mStart = 0;                 // the file's length without them
    int64_t mEnd = 0;                   // of the last record
    size_t mSafeCount = 0;
    int64_t mSafeEnd = 0;
    bool mTaken = false;   // by the commit that is under way
    std::string mBuffer;   // records on their way to mBytes
};

}   // namespace vela
