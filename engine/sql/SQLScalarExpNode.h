#pragma once

#include "engine/core/VelaStatus.h"
#include "engine/query/VelaExpr.h"
#include "engine/sql/SQLSyntaxNode.h"
#include "runtime/SimpleVector.h"

namespace vela {

// What the names in an expression can refer to: the tables of a statement, in FROM order, and for
// each the name that qualifies its columns (the range variable, else the table's name). Both lists
// are equally long and borrowed.
using SQLNames = SimpleVector<SQLText>;
using SQLTables = SimpleVector<VelaTable*>;

// SQLScalarExpNode is an expression as written. It translates itself into the expression tree that
// computes it, children first.
//
// Trees are never deeper than kMaxHeight, so that what walks them may recurse.
class SQLScalarExpNode : public SQLSyntaxNode {
public:
    // The parser refuses expressions with more levels than this.
    static constexpr uint32_t kMaxHeight = 500;

    // The executable expression; null when a name is not known, which status then tells, or when the
    // node is malformed, which leaves status alone. status may be null.
    [[nodiscard]] virtual VelaExprPtr ConvertToVelaExpr(const SQLNames& names,
                                                        const SQLTables& tables,
                                                        VelaStatus* status) const = 0;
    // Sets value when the expression is a literal; then it is what the executable expression would give.
    virtual bool GetConstant(VelaValue* /*value*/) const { return false; }
    // As an item of a select list: appends its expressions, each with the name of its result column:
    // the alias, else the name of the column referred to, else the canonical text. False: as null
    // above; the list may then have grown.
    // The name and id of each column reference that is an item by itself are appended to columnNames
    // and columnIDs, when given.
    virtual bool ConvertToExprList(const SQLNames& names, const SQLTables& tables,
                                   SimpleVector<VelaExprPtr>* list, VelaStatus* status,
                                   SimpleVector<string>* columnNames = nullptr,
                                   SimpleVector<uint32_t>* columnIDs = nullptr) const;
    // Whether this is the word DEFAULT, which stands for a column's default where one is assigned.
    [[nodiscard]] virtual bool IsKeywordDefault() const { return false; }

    // The name that a select item gives to its column; empty when none.
    [[nodiscard]] SQLText Alias() const { return mAlias ? *mAlias : SQLText(); }
    // Null for none.
    void SetAlias(const SQLText* alias) { mAlias = alias; }
    // How many levels the tree has from here down; 1 for a leaf.
    [[nodiscard]] uint32_t Height() const { return mHeight; }

protected:
    ~SQLScalarExpNode() = default;
    // Raises the height for a child, which may be null.
    void GrowOver(const SQLScalarExpNode* child);

private:
    const SQLText* mAlias = nullptr;   // most have none
    uint32_t mHeight = 1;
};

}   // namespace vela
