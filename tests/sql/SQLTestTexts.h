#pragma once

#include <string>

#include "engine/sql/VelaSQLParser.h"

namespace vela {

// Texts of the engine and of the tests, there and back.

inline std::string Plain(const string& text)
{
    return std::string(text.View());
}

inline string Sql(std::string_view text)
{
    return string(text, kEncodingUTF8);
}

// The canonical text of a statement; for one with an error "error N", N being the error kind.
inline std::string Canonical(std::string_view sql, char escape = '\0')
{
    VelaSQLParser parser(escape);
    const SQLSyntaxNodePtr tree = parser.Evaluate(Sql(sql));
    if (parser.LastError() != VelaSQLParser::kNoError)
        return "error " + std::to_string(parser.LastError());
    return tree ? Plain(tree->Description()) : "no tree";
}

}   // namespace vela
