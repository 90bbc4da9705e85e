#include <algorithm>
#include <vector>

#include "engine/sql/SQLInsertNode.h"
#include "engine/sql/StatementChecks.h"
#include "engine/sql/StatementExecutors.h"

namespace vela {

namespace {

// The columns that an INSERT fills.
using Targets = SimpleVector<const VelaColumnInfo*>;

bool HasRowID(const Targets& targets)
{
    return std::find(targets.begin(), targets.end(), &RowIDColumn()) != targets.end();
}

bool FailConstraint(VelaStatus* status)
{
    return Fail(status, kVEIntegrityConstraintViolation, "Constraint violation.");
}

// A row on its way into a table: a NULL for each target column.
class RowSlots {
public:
    explicit RowSlots(const Targets& targets) : mValues(targets.size())
    {
        mRow.reserve(targets.size());
        for (size_t i = 0; i < targets.size(); i++) {
            mValues[i].SetColumnID(targets[i]->columnID);
            mRow.push_back(&mValues[i]);
        }
    }
    RowSlots(const RowSlots&) = delete;
    RowSlots& operator=(const RowSlots&) = delete;

    [[nodiscard]] VelaValueWithID& operator[](size_t index) { return mValues[index]; }
    // False: the table refused the row.
    bool AddTo(VelaTable* table) { return table->AddRow(mRow, false) != kInvalidRowID; }

private:
    std::vector<VelaValueWithID> mValues;
    VelaRow mRow;
};

// All columns but _rowid.
void TakeAllColumns(const VelaTable& table, Targets* targets)
{
    const long columns = table.QtyColumns();
    targets->reserve(static_cast<size_t>(columns));
    for (long number = 1; number < columns; number++)
        targets->push_back(table.Column(number));
}

bool FindTargets(const SQLInsertNode& node, const VelaTable& table, Targets* targets,
                 VelaStatus* status)
{
    if (node.mColumns.empty()) {
        TakeAllColumns(table, targets);
        return true;
    }
    targets->reserve(node.mColumns.size());
    for (const SQLText& name : node.mColumns) {
        const long number = table.FindColumnNamed(name.View());
        if (number < 0)
            return FailColumnNotFound(name, status);
        targets->push_back(table.Column(number));
    }
    return true;
}

// Computes the values of one row for one table.
class ValueEvaluator {
public:
    ValueEvaluator(const SQLText& tableName, VelaTable* table, VelaDatabase* database)
        : mTableName(tableName), mTable(table), mDatabase(database)
    {}

    // Sets value to what the expression gives, in the column's type.
    bool Evaluate(const SQLScalarExpNode& expression, const VelaColumnInfo& column,
                  VelaValueWithID* value, VelaStatus* status) const
    {
        if (expression.IsKeywordDefault()) {
            value->SetValue(column.defaultValue);
            return true;
        }
        if (!expression.GetConstant(value)) {
            const VelaExprPtr expr = expression.ConvertToVelaExpr({mTableName}, {mTable}, status);
            if (!expr)
                return false;
            if (!expr->EvaluateInIsolation(value, mDatabase))
                return Fail(status, kVEDataException, "Couldn't evaluate value for " + column.name);
        }
        value->CoerceToType(column.Type());
        return true;
    }

private:
    SQLText mTableName;
    VelaTable* mTable;
    VelaDatabase* mDatabase;
};

void InsertDefaults(VelaTable* table, VelaStatus* status)
{
    Targets targets;
    TakeAllColumns(*table, &targets);
    RowSlots slots(targets);
    for (size_t i = 0; i < targets.size(); i++)
        slots[i].SetValue(targets[i]->defaultValue);
    if (!slots.AddTo(table))
        FailConstraint(status);
}

void InsertValues(const SQLInsertNode& node, VelaTable* table, VelaDatabase& database,
                  VelaStatus* status)
{
    Targets targets;
    if (!FindTargets(node, *table, &targets, status))
        return;
    if (targets.size() != node.mValues.size()) {
        Fail(status, kVEInsertValuesMismatch, "");
        return;
    }
    const ValueEvaluator evaluator(node.mTableName, table, &database);
    RowSlots slots(targets);
    for (size_t i = 0; i < targets.size(); i++) {
        if (!evaluator.Evaluate(*node.mValues[i], *targets[i], &slots[i], status))
            return;
    }
    if (!slots.AddTo(table))
        FailConstraint(status);
}

// Copies the result's rows. A row that is refused for its _rowid is passed over; without one there
// are no row ids left, and nothing more can be inserted.
void InsertRows(VelaTable* result, const Targets& targets, VelaTable* table, VelaStatus* status)
{
    const bool hasRowID = HasRowID(targets);
    SimpleVector<uint32_t> rowIDs;
    result->GetRowIDs(&rowIDs);
    RowSlots slots(targets);
    for (const uint32_t rowID : rowIDs) {
        for (size_t i = 0; i < targets.size(); i++)
            result->GetValue(rowID, static_cast<long>(i), &slots[i]);
        if (!slots.AddTo(table) && !hasRowID) {
            FailConstraint(status);
            return;
        }
    }
}

void InsertSelect(const SQLInsertNode& node, VelaTable* table, VelaDatabase& database,
                  VelaStatus* status)
{
    Targets targets;
    if (!FindTargets(node, *table, &targets, status))
        return;
    if (targets.size() != node.mSelect->mItems.size()) {
        Fail(status, kVEInsertValuesMismatch, "");
        return;
    }
    // The result is complete before the first row is added, so it may come from the same table.
    const std::unique_ptr<VelaTempTable> result =
        ExecuteSelect(*node.mSelect, database, status, nullptr, nullptr, nullptr);
    if (result)
        InsertRows(result.get(), targets, table, status);
}

}   // namespace

void ExecuteInsert(const SQLInsertNode& node, VelaDatabase& database, VelaStatus* status)
{
    VelaTable* table = nullptr;
    if (!FindOpenTable(database, node.mTableName, &table, status))
        return;
    if (node.mDefaultValues)
        InsertDefaults(table, status);
    else if (node.mSelect)
        InsertSelect(node, table, database, status);
    else
        InsertValues(node, table, database, status);
}

}   // namespace vela
