#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/query/VelaTempTable.h"
#include "engine/storage/VelaDatabase.h"
#include "shell/Options.h"
#include "shell/Output.h"
#include "tests/storage/MemoryFileAccess.h"
#include "tests/storage/TemporaryFolder.h"

namespace vela::shell {

// Output that stays in memory.
class StringOutput : public Output {
public:
    // Everything written so far.
    [[nodiscard]] const std::string& Text()
    {
        Flush();
        return mText;
    }

protected:
    [[nodiscard]] int Consume(std::string_view text) override
    {
        mText += text;
        return 0;
    }

private:
    std::string mText;
};

// A database in memory, and the shell's way to run scripts on it.
class TestDatabase {
public:
    TestDatabase();

    [[nodiscard]] VelaDatabase& Database() { return *mDatabase; }
    // Runs a script in a session of its own, which commits at the end, and returns the data that it
    // printed. A failure fails the test.
    std::string Run(const std::string& script, OutputMode mode = OutputMode::kJsonLines);
    // Opens the database anew from its files.
    void Reopen();

private:
    MemoryDisk mDisk;
    std::unique_ptr<VelaDatabase> mDatabase;
};

// A result table with columns called "a", "b" ... of the types, and rows of values.
std::unique_ptr<VelaTempTable> ResultTable(const std::vector<VelaDataType>& types,
                                           const std::vector<std::vector<VelaValue>>& rows);

// A run of the program veladb, with what it printed and told its caller.
struct ProgramRun {
    int exitStatus = -1;   // 128 and the signal's number when a signal ended it
    std::string output;
    std::string errors;
};

// Runs a shell command line in the folder with this standard input.
ProgramRun RunCommandLine(const TemporaryFolder& folder, const std::string& commandLine,
                          const std::string& input);

}   // namespace vela::shell
