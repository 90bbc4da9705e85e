#include "tests/query/ExprTesting.h"

#include <cstring>

#include "engine/query/VExprConstant.h"
#include "engine/query/VExprField.h"

namespace vela {

namespace {

constexpr const char* kUntouched = "as it was before";

}   // namespace

std::string Shown(const VelaValue& value)
{
    const std::string type = DataTypeName(value.GetType());
    if (value.IsNull())
        return "NULL " + type;
    return type + " " + std::string(value.GetSaveString().View());
}

VelaExprPtr Expr(const VelaValue& value)
{
    return std::make_unique<VExprConstant>(value);
}

VelaExprPtr Expr(int number)
{
    return Expr(I(number));
}

VelaExprPtr Expr(double number)
{
    return Expr(D(number));
}

VelaExprPtr Expr(const char* text)
{
    return Expr(Text(text));
}

VelaExprPtr ExprField(uint32_t table, uint32_t column)
{
    return std::make_unique<VExprField>(table, column);
}

VelaDataType ScriptedExpr::GetType(const SimpleVector<VelaTable*>&) const
{
    return left.empty() ? kTypeNone : left[0].GetType();
}

bool ScriptedExpr::Evaluate(const VelaEvalContext&, VelaValue* result) const
{
    if (evaluations)
        ++*evaluations;
    if (!left.empty())
        *result = left[0];
    return flag;
}

long ScriptedExpr::ChooseWildcardTable(const VelaRecSet&, bool* isSingle) const
{
    if (isSingle)
        *isSingle = single;
    return table;
}

void ScriptedExpr::CollectTables(std::vector<bool>* tables) const
{
    if (table < 0)
        return;
    tables->resize(std::max(tables->size(), static_cast<size_t>(table) + 1));
    (*tables)[static_cast<size_t>(table)] = true;
}

VelaExprPtr Unknown()
{
    return std::make_unique<ScriptedExpr>();
}

VelaExprPtr UnknownLeaving(const VelaValue& value)
{
    auto expr = std::make_unique<ScriptedExpr>();
    expr->left = {value};
    return expr;
}

VelaExprPtr Wants(long table, bool single)
{
    auto expr = std::make_unique<ScriptedExpr>();
    expr->table = table;
    expr->single = single;
    return expr;
}

VelaExprPtr Invalid()
{
    auto expr = std::make_unique<ScriptedExpr>();
    expr->valid = false;
    return expr;
}

VelaExprPtr WithAggregate()
{
    auto expr = std::make_unique<ScriptedExpr>();
    expr->aggregate = true;
    return expr;
}

std::string Outcome(const VelaExpr& expr, const VelaEvalContext& context)
{
    VelaValue result = Text(kUntouched);
    const bool flag = expr.Evaluate(context, &result);
    if (flag)
        return Shown(result);
    const bool touched = result.GetSaveString() != kUntouched;
    return touched ? "UNKNOWN leaving " + Shown(result) : "UNKNOWN";
}

std::string Outcome(const VelaExprPtr& expr, const VelaEvalContext& context)
{
    return Outcome(*expr, context);
}

std::string Choice(const VelaExpr& expr, const VelaRecSet& recSet)
{
    bool single = false;
    const long table = expr.ChooseWildcardTable(recSet, &single);
    // The other start value, and no answer wanted: the same table.
    bool again = true;
    if (expr.ChooseWildcardTable(recSet, &again) != table || again != single ||
        expr.ChooseWildcardTable(recSet, nullptr) != table)
        return "inconsistent";
    return std::to_string(table) + (single ? " single" : " not single");
}

OneTable::OneTable(const std::vector<VelaDataType>& types,
                   const std::vector<std::vector<Cell>>& rows)
{
    for (const VelaDataType type : types)
        mTable.AddColumn("c", type);
    for (const std::vector<Cell>& row : rows) {
        mRowNumbers.push_back(static_cast<uint32_t>(mRowIDs.size()));
        mRowIDs.push_back(mRowNumbers.back() + 11);
        mTable.Row(mRowIDs.back(), row);
    }
    mColumns.push_back(mTable.OfferColumns().Columns());
}

VelaEvalContext OneTable::Row(size_t position)
{
    mCurrent = std::make_unique<VelaRecSet>(&mRowIDs[position]);
    VelaEvalContext context;
    context.recSet = mCurrent.get();
    context.tables = &mTables;
    return context;
}

VelaEvalContext OneTable::RowInColumns(size_t position)
{
    VelaEvalContext context = Row(position);
    *mCurrent = VelaRecSet(&mRowNumbers[position]);
    context.columns = &mColumns;
    return context;
}

VelaEvalContext OneTable::Group()
{
    mGroup = std::make_unique<VelaRecSetGroup>(mRowIDs.data(), mRowIDs.size(), 1);
    VelaEvalContext context;
    context.group = mGroup.get();
    context.tables = &mTables;
    return context;
}

}   // namespace vela
