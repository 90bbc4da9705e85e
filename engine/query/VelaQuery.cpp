#include "engine/query/VelaQuery.h"

#include "engine/query/AggregateState.h"
#include "engine/query/DistinctRows.h"
#include "engine/query/ExprShape.h"
#include "engine/query/FieldRows.h"
#include "engine/query/GroupTotals.h"
#include "engine/query/RecSetEnumerator.h"
#include "engine/query/RecSetGrouper.h"
#include "engine/query/RecSetSorter.h"
#include "engine/query/VExprAggregate.h"

namespace vela {

namespace {

// What the outputs of an aggregate query are evaluated against.
VelaEvalContext GroupContext(const VelaEvalContext& context, const VelaRecSetGroup& group)
{
    VelaEvalContext result = context;
    result.recSet = nullptr;
    result.group = &group;
    return result;
}

bool IsCountOfAll(const VelaExpr& expr)
{
    if (expr.Kind() != ExprKind::kAggregate)
        return false;
    const auto& aggregate = static_cast<const VExprAggregate&>(expr);
    return aggregate.Func() == kFuncCount && aggregate.Operand() == nullptr;
}

// The numbers of an output that is the only one of a DISTINCT query and a column of Integers in memory; else null.
const ColumnData* OnlyIntegers(const std::vector<VelaExprPtr>& outputs,
                               const VelaEvalContext& context)
{
    const VExprField* field = outputs.size() == 1 ? AsField(outputs[0].get()) : nullptr;
    const ColumnData* data = field ? field->LoadedColumn(context) : nullptr;
    const bool isIt =
        data && data->form == ColumnData::Form::kIntegers && data->type == kTypeInteger;
    return isIt ? data : nullptr;
}

void DropUnlessNew(DistinctRows* distinctRows, VelaTempTable* result)
{
    if (!distinctRows->IsNew())
        result->RemoveLastRow();
}

}   // namespace

void VelaQuery::AddSortKey(long column, long direction)
{
    mSortColumns.push_back(column);
    mSortDirections.push_back(direction);
}

std::unique_ptr<VelaTempTable> VelaQuery::RunQuery(QueryTrace* trace)
{
    std::unique_ptr<VelaTempTable> result = MakeResultTable();
    RecSetEnumerator recSets(mDatabase, mTables, mWhere.get(), OutputExprs(), trace);
    bool isSorted = false;
    if (IsAggregateQuery())
        AddAggregateRows(&recSets, result.get());
    else
        isSorted = AddPlainRows(&recSets, result.get());
    mRecSetsConsidered += recSets.Considered();
    if (!isSorted)
        result->Sort(mSortColumns, mSortDirections);
    return result;
}

std::unique_ptr<VelaTempTable> VelaQuery::MakeResultTable() const
{
    auto result = std::make_unique<VelaTempTable>(mTables.size());
    for (const VelaExprPtr& output : mOutputs) {
        const string name = output->Name().empty() ? output->Description() : output->Name();
        result->AddColumn(name, output->GetType(mTables));
    }
    return result;
}

// What is evaluated on the record sets that the WHERE lets through.
std::vector<const VelaExpr*> VelaQuery::OutputExprs() const
{
    std::vector<const VelaExpr*> exprs;
    exprs.reserve(mOutputs.size() + mGroupBy.size() + 1);
    for (const VelaExprPtr& output : mOutputs)
        exprs.push_back(output.get());
    for (const VelaExprPtr& column : mGroupBy)
        exprs.push_back(column.get());
    if (mHaving)
        exprs.push_back(mHaving.get());
    return exprs;
}

bool VelaQuery::IsAggregateQuery() const
{
    for (const VelaExprPtr& output : mOutputs) {
        if (output->HasAggregate())
            return true;
    }
    return false;
}

// Whether the rows are in the order of ORDER BY already.
bool VelaQuery::AddPlainRows(RecSetEnumerator* recSets, VelaTempTable* result) const
{
    if (FieldRows::Serves(mOutputs)) {
        RecSetList list(mTables.size());
        recSets->CollectRest(&list);
        if (mDistinct) {
            AddDistinctRows(recSets->Context(), list, result);
            return false;
        }
        return AddFieldRows(recSets->Context(), &list, result);
    }
    DistinctRows distinctRows(*result);
    std::vector<uint32_t> rowIDs(mTables.size());
    while (recSets->Next()) {
        AddRow(recSets->Context(), &rowIDs, result);
        if (mDistinct)
            DropUnlessNew(&distinctRows, result);
    }
    return false;
}

// Of outputs that are columns. Whether the rows are in the order of ORDER BY already: only rows that are need no values of
// their own.
bool VelaQuery::AddFieldRows(const VelaEvalContext& context, RecSetList* list,
                             VelaTempTable* result) const
{
    const bool isSorted = SortRecSets(context, list);
    std::unique_ptr<ColumnRows> rows;
    if (isSorted)
        rows = ColumnRows::Share(mOutputs, context, mLeastSharedRows, list);
    if (rows)
        result->SetRows(std::move(rows));
    else
        FieldRows(mOutputs, context).Append(*list, result);
    return isSorted;
}

// False: the keys are not all columns that sort in memory; the list is as it was.
bool VelaQuery::SortRecSets(const VelaEvalContext& context, RecSetList* list) const
{
    RecSetSorter sorter;
    for (size_t k = 0; k < mSortColumns.size(); k++) {
        const auto column = static_cast<size_t>(mSortColumns[k]);
        if (mSortColumns[k] < 0 || column >= mOutputs.size() ||
            !sorter.AddKey(*mOutputs[column], mSortDirections[k] < 0, context))
            return false;
    }
    if (!mSortColumns.empty())
        sorter.Sort(list);
    return true;
}

// Of outputs that are columns.
void VelaQuery::AddDistinctRows(const VelaEvalContext& recSets, const RecSetList& list,
                                VelaTempTable* result) const
{
    DistinctRows distinctRows(*result);
    const ColumnData* integers = OnlyIntegers(mOutputs, recSets);
    const size_t table = integers ? AsField(mOutputs[0].get())->Table() : 0;
    std::vector<uint32_t> rowIDs(mTables.size());
    VelaEvalContext context = recSets;
    for (size_t i = 0; i < list.Count(); i++) {
        const VelaRecSet recSet = list.At(i);
        const uint32_t row = integers ? recSet.RowID(table) : 0;
        if (integers && !integers->IsNull(row) && distinctRows.HasCome(integers->integers[row]))
            continue;
        context.recSet = &recSet;
        AddRow(context, &rowIDs, result);
        DropUnlessNew(&distinctRows, result);
    }
}

// The row of the context's record set. rowIDs, which has an element for each table, is for its source.
void VelaQuery::AddRow(const VelaEvalContext& context, std::vector<uint32_t>* rowIDs,
                       VelaTempTable* result) const
{
    for (size_t table = 0; table < rowIDs->size(); table++) {
        TableColumns* columns = (*context.columns)[table];
        const uint32_t row = context.recSet->RowID(table);
        (*rowIDs)[table] = columns ? columns->RowIDs()[row] : row;
    }
    const VelaRecSet source(rowIDs->data());
    EvaluateOutputs(context, result->AppendRow(&source));
}

void VelaQuery::AddAggregateRows(RecSetEnumerator* recSets, VelaTempTable* result) const
{
    if (mGroupBy.empty() && CountsOnly()) {
        AddCountRow(recSets, result);
        return;
    }
    RecSetList list(mTables.size());
    recSets->CollectRest(&list);
    if (!mGroupBy.empty()) {
        AddGroupRows(recSets->Context(), &list, result);
        return;
    }
    const VelaRecSetGroup all = list.Group(0, list.Count());
    EvaluateOutputs(GroupContext(recSets->Context(), all), result->AppendRow(nullptr));
}

// Whether every output is COUNT(*): then no record set need be kept.
bool VelaQuery::CountsOnly() const
{
    for (const VelaExprPtr& output : mOutputs) {
        if (!IsCountOfAll(*output))
            return false;
    }
    return true;
}

void VelaQuery::AddCountRow(RecSetEnumerator* recSets, VelaTempTable* result) const
{
    const VelaValue count = CountValue(recSets->CountRest());
    VelaValue* row = result->AppendRow(nullptr);
    for (size_t i = 0; i < mOutputs.size(); i++)
        row[i] = count;
}

void VelaQuery::AddGroupRows(const VelaEvalContext& context, RecSetList* list,
                             VelaTempTable* result) const
{
    RecSetGrouper grouper(mGroupBy, context);
    grouper.FindGroups(*list);
    if (mHaving == nullptr && !mDistinct && GroupTotals::Serves(mOutputs, context)) {
        GroupTotals(mOutputs, context, *list, grouper).Append(grouper.SortedGroups(), result);
        return;
    }
    std::vector<size_t> starts = grouper.SortIntoGroups(list);
    starts.push_back(list->Count());
    DistinctRows distinctRows(*result);
    for (size_t i = 0; i + 1 < starts.size(); i++) {
        const VelaRecSetGroup group = list->Group(starts[i], starts[i + 1]);
        const VelaEvalContext groupContext = GroupContext(context, group);
        if (!HavingKeeps(groupContext))
            continue;
        EvaluateOutputs(groupContext, result->AppendRow(nullptr));
        if (mDistinct)
            DropUnlessNew(&distinctRows, result);
    }
}

// As WHERE, HAVING is judged by the integer form of what it leaves, whatever its flag says.
bool VelaQuery::HavingKeeps(const VelaEvalContext& context) const
{
    if (mHaving == nullptr)
        return true;
    VelaValue value;
    mHaving->Evaluate(context, &value);
    return value.GetInteger() != 0;
}

// An output that is UNKNOWN leaves what it leaves; nothing makes a null.
void VelaQuery::EvaluateOutputs(const VelaEvalContext& context, VelaValue* row) const
{
    for (size_t i = 0; i < mOutputs.size(); i++)
        mOutputs[i]->Evaluate(context, &row[i]);
}

}   // namespace vela
