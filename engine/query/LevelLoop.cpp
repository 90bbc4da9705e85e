#include "engine/query/LevelLoop.h"

#include "engine/query/ColumnFilter.h"
#include "engine/query/IntegerJoin.h"
#include "engine/query/RowLookup.h"
#include "engine/query/VExprCompare.h"
#include "engine/storage/TableColumns.h"

namespace vela {

namespace {

// Rows that are looked up are read one by one: for more than this part of a table, reading it all
// is quicker.
constexpr uint32_t kFewRows = 64;
constexpr uint32_t kPartWorthLookingUp = 32;
// Record sets that are not complete are listed up to this number, and so many for each row on either side.
constexpr size_t kFewRecSets = 65536;
constexpr size_t kRecSetsPerRow = 4;

bool AreFew(uint64_t rows, size_t tableRows)
{
    return rows <= kFewRows + tableRows / kPartWorthLookingUp;
}

}   // namespace

bool EnumerationState::AllKeep(const std::vector<QueryTerm>& terms) const
{
    for (const QueryTerm& term : terms) {
        if (!term.Keeps(context))
            return false;
    }
    return true;
}

std::vector<bool> EnumerationState::OutputColumns(size_t table) const
{
    std::vector<bool> read(static_cast<size_t>(tables[table]->QtyColumns()));
    for (const VelaExpr* output : outputs)
        CollectColumns(*output, table, &read);
    return read;
}

void LevelLoop::Open(uint64_t outerCount)
{
    mPosition = 0;
    mWay = Way::kRows;
    if (!mIsLoaded) {
        Load(outerCount);
    } else if (mLooksUp && !LookUp())
        ListRowIDs();
    if (mJoin && mJoin->Probe(mState->context))
        mWay = Way::kJoin;
}

bool LevelLoop::Next()
{
    uint32_t& bound = mState->rows[mLevel->table];
    while (NextCandidate(&bound)) {
        mState->considered++;
        if (mState->AllKeep(mLevel->joinTerms))
            return true;
    }
    bound = kInvalidRowID;
    return false;
}

uint32_t LevelLoop::SkipRest()
{
    if (!mLevel->joinTerms.empty())
        return 0;
    const uint32_t skipped = mRows.Count() - mPosition;
    mPosition = mRows.Count();
    return skipped;
}

void LevelLoop::CollectRest(RecSetList* list)
{
    if (!mLevel->joinTerms.empty())
        return;
    const uint32_t all = mRows.Count();
    const uint32_t position = mPosition;
    const uint32_t rest = all - position;
    const uint32_t* rows = mState->rows.data();
    if (mLevel->reversed)
        list->AddRange(rows, mLevel->table, rest,
                       [&](uint32_t i) { return mRows.At(all - 1 - position - i); });
    else
        list->AddRange(rows, mLevel->table, rest,
                       [&](uint32_t i) { return mRows.At(position + i); });
    mState->considered += rest;
    mPosition = all;
}

bool LevelLoop::Extend(const RecSetList& outer, bool anyNumber, RecSetList* result)
{
    Load(outer.Count());
    if (mLevel->joinTerms.empty() && outer.Count() == 1) {
        mPosition = 0;
        CollectRest(result);
        return true;
    }
    const size_t both = outer.Count() + mRows.Count();
    const size_t limit = anyNumber ? SIZE_MAX : kFewRecSets + kRecSetsPerRow * both;
    for (size_t i = 0; !mLooksUp && i < mLevel->joinTerms.size(); i++) {
        if (ExtendByTerm(i, outer, limit, result))
            return true;
    }
    return false;
}

// By a term that says that a column equals something, all being Integers: then it needs no other judgement.
bool LevelLoop::ExtendByTerm(size_t index, const RecSetList& outer, size_t limit,
                             RecSetList* result)
{
    TableColumns* columns = mState->columns[mLevel->table];
    const auto equality = AsColumnEquality(*mLevel->joinTerms[index].expr, mLevel->table);
    if (!columns || !equality)
        return false;
    const ColumnData* column = columns->Load(static_cast<long>(equality->column));
    LargeVector<int32_t> keys;
    if (!column || !column->IsAllIntegers() || !ReadKeys(*equality->other, outer, &keys))
        return false;
    const IntegerJoin join(outer, keys, mLevel->table, *column, mRows, mLevel->reversed);
    if (!join.Append(limit, result))
        return false;
    mState->considered += result->Count();
    std::vector<QueryTerm> others = mLevel->joinTerms;
    others.erase(others.begin() + static_cast<std::ptrdiff_t>(index));
    KeepRecSets(others, result);
    NoteJudged(others);
    if (result->Count() >= columns->RowCount() / TableColumns::kPartWorthLoading)
        columns->Prepare(mState->OutputColumns(mLevel->table));
    return true;
}

void LevelLoop::KeepRecSets(const std::vector<QueryTerm>& terms, RecSetList* list)
{
    if (terms.empty())
        return;
    const VelaRecSet current = mState->recSet;
    list->Retain([&](const VelaRecSet& recSet) {
        mState->recSet = recSet;
        return mState->AllKeep(terms);
    });
    mState->recSet = current;
}

// The Integers that expr comes to for the record sets. False: not all of them are Integers.
bool LevelLoop::ReadKeys(const VelaExpr& expr, const RecSetList& outer,
                         LargeVector<int32_t>* keys) const
{
    keys->resize(outer.Count());
    const VExprField* field = AsField(&expr);
    const ColumnData* column = field ? field->LoadedColumn(mState->context) : nullptr;
    if (column && column->IsAllIntegers()) {
        const VelaRecSetGroup all = outer.Group(0, outer.Count());
        for (size_t i = 0; i < outer.Count(); i++)
            (*keys)[i] = column->integers[all.RowID(i, field->Table())];
        return true;
    }
    VelaEvalContext context = mState->context;
    VelaValue value;
    for (size_t i = 0; i < outer.Count(); i++) {
        const VelaRecSet recSet = outer.At(i);
        context.recSet = &recSet;
        if (!expr.Evaluate(context, &value) || value.GetType() != kTypeInteger || value.IsNull())
            return false;
        (*keys)[i] = value.GetInteger();
    }
    return true;
}

bool LevelLoop::NextCandidate(uint32_t* row)
{
    if (mWay == Way::kJoin)
        return mJoin->Next(row);
    if (mPosition == mRows.Count())
        return false;
    *row = mRows.At(mLevel->reversed ? mRows.Count() - 1 - mPosition : mPosition);
    mPosition++;
    return true;
}

void LevelLoop::Load(uint64_t outerCount)
{
    mIsLoaded = true;
    if (!LoadNamedRows()) {
        mLooksUp = IsWorthLookingUp(outerCount) && LookUp();
        if (!mLooksUp)
            LoadForJoin();
    }
    NoteRest();
}

void LevelLoop::LoadForJoin()
{
    NoteWay(LevelTrace::Way::kAllRows, 0);
    LoadAllRows();
    std::vector<ColumnEquality> equalities = Equalities();
    if (equalities.empty())
        return;
    for (const QueryTerm& term : mLevel->joinTerms) {
        if (AsColumnEquality(*term.expr, mLevel->table))
            NoteUse(term.expr, TermUse::kHash);
    }
    mJoin = std::make_unique<EqualityJoin>(Table(), mState->columns[mLevel->table], mRows,
                                           mLevel->reversed, std::move(equalities));
}

// The rows that an own term names by row id or by a key of an index. Then nothing else of the table
// is read.
bool LevelLoop::LoadNamedRows()
{
    for (const QueryTerm& term : mLevel->ownTerms) {
        const auto condition = AsColumnCondition(*term.expr, mState->context.database);
        if (!condition || condition->op != kOpEqual)
            continue;
        auto rows = LookUpRows(Table(), static_cast<long>(condition->column),
                               condition->columnIsLeft, condition->constant);
        if (!rows || !AreFew(rows->Count(), Table()->QtyRows()))
            continue;
        mRows = std::move(*rows);
        NoteWay(LevelTrace::Way::kNamedRows, condition->column);
        NoteUse(term.expr, TermUse::kNamesRows);
        KeepRows(mLevel->ownTerms);
        return true;
    }
    return false;
}

void LevelLoop::LoadAllRows()
{
    TableColumns* columns = Table()->Columns();
    mState->columns[mLevel->table] = columns;
    if (columns == nullptr) {
        ListRowIDs();
        return;
    }
    std::vector<bool> wanted = TermColumns();
    if (mLevel->ownTerms.empty() && mLevel->joinTerms.empty())
        wanted = mState->OutputColumns(mLevel->table);   // every row stays
    columns->Prepare(wanted);
    mRows = RowList::Range(columns->RowCount());
    FilterRows(columns);
    if (mRows.Count() >= columns->RowCount() / TableColumns::kPartWorthLoading &&
        mLevel->joinTerms.empty())
        columns->Prepare(mState->OutputColumns(mLevel->table));
}

// Terms that can go over a column as it lies in memory come first: they leave fewer rows to the
// others.
void LevelLoop::FilterRows(TableColumns* columns)
{
    std::vector<QueryTerm> others;
    for (const QueryTerm& term : mLevel->ownTerms) {
        const uint32_t before = mRows.Count();
        const RowJudge judge = [this, &term](uint32_t row) { return Judge(term, row); };
        if (FilterByColumn(term, mState->context.database, columns, judge, &mRows)) {
            mState->considered += before;
            NoteUse(term.expr, TermUse::kOverColumn);
        } else {
            others.push_back(term);
        }
    }
    KeepRows(others);
}

void LevelLoop::KeepRows(const std::vector<QueryTerm>& terms)
{
    if (terms.empty())
        return;
    mState->considered += mRows.Count();
    mRows.Retain([this, &terms](uint32_t row) {
        mState->rows[mLevel->table] = row;
        return mState->AllKeep(terms);
    });
    mState->rows[mLevel->table] = kInvalidRowID;
}

bool LevelLoop::Judge(const QueryTerm& term, uint32_t row)
{
    mState->rows[mLevel->table] = row;
    const bool keeps = term.Keeps(mState->context);
    mState->rows[mLevel->table] = kInvalidRowID;
    return keeps;
}

bool LevelLoop::IsWorthLookingUp(uint64_t outerCount) const
{
    return !mLevel->joinTerms.empty() && AreFew(outerCount, Table()->QtyRows());
}

// The rows that a join term names by row id or by a key of an index, for the rows bound now. False:
// none does.
bool LevelLoop::LookUp()
{
    for (const ColumnEquality& equality : Equalities()) {
        VelaValue value;
        if (!equality.other->Evaluate(mState->context, &value))
            continue;
        auto rows =
            LookUpRows(Table(), static_cast<long>(equality.column), equality.columnIsLeft, value);
        if (!rows)
            continue;
        mRows = std::move(*rows);
        NoteWay(LevelTrace::Way::kLookedUpEach, equality.column);
        KeepRows(mLevel->ownTerms);
        return true;
    }
    return false;
}

void LevelLoop::ListRowIDs()
{
    SimpleVector<uint32_t> rowIDs;
    Table()->GetRowIDs(&rowIDs);
    mRows = RowList(LargeVector<uint32_t>(rowIDs.begin(), rowIDs.end()));
    KeepRows(mLevel->ownTerms);
}

std::vector<ColumnEquality> LevelLoop::Equalities() const
{
    std::vector<ColumnEquality> equalities;
    for (const QueryTerm& term : mLevel->joinTerms) {
        if (const auto equality = AsColumnEquality(*term.expr, mLevel->table))
            equalities.push_back(*equality);
    }
    return equalities;
}

void LevelLoop::NoteWay(LevelTrace::Way way, uint32_t keyColumn)
{
    if (mTrace == nullptr)
        return;
    mTrace->way = way;
    mTrace->keyColumn = keyColumn;
}

void LevelLoop::NoteUse(const VelaExpr* expr, TermUse use)
{
    if (mTrace == nullptr)
        return;
    for (const TermTrace& term : mTrace->terms) {
        if (term.expr == expr)
            return;
    }
    mTrace->terms.push_back({expr, use});
}

// The terms were evaluated for each record set after all.
void LevelLoop::NoteJudged(const std::vector<QueryTerm>& terms)
{
    if (mTrace == nullptr)
        return;
    for (TermTrace& noted : mTrace->terms) {
        for (const QueryTerm& term : terms)
            noted.use = noted.expr == term.expr ? TermUse::kRowByRow : noted.use;
    }
}

// What no faster way was found for is evaluated row by row.
void LevelLoop::NoteRest()
{
    if (mTrace == nullptr)
        return;
    mTrace->rowsKept = mRows.Count();
    for (const QueryTerm& term : mLevel->ownTerms)
        NoteUse(term.expr, TermUse::kRowByRow);
    for (const QueryTerm& term : mLevel->joinTerms) {
        const auto equality = AsColumnEquality(*term.expr, mLevel->table);
        const bool names = mLooksUp && equality && equality->column == mTrace->keyColumn;
        NoteUse(term.expr, names ? TermUse::kNamesRows : TermUse::kRowByRow);
    }
}

// The columns of this table that the level's terms read.
std::vector<bool> LevelLoop::TermColumns() const
{
    std::vector<bool> columns(static_cast<size_t>(Table()->QtyColumns()));
    for (const QueryTerm& term : mLevel->ownTerms)
        CollectColumns(*term.expr, mLevel->table, &columns);
    for (const QueryTerm& term : mLevel->joinTerms)
        CollectColumns(*term.expr, mLevel->table, &columns);
    return columns;
}

}   // namespace vela
