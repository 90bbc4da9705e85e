#pragma once

#include <cstddef>
#include <cstdint>

namespace vela {

// AheadBytes is what a file whose writes belong to commits takes ahead of one: bytes that the next commit is going to append.
//
// They lie behind the file's length, where they can be read, and count for nobody but whoever wrote them: a crash before the
// commit takes them away, and so does the end of the stream that they came by. A commit that fails leaves those that were
// flushed. docs/durability.md tells how.
class AheadBytes {
public:
    AheadBytes() = default;
    AheadBytes(const AheadBytes&) = delete;
    AheadBytes& operator=(const AheadBytes&) = delete;

    // How many bytes had better wait in memory until they are worth a write; 0: none are to be written.
    [[nodiscard]] virtual size_t AheadPiece() const = 0;
    // How many there are.
    [[nodiscard]] virtual int64_t AheadLength() const = 0;
    // Adds count bytes; not during a commit. False: those that were not flushed are given up.
    [[nodiscard]] virtual bool WriteAhead(const char* from, size_t count) = 0;
    // The device has all of them. False: those that were not flushed before are given up.
    [[nodiscard]] virtual bool FlushAhead() = 0;
    // In a commit that has appended nothing to the file yet: the first length of them are its end now, the others are given up.
    [[nodiscard]] virtual bool TakeAhead(int64_t length) = 0;
    // Gives all of them up; not during a commit. Takes no memory that it must have.
    virtual void DropAhead() = 0;

protected:
    ~AheadBytes() = default;
};

}   // namespace vela
