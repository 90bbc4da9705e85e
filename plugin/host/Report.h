#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "plugin/host/Options.h"

namespace vela::host {

// Report tells people what happened, on standard error as "file:line: text", and keeps count.
class Report {
public:
    // lenient: what fails is told and not counted; see Options.
    Report(std::string file, bool lenient) : mFile(std::move(file)), mLenient(lenient) {}

    // The line that what follows is about; 0: the program as a whole.
    void SetLine(size_t number) { mLine = number; }

    // An expectation that holds, or doesn't.
    void Expect(bool holds, const std::string& wanted, const std::string& got);
    // Something could not be done, or is not as it must be. Too many of them stop the program.
    void Fail(const std::string& problem);
    // The plug-in did what a plug-in may not do: counts always.
    void Complain(const std::vector<std::string>& complaints);
    // The program makes no sense here: it ends.
    void Stop(const std::string& problem);

    [[nodiscard]] bool IsStopped() const { return mStopped; }
    [[nodiscard]] size_t Held() const { return mHeld; }
    [[nodiscard]] size_t Failures() const { return mFailures; }
    // What is to be told to the caller of the program.
    [[nodiscard]] ExitStatus Status() const;

private:
    void Print(const std::string& text) const;

    std::string mFile;
    bool mLenient;
    size_t mLine = 0;
    size_t mHeld = 0;         // expectations
    size_t mFailures = 0;     // those told
    size_t mComplaints = 0;   // those among them that count in any case
    bool mStopped = false;
    bool mMakesNoSense = false;
};

}   // namespace vela::host
