#include "engine/sql/SQLSyntaxNode.h"

namespace vela {

string SQLSyntaxNode::Description() const
{
    string text;
    Describe(&text);
    return text;
}

void DescribeText(const SQLText& part, string* text)
{
    if (part.empty())
        return;
    *text += part.View();
    if (text->Encoding() != part.Encoding())
        text->SetEncoding(part.Encoding());
}

void DescribeNames(const ArenaList<SQLText>& names, string* text)
{
    for (size_t i = 0; i < names.size(); i++) {
        if (i > 0)
            *text += ", ";
        DescribeText(names[i], text);
    }
}

void DescribeChild(const SQLSyntaxNode* child, string* text)
{
    if (child)
        child->Describe(text);
}

}   // namespace vela
