#include "engine/query/VExprCompare.h"

#include "engine/query/ExprOperands.h"
#include "engine/query/StringForm.h"

namespace vela {

namespace {

template <class T>
bool Holds(const T& left, uint16_t op, const T& right)
{
    switch (op) {
        case kOpEqual:
            return left == right;
        case kOpNotEqual:
            return left != right;
        case kOpLess:
            return left < right;
        case kOpLessEqual:
            return left <= right;
        case kOpGreater:
            return left > right;
        case kOpGreaterEqual:
            return left >= right;
        default:
            return false;
    }
}

const char* OperatorText(uint16_t op)
{
    switch (op) {
        case kOpEqual:
            return "=";
        case kOpNotEqual:
            return "<>";
        case kOpLess:
            return "<";
        case kOpLessEqual:
            return "<=";
        case kOpGreater:
            return ">";
        case kOpGreaterEqual:
            return ">=";
        default:
            return "?";
    }
}

bool IsDateOrTime(VelaDataType type)
{
    return type == kTypeDate || type == kTypeTime || type == kTypeTimestamp;
}

// Text without a leading "DATE ", "TIME " or "TIMESTAMP ", in any letter case.
std::string_view WithoutTypePrefix(std::string_view text)
{
    for (const std::string_view prefix : {"DATE ", "TIME ", "TIMESTAMP "}) {
        if (EqualsIgnoringCase(text.substr(0, prefix.size()), prefix))
            return text.substr(prefix.size());
    }
    return text;
}

// text, the string form of a value of that type, as it meets a value of the other type.
std::string_view AsItMeets(std::string_view text, VelaDataType type, VelaDataType other)
{
    return type == kTypeString && IsDateOrTime(other) ? WithoutTypePrefix(text) : text;
}

bool TextsHold(const VelaValue& left, uint16_t op, const VelaValue& right)
{
    const StringForm leftForm(left);
    const StringForm rightForm(right);
    const int order =
        string::CompareBytes(AsItMeets(leftForm.View(), left.GetType(), right.GetType()),
                             AsItMeets(rightForm.View(), right.GetType(), left.GetType()));
    return Holds(order, op, 0);
}

// Whether left op right. May coerce both.
bool ValuesHold(VelaValue& left, uint16_t op, VelaValue& right)
{
    const VelaDataType leftType = left.GetType();   // what it was counts, also after coercion
    if (leftType == kTypeBoolean || right.GetType() == kTypeBoolean) {
        left.CoerceToType(kTypeBoolean);
        right.CoerceToType(kTypeBoolean);
    }
    if (leftType == kTypeString || IsDateOrTime(leftType))
        return TextsHold(left, op, right);
    if (left.GetType() == kTypeDouble || right.GetType() == kTypeDouble)
        return Holds(left.GetDouble(), op, right.GetDouble());
    return Holds(left.GetInteger(), op, right.GetInteger());
}

}   // namespace

VExprCompare::VExprCompare(VelaExprPtr left, uint16_t op, VelaExprPtr right)
    : VelaExpr(ExprKind::kCompare), mLeft(std::move(left)), mRight(std::move(right)), mOp(op)
{}

bool VExprCompare::Evaluate(const VelaEvalContext& context, VelaValue* result) const
{
    if (!mLeft || !mRight)
        return false;
    VelaValue right;
    if (!mLeft->Evaluate(context, result) || !mRight->Evaluate(context, &right))
        return false;
    result->SetInteger(ValuesHold(*result, mOp, right));
    return true;
}

string VExprCompare::Description() const
{
    return JoinDescription(
        {"(", DescriptionOf(mLeft.get()), OperatorText(mOp), DescriptionOf(mRight.get()), ")"});
}

long VExprCompare::ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const
{
    return ChooseAmongOperands({mLeft.get(), mRight.get()}, recSet, single);
}

bool VExprCompare::Valid() const
{
    return IsPresentAndValid(mLeft.get()) && IsPresentAndValid(mRight.get());
}

bool VExprCompare::HasAggregate() const
{
    return AnyHasAggregate({mLeft.get(), mRight.get()});
}

void VExprCompare::CollectTables(std::vector<bool>* tables) const
{
    CollectTablesOf({mLeft.get(), mRight.get()}, tables);
}

}   // namespace vela
