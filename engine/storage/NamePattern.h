#pragma once

#include <string_view>

namespace vela {

// Whether a file name matches a pattern, in which "*" stands for any run of bytes, none included,
// and every other byte for itself. Time at most the product of the lengths.
[[nodiscard]] bool MatchesNamePattern(std::string_view name, std::string_view pattern);

}   // namespace vela
