#include "shell/CommandLine.h"

namespace vela::shell {

namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view WithoutFinalSemicolon(std::string_view line)
{
    const size_t last = line.find_last_not_of(kBlanks);
    if (last != std::string_view::npos && line[last] == ';')
        line = line.substr(0, last);
    return line;
}

// Appends what stands between quotes to word. line begins after the opening quote and is moved
// past the closing one.
bool TakeQuoted(char quote, std::string_view* line, std::string* word)
{
    for (;;) {
        const size_t end = line->find(quote);
        if (end == std::string_view::npos)
            return false;
        *word += line->substr(0, end);
        line->remove_prefix(end + 1);
        if (!line->starts_with(quote))
            return true;
        *word += quote;
        line->remove_prefix(1);
    }
}

bool TakeWord(std::string_view* line, std::string* word)
{
    while (!line->empty() && kBlanks.find(line->front()) == std::string_view::npos) {
        const char byte = line->front();
        line->remove_prefix(1);
        if (byte != '\'' && byte != '"')
            *word += byte;
        else if (!TakeQuoted(byte, line, word))
            return false;
    }
    return true;
}

}   // namespace

bool SplitCommandLine(std::string_view line, std::vector<std::string>* words)
{
    words->clear();
    line = WithoutFinalSemicolon(line);
    for (;;) {
        const size_t start = line.find_first_not_of(kBlanks);
        if (start == std::string_view::npos)
            return true;
        line.remove_prefix(start);
        std::string word;
        if (!TakeWord(&line, &word))
            return false;
        words->push_back(word);
    }
}

}   // namespace vela::shell
