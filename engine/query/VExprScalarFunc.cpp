#include "engine/query/VExprScalarFunc.h"

#include "engine/query/ExprOperands.h"

namespace vela {

namespace {

// An absent argument leaves value as it is, a NULL. False: UNKNOWN.
bool EvaluateArgument(const VelaExpr* argument, const VelaEvalContext& context, VelaValue* value)
{
    return !argument || argument->Evaluate(context, value);
}

bool TakesNoArguments(VelaFuncCode func)
{
    return func == kFuncCurrentDate || func == kFuncCurrentTime || func == kFuncCurrentTimestamp;
}

string DescribeSubstring(const string& text, const string& start, const VelaExpr* length)
{
    const string from = JoinDescription({text, " FROM ", start});
    return length ? JoinDescription({from, " FOR ", length->Description()}) : from;
}

// The side as its bare word where it is a constant text.
string DescribeTrim(const string& text, const VelaExpr* trimmed, const string& trimmedText,
                    const VelaExpr* side)
{
    if (!trimmed && !side)
        return text;
    VelaValue word;
    const bool hasWord =
        side && side->Kind() == ExprKind::kConstant && side->EvaluateInIsolation(&word, nullptr);
    const string sideText = hasWord ? word.GetString().Uppercase() : DescriptionOf(side);
    return JoinDescription(
        {sideText, side ? " " : "", trimmedText, trimmed ? " " : "", "FROM ", text});
}

}   // namespace

VExprScalarFunc::VExprScalarFunc(VelaFuncCode func, VelaExprPtr arg1, VelaExprPtr arg2,
                                 VelaExprPtr arg3)
    : VelaExpr(ExprKind::kScalarFunc),
      mFunc(func),
      mArg1(std::move(arg1)),
      mArg2(std::move(arg2)),
      mArg3(std::move(arg3))
{}

VelaDataType VExprScalarFunc::GetType(const SimpleVector<VelaTable*>&) const
{
    return VelaFuncResultType(mFunc);
}

bool VExprScalarFunc::Evaluate(const VelaEvalContext& context, VelaValue* result) const
{
    VelaValue arg1, arg2, arg3;
    return EvaluateArgument(mArg1.get(), context, &arg1) &&
           EvaluateArgument(mArg2.get(), context, &arg2) &&
           EvaluateArgument(mArg3.get(), context, &arg3) &&
           VelaFuncEval(mFunc, context.database, &arg1, &arg2, &arg3, result);
}

string VExprScalarFunc::Description() const
{
    const string name = VelaFuncName(mFunc);
    if (TakesNoArguments(mFunc) && !mArg1 && !mArg2 && !mArg3)
        return JoinDescription({name});
    return JoinDescription({name, "(", DescribeArguments(), ")"});
}

long VExprScalarFunc::ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const
{
    return ChooseAmongOperands({mArg1.get(), mArg2.get(), mArg3.get()}, recSet, single);
}

bool VExprScalarFunc::HasAggregate() const
{
    return AnyHasAggregate({mArg1.get(), mArg2.get(), mArg3.get()});
}

void VExprScalarFunc::CollectTables(std::vector<bool>* tables) const
{
    CollectTablesOf({mArg1.get(), mArg2.get(), mArg3.get()}, tables);
}

string VExprScalarFunc::DescribeArguments() const
{
    const string first = DescriptionOf(mArg1.get());
    const string second = DescriptionOf(mArg2.get());
    switch (mFunc) {
        case kFuncPosition:
            return JoinDescription({second, " IN ", first});
        case kFuncSubstring:
            return DescribeSubstring(first, second, mArg3.get());
        case kFuncTrim:
            return DescribeTrim(first, mArg2.get(), second, mArg3.get());
        default:
            return JoinDescription(
                {first, mArg2 ? ", " : "", second, mArg3 ? ", " : "", DescriptionOf(mArg3.get())});
    }
}

}   // namespace vela
