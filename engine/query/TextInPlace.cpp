#include "engine/query/TextInPlace.h"

#include "engine/query/VExprConstant.h"
#include "engine/query/VExprField.h"

namespace vela {

namespace {

bool FindInConstant(const VelaValue& value, TextInPlace* text)
{
    if (value.IsNull() || !IsTextBacked(value.GetType()))
        return false;
    *text = {value.GetType(), value.TextView()};
    return true;
}

bool FindInColumn(const VExprField& field, const VelaEvalContext& context, TextInPlace* text)
{
    uint32_t row = 0;
    const ColumnData* column = field.ColumnInPlace(context, &row);
    if (!column || column->form != ColumnData::Form::kTexts || column->IsNull(row))
        return false;
    *text = {column->type, column->Text(row)};
    return true;
}

}   // namespace

bool FindTextInPlace(const VelaExpr& expr, const VelaEvalContext& context, TextInPlace* text)
{
    switch (expr.Kind()) {
        case ExprKind::kConstant:
            return FindInConstant(static_cast<const VExprConstant&>(expr).Value(), text);
        case ExprKind::kField:
            return FindInColumn(static_cast<const VExprField&>(expr), context, text);
        default:
            return false;
    }
}

}   // namespace vela
