#include "engine/query/VelaQuery.h"

#include <gtest/gtest.h>

#include "engine/query/VExprAggregate.h"
#include "engine/query/VExprAndOr.h"
#include "engine/query/VExprCompare.h"
#include "engine/query/VExprCompareLike.h"
#include "engine/query/VExprMath.h"
#include "engine/query/VExprNot.h"
#include "tests/query/ExprTesting.h"
#include "tests/query/MemoryTable.h"

namespace vela {

namespace {

using test::MemoryTable;

VelaExprPtr Compare(VelaExprPtr left, uint16_t op, VelaExprPtr right)
{
    return std::make_unique<VExprCompare>(std::move(left), op, std::move(right));
}

VelaExprPtr Equal(VelaExprPtr left, VelaExprPtr right)
{
    return Compare(std::move(left), kOpEqual, std::move(right));
}

template <class... Terms>
VelaExprPtr And(Terms... terms)
{
    return std::make_unique<VExprAnd>(List(std::move(terms)...));
}

VelaExprPtr Aggregate(VelaFuncCode func, VelaExprPtr operand)
{
    return std::make_unique<VExprAggregate>(func, std::move(operand), false);
}

VelaExprPtr CountAll()
{
    return Aggregate(kFuncCount, nullptr);
}

// Rows in parentheses: the values, and behind "<" the row ids that they come from.
std::string ShownRows(const VelaTempTable& table, size_t sourceTables)
{
    std::string text;
    for (size_t row = 0; row < table.RowCount(); row++) {
        text += row > 0 ? " (" : "(";
        for (size_t column = 0; column < table.RowWidth(row); column++) {
            const string shown = table.RowValues(row)[column].GetSaveString();
            text += (column > 0 ? " " : "") + std::string(shown.View());
        }
        const auto source = table.GetSourceRecSet(static_cast<long>(row));
        for (size_t i = 0; source && i < sourceTables; i++)
            text += (i == 0 ? " < " : " ") + std::to_string(source->RowID(i));
        text += ")";
    }
    return text;
}

// A query under test, filled piece by piece.
class Select {
public:
    explicit Select(std::vector<MemoryTable*> tables)
    {
        for (MemoryTable* table : tables)
            query.AddTable(table);
    }
    Select& Output(VelaExprPtr expr)
    {
        query.AddOutput(std::move(expr));
        return *this;
    }
    Select& Where(VelaExprPtr expr)
    {
        query.SetWhere(std::move(expr));
        return *this;
    }
    Select& GroupBy(VelaExprPtr expr)
    {
        query.AddGroupBy(std::move(expr));
        return *this;
    }
    Select& Having(VelaExprPtr expr)
    {
        query.SetHaving(std::move(expr));
        return *this;
    }
    Select& OrderBy(long column, long direction)
    {
        query.AddSortKey(column, direction);
        return *this;
    }
    Select& Distinct()
    {
        query.SetDistinct(true);
        return *this;
    }
    std::string Rows() { return ShownRows(*query.RunQuery(), query.Tables().size()); }

    VelaQuery query{nullptr};
};

// Rows 3, 1, 2 with the values 30, 10, 20 times factor.
void FillThree(MemoryTable* table, int factor)
{
    table->AddColumn("v", kTypeInteger);
    for (const uint32_t rowID : {3u, 1u, 2u})
        table->Row(rowID, {VelaValue::Integer(static_cast<int32_t>(rowID) * 10 * factor)});
}

// count rows, 1 to count, with the column 1 counting along.
void FillMany(MemoryTable* table, uint32_t count)
{
    table->AddColumn("v", kTypeInteger);
    for (uint32_t rowID = 1; rowID <= count; rowID++)
        table->Row(rowID, {VelaValue::Integer(static_cast<int32_t>(rowID))});
}

class VelaQueryTest : public testing::TestWithParam<bool> {
protected:
    void SetUp() override
    {
        FillThree(&a, 1);
        FillThree(&b, 10);
        if (GetParam()) {
            a.OfferColumns();
            b.OfferColumns();
        }
    }

    MemoryTable a{"a"};
    MemoryTable b{"b"};
};

}   // namespace

INSTANTIATE_TEST_SUITE_P(RowsAndColumns, VelaQueryTest, testing::Bool(),
                         [](const auto& kind) { return kind.param ? "columns" : "rows"; });

TEST_P(VelaQueryTest, OneTableComesInRowIDOrder)
{
    EXPECT_EQ("(30 < 3) (10 < 1) (20 < 2)", Select({&a}).Output(ExprField(0, 1)).Rows());
}

TEST_P(VelaQueryTest, OneTableWithWhereComesInRowIDOrder)
{
    const auto rows = [this](VelaExprPtr where) {
        return Select({&a}).Output(ExprField(0, 0)).Where(std::move(where)).Rows();
    };
    EXPECT_EQ("(3 < 3) (2 < 2)", rows(Compare(ExprField(0, 1), kOpGreater, Expr(10))));
    EXPECT_EQ("(3 < 3) (2 < 2)", rows(And(Compare(ExprField(0, 1), kOpGreater, Expr(10)))));
}

// A WHERE that names no unbound table doesn't decide on one: then the rows are pushed, and come off
// the stack in reverse.
TEST_P(VelaQueryTest, WhereWithoutTablesReversesTheRows)
{
    const auto rows = [this](VelaExprPtr where) {
        return Select({&a}).Output(ExprField(0, 0)).Where(std::move(where)).Rows();
    };
    EXPECT_EQ("(2 < 2) (1 < 1) (3 < 3)", rows(Expr(1)));
    EXPECT_EQ("(2 < 2) (1 < 1) (3 < 3)", rows(And())) << "an empty AND is TRUE";
    EXPECT_EQ("", rows(Expr(0)));
    EXPECT_EQ("", rows(ExprNull()));
    EXPECT_EQ("", rows(Unknown()));
    EXPECT_EQ("(2 < 2) (1 < 1) (3 < 3)", rows(UnknownLeaving(VelaValue::Integer(7))));
}

TEST_P(VelaQueryTest, TwoTablesGoThroughTheFirstInReverse)
{
    EXPECT_EQ(
        "(2 3 < 2 3) (2 1 < 2 1) (2 2 < 2 2) (1 3 < 1 3) (1 1 < 1 1) (1 2 < 1 2) (3 3 < 3 3) "
        "(3 1 < 3 1) (3 2 < 3 2)",
        Select({&a, &b}).Output(ExprField(0, 0)).Output(ExprField(1, 0)).Rows());
}

// The first table that the WHERE names comes first, whatever its place in the FROM.
TEST_P(VelaQueryTest, WhereDecidesWhichTableComesFirst)
{
    const auto rows = [this](VelaExprPtr where) {
        return Select({&a, &b}).Output(ExprField(0, 0)).Where(std::move(where)).Rows();
    };
    // b outside (in reverse), a inside: its rows in order.
    EXPECT_EQ("(3 < 3 2) (2 < 2 2) (3 < 3 1) (2 < 2 1) (3 < 3 3) (2 < 2 3)",
              rows(And(Compare(ExprField(1, 1), kOpGreater, Expr(0)),
                       Compare(ExprField(0, 1), kOpGreater, Expr(10)))));
    // a outside; b, of which the WHERE says nothing, inside and in reverse.
    EXPECT_EQ("(2 < 2 2) (2 < 2 1) (2 < 2 3) (3 < 3 2) (3 < 3 1) (3 < 3 3)",
              rows(Compare(ExprField(0, 1), kOpGreater, Expr(10))));
}

TEST_P(VelaQueryTest, EqualityJoinComesInTheSameOrder)
{
    const auto sum = [](int number) {
        return std::make_unique<VExprMath>(ExprField(0, 1), '*', Expr(number));
    };
    EXPECT_EQ(
        "(2 < 2 2) (1 < 1 1) (3 < 3 3)",
        Select({&a, &b}).Output(ExprField(0, 0)).Where(Equal(sum(10), ExprField(1, 1))).Rows());
    EXPECT_EQ(
        "", Select({&a, &b}).Output(ExprField(0, 0)).Where(Equal(sum(11), ExprField(1, 1))).Rows());
}

TEST_P(VelaQueryTest, SameTableTwiceIsTwoTables)
{
    EXPECT_EQ("(30 20 < 3 2) (20 10 < 2 1)",
              Select({&a, &a})
                  .Output(ExprField(0, 1))
                  .Output(ExprField(1, 1))
                  .Where(Equal(ExprField(0, 1),
                               std::make_unique<VExprMath>(ExprField(1, 1), '+', Expr(10))))
                  .OrderBy(0, -1)
                  .Rows());
}

TEST_P(VelaQueryTest, AggregateQueryWithoutGroupsGivesOneRow)
{
    const auto none = [] { return Compare(ExprField(0, 1), kOpGreater, Expr(99)); };
    EXPECT_EQ("(3 60)",
              Select({&a}).Output(CountAll()).Output(Aggregate(kFuncSum, ExprField(0, 1))).Rows());
    EXPECT_EQ("(0 NULL NULL)", Select({&a})
                                   .Output(CountAll())
                                   .Output(Aggregate(kFuncSum, ExprField(0, 1)))
                                   .Output(ExprField(0, 1))
                                   .Where(none())
                                   .Rows())
        << "also of no rows";
    EXPECT_EQ("(0 0)", Select({&a}).Output(CountAll()).Output(CountAll()).Where(none()).Rows());
    EXPECT_EQ("(3 30)", Select({&a}).Output(CountAll()).Output(ExprField(0, 1)).Rows())
        << "the first record set stands for the group";
    EXPECT_EQ("(9)", Select({&a, &b}).Output(CountAll()).Rows());
    EXPECT_EQ("(3)", Select({&a})
                         .Output(CountAll())
                         .Having(Compare(CountAll(), kOpGreater, Expr(5)))
                         .Distinct()
                         .Rows())
        << "HAVING takes a GROUP BY";
}

TEST_P(VelaQueryTest, GroupsComeInKeyOrder)
{
    a.Row(9, {VelaValue::Integer(10)});
    a.Row(4, {VelaValue::Integer(30)});
    const auto grouped = [this] { return std::make_unique<Select>(std::vector<MemoryTable*>{&a}); };
    EXPECT_EQ(
        "(10 2) (20 1) (30 2)",
        grouped()->Output(ExprField(0, 1)).Output(CountAll()).GroupBy(ExprField(0, 1)).Rows());
    EXPECT_EQ("(1) (3)", grouped()
                             ->Output(Aggregate(kFuncMin, ExprField(0, 0)))
                             .GroupBy(ExprField(0, 1))
                             .Having(Compare(CountAll(), kOpGreater, Expr(1)))
                             .Rows());
    EXPECT_EQ("(2) (1)", grouped()->Output(CountAll()).GroupBy(ExprField(0, 1)).Distinct().Rows());
    EXPECT_EQ("", grouped()->Output(CountAll()).GroupBy(ExprField(0, 1)).Where(Expr(0)).Rows())
        << "no rows, no groups";
    EXPECT_EQ("(2) (1) (2)", grouped()
                                 ->Output(CountAll())
                                 .GroupBy(ExprField(0, 1))
                                 .Having(UnknownLeaving(VelaValue::Integer(1)))
                                 .Rows())
        << "HAVING is judged by what it leaves";
}

TEST_P(VelaQueryTest, GroupByWithoutAggregateIsNotLookedAt)
{
    EXPECT_EQ("(30 < 3) (10 < 1) (20 < 2)",
              Select({&a}).Output(ExprField(0, 1)).GroupBy(Expr(1)).Having(Expr(0)).Rows());
}

TEST_P(VelaQueryTest, DistinctKeepsTheFirstOfEqualRows)
{
    a.Row(9, {VelaValue::Integer(10)});
    EXPECT_EQ("(30 < 3) (10 < 1) (20 < 2)", Select({&a}).Output(ExprField(0, 1)).Distinct().Rows());
    EXPECT_EQ("(10 < 1) (20 < 2) (30 < 3)",
              Select({&a}).Output(ExprField(0, 1)).Distinct().OrderBy(0, 1).Rows());
}

TEST_P(VelaQueryTest, OrderBySortsTheResult)
{
    EXPECT_EQ("(30 < 3) (20 < 2) (10 < 1)",
              Select({&a}).Output(ExprField(0, 1)).OrderBy(0, -1).Rows());
    EXPECT_EQ("(3) (2) (1)", Select({&a})
                                 .Output(Aggregate(kFuncMax, ExprField(0, 0)))
                                 .GroupBy(ExprField(0, 1))
                                 .OrderBy(0, -1)
                                 .Rows());
}

TEST(VelaQuery, UnknownTermOfAConjunctionKeepsTheRow)
{
    MemoryTable table("t");
    table.AddColumn("a", kTypeInteger).AddColumn("b", kTypeInteger);
    const auto i = [](int32_t number) { return VelaValue::Integer(number); };
    table.Row(1, {i(5), std::nullopt});   // b can't be read: UNKNOWN
    table.Row(2, {i(5), i(5)});
    table.Row(3, {i(0), std::nullopt});
    table.Row(4, {i(5), i(6)});
    const auto rows = [&table](VelaExprPtr where) {
        return Select({&table}).Output(ExprField(0, 0)).Where(std::move(where)).Rows();
    };
    const auto isTrue = [] { return Equal(ExprField(0, 1), Expr(5)); };
    const auto unknown = [] { return Equal(ExprField(0, 2), Expr(5)); };
    const auto leavesLeft = [] { return Equal(ExprField(0, 1), ExprField(0, 2)); };
    EXPECT_EQ("(1 < 1) (2 < 2)", rows(And(isTrue(), unknown())));
    EXPECT_EQ("(1 < 1) (2 < 2) (3 < 3)", rows(And(unknown())));
    EXPECT_EQ("(2 < 2)", rows(unknown())) << "alone it leaves nothing";
    EXPECT_EQ("(1 < 1) (2 < 2)", rows(leavesLeft()))
        << "an UNKNOWN comparison leaves its left side, here 5 or 0";
    EXPECT_EQ("(1 < 1) (2 < 2) (3 < 3)", rows(And(leavesLeft())));
    EXPECT_EQ("(2 < 2)", rows(std::make_unique<VExprOr>(List(Expr(0), unknown()))))
        << "FALSE OR UNKNOWN leaves 0";
    EXPECT_EQ("(1 < 1) (2 < 2) (3 < 3)", rows(And(And(unknown())))) << "nested";
    EXPECT_EQ("(4 < 4)", rows(std::make_unique<VExprNot>(unknown())));
}

TEST(VelaQuery, WithoutFromThereIsOneEmptyRecordSet)
{
    EXPECT_EQ("(1 x)", Select({}).Output(Expr(1)).Output(Expr("x")).Rows());
    EXPECT_EQ("(1)", Select({}).Output(Expr(1)).Where(Expr(2)).Rows());
    EXPECT_EQ("", Select({}).Output(Expr(1)).Where(Expr(0)).Rows());
    EXPECT_EQ("(1)", Select({}).Output(CountAll()).Rows());
    EXPECT_EQ("(0)", Select({}).Output(CountAll()).Where(Expr(0)).Rows());
    EXPECT_EQ(
        "(1 4)",
        Select({}).Output(CountAll()).Output(Aggregate(kFuncSum, Expr(4))).GroupBy(Expr(1)).Rows());
}

TEST(VelaQuery, EmptyTableInAJoinGivesNothing)
{
    MemoryTable a("a");
    MemoryTable empty("b");
    FillThree(&a, 1);
    empty.AddColumn("v", kTypeInteger);
    EXPECT_EQ("", Select({&a, &empty}).Output(ExprField(0, 1)).Rows());
    EXPECT_EQ("", Select({&empty, &a}).Output(ExprField(0, 1)).Rows());
    EXPECT_EQ("(0)", Select({&a, &empty}).Output(CountAll()).Rows());
}

TEST(VelaQuery, AggregateInWhereIsUnknown)
{
    MemoryTable a("a");
    FillThree(&a, 1);
    EXPECT_EQ("", Select({&a}).Output(ExprField(0, 1)).Where(CountAll()).Rows());
    EXPECT_EQ("(20 < 2) (10 < 1) (30 < 3)",
              Select({&a}).Output(ExprField(0, 1)).Where(And(CountAll())).Rows());
}

TEST(VelaQuery, ResultTableCanBeQueried)
{
    MemoryTable a("a");
    FillThree(&a, 1);
    Select inner({&a});
    inner.Output(ExprField(0, 1)).OrderBy(0, 1);
    const auto result = inner.query.RunQuery();
    VelaQuery outer(nullptr);
    outer.AddTable(result.get());
    outer.AddOutput(ExprField(0, 0));
    outer.SetWhere(Compare(ExprField(0, 0), kOpGreater, Expr(10)));
    EXPECT_EQ("(20 < 1) (30 < 2)", ShownRows(*outer.RunQuery(), 1));
    outer.SetWhere(Equal(ExprField(0, 0), Expr(1)));
    EXPECT_EQ("", ShownRows(*outer.RunQuery(), 1)) << "column 0 is no row id here";
    outer.SetWhere(Equal(ExprField(0, 0), Expr(30)));
    EXPECT_EQ("(30 < 2)", ShownRows(*outer.RunQuery(), 1));
}

TEST(VelaQuery, ColumnsHaveNameElseDescription)
{
    MemoryTable a("a");
    FillThree(&a, 1);
    Select select({&a, &a});
    VelaExprPtr named = ExprField(0, 1);
    named->SetName("total");
    select.Output(std::move(named)).Output(ExprField(1, 1)).Output(Expr("x"));
    const auto result = select.query.RunQuery();
    EXPECT_EQ(string("total"), result->Column(0)->name);
    EXPECT_EQ(string("B.1"), result->Column(1)->name);
    EXPECT_EQ(kTypeInteger, result->Column(1)->Type());
    EXPECT_EQ(kTypeString, result->Column(2)->Type());
}

TEST(VelaQuery, WhereCanBeTakenBackAndTheQueryRunAgain)
{
    MemoryTable a("a");
    FillThree(&a, 1);
    Select select({&a});
    select.Output(ExprField(0, 1)).Where(Equal(ExprField(0, 1), Expr(10)));
    EXPECT_EQ("(10 < 1)", select.Rows());
    EXPECT_EQ("(10 < 1)", select.Rows());
    const VelaExprPtr where = select.query.TakeWhere();
    EXPECT_NE(nullptr, where);
    EXPECT_EQ("(30 < 3) (10 < 1) (20 < 2)", select.Rows());
    EXPECT_EQ(nullptr, select.query.TakeWhere());
}

TEST(VelaQuery, PointReadsTouchNothingElseOfTheTable)
{
    MemoryTable table("t");
    FillMany(&table, 1000);
    table.OfferColumns().OfferIndex(1);
    const struct {
        const char* why;
        VelaExprPtr where;
        const char* rows;
    } cases[] = {
        {"row id", Equal(ExprField(0, 0), Expr(77)), "(77 < 77)"},
        {"row id on the right", Equal(Expr(77), ExprField(0, 0)), "(77 < 77)"},
        {"row id as a Double", Equal(ExprField(0, 0), Expr(77.0)), "(77 < 77)"},
        {"no such row id", Equal(ExprField(0, 0), Expr(1001)), ""},
        {"computed row id",
         Equal(ExprField(0, 0), std::make_unique<VExprMath>(Expr(70), '+', Expr(7))), "(77 < 77)"},
        {"index", Equal(ExprField(0, 1), Expr(5)), "(5 < 5)"},
        {"index, by the text's number", Equal(ExprField(0, 1), Expr("5 apples")), "(5 < 5)"},
        {"with a term that rejects",
         And(Equal(ExprField(0, 0), Expr(77)), Equal(ExprField(0, 1), Expr(78))), ""},
        {"with a term that keeps",
         And(Compare(ExprField(0, 1), kOpLess, Expr(78)), Equal(ExprField(0, 0), Expr(77))),
         "(77 < 77)"},
    };
    for (const auto& c : cases) {
        Select select({&table});
        select.Output(ExprField(0, 1));
        select.query.SetWhere(std::move(const_cast<VelaExprPtr&>(c.where)));
        EXPECT_EQ(c.rows, select.Rows()) << c.why;
        EXPECT_LE(select.query.RecSetsConsidered(), 3u) << c.why;
    }
    EXPECT_EQ(0, table.columnsCalls);
    EXPECT_EQ(0, table.rowIDCalls);
}

TEST(VelaQuery, ConstantsThatNameNoRowForCertainAreCompared)
{
    MemoryTable table("t");
    FillMany(&table, 3);
    table.Row(9, {VelaValue::Null(kTypeInteger)});
    table.OfferColumns().OfferIndex(1);
    const auto rows = [&table](VelaExprPtr where) {
        return Select({&table}).Output(ExprField(0, 1)).Where(std::move(where)).Rows();
    };
    EXPECT_EQ("(NULL < 9)", rows(Equal(ExprField(0, 1), Expr(0)))) << "null is 0 to a comparison";
    EXPECT_EQ("", rows(Equal(ExprField(0, 0), Expr(1.5))));
    EXPECT_EQ("", rows(Equal(ExprField(0, 0), Expr(-1))));
    EXPECT_EQ("(1 < 1)", rows(Equal(ExprField(0, 0), Expr("1x"))));
    EXPECT_EQ("", rows(Equal(Expr("1x"), ExprField(0, 0)))) << "here as texts";
    EXPECT_EQ("", rows(Equal(ExprField(0, 0), ExprNull())));
}

TEST(VelaQuery, FewRowsLookOthersUp)
{
    MemoryTable small("s");
    MemoryTable large("l");
    FillThree(&small, 1);
    FillMany(&large, 5000);
    large.OfferColumns().OfferIndex(1);
    const auto rows = [&](uint32_t column) {
        return Select({&small, &large})
            .Output(ExprField(1, 1))
            .Where(Equal(ExprField(0, 1), ExprField(1, column)))
            .Rows();
    };
    EXPECT_EQ("(20 < 2 20) (10 < 1 10) (30 < 3 30)", rows(0));
    EXPECT_EQ("(20 < 2 20) (10 < 1 10) (30 < 3 30)", rows(1));
    EXPECT_EQ(0, large.columnsCalls);
}

TEST(VelaQuery, JoinsLookAtFewCombinations)
{
    MemoryTable a("a");
    MemoryTable b("b");
    FillMany(&a, 2000);
    FillMany(&b, 3000);
    a.OfferColumns();
    b.OfferColumns();
    Select select({&a, &b});
    select.Output(CountAll())
        .Where(And(Equal(ExprField(0, 1), ExprField(1, 1)),
                   Compare(ExprField(0, 1), kOpNotEqual, Expr(3))));
    EXPECT_EQ("(1999)", select.Rows());
    EXPECT_LT(select.query.RecSetsConsidered(), 10000u);

    Select product({&a, &b});
    product.Output(CountAll());
    EXPECT_EQ("(6000000)", product.Rows());
    EXPECT_LT(product.query.RecSetsConsidered(), 10000u) << "a product is counted, not walked";
}

TEST(VelaQuery, ManyTablesNeedNoDeepRecursion)
{
    MemoryTable one("one");
    FillMany(&one, 1);
    Select select(std::vector<MemoryTable*>(20000, &one));
    select.Output(CountAll());
    EXPECT_EQ("(1)", select.Rows());
}

}   // namespace vela
