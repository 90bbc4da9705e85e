#pragma once

#include "engine/sql/SQLSyntaxNode.h"

namespace vela {

// SET option value. The value is the rest of the statement, byte for byte.
class SQLSetOptionNode : public SQLSyntaxNode {
public:
    SQLSetOptionNode(const string& name, const string& value) : mName(name), mValue(value) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsSetOption() const override { return true; }

    string mName;
    string mValue;
};

}   // namespace vela
