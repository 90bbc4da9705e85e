#include "engine/sql/SQLFieldRefNode.h"

#include "engine/query/VExprConstant.h"
#include "engine/query/VExprField.h"
#include "engine/storage/VelaTable.h"

namespace vela {

namespace {

// The word taken apart at its first point.
struct SplitName {
    explicit SplitName(std::string_view name)
    {
        const size_t point = name.find('.');
        isQualified = point != std::string_view::npos;
        if (isQualified)
            qualifier = name.substr(0, point);
        column = isQualified ? name.substr(point + 1) : name;
    }

    bool isQualified;
    std::string_view qualifier;
    std::string_view column;
};

// The tables that a column of this name may be in: first up to, without, last.
struct TableRange {
    size_t first;
    size_t last;
};

bool FindTables(const SplitName& name, const SQLNames& names, const SQLTables& tables,
                TableRange* range, VelaStatus* status)
{
    *range = {0, tables.size()};
    if (!name.isQualified)
        return true;
    for (size_t i = 0; i < names.size(); i++) {
        if (!names[i].EqualsIgnoringCase(name.qualifier))
            continue;
        *range = {i, i + 1};
        return true;
    }
    const string qualifier(name.qualifier, kEncodingASCII);
    return Fail(status, kVETableNotFound, "Error: Table " + qualifier + " not found.");
}

// A column and what it is called.
struct FoundColumn {
    uint32_t table;
    uint32_t number;
    const VelaColumnInfo* info;
};

bool FindColumn(std::string_view column, const TableRange& range, const SQLTables& tables,
                FoundColumn* found)
{
    for (size_t t = range.first; t < range.last; t++) {
        const long number = tables[t]->FindColumnNamed(column);
        if (number < 0)
            continue;
        *found = {static_cast<uint32_t>(t), static_cast<uint32_t>(number),
                  tables[t]->Column(number)};
        return true;
    }
    return false;
}

VelaExprPtr MakeField(const FoundColumn& found, SimpleVector<string>* columnNames,
                      SimpleVector<uint32_t>* columnIDs)
{
    if (columnNames)
        columnNames->push_back(found.info->name);
    if (columnIDs)
        columnIDs->push_back(found.info->columnID);
    VelaExprPtr field = std::make_unique<VExprField>(found.table, found.number);
    field->SetName(found.info->name);
    return field;
}

}   // namespace

bool SQLFieldRefNode::IsKeywordDefault() const
{
    return mName.EqualsIgnoringCase("DEFAULT");
}

VelaExprPtr SQLFieldRefNode::ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                               VelaStatus* status) const
{
    return ConvertToVelaExpr(names, tables, status, nullptr, nullptr);
}

VelaExprPtr SQLFieldRefNode::ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                               VelaStatus* status,
                                               SimpleVector<string>* columnNames,
                                               SimpleVector<uint32_t>* columnIDs) const
{
    if (mName.EqualsIgnoringCase("NULL"))
        return std::make_unique<VExprConstant>(VelaValue::Null(kTypeNone));

    const SplitName name(mName.View());
    TableRange range;
    if (!FindTables(name, names, tables, &range, status))
        return nullptr;
    FoundColumn found;
    if (FindColumn(name.column, range, tables, &found))
        return MakeField(found, columnNames, columnIDs);
    (void)Fail(status, kVEColumnNotFound, "Error: Column " + mName.ToString() + " not found.");
    return nullptr;
}

bool SQLFieldRefNode::ConvertToExprList(const SQLNames& names, const SQLTables& tables,
                                        SimpleVector<VelaExprPtr>* list, VelaStatus* status,
                                        SimpleVector<string>* columnNames,
                                        SimpleVector<uint32_t>* columnIDs) const
{
    const SplitName name(mName.View());
    if (name.column != "*") {
        VelaExprPtr expr = ConvertToVelaExpr(names, tables, status, columnNames, columnIDs);
        if (!expr)
            return false;
        if (!Alias().empty() || expr->Name().empty())
            expr->SetName((Alias().empty() ? mName : Alias()).ToString());
        list->push_back(std::move(expr));
        return true;
    }

    TableRange range;
    if (!FindTables(name, names, tables, &range, status))
        return false;
    for (size_t t = range.first; t < range.last; t++) {
        for (long c = 0; c < tables[t]->QtyColumns(); c++) {
            const VelaColumnInfo* info = tables[t]->Column(c);
            const FoundColumn found{static_cast<uint32_t>(t), static_cast<uint32_t>(c), info};
            list->push_back(MakeField(found, columnNames, columnIDs));
        }
    }
    return true;
}

}   // namespace vela
