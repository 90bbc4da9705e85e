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
        SQLFieldRefNode* column;
        bool isDescending;
    };

    void Describe(string* text) const override;
    [[nodiscard]] bool IsSelect() const override { return true; }

    bool mDistinct = false;
    ArenaList<SQLSelectItemNode*> mItems;
    ArenaList<SQLTableRefNode*> mTables;   // empty without FROM
    ArenaList<SQLFieldRefNode*> mGroupBy;
    SQLScalarExpNode* mWhere = nullptr;   // null when there is none
    ArenaList<SortKey> mOrderBy;
    SQLScalarExpNode* mHaving = nullptr;   // null when there is none

private:
    void DescribeOrderBy(string* text) const;
};

}   // namespace vela
