#pragma once

namespace vela {

// SystemCalls stands between the file classes and the operating system for as long as it lives: it
// counts their calls and makes chosen ones fail, fall short or be interrupted. One at a time;
// without one, calls pass through.
//
// It sees pread, pwrite, ftruncate, fdatasync, fsync and fallocate of this program's own code.
class SystemCalls {
public:
    SystemCalls();
    ~SystemCalls();
    SystemCalls(const SystemCalls&) = delete;
    SystemCalls& operator=(const SystemCalls&) = delete;

    int reads = 0;
    int writes = 0;
    int truncations = 0;
    int synchronisations = 0;
    int allocations = 0;
    long bytesRead = 0;
    long bytesWritten = 0;
    int All() const { return reads + writes + truncations + synchronisations + allocations; }

    // The error number that calls of that kind fail with; 0: they don't.
    int readError = 0;
    int writeError = 0;
    int truncateError = 0;
    int synchroniseError = 0;
    int allocateError = 0;
    // Reads and writes move at most so many bytes; 0: as many as asked for.
    int mostBytes = 0;
    // After so many more bytes, writes fail with ENOSPC; below 0: never.
    long roomLeft = -1;
    // Every second call of each kind is interrupted before it does anything.
    bool interrupts = false;
};

}   // namespace vela
