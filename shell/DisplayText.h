#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vela::shell {

// Text as a terminal shows it: in columns, wide characters taking two and combining ones none.
//
// What would leave its place (control characters, line separators, marks that turn the direction
// of writing, bytes that are not UTF-8) is shown in an escaped form: \n \t \r \x1b \u{202e}.

// Appends the character at the start of text in its shown form. *columns receives how many
// columns it takes. Returns the number of bytes that it takes in text, at least 1. text is not
// empty.
size_t AppendShown(std::string_view text, std::string* shown, size_t* columns);

// The whole text in its shown form; *columns, when given, receives its width.
[[nodiscard]] std::string ShownText(std::string_view text, size_t* columns = nullptr);

[[nodiscard]] bool IsValidUtf8(std::string_view text);

}   // namespace vela::shell
