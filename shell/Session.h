#pragma once

#include <cstdint>
#include <memory>

#include "engine/storage/VelaDatabase.h"
#include "shell/Messages.h"
#include "shell/Options.h"
#include "shell/Output.h"
#include "shell/ResultFormat.h"
#include "shell/StatementSplitter.h"

namespace vela::shell {

// Session is one run of the shell on one open database: its settings, where its data goes, what
// has happened so far, and the one place where statements are run.
class Session {
public:
    // All three are borrowed for the session's life.
    Session(const Options& options, VelaDatabase& database, Output& output);

    [[nodiscard]] VelaDatabase& Database() { return mDatabase; }
    [[nodiscard]] Output& Data() { return mOutput; }
    [[nodiscard]] bool IsReadOnly() const { return mOptions.readOnly; }
    [[nodiscard]] bool KeepsGoing() const { return mOptions.keepGoing; }
    // The escape character now in force; 0 for none.
    [[nodiscard]] char Escape() const;

    [[nodiscard]] OutputMode Mode() const { return mMode; }
    void SetMode(OutputMode mode);

    // Runs a statement with the clock of now, prints what came of it, and flushes. A SELECT goes
    // the way of queries, all else that of executions. False: it failed, which has been reported;
    // or its output could not be written, and OutputFailed() tells.
    [[nodiscard]] bool RunStatement(const SourceStatement& statement, const std::string& file);

    // Reports a failure of something other than a statement, and counts it. Returns false, for
    // callers to pass on.
    bool Fail(const SourcePlace& where, std::string_view sqlState, std::string_view description);
    [[nodiscard]] bool HasFailures() const { return mFailures > 0; }

    // Says what could not be read of the database's files, each place once: file, offset, and what
    // that means. Called after everything that reads them.
    void TellDamage();

    // Passes the data written so far on. False: it can't be written, now or earlier.
    [[nodiscard]] bool FlushOutput() { return mOutput.Flush(); }
    [[nodiscard]] bool OutputFailed() const { return mOutput.Error() != 0; }

    // .quit asks for the end, which is a clean one.
    void RequestQuit() { mQuitRequested = true; }
    [[nodiscard]] bool QuitRequested() const { return mQuitRequested; }

    // Ends the session: with completed, commits what is open, as when a database is closed; else
    // rolls it back and says so. Returns the exit status of the whole run.
    [[nodiscard]] int Finish(bool completed);

private:
    struct Outcome;

    void Execute(const string& text, Outcome* outcome);
    void CheckCommit(Outcome* outcome);
    void Report(const SourceStatement& statement, const std::string& file, const string& text,
                const Outcome& outcome);
    [[nodiscard]] int CommitOpenChanges();
    void RollBackOpenChanges(const std::string& reason);

    const Options& mOptions;
    VelaDatabase& mDatabase;
    Output& mOutput;
    OutputMode mMode;
    std::unique_ptr<ResultFormat> mFormat;
    uint64_t mStatements = 0;
    uint64_t mFailures = 0;
    size_t mDamageTold = 0;   // places of the database's log
    bool mQuitRequested = false;
};

}   // namespace vela::shell
