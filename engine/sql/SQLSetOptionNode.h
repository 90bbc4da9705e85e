#pragma once

#include "engine/sql/SQLSyntaxNode.h"

namespace vela {

// SET option value. The value is the rest of the statement, byte for byte.
class SQLSetOptionNode : public SQLSyntaxNode {
public:
    SQLSetOptionNode(const SQLText& name, const SQLText& value) : mName(name), mValue(value) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsSetOption() const override { return true; }

    SQLText mName;
    SQLText mValue;
};

}   // namespace vela
