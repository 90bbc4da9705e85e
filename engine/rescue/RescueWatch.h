#pragma once

#include <cstdint>
#include <string>

namespace vela {

// RescueWatch is told how a long reading of files goes on, and may end it. The base watches nothing
// and lets it run.
class RescueWatch {
public:
    virtual ~RescueWatch() = default;

    // Reading of a file of length bytes begins. A file may be read more than once.
    virtual void StartFile(const std::string& /*name*/, int64_t /*length*/) {}
    // That many more bytes of it were read.
    virtual void BytesRead(int64_t /*count*/) {}
    // Asked often. Once true it stays true: what runs ends soon, and what it has found is not
    // complete.
    [[nodiscard]] virtual bool Stopped() { return false; }
};

}   // namespace vela
