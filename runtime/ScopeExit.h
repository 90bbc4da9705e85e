#pragma once

#include <utility>

namespace vela {

// ScopeExit runs a step when its scope is left, by whatever way, unless it was dismissed before. The
// step must not throw.
template <class Step>
class ScopeExit {
public:
    explicit ScopeExit(Step step) : mStep(std::move(step)) {}
    ~ScopeExit()
    {
        if (!mDismissed)
            mStep();
    }
    ScopeExit(const ScopeExit&) = delete;
    ScopeExit& operator=(const ScopeExit&) = delete;

    void Dismiss() { mDismissed = true; }

private:
    Step mStep;
    bool mDismissed = false;
};

}   // namespace vela
