#include "engine/query/ExprShape.h"
#include "engine/query/VelaQuery.h"
#include "engine/sql/QueryStory.h"
#include "engine/sql/SQLSelectNode.h"
#include "engine/sql/StatementChecks.h"
#include "engine/sql/StatementExecutors.h"

namespace vela {

namespace {

const char* const kTablesTableName = "_TABLES";

// The table for a FROM item: an open one, or _TABLES where no open one has that name.
bool FindSource(const SQLText& name, VelaDatabase& database, VelaTable** table, VelaStatus* status)
{
    const bool isTables = name.View() == kTablesTableName;
    if (FindOpenTable(database, name, table, isTables ? nullptr : status))
        return true;
    if (isTables)
        *table = VelaSchema::GetTablesTable();
    return isTables;
}

// One SELECT on its way from tree to query.
class SelectBuilder {
public:
    SelectBuilder(const SQLSelectNode& node, VelaDatabase& database, VelaStatus* status)
        : mNode(node), mDatabase(database), mStatus(status), mQuery(&database)
    {}

    // The steps, in the order of their checks. False: the statement ends.
    bool AddTables(SimpleVector<string>* tableNames, SimpleVector<string>* rangeNames);
    bool AddOutputs(SimpleVector<long>* sourceColumns);
    bool AddWhere();
    bool AddGroupBy();
    bool AddHaving();
    void AddOrderBy();
    [[nodiscard]] std::unique_ptr<VelaTempTable> Run(QueryTrace* trace = nullptr);
    // The same, with its story appended to lines.
    [[nodiscard]] std::unique_ptr<VelaTempTable> Explain(SimpleVector<string>* lines);

private:
    [[nodiscard]] VelaExprPtr Translate(const SQLScalarExpNode& expression) const;
    [[nodiscard]] VelaExprPtr TranslateCondition(const SQLScalarExpNode& condition) const;
    // The output column that an ORDER BY item names; -1 for none.
    [[nodiscard]] long FindOutput(const SQLFieldRefNode& item) const;
    [[nodiscard]] long FindOutputOf(const VExprField& field) const;

    const SQLSelectNode& mNode;
    VelaDatabase& mDatabase;
    VelaStatus* mStatus;
    VelaQuery mQuery;
    SQLNames mQualifiers;
};

bool SelectBuilder::AddTables(SimpleVector<string>* tableNames, SimpleVector<string>* rangeNames)
{
    for (const auto& item : mNode.mTables) {
        VelaTable* table = nullptr;
        if (!FindSource(item->mTableName, mDatabase, &table, mStatus))
            return false;
        mQuery.AddTable(table);
        mQualifiers.push_back(item->Qualifier());
        if (tableNames)
            tableNames->push_back(item->mTableName.ToString());
        if (rangeNames)
            rangeNames->push_back(item->mTableName.ToString());
    }
    return true;
}

// Where a result column comes from, as VelaSQLQuery tells it.
long SourceColumn(const VExprField* field)
{
    constexpr uint32_t kHighestTable = 0x7FFF;
    constexpr uint32_t kHighestColumn = 0xFFFF;
    if (!field || field->Table() > kHighestTable || field->ColumnNumber() > kHighestColumn)
        return -1;
    return static_cast<long>(field->Table() << 16 | field->ColumnNumber());
}

bool SelectBuilder::AddOutputs(SimpleVector<long>* sourceColumns)
{
    SimpleVector<VelaExprPtr> outputs;
    for (const auto& item : mNode.mItems) {
        if (!item->mExpression->ConvertToExprList(mQualifiers, mQuery.Tables(), &outputs, mStatus))
            return false;
    }
    mQuery.ReserveOutputs(outputs.size());
    for (VelaExprPtr& output : outputs) {
        if (sourceColumns)
            sourceColumns->push_back(SourceColumn(AsField(output.get())));
        mQuery.AddOutput(std::move(output));
    }
    return true;
}

bool SelectBuilder::AddWhere()
{
    if (!mNode.mWhere)
        return true;
    VelaExprPtr where = TranslateCondition(*mNode.mWhere);
    const bool isGood = where != nullptr;
    mQuery.SetWhere(std::move(where));
    return isGood;
}

bool SelectBuilder::AddGroupBy()
{
    for (const auto& item : mNode.mGroupBy) {
        if (item->Name().EqualsIgnoringCase("NULL"))
            return false;
        VelaExprPtr column = Translate(*item);
        if (!column)
            return false;
        mQuery.AddGroupBy(std::move(column));
    }
    return true;
}

bool SelectBuilder::AddHaving()
{
    if (!mNode.mHaving)
        return true;
    VelaExprPtr having = TranslateCondition(*mNode.mHaving);
    const bool isGood = having != nullptr;
    mQuery.SetHaving(std::move(having));
    return isGood;
}

void SelectBuilder::AddOrderBy()
{
    for (const SQLSelectNode::SortKey& key : mNode.mOrderBy) {
        const long output = FindOutput(*key.column);
        if (output >= 0)
            mQuery.AddSortKey(output, key.isDescending ? -1 : 1);
    }
}

std::unique_ptr<VelaTempTable> SelectBuilder::Explain(SimpleVector<string>* lines)
{
    QueryTrace trace;
    std::unique_ptr<VelaTempTable> result = Run(&trace);
    TellQuery({mQuery, mNode, mQualifiers, trace}, result->QtyRows(), lines);
    return result;
}

std::unique_ptr<VelaTempTable> SelectBuilder::Run(QueryTrace* trace)
{
    mQuery.SetDistinct(mNode.mDistinct);
    std::unique_ptr<VelaTempTable> result = mQuery.RunQuery(trace);
    const bool hasRows = result && result->QtyRows() > 0;
    if (!hasRows && mStatus && mStatus->State() == kVEStateSuccess)
        *mStatus = VelaStatus(kVEStateNoData, "");
    return result;
}

VelaExprPtr SelectBuilder::Translate(const SQLScalarExpNode& expression) const
{
    return expression.ConvertToVelaExpr(mQualifiers, mQuery.Tables(), mStatus);
}

VelaExprPtr SelectBuilder::TranslateCondition(const SQLScalarExpNode& condition) const
{
    VelaExprPtr expr = Translate(condition);
    return expr && expr->Valid() ? std::move(expr) : nullptr;
}

long SelectBuilder::FindOutput(const SQLFieldRefNode& item) const
{
    const std::vector<VelaExprPtr>& outputs = mQuery.Outputs();
    for (size_t i = 0; i < outputs.size(); i++) {
        const string& name = outputs[i]->Name();
        if ((name.empty() ? outputs[i]->Description() : name) == item.Name().View())
            return static_cast<long>(i);
    }
    if (item.Name().View().find('.') == std::string_view::npos)
        return -1;
    // An item that names no column is ignored like any other that matches nothing.
    const VelaExprPtr expr = item.ConvertToVelaExpr(mQualifiers, mQuery.Tables(), nullptr);
    const VExprField* field = AsField(expr.get());
    return field ? FindOutputOf(*field) : -1;
}

long SelectBuilder::FindOutputOf(const VExprField& field) const
{
    const std::vector<VelaExprPtr>& outputs = mQuery.Outputs();
    for (size_t i = 0; i < outputs.size(); i++) {
        const VExprField* output = AsField(outputs[i].get());
        if (output && output->Table() == field.Table() &&
            output->ColumnNumber() == field.ColumnNumber())
            return static_cast<long>(i);
    }
    return -1;
}

bool Build(SelectBuilder* builder, SimpleVector<string>* tableNames,
           SimpleVector<string>* rangeNames, SimpleVector<long>* sourceColumns)
{
    if (!builder->AddTables(tableNames, rangeNames) || !builder->AddOutputs(sourceColumns) ||
        !builder->AddWhere() || !builder->AddGroupBy() || !builder->AddHaving())
        return false;
    builder->AddOrderBy();
    return true;
}

}   // namespace

std::unique_ptr<VelaTempTable> ExecuteSelect(const SQLSelectNode& node, VelaDatabase& database,
                                             VelaStatus* status, SimpleVector<string>* tableNames,
                                             SimpleVector<string>* rangeNames,
                                             SimpleVector<long>* sourceColumns)
{
    SelectBuilder builder(node, database, status);
    return Build(&builder, tableNames, rangeNames, sourceColumns) ? builder.Run() : nullptr;
}

std::unique_ptr<VelaTempTable> ExplainSelect(const SQLSelectNode& node, VelaDatabase& database,
                                             VelaStatus* status, SimpleVector<string>* lines)
{
    SelectBuilder builder(node, database, status);
    return Build(&builder, nullptr, nullptr, nullptr) ? builder.Explain(lines) : nullptr;
}

}   // namespace vela
