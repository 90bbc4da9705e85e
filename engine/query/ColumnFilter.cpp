#include "engine/query/ColumnFilter.h"

#include <cstring>

#include "engine/query/CompareClass.h"
#include "engine/query/ExprShape.h"
#include "engine/query/LikePattern.h"
#include "engine/query/VExprCompare.h"

namespace vela {

namespace {

using Form = ColumnData::Form;

// A column, the rows to filter, and what the plain comparison does not cover.
struct Filtering {
    const ColumnData& data;
    bool negated;
    const RowJudge& judge;
    RowList* rows;
};

// op with its sides exchanged.
uint16_t Mirrored(uint16_t op)
{
    switch (op) {
        case kOpLess:
            return kOpGreater;
        case kOpLessEqual:
            return kOpGreaterEqual;
        case kOpGreater:
            return kOpLess;
        case kOpGreaterEqual:
            return kOpLessEqual;
        default:
            return op;
    }
}

// Keeps the rows for which holds(row) is true, or false when negated.
template <class Holds>
void Retain(const Filtering& filtering, const Holds& holds)
{
    const bool wanted = !filtering.negated;
    if (filtering.data.nulls.empty()) {
        filtering.rows->Retain([&](uint32_t row) { return holds(row) == wanted; });
        return;
    }
    filtering.rows->Retain([&](uint32_t row) {
        return filtering.data.IsNull(row) ? filtering.judge(row) : holds(row) == wanted;
    });
}

// valueOf(row) op constant.
template <class ValueOf, class T>
bool RetainWhere(const Filtering& filtering, uint16_t op, const ValueOf& valueOf, const T& constant)
{
    switch (op) {
        case kOpEqual:
            Retain(filtering, [&](uint32_t row) { return valueOf(row) == constant; });
            return true;
        case kOpNotEqual:
            Retain(filtering, [&](uint32_t row) { return valueOf(row) != constant; });
            return true;
        case kOpLess:
            Retain(filtering, [&](uint32_t row) { return valueOf(row) < constant; });
            return true;
        case kOpLessEqual:
            Retain(filtering, [&](uint32_t row) { return valueOf(row) <= constant; });
            return true;
        case kOpGreater:
            Retain(filtering, [&](uint32_t row) { return valueOf(row) > constant; });
            return true;
        case kOpGreaterEqual:
            Retain(filtering, [&](uint32_t row) { return valueOf(row) >= constant; });
            return true;
        default:
            return false;
    }
}

bool RetainBooleans(const Filtering& filtering, uint16_t op, VelaValue constant)
{
    if (filtering.data.form != Form::kIntegers || constant.IsNull())
        return false;
    constant.CoerceToType(kTypeBoolean);
    const int32_t* numbers = filtering.data.integers.data();
    return RetainWhere(
        filtering, op, [numbers](uint32_t row) { return numbers[row] != 0 ? 1 : 0; },
        constant.GetInteger());
}

bool RetainIntegers(const Filtering& filtering, uint16_t op, const VelaValue& constant)
{
    if (filtering.data.form != Form::kIntegers)
        return false;
    const int32_t* numbers = filtering.data.integers.data();
    return RetainWhere(
        filtering, op, [numbers](uint32_t row) { return numbers[row]; }, constant.GetInteger());
}

bool RetainDoubles(const Filtering& filtering, uint16_t op, const VelaValue& constant)
{
    const double number = constant.GetDouble();
    if (filtering.data.form == Form::kIntegers) {
        const int32_t* numbers = filtering.data.integers.data();
        return RetainWhere(
            filtering, op, [numbers](uint32_t row) { return double{1} * numbers[row]; }, number);
    }
    if (filtering.data.form != Form::kDoubles)
        return false;
    const double* numbers = filtering.data.doubles.data();
    return RetainWhere(
        filtering, op, [numbers](uint32_t row) { return numbers[row]; }, number);
}

// A String column that meets a date loses prefixes value by value: not here.
bool RetainTexts(const Filtering& filtering, uint16_t op, const VelaValue& constant)
{
    const VelaDataType type = filtering.data.type;
    if (filtering.data.form != Form::kTexts ||
        (type == kTypeString && IsDateOrTime(constant.GetType())))
        return false;
    const string text = constant.GetSaveString();
    const bool losesPrefix = constant.GetType() == kTypeString && IsDateOrTime(type);
    const std::string_view wanted = losesPrefix ? WithoutTypePrefix(text.View()) : text.View();
    if (op == kOpEqual || op == kOpNotEqual) {
        return RetainWhere(
            filtering, op, [&](uint32_t row) { return filtering.data.Text(row); }, wanted);
    }
    const auto orderOf = [&](uint32_t row) {
        return string::CompareBytes(filtering.data.Text(row), wanted);
    };
    return RetainWhere(filtering, op, orderOf, 0);
}

bool RetainByCondition(const Filtering& filtering, const ColumnCondition& condition)
{
    const VelaDataType columnType = filtering.data.type;
    const VelaDataType constantType = condition.constant.GetType();
    const uint16_t op = condition.columnIsLeft ? condition.op : Mirrored(condition.op);
    switch (condition.columnIsLeft ? ClassOfComparison(columnType, constantType)
                                   : ClassOfComparison(constantType, columnType)) {
        case CompareClass::kBooleans:
            return RetainBooleans(filtering, op, condition.constant);
        case CompareClass::kIntegers:
            return RetainIntegers(filtering, op, condition.constant);
        case CompareClass::kDoubles:
            return RetainDoubles(filtering, op, condition.constant);
        case CompareClass::kTexts:
            return RetainTexts(filtering, op, condition.constant);
    }
    return false;
}

// The rows whose texts contain the sought bytes, found by one search through all texts, which are in order.
LargeVector<uint32_t> RowsContaining(const ColumnData& data, std::string_view sought)
{
    LargeVector<uint32_t> found;
    if (data.texts.empty())
        return found;   // memmem takes no null pointer, not even for nothing
    const std::string_view all(data.texts.data(), data.texts.size());
    const char* from = all.data();
    const char* const end = from + all.size();
    const LargeVector<uint32_t>& starts = data.textStarts;
    size_t row = 0;
    while (const void* hit =
               memmem(from, static_cast<size_t>(end - from), sought.data(), sought.size())) {
        const char* const place = static_cast<const char*>(hit);
        const size_t offset = static_cast<size_t>(place - all.data());
        while (row + 1 < starts.size() && starts[row + 1] <= offset)
            row++;
        const size_t rowEnd = row + 1 < starts.size() ? starts[row + 1] : all.size();
        const bool isInside =
            offset + sought.size() <= rowEnd;   // or it runs on into the next text
        if (isInside)
            found.push_back(static_cast<uint32_t>(row));
        from = isInside ? all.data() + rowEnd : place + 1;
    }
    return found;
}

bool RetainByPattern(const Filtering& filtering, const ColumnLike& like)
{
    if (filtering.data.form != Form::kTexts)
        return false;
    const LikePattern pattern(like.pattern.View(), like.escape);
    const std::string_view sought = pattern.SoughtText();
    if (!sought.empty() && !filtering.negated && filtering.data.nulls.empty() &&
        filtering.rows->Count() == filtering.data.Count() && filtering.data.textsInOrder) {
        *filtering.rows = RowList(RowsContaining(filtering.data, sought));
        return true;
    }
    Retain(filtering, [&](uint32_t row) { return pattern.Matches(filtering.data.Text(row)); });
    return true;
}

}   // namespace

bool FilterByColumn(const QueryTerm& term, VelaDatabase* database, TableColumns* columns,
                    const RowJudge& judge, RowList* rows)
{
    const VelaExpr* expr = term.expr;
    bool negated = false;
    for (const VelaExpr* operand = NegatedOperand(*expr); operand;
         operand = NegatedOperand(*expr)) {
        expr = operand;
        negated = !negated;
    }
    const auto condition = AsColumnCondition(*expr, database);
    const auto like = AsColumnLike(*expr, database);
    if (!condition && !like)
        return false;
    const ColumnData* data = columns->Load(condition ? condition->column : like->column);
    if (data == nullptr)
        return false;
    const Filtering filtering{*data, negated, judge, rows};
    return condition ? RetainByCondition(filtering, *condition) : RetainByPattern(filtering, *like);
}

}   // namespace vela
