#include <gtest/gtest.h>

#include <limits>

#include "engine/query/VExprAndOr.h"
#include "engine/query/VExprCompare.h"
#include "engine/query/VExprConstant.h"
#include "engine/query/VExprMath.h"
#include "tests/query/ExprTesting.h"
#include "tests/query/RandomQuery.h"

// Queries over tables that are held by column, of more rows than any batch has: joins, groups and sorts of plain columns.

namespace vela::test {

namespace {

constexpr uint32_t kCases = 400;
// The columns of every table, after _rowid.
constexpr VelaDataType kColumns[] = {kTypeInteger, kTypeInteger, kTypeDouble,
                                     kTypeString,  kTypeDate,    kTypeBoolean};
constexpr uint32_t kColumnCount = 6;

// The keys that a column of Integers has: from the first one on, some apart, some alike.
struct KeyRange {
    int32_t first;
    uint32_t step;
    uint32_t count;
};
constexpr KeyRange kRanges[] = {
    {0, 1, 50},     {1, 1, 2000},        {-700, 1, 1400},           {0, 1, 3},
    {5, 0, 1},      {-7, 1000003, 4000}, {INT32_MIN, 4294967, 900}, {INT32_MAX - 90, 1, 91},
    {-40, 90, 100},
};
const double kDoubles[] = {0.0,
                           -0.0,
                           1.5,
                           -1.5,
                           2.0,
                           1e300,
                           -1e-300,
                           2147483648.0,
                           0.1,
                           0.2,
                           0.3,
                           1e16,
                           -7,
                           std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity()};

constexpr const char* kDates[] = {"2020-01-01", "1999-12-31", "2020-01-02", "0001-01-01",
                                  "2021-11-11"};

class ColumnQuery : public RandomQuery {
public:
    using RandomQuery::RandomQuery;

    void Make()
    {
        MakeLargeTables();
        const bool aggregate = Chance(45);
        const uint32_t outputs = 1 + Pick(3);
        for (uint32_t i = 0; i < outputs; i++)
            AddOutput(aggregate && (i == 0 || Chance(60)) ? Aggregate() : Field(), &pair);
        MakeWhere();
        if (aggregate && Chance(70))
            AddGrouping();
        pair.reference.distinct = Chance(12);
        pair.query.SetDistinct(pair.reference.distinct);
        if (Chance(70))
            pair.query.SetLeastSharedRows(Pick(3));
        if (Chance(60))
            AddSortKeys(&pair);
    }

    QueryPair pair;

private:
    void MakeLargeTables()
    {
        const uint32_t count = 1 + Pick(3);
        const uint32_t sizes[3][3] = {{2500, 0, 0}, {1600, 70, 0}, {300, 25, 8}};
        const uint32_t largest = Pick(count);
        mOneRange = Chance(70) ? Pick(std::size(kRanges)) : UINT32_MAX;
        for (uint32_t i = 0; i < count; i++) {
            auto table = std::make_unique<MemoryTable>("t");
            for (const VelaDataType type : kColumns)
                table->AddColumn("c", type);
            Fill(table.get(), Pick(sizes[count - 1][(i + count - largest) % count]));
            if (Chance(90))
                table->OfferColumns();
            pair.reference.tables.push_back(table.get());
            pair.query.AddTable(table.get());
            mTables.push_back(std::move(table));
        }
    }

    void Fill(MemoryTable* table, uint32_t rows)
    {
        KeyRange ranges[2];
        bool nulls[kColumnCount];
        for (KeyRange& range : ranges)
            range = kRanges[mOneRange != UINT32_MAX ? mOneRange : Pick(std::size(kRanges))];
        for (bool& has : nulls)
            has = Chance(8);
        mHasNaN = Chance(10);
        const uint32_t firstID = Pick(5);
        for (uint32_t i = 0; i < rows; i++) {
            std::vector<Cell> cells;
            for (uint32_t c = 0; c < kColumnCount; c++)
                cells.push_back(nulls[c] && Chance(10) ? Null(kColumns[c])
                                                       : ValueOf(kColumns[c], ranges[c % 2]));
            table->Row(firstID + i, std::move(cells));
        }
    }

    VelaValue ValueOf(VelaDataType type, const KeyRange& range)
    {
        switch (type) {
            case kTypeInteger:
                return I(static_cast<int32_t>(static_cast<uint32_t>(range.first) +
                                              range.step * Pick(range.count)));
            case kTypeDouble:
                return D(mHasNaN && Chance(5) ? std::numeric_limits<double>::quiet_NaN()
                                              : kDoubles[Pick(std::size(kDoubles))]);
            case kTypeBoolean:
                return B(Chance(50));
            case kTypeDate:
                return VelaValue::Text(type, kDates[Pick(std::size(kDates))]);
            default:
                return TextValue();
        }
    }

    // Alike in the first 8 or 16 bytes, or in all but their lengths, or not at all.
    VelaValue TextValue()
    {
        const char* const kBegins[] = {"", "abcdefgh", "abcdefghijklmnop", "b", "B"};
        std::string text = kBegins[Pick(5)];
        text.append(Pick(4), Chance(50) ? 'x' : '\0');
        if (Chance(60))
            text += std::to_string(Pick(40));
        return VelaValue::String(
            string(std::string_view(text), Chance(90) ? kEncodingUTF8 : kEncodingLatin1));
    }

    VelaExprPtr IntegerField(uint32_t table) { return ExprField(table, 1 + Pick(2)); }
    uint32_t TableCount() const { return static_cast<uint32_t>(mTables.size()); }

    void AddGrouping()
    {
        const uint32_t columns = Chance(70) ? 1 : 2;
        for (uint32_t i = 0; i < columns; i++) {
            AddGroupBy(Chance(60) ? IntegerField(Pick(TableCount())) : Field(), &pair);
        }
    }

    // Mostly ties each table to an earlier one, and filters some.
    void MakeWhere()
    {
        SimpleVector<VelaExprPtr> terms;
        for (uint32_t table = 1; table < TableCount(); table++) {
            if (Chance(92))
                terms.push_back(Tie(Pick(table), table));
            if (Chance(10))
                terms.push_back(Tie(Pick(table), table));
        }
        for (uint32_t table = 0; table < TableCount(); table++) {
            if (Chance(35))
                terms.push_back(Filter(table));
        }
        if (terms.empty())
            return;
        for (uint32_t i = 0; i < terms.size(); i++)
            std::swap(terms[i], terms[Pick(static_cast<uint32_t>(terms.size()))]);
        VelaExprPtr where = std::make_unique<VExprAnd>(std::move(terms));
        pair.reference.where = where.get();
        pair.query.SetWhere(std::move(where));
    }

    VelaExprPtr Tie(uint32_t a, uint32_t b)
    {
        VelaExprPtr left = Chance(90) ? IntegerField(a) : ExprField(a, 1 + Pick(kColumnCount));
        VelaExprPtr right = Chance(90) ? IntegerField(b) : ExprField(b, 1 + Pick(kColumnCount));
        if (Chance(8))
            left = std::make_unique<VExprMath>(std::move(left), '+',
                                               std::make_unique<VExprConstant>(I(1)));
        if (Chance(50))
            std::swap(left, right);
        const uint16_t op = Chance(93) ? kOpEqual : kOpLess;
        return std::make_unique<VExprCompare>(std::move(left), op, std::move(right));
    }

    VelaExprPtr Filter(uint32_t table)
    {
        const uint32_t column = 1 + Pick(kColumnCount);
        const KeyRange& range = kRanges[Pick(std::size(kRanges))];
        constexpr uint16_t kOps[] = {kOpEqual, kOpNotEqual, kOpLess, kOpGreaterEqual};
        return std::make_unique<VExprCompare>(
            ExprField(table, column), kOps[Pick(4)],
            std::make_unique<VExprConstant>(ValueOf(kColumns[column - 1], range)));
    }

    uint32_t mOneRange = 0;   // of all keys, so that tables join
    bool mHasNaN = false;
};

}   // namespace

TEST(VelaQueryColumns, LargeTablesByColumnAgreeWithTheDescribedEnumeration)
{
    ForEachSeed(kCases, [](uint32_t seed) {
        ColumnQuery query(seed);
        query.Make();
        ExpectAgreement(query.pair);
    });
}

}   // namespace vela::test
