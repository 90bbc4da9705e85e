#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "engine/core/VelaStatus.h"

namespace vela::shell {

// What the parser says about a statement, without running it.
struct ParsedStatement {
    std::optional<string> canonical;   // absent when the text did not parse
    VelaStatus status;
    size_t errorOffset = 0;   // bytes before the place where the parser met its first error
};

// escape is the database's ESCAPE option. A statement that holds a NUL byte does not parse: the
// parser would end it there, and something else than what was written would run.
[[nodiscard]] ParsedStatement ParseStatement(const string& text, const string& escape);

// Whether the text's first word is this one, in any case of letters. Words end as they do for the
// lexer.
[[nodiscard]] bool BeginsWithWord(std::string_view text, std::string_view word);

}   // namespace vela::shell
