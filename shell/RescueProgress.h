#pragma once

#include <chrono>

#include "engine/rescue/RescueWatch.h"

namespace vela::shell {

// Shows on standard error how far a long reading is, when that is a terminal, and lets Ctrl-C (and
// the signals that ask a program to end) stop it cleanly. One at a time; the signals are as before
// when it goes.
class RescueProgress : public RescueWatch {
public:
    // verb: what is shown before the file's name, "checking".
    explicit RescueProgress(const char* verb);
    ~RescueProgress() override;
    RescueProgress(const RescueProgress&) = delete;
    RescueProgress& operator=(const RescueProgress&) = delete;

    void StartFile(const std::string& name, int64_t length) override;
    void BytesRead(int64_t count) override;
    [[nodiscard]] bool Stopped() override;
    // Clears the line, before something else is printed there.
    void Clear();

private:
    using Clock = std::chrono::steady_clock;

    void Show();

    const char* mVerb;
    bool mIsTerminal;
    bool mIsShown = false;
    std::string mFile;
    int64_t mLength = 0;
    int64_t mRead = 0;
    Clock::time_point mNextShow;
};

}   // namespace vela::shell
