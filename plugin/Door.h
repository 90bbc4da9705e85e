#pragma once

#include <utility>

#include "plugin/DatabaseHandle.h"

namespace vela {

// Runs what the host asked for behind a door that no exception passes: whatever is thrown inside,
// memory running out above all, becomes the result onFailure, and the database, when there is one,
// has the state of an internal error.
template <class Result, class Body>
Result Door(dbDatabase* database, Result onFailure, Body&& body) noexcept
{
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        // A status without a message takes no memory.
        if (database)
            database->status = VelaStatus(kVEInternalSQLError, string());
        return onFailure;
    }
}

// The same for a body without a result.
template <class Body>
void Door(dbDatabase* database, Body&& body) noexcept
{
    Door(database, false, [&] {
        body();
        return true;
    });
}

}   // namespace vela
