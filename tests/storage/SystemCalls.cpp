#include "tests/storage/SystemCalls.h"

#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cassert>

namespace vela {
namespace {

SystemCalls* sCurrent = nullptr;

// The C library's own function of that name.
template <class Function>
Function Real(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

// Counts a call. True when it fails, with errno set.
bool Refuses(int& count, int error)
{
    count++;
    const bool interrupted = sCurrent->interrupts && count % 2 == 1;
    if (interrupted || error != 0)
        errno = interrupted ? EINTR : error;
    return interrupted || error != 0;
}

size_t Shortened(size_t count)
{
    const size_t most = static_cast<size_t>(sCurrent->mostBytes);
    return most > 0 ? std::min(count, most) : count;
}

}   // namespace

SystemCalls::SystemCalls()
{
    assert(!sCurrent);
    sCurrent = this;
}

SystemCalls::~SystemCalls()
{
    sCurrent = nullptr;
}

}   // namespace vela

using vela::sCurrent;

// These take the place of the C library's functions of the same names in the program they are
// linked into. Where offsets are widened to 64 bits, the names that are really linked end in 64,
// here and below.
extern "C" {

ssize_t pread(int file, void* buffer, size_t count, off_t offset)
{
    static const auto real = vela::Real<ssize_t (*)(int, void*, size_t, off_t)>("pread64");
    if (!sCurrent)
        return real(file, buffer, count, offset);
    if (vela::Refuses(sCurrent->reads, sCurrent->readError))
        return -1;
    const ssize_t came = real(file, buffer, vela::Shortened(count), offset);
    sCurrent->bytesRead += static_cast<long>(came);
    return came;
}

ssize_t pwrite(int file, const void* buffer, size_t count, off_t offset)
{
    static const auto real = vela::Real<ssize_t (*)(int, const void*, size_t, off_t)>("pwrite64");
    if (!sCurrent)
        return real(file, buffer, count, offset);
    if (vela::Refuses(sCurrent->writes, sCurrent->writeError))
        return -1;
    count = vela::Shortened(count);
    if (sCurrent->roomLeft == 0 && count > 0) {
        errno = ENOSPC;
        return -1;
    }
    if (sCurrent->roomLeft > 0)
        count = std::min(count, static_cast<size_t>(sCurrent->roomLeft));
    const ssize_t took = real(file, buffer, count, offset);
    sCurrent->bytesWritten += static_cast<long>(took);
    if (sCurrent->roomLeft > 0)
        sCurrent->roomLeft -= static_cast<long>(took);
    return took;
}

int ftruncate(int file, off_t length) noexcept
{
    static const auto real = vela::Real<int (*)(int, off_t)>("ftruncate64");
    if (sCurrent && vela::Refuses(sCurrent->truncations, sCurrent->truncateError))
        return -1;
    return real(file, length);
}

int fdatasync(int file)
{
    static const auto real = vela::Real<int (*)(int)>("fdatasync");
    if (sCurrent && vela::Refuses(sCurrent->synchronisations, sCurrent->synchroniseError))
        return -1;
    return real(file);
}

int fsync(int file)
{
    static const auto real = vela::Real<int (*)(int)>("fsync");
    if (sCurrent && vela::Refuses(sCurrent->synchronisations, sCurrent->synchroniseError))
        return -1;
    return real(file);
}

int fallocate(int file, int mode, off_t offset, off_t length)
{
    static const auto real = vela::Real<int (*)(int, int, off_t, off_t)>("fallocate64");
    if (sCurrent && vela::Refuses(sCurrent->allocations, sCurrent->allocateError))
        return -1;
    return real(file, mode, offset, length);
}

}   // extern "C"
