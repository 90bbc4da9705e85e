#pragma once

#include <string>
#include <string_view>

#include "shell/StatementSplitter.h"

namespace vela::shell {

// The SQLSTATE with which the shell itself reports that a file, the disk or a commit failed ("I/O
// error").
extern const char* const kStateInputOutput;

// Where a message points: a script's name ("stdin", "argument 1", a file's path) and a place in it.
struct SourcePlace {
    std::string file;
    TextPlace place;
};

// Messages go to standard error. None of them is data; that a message can't be printed changes
// nothing.

// "file:line:column: SQLSTATE description".
void PrintFailure(const SourcePlace& where, std::string_view sqlState,
                  std::string_view description);

// The line of the statement that holds the byte at offset, and below it a caret under that byte.
// Of a long line the part around the caret is shown.
void PrintCaret(const SourceStatement& statement, size_t offset);
// The same as a text of two lines.
[[nodiscard]] std::string CaretText(const SourceStatement& statement, size_t offset);

// "veladb: text".
void PrintNote(std::string_view text);
// Text as it is, without a line end.
void PrintRaw(std::string_view text);

// "1 row", "5 rows".
[[nodiscard]] std::string CountText(size_t count, const std::string& thing);

// The system's words for an errno, such as "No space left on device".
[[nodiscard]] std::string SystemErrorText(int error);

}   // namespace vela::shell
