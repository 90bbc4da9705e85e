#include "plugin/SessionSentry.h"

namespace vela {

namespace {

constinit uint32_t gActiveEntries = 0;

}   // namespace

constinit uint32_t currentFileGeneration = 0;

SessionSentry::SessionSentry()
{
    if (gActiveEntries++ == 0)
        currentFileGeneration++;
}

SessionSentry::~SessionSentry()
{
    gActiveEntries--;
}

}   // namespace vela
