#pragma once

#include <cstdint>

namespace vela {

// Counts the entries from the host into the engine; of those that the host starts while others are
// still running, the first is the outermost. Every callback that runs SQL has one on its stack.
class SessionSentry {
public:
    // The outermost entry begins a new file generation.
    SessionSentry();
    ~SessionSentry();
    SessionSentry(const SessionSentry&) = delete;
    SessionSentry& operator=(const SessionSentry&) = delete;
};

// How many outermost entries there have been, modulo 2^32.
extern uint32_t currentFileGeneration;

}   // namespace vela
