#pragma once

#include "engine/sql/SQLScalarExpNode.h"

namespace vela {

// subject [NOT] LIKE pattern [ESCAPE escape]. It prints without parentheses around it.
class SQLLikeNode : public SQLScalarExpNode {
public:
    SQLLikeNode(SQLScalarExpPtr subject, bool negated);

    void SetPattern(SQLScalarExpPtr pattern);
    void SetEscape(SQLScalarExpPtr escape);

    void Describe(string* text) const override;
    [[nodiscard]] VelaExprPtr ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                                VelaStatus* status) const override;

private:
    SQLScalarExpPtr mSubject;
    SQLScalarExpPtr mPattern;
    SQLScalarExpPtr mEscape;   // null when there is none
    bool mNegated;
};

}   // namespace vela
