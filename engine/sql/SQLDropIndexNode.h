#pragma once

#include "engine/sql/SQLSyntaxNode.h"

namespace vela {

// DROP INDEX table.index.
class SQLDropIndexNode : public SQLSyntaxNode {
public:
    explicit SQLDropIndexNode(const SQLText& specifier) : mSpecifier(specifier) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsDropIndex() const override { return true; }

    SQLText mSpecifier;   // as written; it is taken apart at execution
};

}   // namespace vela
