#include "engine/query/VExprMath.h"

#include "engine/query/ExprOperands.h"

namespace vela {

namespace {

bool IsNumber(VelaDataType type)
{
    return type == kTypeInteger || type == kTypeDouble;
}

// ASCII means the same in the byte-wise encodings: only the tag needs to change.
string InEncoding(string text, TextEncoding target)
{
    if (text.Encoding() != kEncodingASCII || target == kEncodingUTF16)
        return ConvertEncoding(text, target);
    text.SetEncoding(target);
    return text;
}

// Texts of two encodings meet in the left one, but ASCII gives way to the other.
string JoinTexts(const string& left, const string& right)
{
    if (left.empty() || right.empty() || left.Encoding() == right.Encoding())
        return left + right;
    const TextEncoding target =
        left.Encoding() == kEncodingASCII ? right.Encoding() : left.Encoding();
    return InEncoding(left, target) + InEncoding(right, target);
}

// Integer arithmetic wraps; a division by zero is UNKNOWN and leaves a NULL Integer. The smallest
// Integer divided by -1 wraps to itself, where the processor would trap.
bool DivideIntegers(int32_t left, int32_t right, VelaValue* result)
{
    if (right == 0) {
        result->SetNull(kTypeInteger);
        return false;
    }
    result->SetInteger(right == -1 ? static_cast<int32_t>(0u - static_cast<uint32_t>(left))
                                   : left / right);
    return true;
}

bool ComputeIntegers(int32_t left, char op, int32_t right, VelaValue* result)
{
    const uint32_t a = static_cast<uint32_t>(left);
    const uint32_t b = static_cast<uint32_t>(right);
    switch (op) {
        case '+':
            result->SetInteger(static_cast<int32_t>(a + b));
            return true;
        case '-':
            result->SetInteger(static_cast<int32_t>(a - b));
            return true;
        case '*':
            result->SetInteger(static_cast<int32_t>(a * b));
            return true;
        case '/':
            return DivideIntegers(left, right, result);
        default:
            return false;
    }
}

bool ComputeDoubles(double left, char op, double right, VelaValue* result)
{
    switch (op) {
        case '+':
            result->SetDouble(left + right);
            return true;
        case '-':
            result->SetDouble(left - right);
            return true;
        case '*':
            result->SetDouble(left * right);
            return true;
        case '/':
            result->SetDouble(left / right);
            return true;
        default:
            return false;
    }
}

}   // namespace

VExprMath::VExprMath(VelaExprPtr left, char op, VelaExprPtr right)
    : VelaExpr(ExprKind::kMath), mLeft(std::move(left)), mRight(std::move(right)), mOp(op)
{}

VelaDataType VExprMath::GetType(const SimpleVector<VelaTable*>& tables) const
{
    if (!mLeft || !mRight)
        return kTypeNone;
    const VelaDataType left = mLeft->GetType(tables);
    const VelaDataType right = mRight->GetType(tables);
    if (left == kTypeString)
        return mOp == '+' ? kTypeString : kTypeNone;
    if (left == kTypeDouble || right == kTypeDouble)
        return kTypeDouble;
    return left == kTypeInteger || right == kTypeInteger ? kTypeInteger : kTypeNone;
}

bool VExprMath::Evaluate(const VelaEvalContext& context, VelaValue* result) const
{
    if (!mLeft || !mRight)
        return false;
    VelaValue right;
    if (!mLeft->Evaluate(context, result) || !mRight->Evaluate(context, &right))
        return false;
    const VelaDataType leftType = result->GetType();
    const VelaDataType rightType = right.GetType();
    if (leftType == kTypeString) {
        if (mOp != '+')
            return false;
        result->SetString(JoinTexts(result->GetString(), right.GetString()));
        return true;
    }
    if (!IsNumber(leftType) && !IsNumber(rightType))
        return false;
    if (leftType == kTypeDouble || rightType == kTypeDouble)
        return ComputeDoubles(result->GetDouble(), mOp, right.GetDouble(), result);
    return ComputeIntegers(result->GetInteger(), mOp, right.GetInteger(), result);
}

string VExprMath::Description() const
{
    return JoinDescription({"(", DescriptionOf(mLeft.get()),
                            string(std::string_view(&mOp, 1), kEncodingUTF8),
                            DescriptionOf(mRight.get()), ")"});
}

long VExprMath::ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const
{
    const long table = ChooseAmongOperands({mLeft.get(), mRight.get()}, recSet, nullptr);
    if (single)
        *single = table != -1;   // also where the operands name two tables
    return table;
}

bool VExprMath::Valid() const
{
    return IsPresentAndValid(mLeft.get()) && IsPresentAndValid(mRight.get());
}

bool VExprMath::HasAggregate() const
{
    return AnyHasAggregate({mLeft.get(), mRight.get()});
}

void VExprMath::CollectTables(std::vector<bool>* tables) const
{
    CollectTablesOf({mLeft.get(), mRight.get()}, tables);
}

}   // namespace vela
