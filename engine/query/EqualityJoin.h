#pragma once

#include <vector>

#include "engine/query/CompareClass.h"
#include "engine/query/ExprShape.h"
#include "engine/query/HashChains.h"
#include "engine/query/RowList.h"

namespace vela {

// EqualityJoin finds, for the current rows of other tables, which rows of one table are worth
// asking about terms of the form "column = expression of the other tables", by hash tables over the
// columns.
//
// It gives every row for which all these terms could let the row through (those whose column can't
// be read or has a value of another type than the column's among them), and few others; whoever
// asks evaluates the terms on each. A hash table is built for each combination of types that are
// compared; usually that is one. 24 bytes a row each.
class EqualityJoin {
public:
    // rows: of the table, by row number in columns, or by row id when that is null. All is
    // borrowed.
    EqualityJoin(VelaTable* table, TableColumns* columns, const RowList& rows, bool reversed,
                 std::vector<ColumnEquality> equalities);

    // Goes before the first candidate for the rows that the context has for the other tables.
    // False: a term's other side is UNKNOWN, or types vary too much; every row is a candidate.
    [[nodiscard]] bool Probe(const VelaEvalContext& context);
    // The next candidate, in the direction of the join. False: there is none.
    [[nodiscard]] bool Next(uint32_t* row);

private:
    using Classes = std::vector<CompareClass>;   // per equality

    struct Index {
        Classes classes;
        HashChains chains;                  // entry i is row RowOfEntry(i)
        std::vector<uint32_t> unreadable;   // entries that any key could match, the last one first
    };

    [[nodiscard]] CompareClass ClassFor(const ColumnEquality& equality, VelaDataType type) const;
    [[nodiscard]] const Index* FindOrBuild(const Classes& classes);
    void Build(Index* index) const;
    void AddHashes(const ColumnEquality& equality, CompareClass compareClass,
                   std::vector<uint64_t>* hashes, std::vector<bool>* unreadable) const;
    // A chain gives the entry added last first; so rows are added in the opposite direction.
    [[nodiscard]] uint32_t RowOfEntry(uint32_t entry) const
    {
        return mRows.At(mReversed ? entry : mRows.Count() - 1 - entry);
    }

    VelaTable* mTable;
    TableColumns* mColumns;
    const RowList& mRows;
    bool mReversed;
    std::vector<ColumnEquality> mEqualities;
    std::vector<Index> mIndexes;

    // Where the current probe stands.
    const Index* mIndex = nullptr;
    uint32_t mEntry = HashChains::kNone;
    size_t mUnreadablePosition = 0;
};

}   // namespace vela
