#pragma once

#include <optional>
#include <vector>

#include "engine/query/VExprField.h"
#include "engine/query/VelaExpr.h"

namespace vela {

// Shapes of expressions for which there is a faster way than to evaluate them row by row.

// column op constant, or the other way round.
struct ColumnCondition {
    uint32_t table;
    uint32_t column;
    bool columnIsLeft;
    uint16_t op;   // of VExprCompare.h, as written: left op right
    VelaValue constant;
};

// column = expression, or the other way round. Borrows the expression.
struct ColumnEquality {
    uint32_t column;
    bool columnIsLeft;
    const VelaExpr* other;
};

// column LIKE constant.
struct ColumnLike {
    uint32_t table;
    uint32_t column;
    string pattern;
    char escape;   // NUL for none
};

// expr as a field; null when it is none, or null itself.
[[nodiscard]] const VExprField* AsField(const VelaExpr* expr);
// Each is empty for an expression of another shape. A constant is any expression that refers to no
// table and holds no aggregate and can be evaluated; database may be null.
[[nodiscard]] std::optional<ColumnCondition> AsColumnCondition(const VelaExpr& expr,
                                                               VelaDatabase* database);
[[nodiscard]] std::optional<ColumnLike> AsColumnLike(const VelaExpr& expr, VelaDatabase* database);
// The column is one of that table, to which the other side does not refer.
[[nodiscard]] std::optional<ColumnEquality> AsColumnEquality(const VelaExpr& expr, size_t table);
// NOT inner, with inner not null; else null.
[[nodiscard]] const VelaExpr* NegatedOperand(const VelaExpr& expr);

// Sets (*columns)[column] for every field of that table in the tree, as far as the list reaches.
void CollectColumns(const VelaExpr& expr, size_t table, std::vector<bool>* columns);

}   // namespace vela
