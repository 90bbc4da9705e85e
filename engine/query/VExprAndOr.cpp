#include "engine/query/VExprAndOr.h"

#include "engine/query/ExprOperands.h"

namespace vela {

namespace {

using Terms = SimpleVector<VelaExprPtr>;

// Evaluates the terms in order until one has the truth that decides. Leaves that truth, or when no
// term has it the other one, in result. False: no term decides and one is UNKNOWN.
bool EvaluateTerms(const Terms& terms, bool deciding, const VelaEvalContext& context,
                   VelaValue* result)
{
    bool allKnown = true;
    VelaValue value;
    for (const VelaExprPtr& term : terms) {
        if (!term || !term->Evaluate(context, &value)) {
            allKnown = false;
        } else if ((value.GetInteger() != 0) == deciding) {
            result->SetInteger(deciding);
            return true;
        }
    }
    result->SetInteger(!deciding);
    return allKnown;
}

long ChooseAmongTerms(const Terms& terms, const VelaRecSet& recSet, bool* single)
{
    long chosen = -1;
    bool isOnlyOne = true;
    for (const VelaExprPtr& term : terms) {
        bool termSingle = true;
        const long table = term ? term->ChooseWildcardTable(recSet, &termSingle) : -1;
        if (table != -1 && termSingle) {
            // This term filters on its own, whatever the ones before it need.
            chosen = table;
            isOnlyOne = true;
            break;
        }
        if (chosen == -1)
            chosen = table;
        isOnlyOne = isOnlyOne && termSingle;
    }
    if (single)
        *single = isOnlyOne;
    return chosen;
}

bool AllValid(const Terms& terms)
{
    for (const VelaExprPtr& term : terms) {
        if (!IsPresentAndValid(term.get()))
            return false;
    }
    return true;
}

bool AnyTermHasAggregate(const Terms& terms)
{
    for (const VelaExprPtr& term : terms) {
        if (AnyHasAggregate({term.get()}))
            return true;
    }
    return false;
}

void CollectTablesOfTerms(const Terms& terms, std::vector<bool>* tables)
{
    for (const VelaExprPtr& term : terms)
        CollectTablesOf({term.get()}, tables);
}

// "(a AND b AND c)"; without terms the truth that it then has.
string DescribeTerms(const Terms& terms, std::string_view between, const char* ifNone)
{
    if (terms.empty())
        return JoinDescription({ifNone});
    string description("(", kEncodingUTF8);
    for (size_t i = 0; i < terms.size(); i++) {
        if (i > 0)
            description += between;
        description += DescriptionOf(terms[i].get());
    }
    description += ')';
    return description;
}

}   // namespace

VExprAnd::VExprAnd(SimpleVector<VelaExprPtr> terms)
    : VelaExpr(ExprKind::kAnd), mTerms(std::move(terms))
{}

bool VExprAnd::Evaluate(const VelaEvalContext& context, VelaValue* result) const
{
    return EvaluateTerms(mTerms, false, context, result);
}

string VExprAnd::Description() const
{
    return DescribeTerms(mTerms, " AND ", "TRUE");
}

long VExprAnd::ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const
{
    return ChooseAmongTerms(mTerms, recSet, single);
}

bool VExprAnd::Valid() const
{
    return AllValid(mTerms);
}

bool VExprAnd::HasAggregate() const
{
    return AnyTermHasAggregate(mTerms);
}

void VExprAnd::CollectTables(std::vector<bool>* tables) const
{
    CollectTablesOfTerms(mTerms, tables);
}

VExprOr::VExprOr(SimpleVector<VelaExprPtr> terms)
    : VelaExpr(ExprKind::kOr), mTerms(std::move(terms))
{}

bool VExprOr::Evaluate(const VelaEvalContext& context, VelaValue* result) const
{
    return EvaluateTerms(mTerms, true, context, result);
}

string VExprOr::Description() const
{
    return DescribeTerms(mTerms, " OR ", "FALSE");
}

long VExprOr::ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const
{
    return ChooseAmongTerms(mTerms, recSet, single);
}

bool VExprOr::Valid() const
{
    return AllValid(mTerms);
}

bool VExprOr::HasAggregate() const
{
    return AnyTermHasAggregate(mTerms);
}

void VExprOr::CollectTables(std::vector<bool>* tables) const
{
    CollectTablesOfTerms(mTerms, tables);
}

}   // namespace vela
