#include "engine/sql/SQLInfixOpNode.h"

#include "engine/query/VExprAndOr.h"
#include "engine/query/VExprCompare.h"
#include "engine/query/VExprMath.h"

namespace vela {

namespace {

// The code of a comparison operator; 0 for any other operator.
uint16_t CompareCode(std::string_view op)
{
    struct {
        std::string_view text;
        uint16_t code;
    } const operators[] = {{"=", kOpEqual},      {"<>", kOpNotEqual}, {"<", kOpLess},
                           {"<=", kOpLessEqual}, {">", kOpGreater},   {">=", kOpGreaterEqual}};
    for (const auto& candidate : operators) {
        if (candidate.text == op)
            return candidate.code;
    }
    return 0;
}

bool IsMathOperator(std::string_view op)
{
    return op.size() == 1 && std::string_view("+-*/").find(op[0]) != std::string_view::npos;
}

}   // namespace

void SQLInfixOpNode::AddOperand(BlockArena* arena, SQLScalarExpNode* operand)
{
    GrowOver(operand);
    mOperands.Add(arena, operand);
}

void SQLInfixOpNode::Describe(string* text) const
{
    const bool isWord = IsWordOperator();
    *text += '(';
    for (size_t i = 0; i < mOperands.size(); i++) {
        if (i > 0 && isWord)
            *text += ' ';
        if (i > 0)
            *text += mOperator.View();
        if (i > 0 && isWord)
            *text += ' ';
        DescribeChild(mOperands[i], text);
    }
    *text += ')';
}

VelaExprPtr SQLInfixOpNode::ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                              VelaStatus* status) const
{
    return IsWordOperator() ? ConvertJunction(names, tables, status)
                            : ConvertPair(names, tables, status);
}

bool SQLInfixOpNode::IsWordOperator() const
{
    return mOperator.EqualsIgnoringCase("AND") || mOperator.EqualsIgnoringCase("OR");
}

VelaExprPtr SQLInfixOpNode::ConvertJunction(const SQLNames& names, const SQLTables& tables,
                                            VelaStatus* status) const
{
    SimpleVector<VelaExprPtr> terms;
    terms.reserve(mOperands.size());
    for (const SQLScalarExpNode* operand : mOperands) {
        VelaExprPtr term = operand ? operand->ConvertToVelaExpr(names, tables, status) : nullptr;
        if (!term)
            return nullptr;
        terms.push_back(std::move(term));
    }
    if (terms.size() < 2)
        return nullptr;
    if (mOperator.EqualsIgnoringCase("AND"))
        return std::make_unique<VExprAnd>(std::move(terms));
    return std::make_unique<VExprOr>(std::move(terms));
}

VelaExprPtr SQLInfixOpNode::ConvertPair(const SQLNames& names, const SQLTables& tables,
                                        VelaStatus* status) const
{
    const uint16_t compareCode = CompareCode(mOperator.View());
    if (compareCode == 0 && !IsMathOperator(mOperator.View()))
        return nullptr;
    if (mOperands.size() != 2 || !mOperands[0] || !mOperands[1])
        return nullptr;
    VelaExprPtr left = mOperands[0]->ConvertToVelaExpr(names, tables, status);
    if (!left)
        return nullptr;
    VelaExprPtr right = mOperands[1]->ConvertToVelaExpr(names, tables, status);
    if (!right)
        return nullptr;
    if (compareCode != 0)
        return std::make_unique<VExprCompare>(std::move(left), compareCode, std::move(right));
    const char op = mOperator.View()[0];
    return std::make_unique<VExprMath>(std::move(left), op, std::move(right));
}

}   // namespace vela
