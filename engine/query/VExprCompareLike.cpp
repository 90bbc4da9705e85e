#include "engine/query/VExprCompareLike.h"

#include "engine/query/ExprOperands.h"
#include "engine/query/StringForm.h"
#include "engine/query/TextInPlace.h"

namespace vela {

VExprCompareLike::VExprCompareLike(VelaExprPtr text, VelaExprPtr pattern, VelaExprPtr escape)
    : VelaExpr(ExprKind::kCompareLike),
      mText(std::move(text)),
      mPattern(std::move(pattern)),
      mEscape(std::move(escape))
{}

bool VExprCompareLike::Evaluate(const VelaEvalContext& context, VelaValue* result) const
{
    if (!mText || !mPattern)
        return false;
    TextInPlace text;
    VelaValue value;
    const bool isInPlace = FindTextInPlace(*mText, context, &text);
    if (!isInPlace && !mText->Evaluate(context, &value))
        return false;
    if (!PreparePattern(context))
        return false;
    result->SetInteger(mPrepared.Matches(isInPlace ? text.text : StringForm(value).View()));
    return true;
}

string VExprCompareLike::Description() const
{
    const string like =
        JoinDescription({DescriptionOf(mText.get()), " LIKE ", DescriptionOf(mPattern.get())});
    return mEscape ? JoinDescription({like, " ESCAPE ", mEscape->Description()}) : like;
}

long VExprCompareLike::ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const
{
    return ChooseAmongOperands({mText.get(), mPattern.get(), mEscape.get()}, recSet, single);
}

bool VExprCompareLike::Valid() const
{
    return IsPresentAndValid(mText.get()) && IsPresentAndValid(mPattern.get()) &&
           (!mEscape || mEscape->Valid());
}

bool VExprCompareLike::HasAggregate() const
{
    return AnyHasAggregate({mText.get(), mPattern.get(), mEscape.get()});
}

void VExprCompareLike::CollectTables(std::vector<bool>* tables) const
{
    CollectTablesOf({mText.get(), mPattern.get(), mEscape.get()}, tables);
}

bool VExprCompareLike::PreparePattern(const VelaEvalContext& context) const
{
    TextInPlace text;
    VelaValue value;
    const bool isInPlace = FindTextInPlace(*mPattern, context, &text);
    if (!isInPlace && !mPattern->Evaluate(context, &value))
        return false;
    char escape = 0;
    if (mEscape && !EvaluateEscape(context, &escape))
        return false;
    Prepare(isInPlace ? text.text : StringForm(value).View(), escape);
    return true;
}

bool VExprCompareLike::EvaluateEscape(const VelaEvalContext& context, char* escape) const
{
    VelaValue value;
    if (!mEscape->Evaluate(context, &value))
        return false;
    const StringForm form(value);
    if (form.View().size() != 1)
        return false;
    *escape = form.View()[0];
    return true;
}

void VExprCompareLike::Prepare(std::string_view pattern, char escape) const
{
    if (!mPrepared.IsFor(pattern, escape))
        mPrepared = LikePattern(pattern, escape);
}

}   // namespace vela
