#pragma once

#include "engine/sql/SQLScalarExpNode.h"

namespace vela {

// subject [NOT] LIKE pattern [ESCAPE escape]. It prints without parentheses around it.
class SQLLikeNode : public SQLScalarExpNode {
public:
    SQLLikeNode(SQLScalarExpNode* subject, bool negated);

    void SetPattern(SQLScalarExpNode* pattern);
    void SetEscape(SQLScalarExpNode* escape);

    void Describe(string* text) const override;
    [[nodiscard]] VelaExprPtr ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                                VelaStatus* status) const override;

private:
    SQLScalarExpNode* mSubject;
    SQLScalarExpNode* mPattern = nullptr;
    SQLScalarExpNode* mEscape = nullptr;   // null when there is none
    bool mNegated;
};

}   // namespace vela
