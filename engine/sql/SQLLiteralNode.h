#pragma once

#include "engine/sql/SQLScalarExpNode.h"

namespace vela {

// A literal, as lexed: a number; a string with its quotes, doubled quotes and escapes; TRUE or FALSE;
// DATE, TIME or TIMESTAMP, a blank and a string; or one of TRIM's words.
class SQLLiteralNode : public SQLScalarExpNode {
public:
    // escape is the escape character that text was lexed with, 0 for none.
    SQLLiteralNode(const SQLText& text, char escape) : mEscape(escape), mText(text) {}

    void Describe(string* text) const override;
    // The constant. A number with a "." or of ten or more characters is a Double, any other an
    // Integer of its leading digits (1e5 is 1). A date or time holds the canonical form of its string.
    [[nodiscard]] VelaExprPtr ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                                VelaStatus* status) const override;
    bool GetConstant(VelaValue* value) const override;

private:
    [[nodiscard]] VelaValue Value() const;
    [[nodiscard]] VelaValue TextValue(std::string_view literal) const;

    char mEscape;
    SQLText mText;
};

// What a string literal stands for: its text without the quotes around it, doubled quotes taken as
// one, and each escape character dropped for the byte after it. escape is 0 for none. A text without
// an opening quote keeps its ends.
[[nodiscard]] string StringLiteralValue(std::string_view text, TextEncoding encoding, char escape);
[[nodiscard]] inline string StringLiteralValue(const string& text, char escape)
{
    return StringLiteralValue(text.View(), text.Encoding(), escape);
}

}   // namespace vela
