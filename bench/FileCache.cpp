#include "bench/FileCache.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

#include "bench/Peer.h"

namespace vela::bench {

namespace fs = std::filesystem;

void DropFromCache(const std::string& folder)
{
    for (const auto& entry : fs::directory_iterator(folder)) {
        const int file = open(entry.path().c_str(), O_RDONLY | O_CLOEXEC);
        // What isn't on the device yet would stay.
        if (file < 0 || fsync(file) != 0 || posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED) != 0)
            Die(entry.path().string() + " can't be dropped from memory");
        close(file);
    }
}

}   // namespace vela::bench
