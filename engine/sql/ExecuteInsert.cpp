#include <vector>

#include "engine/sql/SQLInsertNode.h"
#include "engine/sql/StatementChecks.h"
#include "engine/sql/StatementExecutors.h"

namespace vela {

namespace {

// The numbers of the columns that an INSERT fills.
using Targets = SimpleVector<long>;

bool HasRowID(const Targets& targets)
{
    for (const long target : targets) {
        if (target == 0)
            return true;
    }
    return false;
}

bool FailConstraint(VelaStatus* status)
{
    return Fail(status, kVEIntegrityConstraintViolation, "Constraint violation.");
}

// A row on its way into a table: a NULL for each target column.
class RowSlots {
public:
    RowSlots(const VelaTable& table, const Targets& targets) : mValues(targets.size())
    {
        mRow.reserve(targets.size());
        for (size_t i = 0; i < targets.size(); i++) {
            mValues[i].SetColumnID(table.Column(targets[i])->columnID);
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

bool FindTargets(const SQLInsertNode& node, const VelaTable& table, Targets* targets,
                 VelaStatus* status)
{
    if (node.mColumns.empty()) {
        for (long number = 1; number < table.QtyColumns(); number++)
            targets->push_back(number);
        return true;
    }
    for (const SQLText& name : node.mColumns) {
        long number = 0;
        if (!FindColumn(table, name, &number, status))
            return false;
        targets->push_back(number);
    }
    return true;
}

// Computes the values of one row for one table.
class ValueEvaluator {
public:
    ValueEvaluator(const SQLText& tableName, VelaTable* table, VelaDatabase* database)
        : mNames{tableName}, mTables{table}, mDatabase(database)
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
            const VelaExprPtr expr = expression.ConvertToVelaExpr(mNames, mTables, status);
            if (!expr)
                return false;
            if (!expr->EvaluateInIsolation(value, mDatabase))
                return Fail(status, kVEDataException, "Couldn't evaluate value for " + column.name);
        }
        value->CoerceToType(column.Type());
        return true;
    }

private:
    SQLNames mNames;
    SQLTables mTables;
    VelaDatabase* mDatabase;
};

void InsertDefaults(VelaTable* table, VelaStatus* status)
{
    Targets targets;
    for (long number = 1; number < table->QtyColumns(); number++)
        targets.push_back(number);
    RowSlots slots(*table, targets);
    for (size_t i = 0; i < targets.size(); i++)
        slots[i].SetValue(table->Column(targets[i])->defaultValue);
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
    RowSlots slots(*table, targets);
    for (size_t i = 0; i < targets.size(); i++) {
        const VelaColumnInfo& column = *table->Column(targets[i]);
        if (!evaluator.Evaluate(*node.mValues[i], column, &slots[i], status))
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
    RowSlots slots(*table, targets);
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
