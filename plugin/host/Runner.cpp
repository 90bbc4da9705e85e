#include "plugin/host/Runner.h"

#include <iostream>

#include "plugin/host/Command.h"
#include "plugin/host/CursorCalls.h"
#include "plugin/host/Session.h"

namespace vela::host {

Runner::Runner(Session& session, bool trace) : mSession(session), mTrace(trace)
{
    for (const auto* commands :
         {&ObjectCommands(), &HostCommands(), &EngineCommands(), &CursorCommands()})
        for (const Command& command : *commands)
            mCommands[command.name] = &command;
    for (const Command& command : Expectations())
        mExpectations[command.name] = &command;
}

void Runner::Run(const std::vector<ProgramLine>& lines)
{
    for (const ProgramLine& line : lines) {
        if (mSession.report.IsStopped())
            return;
        mSession.report.SetLine(line.number);
        if (mTrace)
            std::cerr << "line " << line.number << '\n';
        RunLine(line);
        mSession.DropTemporaries();
        mSession.report.Complain(mSession.host.complaints.Take());
    }
}

void Runner::RunLine(const ProgramLine& line)
{
    const std::string_view word = line.tokens[0].Word();
    const auto found = mCommands.find(word);
    if (found != mCommands.end())
        RunCommand(line, *found->second, line.tokens.size());
    else if (word == "expect")
        Expect(line);
    else if (word == "repeat")
        Repeat(line);
    else if (word == "walk")
        Walk(line);
    else if (word == "every")
        Every(line);
    else if (word == "reload")
        Run({{line.number, {{Token::Kind::kWord, {{"unload", false}}}}, {}},
             {line.number, {{Token::Kind::kWord, {{"load", false}}}}, {}}});
    else
        mSession.report.Stop("no line begins with this");
}

void Runner::RunCommand(const ProgramLine& line, const Command& command, size_t tokenCount)
{
    if (tokenCount < command.minTokens || tokenCount > command.maxTokens)
        mSession.report.Stop(std::string("wanted: ") + command.usage);
    else
        command.run(mSession, line);
}

void Runner::Expect(const ProgramLine& line)
{
    const size_t tokenCount = line.tokens.size() - 1;
    const auto named =
        mExpectations.find(tokenCount == 0 ? std::string_view() : line.tokens[1].Word());
    RunCommand(line, *(named == mExpectations.end() ? mExpectations.find("") : named)->second,
               tokenCount);
}

std::string Runner::CounterName(const ProgramLine& line, size_t index)
{
    if (line.tokens.size() == index)
        return {};
    if (line.tokens.size() == index + 2 && line.tokens[index].Word() == "as")
        return std::string(line.tokens[index + 1].Word());
    mSession.report.Stop("\"as NAME\" is wanted here, or nothing");
    return {};
}

// repeat NUMBER [as NAME] ... end
void Runner::Repeat(const ProgramLine& line)
{
    const std::optional<int32_t> count = mSession.ReadNumber(line, 1);
    const std::string name = CounterName(line, 2);
    for (int32_t i = 1; count && i <= *count && !mSession.report.IsStopped(); i++) {
        if (!name.empty())
            mSession.names.Set(name, i);
        Run(line.block);
    }
}

// walk CURSOR [as NAME] ... end
void Runner::Walk(const ProgramLine& line)
{
    const auto cursorName = mSession.ReadName(line, 1);
    const std::string name = CounterName(line, 2);
    if (!cursorName)
        return;
    Movement movement = Movement::kFirst;
    for (int32_t i = 1; !mSession.report.IsStopped(); i++) {
        // Asked for anew each time: the block may have closed it.
        mSession.report.SetLine(line.number);
        const CursorObject* cursor = mSession.FindCursor(*cursorName);
        if (cursor == nullptr || !Move(mSession.host, *cursor, movement))
            return;
        movement = Movement::kNext;
        if (!name.empty())
            mSession.names.Set(name, i);
        Run(line.block);
    }
}

// every NUMBER of NAME ... end
void Runner::Every(const ProgramLine& line)
{
    const std::optional<int32_t> step = mSession.ReadNumber(line, 1);
    const std::optional<int32_t> counter = mSession.ReadNumber(line, 3);
    if (line.tokens.size() != 4 || line.tokens[2].Word() != "of" || (step && *step < 1))
        mSession.report.Stop("wanted: every NUMBER of NAME");
    else if (step && counter && *counter % *step == 0)
        Run(line.block);
}

}   // namespace vela::host
