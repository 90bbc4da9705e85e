#include "engine/storage/NamePattern.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/core/ShortTexts.h"

namespace vela {
namespace {

// The same question, answered by trying every length of every star's run.
bool MatchesPlainly(std::string_view name, std::string_view pattern)
{
    if (pattern.empty())
        return name.empty();
    if (pattern[0] != '*')
        return !name.empty() && name[0] == pattern[0] &&
               MatchesPlainly(name.substr(1), pattern.substr(1));
    for (size_t run = 0; run <= name.size(); run++) {
        if (MatchesPlainly(name.substr(run), pattern.substr(1)))
            return true;
    }
    return false;
}

TEST(NamePattern, AgreesWithThePlainMatcherOnAllShortNames)
{
    const std::vector<std::string> names = AllTexts("a?[", 5);
    for (const std::string& pattern : AllTexts("a?[*", 5))
        for (const std::string& name : names)
            ASSERT_EQ(MatchesPlainly(name, pattern), MatchesNamePattern(name, pattern))
                << name << " " << pattern;
}

TEST(NamePattern, ManyStarsStayQuick)
{
    std::string pattern;
    for (int i = 0; i < 60; i++)
        pattern += "*a";
    EXPECT_FALSE(MatchesNamePattern(std::string(255, 'a') + "b", pattern));
    EXPECT_TRUE(MatchesNamePattern(std::string(255, 'a'), pattern));
}

}   // namespace
}   // namespace vela
