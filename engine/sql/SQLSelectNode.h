#pragma once

#include "engine/sql/SQLFieldRefNode.h"
#include "engine/sql/SQLSelectItemNode.h"
#include "engine/sql/SQLTableRefNode.h"

namespace vela {

// SELECT [DISTINCT] items [FROM tables] [WHERE condition] [GROUP BY columns] [HAVING condition]
// [ORDER BY columns [DESC]].
class SQLSelectNode : public SQLSyntaxNode {
public:
    struct SortKey {
        std::unique_ptr<SQLFieldRefNode> column;
        bool isDescending;
    };

    void Describe(string* text) const override;
    [[nodiscard]] bool IsSelect() const override { return true; }

    bool mDistinct = false;
    SimpleVector<std::unique_ptr<SQLSelectItemNode>> mItems;
    SimpleVector<std::unique_ptr<SQLTableRefNode>> mTables;   // empty without FROM
    SimpleVector<std::unique_ptr<SQLFieldRefNode>> mGroupBy;
    SQLScalarExpPtr mWhere;   // null when there is none
    SimpleVector<SortKey> mOrderBy;
    SQLScalarExpPtr mHaving;   // null when there is none

private:
    void DescribeOrderBy(string* text) const;
};

}   // namespace vela
