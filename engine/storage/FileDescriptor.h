#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>

#include "runtime/String.h"

namespace vela {

// FileDescriptor owns a descriptor of the operating system, or none, and calls the system with it:
// interrupted calls are made again, offsets are 64 bits wide. What fails leaves its reason in
// errno.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : mDescriptor(descriptor) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { Close(); }

    [[nodiscard]] bool IsOpen() const { return mDescriptor >= 0; }
    [[nodiscard]] int Get() const { return mDescriptor; }
    // Closes what was open. False when the path holds a NUL or the system refuses. flags are those
    // of open(); a new file gets the rights that the process's mask leaves.
    [[nodiscard]] bool Open(const string& path, int flags);
    // Opens for reading, with other flags. The time of access stays as it is where the system lets the caller have that:
    // the owner of the file.
    [[nodiscard]] bool OpenForReading(const string& path, int flags);
    // Closes what was open and takes another descriptor; -1 for none.
    void Reset(int descriptor);
    // Gives the descriptor up to the caller; -1 when there was none.
    [[nodiscard]] int Release();
    // False when the system reports a failure that came late. The descriptor is gone either way.
    bool Close();

    // As pread and pwrite: bytes done, which may be fewer than asked for, 0 at the end of the file,
    // -1 on failure.
    [[nodiscard]] ssize_t ReadAt(int64_t offset, void* buffer, size_t count) const;
    [[nodiscard]] ssize_t WriteAt(int64_t offset, const void* buffer, size_t count) const;
    // The same at the descriptor's own position, which moves on.
    [[nodiscard]] ssize_t Read(void* buffer, size_t count) const;
    [[nodiscard]] ssize_t Write(const void* buffer, size_t count) const;
    // -1 on failure.
    [[nodiscard]] int64_t Length() const;
    [[nodiscard]] bool SetLength(int64_t length) const;
    // What was written so far, and the length, are on the device.
    [[nodiscard]] bool Synchronise() const;
    // Asks the system to begin carrying length bytes from offset to the device; doesn't wait. Promises
    // nothing, and can't fail in a way that matters: Synchronise tells.
    void StartSynchronising(int64_t offset, int64_t length) const;
    // Whether the byte at offset can be read without waiting for the device; true also where the system can't say.
    [[nodiscard]] bool IsCached(int64_t offset) const;
    // Asks the system to begin reading length bytes from offset into its memory; doesn't wait. Promises nothing.
    void StartReading(int64_t offset, int64_t length) const;
    // Room on the device for length bytes from offset; the file's length stays. True, too, where
    // the file system can't say.
    [[nodiscard]] bool Allocate(int64_t offset, int64_t length) const;

private:
    int mDescriptor = -1;
};

}   // namespace vela
