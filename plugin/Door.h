#pragma once

#include <utility>

#include "engine/core/OutOfMemory.h"
#include "plugin/DatabaseHandle.h"

namespace vela {

// Runs what the host asked for behind a door that no exception passes: whatever is thrown inside
// becomes the result onFailure. When memory ran out, the handle, when there is one, gets the status
// that tells, and its database stays usable; after anything else it has the state of an internal
// error.
template <class Result, class Body>
Result Door(dbDatabase* handle, Result onFailure, Body&& body) noexcept
{
    try {
        Result result = onFailure;
        if (CatchOutOfMemory([&] { result = std::forward<Body>(body)(); }))
            return result;
        EndOutOfMemory(handle);
    } catch (...) {
        if (handle)
            handle->status = VelaStatus(kVEInternalSQLError, string());
    }
    return onFailure;
}

// The same for a body without a result.
template <class Body>
void Door(dbDatabase* handle, Body&& body) noexcept
{
    Door(handle, false, [&] {
        body();
        return true;
    });
}

}   // namespace vela
