#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vela::shell {

// The words of a command's line. Blanks separate them; inside quotes, single or double, they
// belong to the word, and a doubled quote is one quote. A ";" at the end of the line is dropped,
// as people write one out of habit. False: a quote is not closed.
[[nodiscard]] bool SplitCommandLine(std::string_view line, std::vector<std::string>* words);

}   // namespace vela::shell
