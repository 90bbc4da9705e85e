#include "engine/query/VExprCompareLike.h"

#include "engine/query/ExprOperands.h"
#include "engine/query/StringForm.h"
#include "engine/query/VExprField.h"

namespace vela {

namespace {

// The text of a field whose column is held in memory as texts: no value needs to be made of it.
// False when it isn't one, or is null there.
bool TextInPlace(const VelaExpr& text, const VelaEvalContext& context, std::string_view* view)
{
    if (text.Kind() != ExprKind::kField)
        return false;
    uint32_t row = 0;
    const ColumnData* column = static_cast<const VExprField&>(text).ColumnInPlace(context, &row);
    if (!column || column->form != ColumnData::Form::kTexts || column->IsNull(row))
        return false;
    *view = column->Text(row);
    return true;
}

}   // namespace

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
    std::string_view text;
    if (TextInPlace(*mText, context, &text)) {
        if (!PreparePattern(context))
            return false;
        result->SetInteger(mPrepared.Matches(text));
        return true;
    }
    VelaValue value;
    if (!mText->Evaluate(context, &value) || !PreparePattern(context))
        return false;
    result->SetInteger(mPrepared.Matches(StringForm(value).View()));
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
    VelaValue pattern;
    if (!mPattern->Evaluate(context, &pattern))
        return false;
    char escape = 0;
    if (mEscape) {
        VelaValue value;
        if (!mEscape->Evaluate(context, &value))
            return false;
        const StringForm form(value);
        if (form.View().size() != 1)
            return false;
        escape = form.View()[0];
    }
    const StringForm form(pattern);
    if (!mPrepared.IsFor(form.View(), escape))
        mPrepared = LikePattern(form.View(), escape);
    return true;
}

}   // namespace vela
