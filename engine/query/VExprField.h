#pragma once

#include "engine/query/VelaExpr.h"

namespace vela {

struct ColumnData;

// A column of the current row of one of the query's tables.
class VExprField : public VelaExpr {
public:
    // table counts in the query's table list, column among the table's columns; 0 is _rowid.
    VExprField(uint32_t table, uint32_t column);

    [[nodiscard]] uint32_t Table() const { return mTable; }
    [[nodiscard]] uint32_t ColumnNumber() const { return mColumn; }

    // The declared type; kTypeNone when the list has no such table or the table no such column.
    [[nodiscard]] VelaDataType GetType(const SimpleVector<VelaTable*>& tables) const override;
    // Without a current record set the first one of the group gives the row. UNKNOWN, result
    // untouched, when there is no row or the table can't give the value.
    bool Evaluate(const VelaEvalContext& context, VelaValue* result) const override;
    // The table as a letter from 'A' on, a full stop, the column number: "A.3".
    [[nodiscard]] string Description() const override;
    // Its table while that is unbound; single is true.
    long ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const override;
    void CollectTables(std::vector<bool>* tables) const override;

    // The column in its form in memory and the row number there, for reading the value without
    // making one. Null when it isn't held that way, or for what makes Evaluate UNKNOWN: ask that.
    [[nodiscard]] const ColumnData* ColumnInPlace(const VelaEvalContext& context,
                                                  uint32_t* row) const;
    // The whole column, its rows named as in context; null when it isn't in memory already, or not in a form of plain numbers
    // or texts.
    [[nodiscard]] const ColumnData* LoadedColumn(const VelaEvalContext& context) const;

private:
    // The row of the current record set; kInvalidRowID for none, or when the table isn't listed.
    [[nodiscard]] uint32_t CurrentRow(const VelaEvalContext& context) const;

    uint32_t mTable;
    uint32_t mColumn;
};

}   // namespace vela
