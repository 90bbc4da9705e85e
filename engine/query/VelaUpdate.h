#pragma once

#include <memory>
#include <vector>

#include "engine/query/VelaExpr.h"
#include "engine/storage/VelaTable.h"

namespace vela {

// VelaUpdate is one UPDATE: it is filled with the statement's parts, then run. It owns its
// expressions; database (may be null) and table are borrowed.
class VelaUpdate {
public:
    VelaUpdate(VelaDatabase* database, VelaTable* table) : mDatabase(database), mTable(table) {}
    VelaUpdate(const VelaUpdate&) = delete;
    VelaUpdate& operator=(const VelaUpdate&) = delete;

    // A column to set. Without a value it is set to its default.
    void AddTarget(const VelaColumnInfo& column, VelaExprPtr value);
    // Expressions name the table by number 0. Without WHERE every row is updated.
    void SetWhere(VelaExprPtr where) { mWhere = std::move(where); }

    // Chooses all rows first, then writes them one by one, in the order in which a SELECT gives
    // them. A value that doesn't depend on the row is computed once, before the rows are chosen.
    // True: carried out, also when nothing was to be done; what UpdateRow answers is not looked at.
    // False: there is no table, or a row's value could not be computed: that row and those after it
    // are as they were, those before it are written. To be called once.
    [[nodiscard]] bool RunUpdate();

private:
    struct Target {
        VelaValueWithID value;   // what the row buffer holds
        VelaExprPtr expr;        // null: value is the column's default
    };

    // The targets whose value must be computed for each row.
    [[nodiscard]] std::vector<Target*> FillRowBuffer();
    void LoadColumns(const std::vector<Target*>& perRow);
    [[nodiscard]] SimpleVector<uint32_t> ChooseRows();
    [[nodiscard]] bool WriteRows(const SimpleVector<uint32_t>& rowIDs,
                                 const std::vector<Target*>& perRow);

    VelaDatabase* mDatabase;
    VelaTable* mTable;
    std::vector<Target> mTargets;
    VelaExprPtr mWhere;   // may be null
};

}   // namespace vela
