#include "engine/query/ExprShape.h"

#include <algorithm>

#include "engine/query/VExprAggregate.h"
#include "engine/query/VExprAndOr.h"
#include "engine/query/VExprCompare.h"
#include "engine/query/VExprCompareLike.h"
#include "engine/query/VExprMath.h"
#include "engine/query/VExprNot.h"
#include "engine/query/VExprScalarFunc.h"

namespace vela {

namespace {

template <class Node>
const Node& As(const VelaExpr& expr)
{
    return static_cast<const Node&>(expr);
}

std::vector<bool> TablesOf(const VelaExpr& expr)
{
    std::vector<bool> tables;
    expr.CollectTables(&tables);
    return tables;
}

std::optional<VelaValue> ConstantOf(const VelaExpr* expr, VelaDatabase* database)
{
    if (expr == nullptr || expr->HasAggregate())
        return std::nullopt;
    const std::vector<bool> tables = TablesOf(*expr);
    VelaValue value;
    if (std::find(tables.begin(), tables.end(), true) != tables.end() ||
        !expr->EvaluateInIsolation(&value, database))
        return std::nullopt;
    return value;
}

bool RefersTo(const VelaExpr& expr, size_t table)
{
    const std::vector<bool> tables = TablesOf(expr);
    return table < tables.size() && tables[table];
}

std::optional<ColumnEquality> EqualityOfSides(const VelaExpr* side, const VelaExpr* other,
                                              bool sideIsLeft, size_t table)
{
    const VExprField* field = AsField(side);
    if (field == nullptr || field->Table() != table || other == nullptr || RefersTo(*other, table))
        return std::nullopt;
    return ColumnEquality{field->ColumnNumber(), sideIsLeft, other};
}

// The operands of a node; some may be null.
std::vector<const VelaExpr*> OperandsOf(const VelaExpr& expr)
{
    std::vector<const VelaExpr*> operands;
    const auto addTerms = [&operands](const SimpleVector<VelaExprPtr>& terms) {
        for (const VelaExprPtr& term : terms)
            operands.push_back(term.get());
    };
    switch (expr.Kind()) {
        case ExprKind::kMath:
            return {As<VExprMath>(expr).Left(), As<VExprMath>(expr).Right()};
        case ExprKind::kCompare:
            return {As<VExprCompare>(expr).Left(), As<VExprCompare>(expr).Right()};
        case ExprKind::kCompareLike: {
            const auto& like = As<VExprCompareLike>(expr);
            return {like.Text(), like.Pattern(), like.Escape()};
        }
        case ExprKind::kNot:
            return {As<VExprNot>(expr).Operand()};
        case ExprKind::kAnd:
            addTerms(As<VExprAnd>(expr).Terms());
            break;
        case ExprKind::kOr:
            addTerms(As<VExprOr>(expr).Terms());
            break;
        case ExprKind::kScalarFunc: {
            const auto& func = As<VExprScalarFunc>(expr);
            return {func.Arg1(), func.Arg2(), func.Arg3()};
        }
        case ExprKind::kAggregate:
            return {As<VExprAggregate>(expr).Operand()};
        default:
            break;
    }
    return operands;
}

}   // namespace

const VExprField* AsField(const VelaExpr* expr)
{
    return expr && expr->Kind() == ExprKind::kField ? &As<VExprField>(*expr) : nullptr;
}

std::optional<ColumnCondition> AsColumnCondition(const VelaExpr& expr, VelaDatabase* database)
{
    if (expr.Kind() != ExprKind::kCompare)
        return std::nullopt;
    const auto& compare = As<VExprCompare>(expr);
    const bool columnIsLeft = AsField(compare.Left()) != nullptr;
    const VExprField* field = AsField(columnIsLeft ? compare.Left() : compare.Right());
    if (field == nullptr)
        return std::nullopt;
    const auto constant = ConstantOf(columnIsLeft ? compare.Right() : compare.Left(), database);
    if (!constant)
        return std::nullopt;
    return ColumnCondition{field->Table(), field->ColumnNumber(), columnIsLeft, compare.Op(),
                           *constant};
}

std::optional<ColumnLike> AsColumnLike(const VelaExpr& expr, VelaDatabase* database)
{
    if (expr.Kind() != ExprKind::kCompareLike)
        return std::nullopt;
    const auto& like = As<VExprCompareLike>(expr);
    const VExprField* field = AsField(like.Text());
    const auto pattern = ConstantOf(like.Pattern(), database);
    if (field == nullptr || !pattern)
        return std::nullopt;
    ColumnLike shape{field->Table(), field->ColumnNumber(), pattern->GetSaveString(), 0};
    if (like.Escape() == nullptr)
        return shape;
    const auto escape = ConstantOf(like.Escape(), database);
    if (!escape)
        return std::nullopt;
    const string escapeText = escape->GetSaveString();
    if (escapeText.length() != 1)
        return std::nullopt;
    shape.escape = escapeText.View()[0];
    return shape;
}

std::optional<ColumnEquality> AsColumnEquality(const VelaExpr& expr, size_t table)
{
    if (expr.Kind() != ExprKind::kCompare)
        return std::nullopt;
    const auto& compare = As<VExprCompare>(expr);
    if (compare.Op() != kOpEqual)
        return std::nullopt;
    auto equality = EqualityOfSides(compare.Left(), compare.Right(), true, table);
    return equality ? equality : EqualityOfSides(compare.Right(), compare.Left(), false, table);
}

const VelaExpr* NegatedOperand(const VelaExpr& expr)
{
    return expr.Kind() == ExprKind::kNot ? As<VExprNot>(expr).Operand() : nullptr;
}

void CollectColumns(const VelaExpr& expr, size_t table, std::vector<bool>* columns)
{
    const VExprField* field = AsField(&expr);
    if (field && field->Table() == table && field->ColumnNumber() < columns->size())
        (*columns)[field->ColumnNumber()] = true;
    for (const VelaExpr* operand : OperandsOf(expr)) {
        if (operand)
            CollectColumns(*operand, table, columns);
    }
}

}   // namespace vela
