#pragma once

#include "runtime/String.h"

namespace vela {

// Whether text matches the LIKE pattern, byte by byte; LikePattern.h tells the rules, and is the
// one to use for many texts. escape NUL: no character escapes.
[[nodiscard]] bool WildcardMatch(const string& text, const string& pattern, char escape = 0);

}   // namespace vela
