#include "engine/storage/NamePattern.h"

namespace vela {

bool MatchesNamePattern(std::string_view name, std::string_view pattern)
{
    constexpr size_t kNone = std::string_view::npos;
    size_t at = 0;
    size_t inPattern = 0;
    // The last star, and where in the name its run ends for the time being. An earlier star never
    // needs a longer run than it has: what it leaves over, the last one can take.
    size_t star = kNone;
    size_t runEnd = 0;
    while (at < name.size()) {
        if (inPattern < pattern.size() && pattern[inPattern] == '*') {
            star = inPattern++;
            runEnd = at;
        } else if (inPattern < pattern.size() && pattern[inPattern] == name[at]) {
            inPattern++;
            at++;
        } else if (star != kNone) {
            inPattern = star + 1;
            at = ++runEnd;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', inPattern) == kNone;
}

}   // namespace vela
