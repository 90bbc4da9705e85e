#include "engine/query/WildcardMatch.h"

#include "engine/query/LikePattern.h"

namespace vela {

bool WildcardMatch(const string& text, const string& pattern, char escape)
{
    return LikePattern(pattern.View(), escape).Matches(text.View());
}

}   // namespace vela
