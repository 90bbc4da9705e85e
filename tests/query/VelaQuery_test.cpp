#include "engine/query/VelaQuery.h"

#include <gtest/gtest.h>

#include "engine/query/VExprAggregate.h"
#include "engine/query/VExprAndOr.h"
#include "engine/query/VExprCompare.h"
#include "engine/query/VExprMath.h"
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

VelaExprPtr CountAll()
{
    return std::make_unique<VExprAggregate>(kFuncCount, nullptr, false);
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
    Select& OrderBy(long column, long direction)
    {
        query.AddSortKey(column, direction);
        return *this;
    }
    std::string Rows() { return ShownRows(*query.RunQuery(), query.Tables().size()); }

    VelaQuery query{nullptr};
};

// Rows 3, 1, 2 with the values 30, 10, 20.
void FillThree(MemoryTable* table)
{
    table->AddColumn("v", kTypeInteger);
    for (const uint32_t rowID : {3u, 1u, 2u})
        table->Row(rowID, {I(static_cast<int32_t>(rowID) * 10)});
}

// count rows, 1 to count, with the column 1 counting along.
void FillMany(MemoryTable* table, uint32_t count)
{
    table->AddColumn("v", kTypeInteger);
    for (uint32_t rowID = 1; rowID <= count; rowID++)
        table->Row(rowID, {I(static_cast<int32_t>(rowID))});
}

}   // namespace

TEST(VelaQuery, ResultTableCanBeQueriedAgainAndAgain)
{
    MemoryTable a("a");
    FillThree(&a);
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

TEST(VelaQuery, FewRowsLookOthersUp)
{
    MemoryTable small("s");
    MemoryTable large("l");
    FillThree(&small);
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

// Far more combinations of the first two tables than rows: too many to be listed for the third one.
TEST(VelaQuery, JoinsOfManyEqualKeysComeToTheSameCounts)
{
    MemoryTable a("a");
    MemoryTable b("b");
    MemoryTable c("c");
    for (MemoryTable* table : {&a, &b, &c}) {
        table->AddColumn("k", kTypeInteger).AddColumn("v", kTypeInteger);
        const int32_t rows = table == &c ? 3 : 700;
        for (int32_t i = 0; i < rows; i++)
            table->Row(static_cast<uint32_t>(i + 1), {I(7), I(i)});
        table->OfferColumns();
    }
    Select two({&a, &b});
    two.Output(CountAll()).Where(Equal(ExprField(0, 1), ExprField(1, 1)));
    EXPECT_EQ("(490000)", two.Rows());

    Select three({&a, &b, &c});
    three.Output(CountAll())
        .Where(
            And(Equal(ExprField(0, 1), ExprField(1, 1)), Equal(ExprField(1, 2), ExprField(2, 2))));
    EXPECT_EQ("(2100)", three.Rows());
    Select ordered({&c, &a, &b});
    ordered.Output(CountAll())
        .Where(
            And(Equal(ExprField(1, 1), ExprField(2, 1)), Equal(ExprField(0, 2), ExprField(1, 2))));
    EXPECT_EQ("(2100)", ordered.Rows());
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
