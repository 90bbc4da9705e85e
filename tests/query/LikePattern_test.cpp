#include "engine/query/LikePattern.h"

#include <gtest/gtest.h>

#include <random>

#include "engine/query/WildcardMatch.h"
#include "tests/core/ShortTexts.h"

namespace vela {
namespace {

bool IsWildcard(char letter)
{
    return letter == '_' || letter == '%';
}

// The matcher that defines the answers: recursive, with backtracking over the place of every
// literal segment.
bool ReferenceMatch(const std::string& text, std::string pattern, char escape)
{
    if (text.empty())
        return pattern.empty() || pattern == "%";
    if (pattern.empty())
        return false;

    size_t start = 0;
    size_t minSkip = 0;
    size_t maxSkip = 0;
    for (; start < pattern.size() && IsWildcard(pattern[start]); start++) {
        if (pattern[start] == '%') {
            maxSkip = text.size();
        } else {
            minSkip++;
            maxSkip++;
        }
    }

    size_t end = start;
    while (end < pattern.size() && !IsWildcard(pattern[end])) {
        if (escape == 0 || pattern[end] != escape) {
            end++;
            continue;
        }
        pattern.erase(end, 1);
        end = end + 1 < pattern.size() ? end + 2 : pattern.size();
    }
    const std::string segment = pattern.substr(start, end - start);
    const std::string patternRest = pattern.substr(end);

    for (size_t j = minSkip; j <= maxSkip && j + segment.size() <= text.size(); j++) {
        if (text.compare(j, segment.size(), segment) != 0)
            continue;
        const std::string textRest = text.substr(j + segment.size());
        if (textRest.empty() && patternRest.empty())
            return true;
        if (ReferenceMatch(textRest, patternRest, escape))
            return true;
    }
    return false;
}

std::string RandomText(std::mt19937& random, std::string_view letters, size_t longest)
{
    std::string text(random() % (longest + 1), ' ');
    for (char& letter : text)
        letter = letters[random() % letters.size()];
    return text;
}

void ExpectAsReference(const std::vector<std::string>& texts, const std::string& patternText,
                       char escape)
{
    const LikePattern pattern(patternText, escape);
    const std::string sought(pattern.SoughtText());
    for (const std::string& text : texts) {
        if (!sought.empty() && (text.find(sought) != std::string::npos) != pattern.Matches(text)) {
            ADD_FAILURE() << "'" << text << "' LIKE '" << patternText << "' is not a search";
        }
        // Not EXPECT_EQ alone: millions of these are compared.
        if (pattern.Matches(text) != ReferenceMatch(text, patternText, escape)) {
            EXPECT_EQ(ReferenceMatch(text, patternText, escape), pattern.Matches(text))
                << "'" << text << "' LIKE '" << patternText << "' ESCAPE '" << escape << "'";
        }
    }
}

TEST(LikePattern, NULBytesAreLetters)
{
    const std::string_view text("a\0b", 3);
    EXPECT_TRUE(LikePattern(std::string_view("a\0b", 3), 0).Matches(text));
    EXPECT_TRUE(LikePattern("a_b", 0).Matches(text));
    EXPECT_TRUE(LikePattern("a%", 0).Matches(text));
    EXPECT_TRUE(LikePattern(std::string_view("%\0%", 3), 0).Matches(text));
    EXPECT_FALSE(LikePattern(std::string_view("%\0%", 3), 0).Matches("ab"));
    EXPECT_FALSE(LikePattern("a", 0).Matches(text)) << "the text doesn't end at its NUL";
    EXPECT_FALSE(LikePattern(std::string_view("a\0", 2), 0).Matches("a")) << "nor does the pattern";
}

TEST(LikePattern, IsForItsOwnPatternAndEscapeOnly)
{
    const LikePattern pattern("a%", '^');
    EXPECT_TRUE(pattern.IsFor("a%", '^'));
    EXPECT_FALSE(pattern.IsFor("a%", 0));
    EXPECT_FALSE(pattern.IsFor("a", '^'));
    EXPECT_TRUE(LikePattern().IsFor("", 0));
    EXPECT_TRUE(LikePattern().Matches(""));
}

TEST(LikePattern, AllShortPatternsAnswerAsTheReference)
{
    const std::vector<std::string> texts = AllTexts("ab%_^", 5);
    for (const std::string& pattern : AllTexts("ab%_^", 5))
        ExpectAsReference(texts, pattern, '^');
}

TEST(LikePattern, WithoutEscapeAllShortPatternsAnswerAsTheReference)
{
    const std::vector<std::string> texts = AllTexts("ab%_", 5);
    for (const std::string& pattern : AllTexts("ab%_", 5))
        ExpectAsReference(texts, pattern, 0);
}

TEST(LikePattern, WildcardsAsEscapesAnswerAsTheReference)
{
    const std::vector<std::string> texts = AllTexts("a%_", 4);
    for (const std::string& pattern : AllTexts("a%_", 5)) {
        ExpectAsReference(texts, pattern, '%');
        ExpectAsReference(texts, pattern, '_');
    }
}

TEST(LikePattern, LongRandomTextsAnswerAsTheReference)
{
    const unsigned seed = std::random_device()();
    std::mt19937 random(seed);
    for (int round = 0; round < 20000; round++) {
        const std::string text = RandomText(random, "aab", 30);
        const std::string pattern = RandomText(random, "aaaaab_%^", 12);
        const bool expected = ReferenceMatch(text, pattern, '^');
        ASSERT_EQ(expected, LikePattern(pattern, '^').Matches(text))
            << "'" << text << "' LIKE '" << pattern << "' ESCAPE '^', seed " << seed;
        ASSERT_EQ(expected, WildcardMatch(text.c_str(), pattern.c_str(), '^'))
            << "'" << text << "' LIKE '" << pattern << "' ESCAPE '^', seed " << seed;
    }
}

// The matcher that backtracks would take longer than anybody waits.
TEST(LikePattern, ManyRunsInALongTextEnd)
{
    const std::string text(20000, 'a');
    std::string pattern;
    for (int i = 0; i < 200; i++)
        pattern += "%a_a";
    EXPECT_TRUE(LikePattern(pattern + "%", 0).Matches(text));
    EXPECT_FALSE(LikePattern(pattern + "%b", 0).Matches(text));
    EXPECT_FALSE(LikePattern(pattern + "b%", 0).Matches(text));
}

}   // namespace
}   // namespace vela
