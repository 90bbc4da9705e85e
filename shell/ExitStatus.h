#pragma once

namespace vela::shell {

// What the program tells its caller when it ends.
enum ExitStatus : int {
    kExitSuccess = 0,   // every statement and command succeeded
    kExitFailure =
        1,   // one failed, or input could not be read, output not written, changes not committed
    kExitWrongUsage = 2,   // the command line makes no sense; nothing was opened
    kExitNoDatabase = 3,   // the database can't be opened
    kExitFaults = 4,       // "check" found faults; "repair" could not save everything
};

}   // namespace vela::shell
