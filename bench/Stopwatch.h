#pragma once

#include <chrono>

namespace vela::bench {

// Adds up the time between Start and Stop, over several such stretches.
class Stopwatch {
public:
    void Start() { mStart = Clock::now(); }
    void Stop() { mTotal += Clock::now() - mStart; }
    [[nodiscard]] double Seconds() const { return std::chrono::duration<double>(mTotal).count(); }

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point mStart;
    Clock::duration mTotal{0};
};

}   // namespace vela::bench
