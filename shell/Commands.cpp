#include "shell/Commands.h"

#include <algorithm>
#include <vector>

#include "engine/sql/VelaSQL.h"
#include "shell/CellText.h"
#include "shell/CommandLine.h"
#include "shell/DatabaseScript.h"
#include "shell/Import.h"
#include "shell/OpenDatabase.h"
#include "shell/ScriptRunner.h"
#include "shell/StatementParser.h"

namespace vela::shell {

namespace {

// A command on its way: where it stands and the words after its name.
struct Call {
    ScriptRunner& runner;
    const SourceStatement& source;
    SourcePlace where;
    std::vector<std::string> arguments;

    [[nodiscard]] Session& GetSession() const { return runner.GetSession(); }
    [[nodiscard]] Output& Data() const { return runner.GetSession().Data(); }
    bool Fail(std::string_view sqlState, const std::string& description) const
    {
        return runner.GetSession().Fail(where, sqlState, description);
    }
};

struct Command {
    const char* name;
    const char* usage;   // the words after the name
    size_t minimum;      // number of words after the name
    size_t maximum;
    const char* help;
    bool (*run)(const Call& call);
};

const std::vector<Command>& AllCommands();

bool ShowHelp(const Call& call)
{
    std::string text;
    for (const Command& command : AllCommands()) {
        std::string line = std::string("  ") + command.name + " " + command.usage;
        line.resize(std::max<size_t>(line.size(), 24), ' ');
        text += line + command.help + "\n";
    }
    text += "\nEverything else is SQL; a statement ends with \";\" and may take several lines.\n";
    call.Data().Write(text);
    return true;
}

bool ListTables(const Call& call)
{
    std::vector<std::string> names;
    for (VelaTable* table : call.GetSession().Database().OpenTables())
        if (!(table->TableName() == kSchemaTableName))
            names.emplace_back(TextAsUtf8(table->TableName()).text.View());
    std::sort(names.begin(), names.end());
    for (const std::string& name : names)
        call.Data().Write(name + "\n");
    return true;
}

// The tables that .schema and .dump are about: the named one or all. False: there is none of that
// name.
bool ChooseTables(const Call& call, std::vector<VelaTrans*>* tables)
{
    VelaDatabase& database = call.GetSession().Database();
    if (call.arguments.empty()) {
        *tables = UserTables(database);
        return true;
    }
    const std::string& name = call.arguments[0];
    VelaTrans* table = FindStoredTable(database, name);
    if (!table)
        return call.Fail(kVETableNotFound, "Error: Table " + name + " not found.");
    if (name == kSchemaTableName)
        return call.Fail(kVEInvalidParameter,
                         "Error: The database makes _schema itself; no statement does.");
    *tables = {table};
    return true;
}

bool ShowSchema(const Call& call)
{
    std::vector<VelaTrans*> tables;
    if (!ChooseTables(call, &tables))
        return false;
    WriteSchemaScript(tables, &call.Data());
    return true;
}

bool Dump(const Call& call)
{
    std::vector<VelaTrans*> tables;
    if (!ChooseTables(call, &tables))
        return false;
    WriteDumpScript(tables, &call.Data());
    return true;
}

bool Import(const Call& call)
{
    return ImportFile(call.GetSession(), call.where, call.arguments[0], call.arguments[1]);
}

bool Read(const Call& call)
{
    return call.runner.RunFile(call.arguments[0], call.where);
}

bool SetMode(const Call& call)
{
    Session& session = call.GetSession();
    if (call.arguments.empty()) {
        call.Data().Write(std::string(ModeName(session.Mode())) + "\n");
        return true;
    }
    const std::optional<OutputMode> mode = ModeFromName(call.arguments[0]);
    if (!mode)
        return call.Fail(kVEInvalidParameter, "Error: Unknown mode " + call.arguments[0] +
                                                  "; modes are table, csv, jsonl.");
    session.SetMode(*mode);
    return true;
}

// Where the text after the command's name begins.
size_t StartOfRest(const SourceStatement& source)
{
    const size_t nameEnd = std::min(source.text.find_first_of(" \t"), source.text.size());
    return std::min(source.text.find_first_not_of(" \t", nameEnd), source.text.size());
}

// Of a statement that starts there in the command.
bool FailToParse(const Call& call, size_t start, const ParsedStatement& parsed)
{
    const size_t offset = start + parsed.errorOffset;
    call.GetSession().Fail({call.where.file, call.source.PlaceOf(offset)}, parsed.status.State(),
                           parsed.status.Description().View());
    PrintCaret(call.source, offset);
    return false;
}

bool ShowCanonical(const Call& call)
{
    const size_t start = StartOfRest(call.source);
    const string text(std::string_view(call.source.text).substr(start), kEncodingUTF8);
    const ParsedStatement parsed =
        ParseStatement(text, call.GetSession().Database().EscapeOption());
    if (!parsed.canonical)
        return FailToParse(call, start, parsed);
    call.Data().Write(parsed.canonical->View());
    call.Data().Write('\n');
    return true;
}

// Runs a SELECT as a statement would run, but for its rows.
bool Explain(const Call& call)
{
    const size_t start = StartOfRest(call.source);
    const string text(std::string_view(call.source.text).substr(start), kEncodingUTF8);
    VelaDatabase& database = call.GetSession().Database();
    const ParsedStatement parsed = ParseStatement(text, database.EscapeOption());
    if (!parsed.canonical)
        return FailToParse(call, start, parsed);
    database.UpdateClock();
    VelaStatus status;
    SimpleVector<string> lines;
    if (!VelaSQLExplain(text, database, &status, &lines))
        return call.Fail(status.State(), std::string(status.Description().View()));
    for (const string& line : lines)
        call.Data().Write(std::string(line.View()) + "\n");
    return true;
}

bool Quit(const Call& call)
{
    call.GetSession().RequestQuit();
    return true;
}

const std::vector<Command>& AllCommands()
{
    static const std::vector<Command> commands = {
        {".canonical", "SQL", 1, SIZE_MAX, "Print a statement as the engine understands it",
         ShowCanonical},
        {".dump", "[TABLE]", 0, 1, "Print a script that rebuilds the database, or one table", Dump},
        {".explain", "SELECT", 1, SIZE_MAX, "Run a SELECT and tell how its rows were found",
         Explain},
        {".help", "", 0, 0, "Print this list", ShowHelp},
        {".import", "FILE TABLE", 2, 2,
         "Add the rows of a CSV or TSV file to a table, made when missing", Import},
        {".mode", "[MODE]", 0, 1, "Print rows as table, csv or jsonl from now on", SetMode},
        {".quit", "", 0, 0, "Commit and end", Quit},
        {".read", "FILE", 1, 1, "Run the script in a file", Read},
        {".schema", "[TABLE]", 0, 1,
         "Print the statements that make the tables and indexes, or those of one", ShowSchema},
        {".tables", "", 0, 0, "List the tables", ListTables},
    };
    return commands;
}

const Command* FindCommand(const std::string& name)
{
    for (const Command& command : AllCommands())
        if (name == command.name)
            return &command;
    return nullptr;
}

// Whether the text after the name is SQL, taken raw, whatever quotes it holds.
bool TakesSql(const Command& command)
{
    return command.run == ShowCanonical || command.run == Explain;
}

// The words after the name, when they suit the command.
bool TakeArguments(const Command& command, Call* call)
{
    std::vector<std::string> words;
    if (!SplitCommandLine(call->source.text, &words) && !TakesSql(command))
        return call->Fail(kVEInvalidParameter, "Error: A quote is not closed.");
    if (TakesSql(command))
        words.resize(StartOfRest(call->source) < call->source.text.size() ? 2 : 1);
    words.erase(words.begin());
    if (words.size() < command.minimum || words.size() > command.maximum)
        return call->Fail(kVEInvalidParameter,
                          std::string("Error: Usage: ") + command.name + " " + command.usage);
    call->arguments = std::move(words);
    return true;
}

}   // namespace

bool RunCommand(ScriptRunner& runner, const SourceStatement& source, const std::string& file)
{
    Call call{runner, source, {file, source.place}, {}};
    std::string name = source.text.substr(0, source.text.find_first_of(" \t"));
    if (name.ends_with(';'))
        name.pop_back();
    const Command* command = FindCommand(name);
    if (!command)
        return call.Fail(kVEInvalidParameter,
                         "Error: Unknown command " + name + "; \".help\" lists the commands.");
    return TakeArguments(*command, &call) && command->run(call) &&
           runner.GetSession().FlushOutput();
}

}   // namespace vela::shell
