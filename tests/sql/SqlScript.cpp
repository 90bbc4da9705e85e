#include "tests/sql/SqlScript.h"

#include <gtest/gtest.h>

#include <sstream>

#include "engine/sql/VelaSQL.h"
#include "engine/storage/VelaDatabase.h"
#include "engine/storage/VelaFolderFileAccess.h"
#include "tests/sql/SQLTestTexts.h"
#include "tests/storage/TemporaryFolder.h"

namespace vela {

namespace {

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// What follows the marker and one blank.
std::string AfterMarker(const std::string& comment, size_t marker)
{
    return comment.size() > marker ? comment.substr(marker + 1) : "";
}

bool IsBlank(const std::string& text)
{
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

bool StartsWithWord(const std::string& sql, const std::string& word)
{
    const size_t start = sql.find_first_not_of(" \t\r\n");
    return start != std::string::npos && EqualsIgnoringCase(sql.substr(start, word.size()), word);
}

}   // namespace

SqlScript::SqlScript(const std::string& text)
{
    const std::vector<std::string> lines = Lines(text);
    for (size_t i = 0; i < lines.size(); i++) {
        const size_t start = lines[i].find_first_not_of(" \t");
        const bool isComment = start != std::string::npos && lines[i].compare(start, 2, "--") == 0;
        if (isComment && !mInLiteral)
            TakeComment(lines[i].substr(start), i + 1);
        else
            TakeStatementText(lines[i], i + 1);
    }
    EXPECT_TRUE(IsBlank(mPending)) << "no ; at the end of " << mPending;
}

SqlScript SqlScript::FromMarkdown(const std::string& page)
{
    std::string sql;
    bool isSql = false;
    for (const std::string& line : Lines(page)) {
        if (line.starts_with("```"))
            isSql = line == "```sql";
        else if (isSql)
            sql += line;
        sql += '\n';   // the lines keep their numbers
    }
    return SqlScript(sql);
}

void SqlScript::TakeComment(const std::string& comment, size_t line)
{
    if (comment == "--reopen") {
        mSteps.push_back({});
        mSteps.back().line = line;
        mSteps.back().isReopen = true;
        return;
    }
    if (mSteps.empty() || !IsBlank(mPending))
        return;
    Step& step = mSteps.back();
    if (comment.starts_with("-->") || comment.starts_with("--#")) {
        step.rowsShowTypes = comment[2] == '#';
        step.rows.push_back(AfterMarker(comment, 3));
    } else if (comment.starts_with("--=")) {
        step.columnNames = AfterMarker(comment, 3);
    } else if (comment.starts_with("--:")) {
        step.columnTypes = AfterMarker(comment, 3);
    } else if (comment.starts_with("--!")) {
        step.state = AfterMarker(comment, 3).substr(0, 5);
        step.message = AfterMarker(comment, 9);
    } else if (comment.starts_with("--~") || comment.starts_with("--^")) {
        step.isOnlyParsed = true;
        step.parsed = comment == "--~" ? step.sql : AfterMarker(comment, 3);
    }
}

void SqlScript::TakeStatementText(const std::string& text, size_t line)
{
    for (size_t i = 0; i < text.size(); i++) {
        const char c = text[i];
        if (IsBlank(mPending))
            mPendingLine = line;
        if (c == ';' && !mInLiteral) {
            FinishStatement();
            continue;
        }
        mPending += c;
        if (mInLiteral && c == mEscape && mEscape != '\0' && i + 1 < text.size())
            mPending += text[++i];
        else if (c == '\'')
            mInLiteral = !mInLiteral;   // a doubled quote goes out and in again
    }
    mPending += mInLiteral ? '\n' : ' ';
}

void SqlScript::FinishStatement()
{
    // Blanks before the statement, and those that line breaks left behind it, are not part of it.
    Step step;
    step.line = mPendingLine;
    step.sql = mPending.substr(mPending.find_first_not_of(' '));
    constexpr size_t kValue = sizeof("SET ESCAPE");   // the place of the one byte that it may be
    if (StartsWithWord(step.sql, "SET ESCAPE") && step.sql.size() <= kValue + 1)
        mEscape = step.sql.size() > kValue ? step.sql[kValue] : '\0';
    mSteps.push_back(step);
    mPending.clear();
}

namespace {

// A database in a folder of its own, and the last statement's outcome.
class ScriptRunner {
public:
    explicit ScriptRunner(uint64_t columnMemory) : mColumnMemory(columnMemory) { Open(); }

    void Run(const SqlScript::Step& step)
    {
        if (step.isReopen) {
            mDatabase->Commit();
            EXPECT_FALSE(mDatabase->LastCommitFailed()) << Plain(mDatabase->CommitErrorText());
            Open();
            return;
        }
        if (step.isOnlyParsed) {
            EXPECT_EQ(step.parsed, Parsed(step.sql));
            return;
        }
        mDatabase->UpdateClock();
        VelaStatus status;
        std::unique_ptr<VelaTable> result;
        const bool isSelect = StartsWithWord(step.sql, "SELECT");
        if (isSelect)
            result = VelaSQLQuery(Sql(step.sql), *mDatabase, &status);
        else
            VelaSQLExecute(Sql(step.sql), *mDatabase, &status);
        EXPECT_FALSE(mDatabase->LastCommitFailed()) << Plain(mDatabase->CommitErrorText());
        CheckStatus(step, isSelect, status);
        CheckResult(step, result.get());
    }

private:
    void Open()
    {
        mDatabase.reset();   // one object has a database open
        mDatabase = std::make_unique<VelaDatabase>(std::make_unique<VelaFolderFileAccess>(
            mFolder.Locator(), VelaFolderFileAccess::Mode::kReadWrite));
        mDatabase->SetColumnMemoryLimit(mColumnMemory);
        EXPECT_TRUE(mDatabase->IsValid());
    }

    // The canonical text, or the offset of the first error and what is wrong.
    std::string Parsed(const std::string& sql) const
    {
        const string escape = mDatabase->EscapeOption();
        VelaSQLParser parser(escape.empty() ? '\0' : escape.CString()[0]);
        const SQLSyntaxNodePtr tree = parser.Evaluate(Sql(sql));
        const std::string canonical = tree ? Plain(tree->Description()) : "";
        if (parser.LastError() == VelaSQLParser::kNoError)
            return canonical;
        return std::to_string(parser.ErrorOffset()) + " " +
               VelaSQLParser::ErrorMessage(parser.LastError());
    }

    static void CheckStatus(const SqlScript::Step& step, bool isSelect, const VelaStatus& status)
    {
        const bool hasNoRows = isSelect && step.rows.empty();
        const std::string state = !step.state.empty() ? step.state : hasNoRows ? "02000" : "00000";
        EXPECT_EQ(state, status.State());
        if (!step.message.empty()) {
            EXPECT_EQ(step.message, Plain(status.Description()));
        }
    }

    static void CheckResult(const SqlScript::Step& step, VelaTable* result)
    {
        std::vector<std::string> rows;
        std::string names;
        std::string types;
        if (result) {
            rows = Rows(result, step.rowsShowTypes);
            for (long c = 0; c < result->QtyColumns(); c++) {
                names += (c > 0 ? "|" : "") + Plain(result->Column(c)->name);
                types += (c > 0 ? "|" : "") + std::string(DataTypeName(result->Column(c)->Type()));
            }
        }
        EXPECT_EQ(step.rows, rows);
        if (!step.columnNames.empty()) {
            EXPECT_EQ(step.columnNames, names);
        }
        if (!step.columnTypes.empty()) {
            EXPECT_EQ(step.columnTypes, types);
        }
    }

    static std::vector<std::string> Rows(VelaTable* table, bool showTypes)
    {
        SimpleVector<uint32_t> rowIDs;
        table->GetRowIDs(&rowIDs);
        std::vector<std::string> rows;
        for (const uint32_t rowID : rowIDs) {
            std::string row;
            VelaValue value;
            for (long c = 0; c < table->QtyColumns(); c++) {
                EXPECT_TRUE(table->GetValue(rowID, c, &value));
                row += c > 0 ? "|" : "";
                const std::string type = DataTypeName(value.GetType());
                if (showTypes)
                    row += value.IsNull() ? "NULL " + type : type + " ";
                if (!showTypes || !value.IsNull())
                    row += Plain(value.GetSaveString());
            }
            rows.push_back(row);
        }
        return rows;
    }

    TemporaryFolder mFolder;
    uint64_t mColumnMemory;
    std::unique_ptr<VelaDatabase> mDatabase;
};

}   // namespace

void RunScript(const SqlScript& script, const std::string& name, uint64_t columnMemory)
{
    ScriptRunner runner(columnMemory);
    for (const SqlScript::Step& step : script.Steps()) {
        SCOPED_TRACE(name + ":" + std::to_string(step.line) + ": " + step.sql);
        runner.Run(step);
    }
}

}   // namespace vela
