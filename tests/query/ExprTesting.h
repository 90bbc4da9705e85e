#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/query/VelaExpr.h"
#include "tests/core/TestValues.h"
#include "tests/query/MemoryTable.h"

namespace vela {

using test::Cell;

// A value as the tables show it: "Integer 5", "String abc", "NULL Date".
std::string Shown(const VelaValue& value);

// Constants.
VelaExprPtr Expr(const VelaValue& value);
VelaExprPtr Expr(int number);
VelaExprPtr Expr(double number);
VelaExprPtr Expr(const char* text);
VelaExprPtr ExprField(uint32_t table, uint32_t column);

// The nodes in a list, for the nodes that take one.
template <class... Terms>
SimpleVector<VelaExprPtr> List(Terms... terms)
{
    SimpleVector<VelaExprPtr> list;
    (list.push_back(std::move(terms)), ...);
    return list;
}

// What an expression does because a test tells it.
struct ExprScript {
    bool flag = false;   // the answer of Evaluate
    std::vector<VelaValue> left =
        {};            // what it leaves in result: the first one, or nothing when empty
    long table = -1;   // the answer of ChooseWildcardTable
    bool single = true;
    bool valid = true;
    bool aggregate = false;
    int* evaluations = nullptr;   // counted there, when given
};
VelaExprPtr Scripted(const ExprScript& script);

// What Evaluate comes to: "Integer 3"; "UNKNOWN" when it left result untouched, else
// "UNKNOWN leaving Integer 3".
std::string Outcome(const VelaExpr& expr, const VelaEvalContext& context = {});
std::string Outcome(const VelaExprPtr& expr, const VelaEvalContext& context = {});

// "3 single", "-1 not single": the answer of ChooseWildcardTable.
std::string Choice(const VelaExpr& expr, const VelaRecSet& recSet);

// One table and the context that shows its rows to an expression. The first cell of a row is column
// 1; row ids are 11, 12 ... Not to be moved: the context points into it.
class OneTable {
public:
    OneTable(const std::vector<VelaDataType>& types, const std::vector<std::vector<Cell>>& rows);
    OneTable(const OneTable&) = delete;
    OneTable& operator=(const OneTable&) = delete;

    // The row at that position as the current one; named by row id, or by row number through the
    // table's columns.
    VelaEvalContext Row(size_t position);
    VelaEvalContext RowInColumns(size_t position);
    // All rows as the group, without a current one.
    VelaEvalContext Group();

private:
    test::MemoryTable mTable{"test"};
    SimpleVector<VelaTable*> mTables{&mTable};
    std::vector<uint32_t> mRowIDs;
    std::vector<uint32_t> mRowNumbers;
    std::unique_ptr<VelaRecSet> mCurrent;
    std::unique_ptr<VelaRecSetGroup> mGroup;
    SimpleVector<TableColumns*> mColumns;
};

}   // namespace vela
