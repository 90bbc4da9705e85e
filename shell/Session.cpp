#include "shell/Session.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <utility>

#include "engine/sql/VelaSQL.h"
#include "shell/DisplayText.h"
#include "shell/OpenDatabase.h"
#include "shell/StatementParser.h"

namespace vela::shell {

// What came of running one statement.
struct Session::Outcome {
    std::unique_ptr<VelaTable> rows;
    std::string sqlState;
    string description;

    [[nodiscard]] bool IsSuccess() const { return sqlState == kVEStateSuccess; }
    // Warnings and "no data" are not failures.
    [[nodiscard]] bool IsFailure() const
    {
        return !sqlState.starts_with("00") && !sqlState.starts_with("01") &&
               !sqlState.starts_with("02");
    }
    [[nodiscard]] bool IsWarning() const { return sqlState.starts_with("01"); }
};

namespace {

using Clock = std::chrono::steady_clock;

void PrintRunTime(Clock::time_point start)
{
    const std::chrono::duration<double> seconds = Clock::now() - start;
    char text[64];
    std::snprintf(text, sizeof text, "time: %.6f s\n", seconds.count());
    PrintRaw(text);
}

}   // namespace

Session::Session(const Options& options, VelaDatabase& database, Output& output)
    : mOptions(options),
      mDatabase(database),
      mOutput(output),
      mMode(options.mode),
      mFormat(MakeFormat(options.mode, options))
{}

char Session::Escape() const
{
    const string& option = mDatabase.EscapeOption();
    return option.empty() ? '\0' : static_cast<char>(option[0]);
}

void Session::SetMode(OutputMode mode)
{
    mMode = mode;
    mFormat = MakeFormat(mode, mOptions);
}

bool Session::RunStatement(const SourceStatement& statement, const std::string& file)
{
    const Clock::time_point start = Clock::now();
    // Always tagged UTF-8, plain ASCII too: the tag goes into the files with every text and must
    // not depend on the words around it. Bytes that are not UTF-8 stay what they are.
    const string text(statement.text, kEncodingUTF8);
    StatementResult result;
    result.number = ++mStatements;
    if (mFormat->ShowsCanonical())
        result.canonical = ParseStatement(text, mDatabase.EscapeOption()).canonical;

    Outcome outcome;
    Execute(text, &outcome);
    result.sqlState = outcome.sqlState;
    if (!outcome.IsSuccess())
        result.message = outcome.description;
    result.rows = outcome.rows.get();
    mFormat->WriteResult(result, &mOutput);
    const bool written = FlushOutput();

    Report(statement, file, text, outcome);
    TellDamage();
    if (mOptions.timer)
        PrintRunTime(start);
    return written && !outcome.IsFailure();
}

void Session::Execute(const string& text, Outcome* outcome)
{
    VelaStatus status;
    mDatabase.UpdateClock();
    if (text.View().find('\0') != std::string_view::npos)
        status = ParseStatement(text, mDatabase.EscapeOption()).status;
    else if (BeginsWithWord(text.View(), "SELECT"))
        outcome->rows = VelaSQLQuery(text, mDatabase, &status);
    else
        VelaSQLExecute(text, mDatabase, &status);
    outcome->sqlState = status.State();
    outcome->description = status.Description();
    if (outcome->IsSuccess() && BeginsWithWord(text.View(), "COMMIT"))
        CheckCommit(outcome);
}

// COMMIT keeps the state of success when files could not be written; here that becomes a failure.
void Session::CheckCommit(Outcome* outcome)
{
    if (!mDatabase.LastCommitFailed())
        return;
    outcome->sqlState = kStateInputOutput;
    outcome->description =
        "Error: COMMIT failed: " + mDatabase.CommitErrorText() + ". The changes are still open.";
}

void Session::Report(const SourceStatement& statement, const std::string& file, const string& text,
                     const Outcome& outcome)
{
    if (!outcome.IsFailure() && !outcome.IsWarning())
        return;
    mFailures += outcome.IsFailure() ? 1 : 0;
    size_t offset = 0;
    bool isSyntaxError = false;
    if (outcome.sqlState == kVEDynamicSQLError) {
        const ParsedStatement parsed = ParseStatement(text, mDatabase.EscapeOption());
        isSyntaxError = !parsed.canonical;
        offset = parsed.errorOffset;
    }
    PrintFailure({file, statement.PlaceOf(offset)}, outcome.sqlState, outcome.description.View());
    if (isSyntaxError)
        PrintCaret(statement, offset);
}

void Session::TellDamage()
{
    const std::vector<DamagedPlace>& places = mDatabase.Damage().Places();
    const bool isFirst = mDamageTold == 0 && !places.empty();
    for (; mDamageTold < places.size(); mDamageTold++) {
        const DamagedPlace& place = places[mDamageTold];
        PrintNote(ShownText(place.file) + ":" + std::to_string(place.offset) + ": " +
                  DamageText(place.kind));
    }
    if (isFirst)
        PrintNote(
            "the database is damaged; \"veladb check\" tells all that is wrong, and \"veladb "
            "repair\" saves what can be read");
}

bool Session::Fail(const SourcePlace& where, std::string_view sqlState,
                   std::string_view description)
{
    mFailures++;
    PrintFailure(where, sqlState, description);
    return false;
}

int Session::Finish(bool completed)
{
    if (!FlushOutput()) {
        const int error = mOutput.Error();
        RollBackOpenChanges(error == EPIPE
                                ? "standard output was closed by its reader"
                                : "can't write to standard output: " + SystemErrorText(error));
        return 1;
    }
    if (!completed) {
        RollBackOpenChanges("stopped at the failure");
        return 1;
    }
    const int status = CommitOpenChanges();
    TellDamage();
    return HasFailures() ? 1 : status;
}

int Session::CommitOpenChanges()
{
    if (!HasOpenChanges(mDatabase))
        return 0;
    if (IsReadOnly()) {
        PrintNote("the database is open for reading only; open changes were dropped");
        mDatabase.Rollback();
        return 1;
    }
    mDatabase.Commit();
    if (!mDatabase.LastCommitFailed())
        return 0;
    PrintNote("the open changes could not be committed and are lost: " +
              std::string(mDatabase.CommitErrorText().View()));
    mDatabase.Rollback();
    return 1;
}

void Session::RollBackOpenChanges(const std::string& reason)
{
    const bool hadChanges = HasOpenChanges(mDatabase);
    if (hadChanges)
        mDatabase.Rollback();
    PrintNote(reason + (hadChanges ? "; open changes were rolled back" : "; no changes were open"));
}

}   // namespace vela::shell
