#pragma once

#include "engine/sql/SQLScalarExpNode.h"

namespace vela {

// A word that stands for a column: "col", "T.col"; in a select list also "*" and "T.*". The words
// NULL and, where a value is assigned, DEFAULT arrive here too.
class SQLFieldRefNode : public SQLScalarExpNode {
public:
    explicit SQLFieldRefNode(const SQLText& name) : mName(name) {}

    // As written.
    [[nodiscard]] const SQLText& Name() const { return mName; }
    void Describe(string* text) const override { DescribeText(mName, text); }
    [[nodiscard]] bool IsKeywordDefault() const override;

    // NULL gives a null of no type. A qualifier is compared ignoring case, a column exactly; without
    // a qualifier the first table that has the column wins.
    [[nodiscard]] VelaExprPtr ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                                VelaStatus* status) const override;
    // The same; also appends the column's name and id to the lists that are given.
    [[nodiscard]] VelaExprPtr ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                                VelaStatus* status,
                                                SimpleVector<string>* columnNames,
                                                SimpleVector<uint32_t>* columnIDs) const;
    // "*" stands for all columns of all tables, "T.*" for those of T, _rowid included.
    bool ConvertToExprList(const SQLNames& names, const SQLTables& tables,
                           SimpleVector<VelaExprPtr>* list, VelaStatus* status,
                           SimpleVector<string>* columnNames = nullptr,
                           SimpleVector<uint32_t>* columnIDs = nullptr) const override;

private:
    SQLText mName;
};

}   // namespace vela
