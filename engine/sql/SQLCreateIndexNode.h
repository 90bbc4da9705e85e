#pragma once

#include "engine/sql/SQLSyntaxNode.h"

namespace vela {

// CREATE INDEX index ON table (columns).
class SQLCreateIndexNode : public SQLSyntaxNode {
public:
    explicit SQLCreateIndexNode(const string& indexName) : mIndexName(indexName) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsCreateIndex() const override { return true; }

    string mIndexName;
    string mTableName;
    SimpleVector<string> mColumns;
};

}   // namespace vela
