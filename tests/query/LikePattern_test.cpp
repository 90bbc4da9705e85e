#include "engine/query/LikePattern.h"

#include <gtest/gtest.h>

#include <random>

#include "engine/query/WildcardMatch.h"

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

// Every string over the letters up to that length, the empty one first.
std::vector<std::string> AllTexts(std::string_view letters, size_t longest)
{
    std::vector<std::string> texts = {""};
    for (size_t i = 0; i < texts.size() && texts[i].size() < longest; i++) {
        for (const char letter : letters)
            texts.push_back(texts[i] + letter);
    }
    return texts;
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

TEST(LikePattern, MatchesAndRefuses)
{
    struct {
        const char* text;
        const char* pattern;
        bool matches;
        const char* why;
    } cases[] = {
        {"foo", "foo", true, "literal"},
        {"foo", "_oo", true, "one byte in front"},
        {"foo", "f_o", true, "one byte inside"},
        {"foo", "fo_", true, "one byte at the end"},
        {"foo", "_o_", true, "one byte on both sides"},
        {"foo", "___", true, "as many as there are"},
        {"foo", "%foo", true, "none in front"},
        {"foo", "%oo", true, "one in front"},
        {"foo", "f%o", true, "a run inside"},
        {"foo", "fo%", true, "one at the end"},
        {"foo", "foo%", true, "none at the end"},
        {"foo", "%", true, "all of it"},
        {"foo", "%%", true, "all of it, written twice"},
        {"foo", "%___", true, "none before three"},
        {"foo", "__%_", true, "a run of none between bytes"},
        {"foo", "fom", false, "another letter"},
        {"foo", "fo", false, "the text goes on"},
        {"foo", "_foo", false, "a byte too many in front"},
        {"foo", "____", false, "a byte too many"},
        {"foo", "%____", false, "four after a run"},
        {"foo", "foo_", false, "a byte too many at the end"},
        {"foo", "FOO", false, "letter case counts"},
        {"foo", "", false, "an empty pattern"},
        {"foo", "foo%%", false, "nothing is left for two run signs"},
        {"foo", "foo%_", false, "nothing is left for a byte"},
        {"foo", "fo%%", true, "something is left for two run signs"},
        {"", "", true, "both empty"},
        {"", "%", true, "an empty run"},
        {"", "%%", false, "two run signs are not one"},
        {"", "_", false, "no byte"},
        {"", "foo", false, "no text"},
        {"cool vanilla beans", "%vanilla%", true, "a word inside"},
        {"cool vanilla beans", "_vanilla%", false, "more than a byte in front"},
        {"cool vanilla beans", "%vanilla_", false, "more than a byte behind"},
        {"cool vanilla beans", "%chocolate%", false, "a word that is not there"},
        {"vanilla", "%vanilla%", true, "the word alone"},
        {"foo.dat", "%.d__", true, "an ending with bytes"},
        {"foo.dim", "%.d__", true, "another one"},
        {"foo.bat", "%.d__", false, "another letter in the ending"},
        {"foo.db", "%.d__", false, "a byte too few"},
        {"abef abccdef abcdef abcef", "%ab__ef%", true, "the third place fits"},
        {"abef abccdef abxef abcef", "%ab__ef%", false, "too many, too few between"},
        {"abef abccdef abcdeg abcef", "%ab__ef%", false, "the right number, another end"},
        {"aab", "%ab", true, "the first place for a is too early"},
        {"abab", "%ab", true, "the last chunk belongs at the end"},
        {"abcab", "ab%ab", true, "both ends"},
        {"aba", "ab%ba", false, "the ends must not overlap"},
        {"mississippi", "m%issi%issi%i", false, "the second issi would overlap the first"},
        {"mississippi", "m%iss%ip%i", true, "three runs"},
        {"xxab1cdyy", "%ab_cd%", true, "the longest piece is not the first"},
        {"xxa1bcdyya2bcd", "%a_bcd", true, "the piece is found early, its chunk at the end"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.matches, LikePattern(c.pattern, 0).Matches(c.text))
            << "'" << c.text << "' LIKE '" << c.pattern << "': " << c.why;
        EXPECT_EQ(c.matches, WildcardMatch(c.text, c.pattern)) << c.text << " LIKE " << c.pattern;
    }
}

TEST(LikePattern, EscapeMakesTheNextTwoLettersLiteral)
{
    struct {
        const char* text;
        const char* pattern;
        bool matches;
        const char* why;
    } cases[] = {
        {"f%oo", "f^%oo", true, "an escaped run sign"},
        {"fxoo", "f^%oo", false, "an escaped run sign is no run"},
        {"_foo", "^_foo%", true, "an escaped byte sign"},
        {"xfoo", "^_foo%", false, "an escaped byte sign is no byte"},
        {"this^that", "%^^that", true, "the escaped escape"},
        {"a^%b", "a^^%b", true, "the letter after the escaped one is literal too"},
        {"a^xb", "a^^%b", false, "so this run sign is none"},
        {"a^xyb", "a^^x%b", true, "the second letter after is not protected"},
        {"ax^_", "a^x^_", true, "an escape in second place is literal, and so escapes nothing"},
        {"ax^z", "a^x^_", true, "the byte sign after it is a wildcard"},
        {"ax_", "a^x^_", false, "it is not dropped"},
        {"ab%", "ab^%", true, "the escaped letter is the last one"},
        {"abc", "ab^%", false, "and stays literal"},
        {"ab", "ab^", true, "an escape at the end stands for nothing"},
        {"ab^", "ab^", false, "not for itself"},
        {"a", "^", false, "an escape alone matches no text"},
        {"", "^", false, "nor the empty one"},
        {"a", "%^", true, "after a run it matches"},
        {"", "%^", false, "but not the empty text"},
        {"a", "a%^", false, "nor one that is used up"},
        {"^", "%", true, "an escape in the text is a letter"},
        {"%", "%^%", true, "an escaped run sign after a run"},
        {"x", "%^%", false, "which is no run"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.matches, LikePattern(c.pattern, '^').Matches(c.text))
            << "'" << c.text << "' LIKE '" << c.pattern << "' ESCAPE '^': " << c.why;
    }
    EXPECT_TRUE(LikePattern("f^%oo", 0).Matches("f^xoo")) << "without an escape it is a letter";
}

TEST(LikePattern, WildcardsStayWildcardsWhenTheyAreTheEscape)
{
    EXPECT_TRUE(LikePattern("a%%b", '%').Matches("axxb"));
    EXPECT_TRUE(LikePattern("a__b", '_').Matches("axxb"));
    EXPECT_FALSE(LikePattern("a__b", '_').Matches("a_b"));
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
        ASSERT_EQ(ReferenceMatch(text, pattern, '^'), LikePattern(pattern, '^').Matches(text))
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
