#pragma once

#include "engine/sql/SQLSyntaxNode.h"

namespace vela {

// CREATE INDEX index ON table (columns).
class SQLCreateIndexNode : public SQLSyntaxNode {
public:
    explicit SQLCreateIndexNode(const SQLText& indexName) : mIndexName(indexName) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsCreateIndex() const override { return true; }

    SQLText mIndexName;
    SQLText mTableName;
    ArenaList<SQLText> mColumns;
};

}   // namespace vela
