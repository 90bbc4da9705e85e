#include "engine/query/VExprCompare.h"

#include "engine/query/ExprOperands.h"
#include "engine/query/StringForm.h"
#include "engine/query/TextInPlace.h"

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

bool ComparesAsText(VelaDataType leftType)
{
    return leftType == kTypeString || IsDateOrTime(leftType);
}

// The text of a value as it meets one of the other type.
std::string_view AsItMeets(const TextInPlace& text, VelaDataType other)
{
    return text.type == kTypeString && IsDateOrTime(other) ? WithoutTypePrefix(text.text)
                                                           : text.text;
}

bool TextsHold(const TextInPlace& left, uint16_t op, const TextInPlace& right)
{
    const int order =
        string::CompareBytes(AsItMeets(left, right.type), AsItMeets(right, left.type));
    return Holds(order, op, 0);
}

// Both texts without making values of them, for the commonest operands. False when they can't be
// had that way, or don't compare as texts.
bool FindTextsInPlace(const VelaExpr& left, const VelaExpr& right, const VelaEvalContext& context,
                      TextInPlace* leftText, TextInPlace* rightText)
{
    return FindTextInPlace(right, context, rightText) && FindTextInPlace(left, context, leftText) &&
           ComparesAsText(leftText->type);
}

// Whether left op right. May coerce both.
bool ValuesHold(VelaValue& left, uint16_t op, VelaValue& right)
{
    const VelaDataType leftType = left.GetType();   // what it was counts, also after coercion
    if (leftType == kTypeBoolean || right.GetType() == kTypeBoolean) {
        left.CoerceToType(kTypeBoolean);
        right.CoerceToType(kTypeBoolean);
    }
    if (ComparesAsText(leftType)) {
        const StringForm leftForm(left);
        const StringForm rightForm(right);
        return TextsHold({left.GetType(), leftForm.View()}, op,
                         {right.GetType(), rightForm.View()});
    }
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
    TextInPlace leftText, rightText;
    if (FindTextsInPlace(*mLeft, *mRight, context, &leftText, &rightText)) {
        result->SetInteger(TextsHold(leftText, mOp, rightText));
        return true;
    }
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
