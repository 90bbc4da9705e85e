#include "shell/RescueProgress.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>

#include "shell/DisplayText.h"
#include "shell/Messages.h"

namespace vela::shell {

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};
constexpr std::chrono::milliseconds kBetweenShows{200};

// What a signal handler may write.
volatile std::sig_atomic_t stopRequested = 0;

extern "C" void RequestStop(int)
{
    stopRequested = 1;
}

void SetHandlers(void (*handler)(int))
{
    struct sigaction action {};
    action.sa_handler = handler;
    for (const int number : kSignals) {
        struct sigaction present {};
        // What the caller has told us to ignore, as nohup does, stays so.
        if (sigaction(number, nullptr, &present) == 0 && present.sa_handler != SIG_IGN)
            sigaction(number, &action, nullptr);
    }
}

}   // namespace

RescueProgress::RescueProgress(const char* verb)
    : mVerb(verb), mIsTerminal(isatty(STDERR_FILENO) != 0), mNextShow(Clock::now() + kBetweenShows)
{
    stopRequested = 0;
    SetHandlers(RequestStop);
}

RescueProgress::~RescueProgress()
{
    Clear();
    SetHandlers(SIG_DFL);
}

void RescueProgress::StartFile(const std::string& name, int64_t length)
{
    mFile = name;
    mLength = length;
    mRead = 0;
}

void RescueProgress::BytesRead(int64_t count)
{
    mRead += count;
    if (mIsTerminal && Clock::now() >= mNextShow)
        Show();
}

bool RescueProgress::Stopped()
{
    return stopRequested != 0;
}

void RescueProgress::Show()
{
    const int64_t percent = mLength == 0 ? 100 : std::min<int64_t>(100, mRead * 100 / mLength);
    PrintRaw("\r\x1b[K" + std::string(mVerb) + " " + ShownText(mFile) + " " +
             std::to_string(percent) + "%");
    mIsShown = true;
    mNextShow = Clock::now() + kBetweenShows;
}

void RescueProgress::Clear()
{
    if (mIsShown)
        PrintRaw("\r\x1b[K");
    mIsShown = false;
}

}   // namespace vela::shell
