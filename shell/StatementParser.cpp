#include "shell/StatementParser.h"

#include "engine/sql/VelaSQLParser.h"

namespace vela::shell {

ParsedStatement ParseStatement(const string& text, const string& escape)
{
    VelaSQLParser parser(escape.empty() ? '\0' : static_cast<char>(escape[0]));
    const SQLSyntaxNodePtr tree = parser.Evaluate(text);
    ParsedStatement result;
    const size_t nul = text.View().find('\0');
    if (nul != std::string_view::npos) {
        result.status = VelaStatus(kVEDynamicSQLError, "Error: The statement holds a NUL byte.");
        result.errorOffset = nul;
    } else if (parser.LastError() != VelaSQLParser::kNoError) {
        result.status =
            VelaStatus(kVEDynamicSQLError, VelaSQLParser::ErrorMessage(parser.LastError()));
        result.errorOffset = parser.ErrorOffset();
    } else if (tree) {
        result.canonical = tree->Description();
    }
    return result;
}

bool BeginsWithWord(std::string_view text, std::string_view word)
{
    size_t start = 0;
    while (start < text.size() && text[start] >= 1 && text[start] <= ' ')
        start++;
    text.remove_prefix(start);
    if (text.size() < word.size() || !EqualsIgnoringCase(text.substr(0, word.size()), word))
        return false;
    constexpr std::string_view kDelimiters("\0\t\r\n %()*+,-/;<=>\\^", 19);
    return text.size() == word.size() ||
           kDelimiters.find(text[word.size()]) != std::string_view::npos;
}

}   // namespace vela::shell
