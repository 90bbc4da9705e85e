#pragma once

#include <new>
#include <stdexcept>
#include <utility>

namespace vela {

// Out of memory is the one thing that the engine throws: std::bad_alloc, or std::length_error when a
// size is beyond all memory. It is caught at the doors where calls come in (VelaDatabase::Enter and
// its own operations, the plug-in's Door, the shell's statements), and nowhere in between.
//
// What lies in between therefore keeps to this: destructors and what they call don't allocate; what
// only repeats the files (columns, row maps, loaded indexes) may be left half-built, since the door
// drops it (VelaDatabase::EndOutOfMemory); what the files don't have, the open transaction, changes
// in steps that happen whole or not at all.

// Runs body. False: memory ran out, and body was left where that happened.
template <class Body>
[[nodiscard]] bool CatchOutOfMemory(Body&& body)
{
    try {
        std::forward<Body>(body)();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    } catch (const std::length_error&) {
        return false;
    }
}

}   // namespace vela
