#pragma once

#include <memory>
#include <vector>

#include "engine/query/EqualityJoin.h"
#include "engine/query/QueryPlan.h"
#include "engine/query/QueryTrace.h"
#include "engine/query/RecSetList.h"
#include "engine/query/RowList.h"

namespace vela {

// What the loops of a running query share: the tables, how their rows are named, and the rows that
// are bound at the moment.
struct EnumerationState {
    const SimpleVector<VelaTable*>& tables;
    // What is evaluated on complete record sets.
    std::vector<const VelaExpr*> outputs;
    SimpleVector<TableColumns*> columns;
    std::vector<uint32_t> rows;
    VelaRecSet recSet;         // of rows
    VelaEvalContext context;   // of all these
    uint64_t considered = 0;

    [[nodiscard]] bool AllKeep(const std::vector<QueryTerm>& terms) const;
    // The columns of a table that the outputs read; worth loading where many rows stay.
    [[nodiscard]] std::vector<bool> OutputColumns(size_t table) const;
};

// LevelLoop is the loop over the rows of one table, inside the loops of earlier levels. It binds,
// one after another, the rows that the level's terms let through, in the level's direction.
//
// The first Open reads the table, once and for all: a few rows by row id or through an index when a
// term names them, else all, and applies the terms that refer to this table alone. Terms that tie a
// column to earlier tables by equality are then served by a hash table, or, where few rows of
// earlier tables meet a large table, by looking rows up each time. Where all rows of the earlier
// tables are listed before, Extend ties them to this table in one go.
class LevelLoop {
public:
    // All are borrowed. trace, which may be null, is told what is done.
    LevelLoop(const QueryLevel* level, EnumerationState* state, LevelTrace* trace)
        : mLevel(level), mState(state), mTrace(trace)
    {}

    // Goes before the first row for the rows bound now. outerCount: how many such there may be.
    void Open(uint64_t outerCount);
    // Binds the next row. False: there is none; the table is unbound again.
    [[nodiscard]] bool Next();
    // Passes over the rows that are left, when that takes no look at them: when no term ties them
    // to other tables. How many they are; 0 otherwise.
    [[nodiscard]] uint32_t SkipRest();
    // Binds the rows that are left, one after another, and appends each record set to the list; only where SkipRest would pass
    // over them.
    void CollectRest(RecSetList* list);
    // Instead of Open and Next: appends to the result, for each record set of outer in turn, those that it comes to with
    // rows of this table. The first one of outer is bound. False: there is no way to do so for all at once, or it would
    // give many more record sets than both sides have, and anyNumber is false; the result is as it was.
    [[nodiscard]] bool Extend(const RecSetList& outer, bool anyNumber, RecSetList* result);
    // How many rows there are at most, for each row of the earlier levels. After Open.
    [[nodiscard]] uint32_t Count() const { return mRows.Count(); }

private:
    // What Next goes through.
    enum class Way { kRows, kJoin };

    void Load(uint64_t outerCount);
    [[nodiscard]] bool ExtendByTerm(size_t index, const RecSetList& outer, size_t limit,
                                    RecSetList* result);
    void KeepRecSets(const std::vector<QueryTerm>& terms, RecSetList* list);
    [[nodiscard]] bool ReadKeys(const VelaExpr& expr, const RecSetList& outer,
                                LargeVector<int32_t>* keys) const;
    [[nodiscard]] bool LoadNamedRows();
    void LoadForJoin();
    void LoadAllRows();
    void FilterRows(TableColumns* columns);
    void KeepRows(const std::vector<QueryTerm>& terms);
    [[nodiscard]] bool Judge(const QueryTerm& term, uint32_t row);
    [[nodiscard]] bool IsWorthLookingUp(uint64_t outerCount) const;
    [[nodiscard]] bool LookUp();
    void ListRowIDs();
    [[nodiscard]] bool NextCandidate(uint32_t* row);
    [[nodiscard]] VelaTable* Table() const { return mState->tables[mLevel->table]; }
    [[nodiscard]] std::vector<ColumnEquality> Equalities() const;
    [[nodiscard]] std::vector<bool> TermColumns() const;
    // For the trace. The first use that NoteUse is told of a term is the one that counts.
    void NoteWay(LevelTrace::Way way, uint32_t keyColumn);
    void NoteUse(const VelaExpr* expr, TermUse use);
    void NoteJudged(const std::vector<QueryTerm>& terms);
    void NoteRest();

    const QueryLevel* mLevel;
    EnumerationState* mState;
    LevelTrace* mTrace;
    bool mIsLoaded = false;
    bool mLooksUp = false;   // mRows is found anew by each Open
    RowList mRows;           // that the level's own terms let through
    std::unique_ptr<EqualityJoin> mJoin;
    Way mWay = Way::kRows;
    uint32_t mPosition = 0;   // in mRows, counted in the level's direction
};

}   // namespace vela
