#include "tests/query/ExprTesting.h"

#include <cstring>

#include "engine/query/VExprConstant.h"
#include "engine/query/VExprField.h"

namespace vela {

namespace {

constexpr const char* kUntouched = "as it was before";

// The rows of a TestTable column by column; a column with a cell that can't be read isn't there.
class TestColumns : public TableColumns {
public:
    explicit TestColumns(TestTable& table);

    uint32_t RowCount() override { return static_cast<uint32_t>(mRowIDs.size()); }
    const uint32_t* RowIDs() override { return mRowIDs.data(); }
    uint32_t RowNumberOf(uint32_t rowID) override;
    const ColumnData* Load(long number) override;
    bool GetValue(uint32_t row, long number, VelaValue* value) override;

private:
    TestTable& mTable;
    std::vector<uint32_t> mRowIDs;
    std::vector<ColumnData> mColumns;
};

TestColumns::TestColumns(TestTable& table) : mTable(table), mColumns(table.ColumnInfos().size())
{
    for (const TestTable::Row& row : table.Rows())
        mRowIDs.push_back(row.rowID);
}

uint32_t TestColumns::RowNumberOf(uint32_t rowID)
{
    for (size_t i = 0; i < mRowIDs.size(); i++) {
        if (mRowIDs[i] == rowID)
            return static_cast<uint32_t>(i);
    }
    return kInvalidRowID;
}

const ColumnData* TestColumns::Load(long number)
{
    if (number < 0 || static_cast<size_t>(number) >= mColumns.size())
        return nullptr;
    const size_t index = static_cast<size_t>(number);
    ColumnData& column = mColumns[index];
    if (column.form != ColumnData::Form::kUnloaded)
        return &column;
    column.Start(mTable.ColumnInfos()[index].Type());
    for (const TestTable::Row& row : mTable.Rows()) {
        if (row.values.size() <= index || !column.Append(row.values[index])) {
            column = ColumnData();
            return nullptr;
        }
    }
    return &column;
}

bool TestColumns::GetValue(uint32_t row, long number, VelaValue* value)
{
    return row < mRowIDs.size() && mTable.GetValue(mRowIDs[row], number, value);
}

}   // namespace

VelaValue Text(const char* text)
{
    return VelaValue::String(text);
}

VelaValue UTF8(const char* text)
{
    return VelaValue::String(string(text, kEncodingUTF8));
}

VelaValue UTF16(std::u16string_view text)
{
    return VelaValue::String(string(reinterpret_cast<const char*>(text.data()),
                                    text.size() * sizeof(char16_t), kEncodingUTF16));
}

VelaValue Date(const char* text)
{
    return VelaValue::Text(kTypeDate, text);
}

VelaValue Time(const char* text)
{
    return VelaValue::Text(kTypeTime, text);
}

VelaValue Timestamp(const char* text)
{
    return VelaValue::Text(kTypeTimestamp, text);
}

VelaValue Binary(const char* text)
{
    return VelaValue::Text(kTypeBinary, text);
}

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
    return Expr(VelaValue::Integer(number));
}

VelaExprPtr Expr(double number)
{
    return Expr(VelaValue::Double(number));
}

VelaExprPtr Expr(const char* text)
{
    return Expr(Text(text));
}

VelaExprPtr ExprNull()
{
    return Expr(VelaValue());
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

TestTable::TestTable(std::vector<VelaDataType> types, std::vector<Row> rows)
    : mRows(std::move(rows))
{
    for (const VelaDataType type : types) {
        VelaColumnInfo column;
        column.defaultValue = VelaValue::Null(type);
        column.columnID = static_cast<uint32_t>(mColumns.size());
        mColumns.push_back(column);
    }
}

TestTable::~TestTable() = default;

const VelaColumnInfo* TestTable::Column(long number) const
{
    return number >= 0 && number < QtyColumns() ? &mColumns[static_cast<size_t>(number)] : nullptr;
}

void TestTable::GetRowIDs(SimpleVector<uint32_t>* rowIDs)
{
    rowIDs->clear();
    for (const Row& row : mRows)
        rowIDs->push_back(row.rowID);
}

bool TestTable::GetValue(uint32_t rowID, long number, VelaValue* value)
{
    for (const Row& row : mRows) {
        if (row.rowID != rowID)
            continue;
        if (number < 0 || static_cast<size_t>(number) >= row.values.size())
            return false;
        *value = row.values[static_cast<size_t>(number)];
        return true;
    }
    return false;
}

void TestTable::DeleteRow(uint32_t rowID)
{
    std::erase_if(mRows, [rowID](const Row& row) { return row.rowID == rowID; });
    mInMemory.reset();
}

TableColumns* TestTable::Columns()
{
    if (!mInMemory)
        mInMemory = std::make_unique<TestColumns>(*this);
    return mInMemory.get();
}

OneTable::OneTable(std::vector<VelaDataType> types, std::vector<TestTable::Row> rows)
    : table(std::move(types), std::move(rows))
{
    tables.push_back(&table);
    mColumns.push_back(table.Columns());
    for (const TestTable::Row& row : table.Rows()) {
        mRowNumbers.push_back(static_cast<uint32_t>(mRowIDs.size()));
        mRowIDs.push_back(row.rowID);
    }
}

VelaEvalContext OneTable::Row(size_t position)
{
    mCurrent = std::make_unique<VelaRecSet>(&mRowIDs[position]);
    VelaEvalContext context;
    context.recSet = mCurrent.get();
    context.tables = &tables;
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
    context.tables = &tables;
    return context;
}

VelaEvalContext OneTable::GroupInColumns()
{
    VelaEvalContext context = Group();
    *mGroup = VelaRecSetGroup(mRowNumbers.data(), mRowNumbers.size(), 1);
    context.columns = &mColumns;
    return context;
}

}   // namespace vela
