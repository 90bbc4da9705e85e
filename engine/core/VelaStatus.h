#pragma once

#include "runtime/String.h"

namespace vela {

// A state is known by the identity of its constant: two states are equal when they are the same
// constant. It points at the five characters of its SQLSTATE.
using VelaState = const char*;

extern const VelaState kVEStateSuccess;                   // 00000
extern const VelaState kVEStateNoData;                    // 02000
extern const VelaState kVEWarnStringRightTruncated;       // 01004
extern const VelaState kVEWarnInvalidKeyword;             // 01S09
extern const VelaState kVEDynamicSQLError;                // 07000
extern const VelaState kVETableAlreadyExists;             // 42S01
extern const VelaState kVETableNotFound;                  // 42S02
extern const VelaState kVEIndexAlreadyExists;             // 42S11
extern const VelaState kVEIndexNotFound;                  // 42S12
extern const VelaState kVEColumnAlreadyExists;            // 42S21
extern const VelaState kVEColumnNotFound;                 // 42S22
extern const VelaState kVEInsertValuesMismatch;           // 21S01
extern const VelaState kVEDataException;                  // 22000
extern const VelaState kVEInvalidParameter;               // 22023
extern const VelaState kVEIntegrityConstraintViolation;   // 23000
extern const VelaState kVEInvalidTransactionState;        // 25000
extern const VelaState kVETransactionInProgress;          // 25S02
extern const VelaState kVEFeatureNotSupported;            // 0A000
extern const VelaState kVEInternalSQLError;               // 72000
// Memory ran out. The first: what was pending before is pending still. The second: all changes since
// the last commit are lost.
extern const VelaState kVEOutOfMemory;       // 53200
extern const VelaState kVETransactionLost;   // 40000

// VelaStatus is the outcome of an operation: a state and, where there is more to say, a message
// that takes the place of the state's own. Set it by assigning a whole new one; never the message
// alone.
class VelaStatus {
public:
    // A status without a message takes no memory.
    VelaStatus() : mState(kVEStateSuccess) {}
    VelaStatus(VelaState state, string message)
        : mState(state), mMessage(static_cast<string&&>(message))
    {}

    [[nodiscard]] VelaState State() const { return mState; }
    // The message, or when that is empty the state's default text; empty for a state that is none
    // of the constants.
    [[nodiscard]] string Description() const;

private:
    VelaState mState;
    string mMessage;
};

// Fills status, when there is one, and returns false, so that a failing check is one line: return
// Fail(status, state, text). An empty message stands for the state's default text.
bool Fail(VelaStatus* status, VelaState state, const string& message);

}   // namespace vela
