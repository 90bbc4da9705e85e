#include "plugin/host/Report.h"

#include <iostream>

namespace vela::host {

namespace {

constexpr size_t kMaxFailures = 40;

}   // namespace

void Report::Expect(bool holds, const std::string& wanted, const std::string& got)
{
    if (holds)
        mHeld++;
    else
        Fail("expected " + wanted + ", got " + got);
}

void Report::Fail(const std::string& problem)
{
    Print((mLenient ? "note: " : "") + problem);
    mFailures++;
    if (mFailures < kMaxFailures || mLenient || mStopped)
        return;
    Print("too many failures: the program ends here");
    mStopped = true;
}

void Report::Complain(const std::vector<std::string>& complaints)
{
    for (const std::string& complaint : complaints) {
        Print("the plug-in: " + complaint);
        mFailures++;
        mComplaints++;
    }
    if (mComplaints >= kMaxFailures)
        mStopped = true;
}

void Report::Stop(const std::string& problem)
{
    Print(problem);
    mStopped = true;
    mMakesNoSense = true;
}

ExitStatus Report::Status() const
{
    if (mMakesNoSense)
        return kExitWrongUsage;
    return (mLenient ? mComplaints : mFailures) == 0 ? kExitSuccess : kExitFailure;
}

void Report::Print(const std::string& text) const
{
    std::cout.flush();   // in the order in which things happened, where both go to one place
    std::cerr << mFile << ':';
    if (mLine > 0)
        std::cerr << mLine << ':';
    std::cerr << ' ' << text << '\n';
}

}   // namespace vela::host
