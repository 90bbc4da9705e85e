#pragma once

#include "engine/sql/SQLSyntaxNode.h"

namespace vela {

// COMMIT or ROLLBACK.
class SQLEndTransactionNode : public SQLSyntaxNode {
public:
    explicit SQLEndTransactionNode(bool commit) : mCommit(commit) {}

    void Describe(string* text) const override { *text += mCommit ? "COMMIT" : "ROLLBACK"; }
    [[nodiscard]] bool IsEndTransaction() const override { return true; }

    bool mCommit;   // false: ROLLBACK
};

}   // namespace vela
