#include "engine/storage/NamePattern.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

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

// All texts of up to length letters.
std::vector<std::string> Texts(const std::string& letters, size_t length)
{
    std::vector<std::string> texts = {""};
    for (size_t first = 0, size = 0; size < length; size++) {
        const size_t end = texts.size();
        for (; first < end; first++)
            for (const char letter : letters)
                texts.push_back(texts[first] + letter);
    }
    return texts;
}

TEST(NamePattern, AgreesWithThePlainMatcherOnAllShortNames)
{
    const std::vector<std::string> names = Texts("ab", 6);
    for (const std::string& pattern : Texts("ab*", 6))
        for (const std::string& name : names)
            ASSERT_EQ(MatchesPlainly(name, pattern), MatchesNamePattern(name, pattern))
                << name << " " << pattern;
}

TEST(NamePattern, OnlyTheStarIsSpecial)
{
    struct {
        const char* name;
        const char* pattern;
        bool matches;
    } cases[] = {
        {"t.a.idx", "t.*.idx", true}, {"t.idx", "t.*.idx", false}, {"txa.idx", "t.*.idx", false},
        {"t..idx", "t.*.idx", true},  {"a", "?", false},           {"a", "[a]", false},
        {"[a]", "[a]", true},         {"a\\", "a\\", true},        {"*", "*", true},
        {"T.dat", "*.dat", true},     {"T.DAT", "*.dat", false},   {".dat", "*.dat", true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.matches, MatchesNamePattern(c.name, c.pattern)) << c.name << " " << c.pattern;
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
