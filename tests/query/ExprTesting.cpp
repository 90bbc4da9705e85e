#include "tests/query/ExprTesting.h"

#include <cstring>

#include "engine/query/VExprConstant.h"
#include "engine/query/VExprField.h"

namespace vela {

namespace {

constexpr const char* kUntouched = "as it was before";

class ScriptedExpr : public VelaExpr {
public:
    explicit ScriptedExpr(const ExprScript& script) : mScript(script) {}

    VelaDataType GetType(const SimpleVector<VelaTable*>&) const override
    {
        return mScript.left.empty() ? kTypeNone : mScript.left[0].GetType();
    }
    bool Evaluate(const VelaEvalContext&, VelaValue* result) const override
    {
        if (mScript.evaluations)
            ++*mScript.evaluations;
        if (!mScript.left.empty())
            *result = mScript.left[0];
        return mScript.flag;
    }
    string Description() const override { return "x"; }
    long ChooseWildcardTable(const VelaRecSet&, bool* isSingle) const override
    {
        if (isSingle)
            *isSingle = mScript.single;
        return mScript.table;
    }
    bool Valid() const override { return mScript.valid; }
    bool HasAggregate() const override { return mScript.aggregate; }
    void CollectTables(std::vector<bool>*) const override {}

private:
    ExprScript mScript;
};

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

VelaExprPtr Scripted(const ExprScript& script)
{
    return std::make_unique<ScriptedExpr>(script);
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
