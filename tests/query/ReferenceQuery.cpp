#include "tests/query/ReferenceQuery.h"

#include <algorithm>
#include <cstring>

namespace vela::test {

namespace {

using Rows = std::vector<uint32_t>;

class Run {
public:
    explicit Run(const ReferenceQuery& query) : mQuery(query) {}

    std::vector<ReferenceRow> Result()
    {
        for (const VelaExpr* output : mQuery.outputs)
            mIsAggregate = mIsAggregate || output->HasAggregate();
        mStack.push_back(Rows(mQuery.tables.size(), kInvalidRowID));
        while (!mStack.empty()) {
            const Rows rows = mStack.back();
            mStack.pop_back();
            Expand(rows);
        }
        if (mIsAggregate)
            EvalAggregates();
        Sort();
        return mResult;
    }

private:
    static bool IsComplete(const Rows& rows)
    {
        return std::find(rows.begin(), rows.end(), kInvalidRowID) == rows.end();
    }

    VelaEvalContext Context(const VelaRecSet* recSet, const VelaRecSetGroup* group) const
    {
        VelaEvalContext context;
        context.recSet = recSet;
        context.group = group;
        context.tables = &mQuery.tables;
        return context;
    }

    bool EvaluateOn(const VelaExpr& expr, const Rows& rows, VelaValue* value) const
    {
        const VelaRecSet recSet(rows.data());
        return expr.Evaluate(Context(&recSet, nullptr), value);
    }

    void Expand(const Rows& rows)
    {
        if (IsComplete(rows)) {
            Consider(rows);
            return;
        }
        bool single = true;
        long table = -1;
        if (mQuery.where) {
            table = mQuery.where->ChooseWildcardTable(VelaRecSet(rows.data()), &single);
            if (table < 0)
                single = false;
        }
        if (table < 0)
            table = std::find(rows.begin(), rows.end(), kInvalidRowID) - rows.begin();
        SimpleVector<uint32_t> rowIDs;
        mQuery.tables[static_cast<size_t>(table)]->GetRowIDs(&rowIDs);
        for (const uint32_t rowID : rowIDs) {
            Rows copy = rows;
            copy[static_cast<size_t>(table)] = rowID;
            if (single && IsComplete(copy)) {
                Consider(copy);
                continue;
            }
            if (single && mQuery.where) {
                VelaValue value;
                if (EvaluateOn(*mQuery.where, copy, &value) && value.GetInteger() == 0)
                    continue;
            }
            mStack.push_back(copy);
        }
    }

    void Consider(const Rows& rows)
    {
        if (mQuery.where) {
            VelaValue value;
            EvaluateOn(*mQuery.where, rows, &value);
            if (value.GetInteger() == 0)
                return;
        }
        if (mIsAggregate) {
            mList.push_back(rows);
            return;
        }
        ReferenceRow row;
        row.hasSource = true;
        row.source = rows;
        const VelaRecSet recSet(rows.data());
        AddRow(row, Context(&recSet, nullptr), mQuery.distinct);
    }

    void AddRow(ReferenceRow row, const VelaEvalContext& context, bool distinct)
    {
        for (const VelaExpr* output : mQuery.outputs) {
            VelaValue value;
            output->Evaluate(context, &value);
            row.values.push_back(value);
        }
        for (size_t i = mResult.size(); distinct && i > 0; i--) {
            if (EqualsInEveryColumn(row, mResult[i - 1]))
                return;
        }
        mResult.push_back(row);
    }

    static bool EqualsInEveryColumn(const ReferenceRow& row, const ReferenceRow& other)
    {
        for (size_t i = 0; i < row.values.size(); i++) {
            if (!row.values[i].Equals(other.values[i]))
                return false;
        }
        return true;
    }

    void EvalAggregates()
    {
        if (mQuery.groupBy.empty()) {
            AddGroup(0, mList.size(), false);
            return;
        }
        const std::vector<size_t> starts = SortIntoGroups();
        for (size_t i = 0; i < starts.size(); i++)
            AddGroup(starts[i], i + 1 < starts.size() ? starts[i + 1] : mList.size(), true);
    }

    void AddGroup(size_t start, size_t end, bool grouped)
    {
        std::vector<uint32_t> flat;
        for (size_t i = start; i < end; i++)
            flat.insert(flat.end(), mList[i].begin(), mList[i].end());
        const VelaRecSetGroup group(flat.data(), end - start, mQuery.tables.size());
        const VelaEvalContext context = Context(nullptr, &group);
        if (grouped && mQuery.having) {
            VelaValue value;
            mQuery.having->Evaluate(context, &value);
            if (value.GetInteger() == 0)
                return;
        }
        AddRow(ReferenceRow(), context, grouped && mQuery.distinct);
    }

    std::string KeyOf(const Rows& rows) const
    {
        std::string key;
        for (const VelaExpr* column : mQuery.groupBy) {
            VelaValue value;
            EvaluateOn(*column, rows, &value);
            if (value.GetType() == kTypeInteger) {
                const int32_t number = value.GetInteger();
                char bytes[4];
                std::memcpy(bytes, &number, 4);
                key.append(bytes, 4);
            } else {
                key.append(value.GetString().View());
            }
        }
        return key;
    }

    std::vector<size_t> SortIntoGroups()
    {
        std::vector<std::pair<std::string, Rows>> pairs;
        for (const Rows& rows : mList)
            pairs.emplace_back(KeyOf(rows), rows);
        std::stable_sort(pairs.begin(), pairs.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        std::vector<size_t> starts;
        for (size_t i = 0; i < pairs.size(); i++) {
            mList[i] = pairs[i].second;
            if (i == 0 || pairs[i].first != pairs[i - 1].first)
                starts.push_back(i);
        }
        return starts;
    }

    int Compare(const ReferenceRow& a, const ReferenceRow& b) const
    {
        for (size_t k = 0; k < mQuery.sortColumns.size(); k++) {
            const auto column = static_cast<size_t>(mQuery.sortColumns[k]);
            const int order = CompareValues(a.values[column], b.values[column]);
            const int direction = static_cast<int>(mQuery.sortDirections[k]);
            if (order != 0)
                return order < 0 ? -direction : direction;
        }
        return 0;
    }

    static int CompareValues(const VelaValue& a, const VelaValue& b)
    {
        if (a.GetType() == kTypeInteger)
            return a.GetInteger() < b.GetInteger() ? -1 : (a.GetInteger() > b.GetInteger() ? 1 : 0);
        if (a.GetType() == kTypeDouble)
            return a.GetDouble() < b.GetDouble() ? -1 : (a.GetDouble() > b.GetDouble() ? 1 : 0);
        return a.GetString().CompareWithCase(b.GetString());
    }

    void Sort()
    {
        for (size_t i = 1; i < mResult.size(); i++) {
            for (size_t j = i; j > 0 && Compare(mResult[j - 1], mResult[j]) > 0; j--)
                std::swap(mResult[j - 1], mResult[j]);
        }
    }

    const ReferenceQuery& mQuery;
    bool mIsAggregate = false;
    std::vector<Rows> mStack;
    std::vector<Rows> mList;
    std::vector<ReferenceRow> mResult;
};

}   // namespace

std::vector<ReferenceRow> RunReference(const ReferenceQuery& query)
{
    return Run(query).Result();
}

}   // namespace vela::test
