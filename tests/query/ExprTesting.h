#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/query/VelaExpr.h"
#include "engine/storage/TableColumns.h"

namespace vela {

// Values for tables of cases.
VelaValue Text(const char* text);   // a String, tagged ASCII
VelaValue UTF8(const char* text);   // a String, tagged UTF-8
VelaValue UTF16(std::u16string_view text);
VelaValue Date(const char* text);
VelaValue Time(const char* text);
VelaValue Timestamp(const char* text);
VelaValue Binary(const char* text);

// A value as the tables show it: "Integer 5", "String abc", "NULL Date".
std::string Shown(const VelaValue& value);

// Constants.
VelaExprPtr Expr(const VelaValue& value);
VelaExprPtr Expr(int number);
VelaExprPtr Expr(double number);
VelaExprPtr Expr(const char* text);
VelaExprPtr ExprNull();
VelaExprPtr ExprField(uint32_t table, uint32_t column);

// The nodes in a list, for the nodes that take one.
template <class... Terms>
SimpleVector<VelaExprPtr> List(Terms... terms)
{
    SimpleVector<VelaExprPtr> list;
    (list.push_back(std::move(terms)), ...);
    return list;
}

// An expression that does what a test tells it.
class ScriptedExpr : public VelaExpr {
public:
    bool flag = false;             // the answer of Evaluate
    std::vector<VelaValue> left;   // what it leaves in result: the first one, or nothing when empty
    long table = -1;               // the answer of ChooseWildcardTable
    bool single = true;
    bool valid = true;
    bool aggregate = false;
    int* evaluations = nullptr;   // counted there, when given

    VelaDataType GetType(const SimpleVector<VelaTable*>& tables) const override;
    bool Evaluate(const VelaEvalContext& context, VelaValue* result) const override;
    string Description() const override { return "x"; }
    long ChooseWildcardTable(const VelaRecSet& recSet, bool* isSingle) const override;
    bool Valid() const override { return valid; }
    bool HasAggregate() const override { return aggregate; }
    void CollectTables(std::vector<bool>* tables) const override;
};

// UNKNOWN that leaves nothing, or a value.
VelaExprPtr Unknown();
VelaExprPtr UnknownLeaving(const VelaValue& value);
// An operand that answers ChooseWildcardTable with these.
VelaExprPtr Wants(long table, bool single);
VelaExprPtr Invalid();
VelaExprPtr WithAggregate();

// What Evaluate comes to: "Integer 3"; "UNKNOWN" when it left result untouched, else
// "UNKNOWN leaving Integer 3".
std::string Outcome(const VelaExpr& expr, const VelaEvalContext& context = {});
std::string Outcome(const VelaExprPtr& expr, const VelaEvalContext& context = {});

// "3 single", "-1 not single": the answer of ChooseWildcardTable.
std::string Choice(const VelaExpr& expr, const VelaRecSet& recSet);

// A table in memory: rows of values, each under a row id. Cells of rows that are shorter than the
// column list can't be read.
class TestTable : public VelaTable {
public:
    struct Row {
        uint32_t rowID;
        std::vector<VelaValue> values;
    };

    TestTable(std::vector<VelaDataType> types, std::vector<Row> rows);
    ~TestTable() override;

    const string& TableName() const override { return mName; }
    long QtyColumns() const override { return static_cast<long>(mColumns.size()); }
    const VelaColumnInfo* Column(long number) const override;
    size_t QtyRows() override { return mRows.size(); }
    void GetRowIDs(SimpleVector<uint32_t>* rowIDs) override;
    bool GetValue(uint32_t rowID, long number, VelaValue* value) override;
    void DeleteRow(uint32_t rowID) override;
    TableColumns* Columns() override;

    const std::vector<Row>& Rows() const { return mRows; }
    const std::vector<VelaColumnInfo>& ColumnInfos() const { return mColumns; }

private:
    string mName = "test";
    std::vector<VelaColumnInfo> mColumns;
    std::vector<Row> mRows;
    std::unique_ptr<TableColumns> mInMemory;
};

// One table, its rows as the group, and the context that shows them to an expression. Not to be
// moved: the context points into it.
class OneTable {
public:
    OneTable(std::vector<VelaDataType> types, std::vector<TestTable::Row> rows);
    OneTable(const OneTable&) = delete;
    OneTable& operator=(const OneTable&) = delete;

    TestTable table;
    SimpleVector<VelaTable*> tables;

    // The row at that position as the current one; named by row id, or by row number through the
    // table's columns.
    VelaEvalContext Row(size_t position);
    VelaEvalContext RowInColumns(size_t position);
    // All rows as the group, without a current one.
    VelaEvalContext Group();
    VelaEvalContext GroupInColumns();

private:
    std::vector<uint32_t> mRowIDs;
    std::vector<uint32_t> mRowNumbers;
    std::unique_ptr<VelaRecSet> mCurrent;
    std::unique_ptr<VelaRecSetGroup> mGroup;
    SimpleVector<TableColumns*> mColumns;
};

}   // namespace vela
