#pragma once

#include <string>
#include <vector>

#include "engine/storage/ColumnMemory.h"

namespace vela {

// SqlScript is a script of SQL statements with what is expected of each beside it. It is plain SQL
// with comment lines, so the shell runs it too. Statements end with ";" and may span lines; the
// comment lines after a statement are its expectations:
//
//   --> 1|abc|NULL      a row, its cells in saved form; one line for each row, in order
//   --# Integer 1|NULL Date
//                       a row, each cell with its own type in front
//   --= a|COUNT(*)      the names of the result's columns
//   --: Integer|String  the types of the result's columns
//   --! 42S02 Error: Table t not found.
//                       the state and the description
//   --! 02000           the state alone
//   --~ SELECT (1+2)    the canonical text; "--~" alone when that is the statement itself
//   --^ 7 SQL Syntax Error
//                       the byte where the parser stood at the first error, and what is wrong
//
// A statement with one of the last two is parsed and not run.
// Without "--!" the state has to be 00000, or 02000 for a SELECT of which no row is expected. Names
// and types are checked where they are given. A line "--reopen" commits, closes the database and
// opens it again. Other comments say nothing to the runner.
class SqlScript {
public:
    struct Step {
        size_t line = 0;         // counted from 1
        std::string sql;         // without the ";", line breaks outside literals made blanks
        bool isReopen = false;   // then there is no statement
        std::vector<std::string> rows;
        bool rowsShowTypes = false;
        std::string columnNames;   // empty: not checked; so for the next three
        std::string columnTypes;
        std::string state;
        std::string message;
        bool isOnlyParsed = false;
        std::string parsed;   // the canonical text, or the offset and text of the error
    };

    // Takes a script apart. Follows SET ESCAPE, which rules where literals end.
    explicit SqlScript(const std::string& text);
    // The script that the blocks marked as SQL in a page of documentation make together.
    [[nodiscard]] static SqlScript FromMarkdown(const std::string& page);

    [[nodiscard]] const std::vector<Step>& Steps() const { return mSteps; }

private:
    void TakeComment(const std::string& comment, size_t line);
    void TakeStatementText(const std::string& text, size_t line);
    void FinishStatement();

    std::vector<Step> mSteps;
    std::string mPending;   // the statement that is not complete yet
    size_t mPendingLine = 0;
    bool mInLiteral = false;
    char mEscape = '\0';
};

// Runs a script on a new database in a temporary folder. Every step that does something else than
// expected is a failure of the test, with its place. columnMemory: the database's limit.
void RunScript(const SqlScript& script, const std::string& name,
               uint64_t columnMemory = ColumnMemory::DefaultLimit());

}   // namespace vela
