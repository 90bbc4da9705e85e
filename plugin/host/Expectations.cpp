#include <unistd.h>

#include <string_view>

#include "plugin/host/Command.h"
#include "plugin/host/CursorCalls.h"
#include "plugin/host/DatabaseValue.h"
#include "plugin/host/EngineCalls.h"
#include "plugin/host/MemoryInUse.h"
#include "plugin/host/Session.h"

namespace vela::host {

namespace {

// Growth that is no growth: the host's own tables, which get larger in steps.
constexpr int64_t kFlatMemoryBytes = 8192;

bool IsWord(const ProgramLine& line, size_t index, std::string_view word)
{
    return index < line.tokens.size() && line.tokens[index].Word() == word;
}

// The values from a token on. Nothing: one could not be read.
std::optional<std::vector<Operand>> ReadValues(Session& session, const ProgramLine& line,
                                               size_t index)
{
    std::vector<Operand> operands;
    while (index < line.tokens.size()) {
        const std::optional<Operand> operand = session.ReadValue(line, &index);
        if (!operand)
            return std::nullopt;
        operands.push_back(*operand);
    }
    return operands;
}

std::string DescribeRow(const std::vector<Value>& values)
{
    std::string text;
    for (const Value& value : values)
        text += (text.empty() ? "" : " ") + Describe(value);
    return text.empty() ? "no values" : text;
}

void CompareRow(Session& session, const std::vector<Operand>& wanted, const std::vector<Value>& got)
{
    bool isSame = wanted.size() == got.size();
    std::vector<Value> wantedValues;
    for (size_t i = 0; i < wanted.size(); i++) {
        isSame = isSame && Matches(wanted[i], got[i]);
        wantedValues.push_back(wanted[i].value);
    }
    session.report.Expect(isSame, DescribeRow(wantedValues), DescribeRow(got));
}

// expect VALUE: the last result
void ExpectValue(Session& session, const ProgramLine& line)
{
    size_t index = 1;
    const std::optional<Operand> wanted = session.ReadValue(line, &index);
    if (wanted)
        session.report.Expect(Matches(*wanted, session.Last()), Describe(wanted->value),
                              Describe(session.Last()));
}

// expect row CURSOR VALUE ...
void ExpectRow(Session& session, const ProgramLine& line)
{
    const CursorObject* cursor = session.ReadCursor(line, 2);
    const auto wanted = ReadValues(session, line, 3);
    if (cursor != nullptr && wanted)
        CompareRow(session, *wanted, RowValues(session.host, *cursor));
}

// The rows of a cursor against the lines of a block. The cursor then stands at its end.
void CompareRows(Session& session, const CursorObject& cursor, const ProgramLine& block)
{
    bool isOnRow = Move(session.host, cursor, Movement::kFirst);
    for (const ProgramLine& line : block.block) {
        session.report.SetLine(line.number);
        const auto wanted = ReadValues(session, line, 0);
        if (!wanted)
            continue;
        if (!isOnRow)
            session.report.Fail("expected this row, got the end of the rows");
        else
            CompareRow(session, *wanted, RowValues(session.host, cursor));
        isOnRow = isOnRow && Move(session.host, cursor, Movement::kNext);
    }
    session.report.SetLine(block.number);
    if (isOnRow)
        session.report.Fail("expected no more rows, got " +
                            DescribeRow(RowValues(session.host, cursor)));
}

// expect rows CURSOR ... end
void ExpectRows(Session& session, const ProgramLine& line)
{
    if (const CursorObject* cursor = session.ReadCursor(line, 2))
        CompareRows(session, *cursor, line);
}

// expect query DATABASE SQL ... end
void ExpectQuery(Session& session, const ProgramLine& line)
{
    const DatabaseObject* database = session.ReadDatabase(line, 2);
    const std::optional<Text> sql = session.ReadText(line, 3);
    if (database == nullptr || !sql)
        return;
    CursorObject* cursor = Select(session.host, *database, *sql);
    if (cursor == nullptr)
        session.report.Fail("expected rows, got no cursor: " +
                            Describe(LastErrorText(session.host, *database)));
    else
        CompareRows(session, *cursor, line);
    session.host.objects.Release(cursor);
}

// The words from a token on, in one text with blanks between them.
std::optional<std::string> ReadWords(Session& session, const ProgramLine& line, size_t index)
{
    std::string words;
    for (; index < line.tokens.size(); index++) {
        const auto word = session.ReadName(line, index);
        if (!word)
            return std::nullopt;
        words += (words.empty() ? "" : " ") + *word;
    }
    return words;
}

void ExpectWords(Session& session, const std::optional<std::string>& wanted, const std::string& got)
{
    if (wanted)
        session.report.Expect(*wanted == got, Quote(*wanted), Quote(got));
}

// expect columns CURSOR NAME ...
void ExpectColumns(Session& session, const ProgramLine& line)
{
    const CursorObject* cursor = session.ReadCursor(line, 2);
    if (cursor == nullptr)
        return;
    std::string names;
    for (int32_t column = 0; column < ColumnCount(*cursor); column++)
        names += (names.empty() ? "" : " ") +
                 ColumnName(session.host, *cursor, column).value_or("(without a name)");
    ExpectWords(session, ReadWords(session, line, 3), names);
}

// expect types CURSOR TYPE ...
void ExpectTypes(Session& session, const ProgramLine& line)
{
    const CursorObject* cursor = session.ReadCursor(line, 2);
    if (cursor == nullptr)
        return;
    std::string types;
    for (int32_t column = 0; column < ColumnCount(*cursor); column++)
        types += (types.empty() ? "" : " ") +
                 FieldTypeName(cursor->Calls().columnType(cursor->Cursor(), column));
    ExpectWords(session, ReadWords(session, line, 3), types);
}

void ExpectNumber(Session& session, std::optional<int32_t> wanted, int32_t got)
{
    if (wanted)
        session.report.Expect(*wanted == got, std::to_string(*wanted), std::to_string(got));
}

// expect count CURSOR NUMBER
void ExpectCount(Session& session, const ProgramLine& line)
{
    if (const CursorObject* cursor = session.ReadCursor(line, 2))
        ExpectNumber(session, session.ReadNumber(line, 3),
                     cursor->Calls().rowCount(cursor->Cursor()));
}

// expect place CURSOR ROW: the number of the current row
void ExpectPlace(Session& session, const ProgramLine& line)
{
    if (const CursorObject* cursor = session.ReadCursor(line, 2))
        ExpectNumber(session, session.ReadNumber(line, 3),
                     cursor->Calls().currentRow(cursor->Cursor()));
}

void CompareAtEnd(Session& session, const ProgramLine& line, size_t index, bool wanted)
{
    const CursorObject* cursor = session.ReadCursor(line, index);
    if (cursor == nullptr)
        return;
    const bool got = cursor->Calls().atEnd(cursor->Cursor()) != 0;
    session.report.Expect(got == wanted, wanted ? "the end of the rows" : "not the end of the rows",
                          "the other");
}

void CompareConnected(Session& session, const ProgramLine& line, size_t index, bool wanted)
{
    const DatabaseObject* database = session.ReadDatabase(line, index);
    if (database != nullptr)
        session.report.Expect(database->IsConnected() == wanted,
                              wanted ? "a connected database" : "one that is not connected",
                              "the other");
}

void ComparePath(Session& session, const ProgramLine& line, size_t index, bool wanted)
{
    const auto path = session.ReadPath(line, index);
    if (path)
        session.report.Expect((access(path->c_str(), F_OK) == 0) == wanted,
                              *path + (wanted ? " to be there" : " not to be there"), "the other");
}

// expect at end CURSOR
void ExpectAt(Session& session, const ProgramLine& line)
{
    if (IsWord(line, 2, "end"))
        CompareAtEnd(session, line, 3, true);
    else
        session.report.Stop("\"expect at end CURSOR\" is wanted");
}

// expect not at end CURSOR, expect not connected DATABASE
void ExpectNot(Session& session, const ProgramLine& line)
{
    if (IsWord(line, 2, "connected"))
        CompareConnected(session, line, 3, false);
    else if (IsWord(line, 2, "at") && IsWord(line, 3, "end"))
        CompareAtEnd(session, line, 4, false);
    else
        session.report.Stop("\"expect not connected\" or \"expect not at end\" is wanted");
}

// expect connected DATABASE
void ExpectConnected(Session& session, const ProgramLine& line)
{
    CompareConnected(session, line, 2, true);
}

// expect file PATH
void ExpectFile(Session& session, const ProgramLine& line)
{
    ComparePath(session, line, 2, true);
}

// expect no file PATH, expect no source NAME
void ExpectNo(Session& session, const ProgramLine& line)
{
    const auto name = session.ReadName(line, 3);
    if (!name)
        return;
    if (IsWord(line, 2, "file"))
        ComparePath(session, line, 3, false);
    else if (IsWord(line, 2, "source"))
        session.report.Expect(!session.host.dataSources.contains(*name), "no data source " + *name,
                              "one");
    else
        session.report.Stop("\"expect no file\" or \"expect no source\" is wanted");
}

// Whether the texts are the same; without a wanted one, any is.
bool MatchesIfWanted(const std::optional<Operand>& wanted, const Value& got)
{
    return !wanted || Matches(*wanted, got);
}

// expect error DATABASE CODE [TEXT]
void ExpectError(Session& session, const ProgramLine& line)
{
    constexpr size_t kTextIndex = 4;
    const DatabaseObject* database = session.ReadDatabase(line, 2);
    const auto code = session.ReadNumber(line, 3);
    if (database == nullptr || !code)
        return;
    std::optional<Operand> text;
    if (line.tokens.size() > kTextIndex) {
        size_t index = kTextIndex;
        text = session.ReadValue(line, &index);
        if (!text)
            return;
    }
    const int32_t gotCode = LastErrorCode(*database);
    const Value gotText = LastErrorText(session.host, *database);
    session.report.Expect(*code == gotCode && MatchesIfWanted(text, gotText),
                          std::to_string(*code) + (text ? " " + Describe(text->value) : ""),
                          std::to_string(gotCode) + " " + Describe(gotText));
}

// expect ok DATABASE: no error
void ExpectOk(Session& session, const ProgramLine& line)
{
    const DatabaseObject* database = session.ReadDatabase(line, 2);
    if (database == nullptr)
        return;
    const Value text = LastErrorText(session.host, *database);
    const auto* said = std::get_if<Text>(&text);
    const bool isOk = LastErrorCode(*database) == 0 && said != nullptr &&
                      (said->bytes.ends_with("[00000]") || said->bytes.ends_with("[02000]"));
    session.report.Expect(isOk, "no error", Describe(text));
}

// expect message TEXT: of the last data-source call
void ExpectMessage(Session& session, const ProgramLine& line)
{
    size_t index = 2;
    const std::optional<Operand> wanted = session.ReadValue(line, &index);
    if (wanted)
        session.report.Expect(Matches(*wanted, session.message), Describe(wanted->value),
                              Describe(session.message));
}

// expect asked NUMBER: how many dialogs there were since this was asked last
void ExpectAsked(Session& session, const ProgramLine& line)
{
    Dialogs& dialogs = session.host.dialogs;
    ExpectNumber(session, session.ReadNumber(line, 2), dialogs.asked);
    dialogs.asked = 0;
}

// expect source NAME KIND
void ExpectSource(Session& session, const ProgramLine& line)
{
    const auto name = session.ReadName(line, 2);
    const auto kind = session.ReadName(line, 3);
    if (!name || !kind)
        return;
    const auto found = session.host.dataSources.find(*name);
    const std::string got = found == session.host.dataSources.end() ? "none" : found->second.kind;
    session.report.Expect(got == *kind, "a data source of the kind " + *kind, got);
}

// expect registered NAME ...: these, in this order, and no others
void ExpectRegistered(Session& session, const ProgramLine& line)
{
    std::string names;
    for (const std::string& name : session.host.registrations.Names())
        names += (names.empty() ? "" : " ") + name;
    ExpectWords(session, ReadWords(session, line, 2), names);
}

// expect memory flat: since "mark memory"
void ExpectMemory(Session& session, const ProgramLine& line)
{
    const int64_t growth = MemoryInUse() - session.markedMemory;
    if (!IsWord(line, 2, "flat"))
        session.report.Stop("\"expect memory flat\" is wanted");
    else
        session.report.Expect(growth <= kFlatMemoryBytes, "memory not to grow",
                              std::to_string(growth) + " bytes more");
}

// expect balance: what was taken since "mark" has been given back
void ExpectBalance(Session& session, const ProgramLine&)
{
    const Balance now = session.CurrentBalance();
    const Balance& then = session.marked;
    session.report.Expect(
        now == then, "as many strings, objects and references as at the mark",
        std::to_string(now.strings) + " strings with " + std::to_string(now.stringReferences) +
            " references for " + std::to_string(then.strings) + " with " +
            std::to_string(then.stringReferences) + ", " + std::to_string(now.objects) +
            " objects with " + std::to_string(now.objectReferences) + " references for " +
            std::to_string(then.objects) + " with " + std::to_string(then.objectReferences));
}

// expect harmless nulls: every call of the plug-in with null for what it is to work on
void ExpectHarmless(Session& session, const ProgramLine& line)
{
    const MOXAdbEngineDefinition* engine = session.host.registrations.Engine();
    const MOXAdbCursorDefinition* cursor = session.host.registrations.Cursor();
    if (!IsWord(line, 2, "nulls"))
        session.report.Stop("\"expect harmless nulls\" is wanted");
    if (engine == nullptr || cursor == nullptr)
        return session.report.Fail("there is no engine, or no cursor");
    engine->closeDatabase(nullptr);
    engine->directSQLExecute(nullptr, nullptr);
    engine->releaseDatabase(nullptr);
    cursor->closeCursor(nullptr);
    MOXAdbValue value = {-1, -1, {-1}};
    const bool isHarmless =
        !engine->tableSchema(nullptr) && !engine->fieldSchema(nullptr, nullptr) &&
        !engine->directSQLSelect(nullptr, nullptr) && !engine->indexSchema(nullptr, nullptr) &&
        !engine->lastErrorCode(nullptr) && !engine->lastErrorString(nullptr) &&
        !cursor->columnCount(nullptr) && !cursor->columnName(nullptr, 0) &&
        !cursor->columnType(nullptr, 0) && !cursor->columnValue(nullptr, 0, &value) &&
        !cursor->rowCount(nullptr) && !cursor->firstRow(nullptr) && !cursor->nextRow(nullptr) &&
        !cursor->previousRow(nullptr) && !cursor->lastRow(nullptr) &&
        !cursor->moveToRow(nullptr, 0) && cursor->atEnd(nullptr) && !cursor->deleteRow(nullptr) &&
        !cursor->updateRow(nullptr, nullptr, 0);
    session.report.Expect(isHarmless, "nothing from calls on nothing", "something");
}

}   // namespace

const std::vector<Command>& Expectations()
{
    static const std::vector<Command> expectations = {
        {"row", 2, kAnyNumber, ExpectRow, "expect row CURSOR VALUE ..."},
        {"rows", 2, 2, ExpectRows, "expect rows CURSOR"},
        {"query", 3, 3, ExpectQuery, "expect query DATABASE SQL"},
        {"columns", 2, kAnyNumber, ExpectColumns, "expect columns CURSOR NAME ..."},
        {"types", 2, kAnyNumber, ExpectTypes, "expect types CURSOR TYPE ..."},
        {"count", 3, 3, ExpectCount, "expect count CURSOR NUMBER"},
        {"place", 3, 3, ExpectPlace, "expect place CURSOR ROW"},
        {"at", 3, 3, ExpectAt, "expect at end CURSOR"},
        {"not", 3, 4, ExpectNot, "expect not connected DATABASE | expect not at end CURSOR"},
        {"connected", 2, 2, ExpectConnected, "expect connected DATABASE"},
        {"file", 2, 2, ExpectFile, "expect file PATH"},
        {"no", 3, 3, ExpectNo, "expect no file PATH | expect no source NAME"},
        {"error", 3, 4, ExpectError, "expect error DATABASE CODE [TEXT]"},
        {"ok", 2, 2, ExpectOk, "expect ok DATABASE"},
        {"message", 2, 2, ExpectMessage, "expect message TEXT"},
        {"asked", 2, 2, ExpectAsked, "expect asked NUMBER"},
        {"source", 3, 3, ExpectSource, "expect source NAME KIND"},
        {"registered", 1, kAnyNumber, ExpectRegistered, "expect registered NAME ..."},
        {"memory", 2, 2, ExpectMemory, "expect memory flat"},
        {"balance", 1, 1, ExpectBalance, "expect balance"},
        {"harmless", 2, 2, ExpectHarmless, "expect harmless nulls"},
        {"", 1, 2, ExpectValue, "expect VALUE"},
    };
    return expectations;
}

}   // namespace vela::host
