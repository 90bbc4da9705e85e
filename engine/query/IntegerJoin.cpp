#include "engine/query/IntegerJoin.h"

#include <array>
#include <utility>

namespace vela {

namespace {

// Rows that are looked up before the first of them is looked at: their misses in the cache overlap.
constexpr uint32_t kBatch = 1024;

}   // namespace

bool IntegerJoin::Append(size_t limit, RecSetList* result) const
{
    return mRows.Count() <= mOuter.Count() ? AppendByRows(limit, result)
                                           : AppendByKeys(limit, result);
}

// A table over the rows' keys: the record sets are gone through in order.
bool IntegerJoin::AppendByRows(size_t limit, RecSetList* result) const
{
    LargeVector<int32_t> rowKeys(mRows.Count());
    for (uint32_t i = 0; i < mRows.Count(); i++)
        rowKeys[i] = mColumn.integers[mRows.At(i)];
    IntegerChains chains;
    chains.Build(rowKeys, !mReversed, mOuter.Count());
    const size_t before = result->Count();
    result->Reserve(before + mOuter.Count());
    bool fits = true;
    chains.WithFirst([&](const auto& first) {
        for (uint32_t outer = 0; fits && outer < mOuter.Count(); outer++) {
            for (uint32_t i = first(mKeys[outer]); i != IntegerChains::kNone; i = chains.Next(i))
                Place(outer, mRows.At(i), result->Extend(1));
            fits = result->Count() - before <= limit;
        }
    });
    if (!fits)
        result->Shorten(before);
    return fits;
}

// A table over the keys of the record sets: the rows are gone through once, and what they match is then brought into the
// order of the record sets. The rows of each stay in the order in which they were found.
bool IntegerJoin::AppendByKeys(size_t limit, RecSetList* result) const
{
    LargeVector<Match> matches;
    if (!FindMatches(limit, &matches))
        return false;
    LargeVector<size_t> next(mOuter.Count(), 0);   // where a record set's next match goes
    for (const Match& match : matches)
        next[match.outer]++;
    size_t start = 0;
    for (size_t& position : next)
        start += std::exchange(position, start);
    uint32_t* places = result->Extend(matches.size());
    for (const Match& match : matches)
        Place(match.outer, match.row, places + next[match.outer]++ * result->TableCount());
    return true;
}

bool IntegerJoin::FindMatches(size_t limit, LargeVector<Match>* matches) const
{
    IntegerChains chains;
    chains.Build(mKeys, true, mRows.Count());
    std::array<Match, kBatch> found;
    bool fits = true;
    chains.WithFirst([&](const auto& first) {
        for (uint32_t begin = 0; fits && begin < mRows.Count(); begin += kBatch) {
            const uint32_t end = std::min(mRows.Count() - begin, kBatch) + begin;
            const size_t count = FindCandidates(first, begin, end, found.data());
            for (size_t i = 0; fits && i < count; i++) {
                for (Match match = found[i]; match.outer != IntegerChains::kNone;
                     match.outer = chains.Next(match.outer))
                    matches->push_back(match);
                fits = matches->size() <= limit;
            }
        }
    });
    return fits;
}

// The rows that match at all, each with the first record set that it matches. Written so that an unpredictable answer does
// not cost a branch.
template <class First>
size_t IntegerJoin::FindCandidates(const First& first, uint32_t begin, uint32_t end,
                                   Match* found) const
{
    size_t count = 0;
    for (uint32_t i = begin; i < end; i++) {
        const uint32_t row = RowAt(i);
        const uint32_t outer = first(mColumn.integers[row]);
        found[count] = {outer, row};
        count += outer != IntegerChains::kNone ? 1 : 0;
    }
    return count;
}

void IntegerJoin::Place(uint32_t outer, uint32_t row, uint32_t* place) const
{
    const uint32_t* rows = mOuter.At(outer).Rows();
    std::copy(rows, rows + mOuter.TableCount(), place);
    place[mTable] = row;
}

}   // namespace vela
