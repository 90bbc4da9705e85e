#include "engine/query/VExprCompareLike.h"

#include <gtest/gtest.h>

#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

VelaExprPtr Like(VelaExprPtr text, VelaExprPtr pattern, VelaExprPtr escape = nullptr)
{
    return std::make_unique<VExprCompareLike>(std::move(text), std::move(pattern),
                                              std::move(escape));
}

TEST(VExprCompareLike, MatchesStringForms)
{
    struct {
        VelaValue text;
        VelaValue pattern;
        const char* outcome;
        const char* why;
    } cases[] = {
        {Text("foobar"), Text("foo%"), "Integer 1", "texts"},
        {Text("foobar"), Text("bar%"), "Integer 0", "texts that don't match"},
        {VelaValue::Integer(-42), Text("-4_"), "Integer 1", "a number by its digits"},
        {VelaValue::Double(2.5), Text("2.%"), "Integer 1", "a Double"},
        {VelaValue::Boolean(true), Text("T%"), "Integer 1", "a Boolean by its word"},
        {Date("1994-07-09"), Text("1994-%"), "Integer 1", "a date by its stored text"},
        {Date("1994-07-09"), Text("DATE%"), "Integer 0", "without the prefix"},
        {Timestamp("1994-07-09 01:02:03"), Text("% 01:__:03"), "Integer 1", "a timestamp"},
        {VelaValue(), Text("N_LL"), "Integer 1", "NULL is its word"},
        {VelaValue::Null(kTypeString), Text(""), "Integer 0", "a NULL text is not the empty one"},
        {Text("NULL"), VelaValue(), "Integer 1", "also as a pattern"},
        {Text("42"), VelaValue::Integer(42), "Integer 1", "a pattern of another type"},
        {Text("1994-07-09"), Date("1994-07-09"), "Integer 1", "without the prefix there, too"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.outcome, Outcome(Like(Expr(c.text), Expr(c.pattern)))) << c.why;
}

TEST(VExprCompareLike, EscapeIsOneByteOrTheAnswerIsUnknown)
{
    struct {
        VelaValue escape;
        const char* outcome;
        const char* why;
    } cases[] = {
        {Text("^"), "Integer 0", "the run sign is escaped"},
        {Text("#"), "Integer 1", "another letter escapes nothing here"},
        {VelaValue::Integer(5), "Integer 1", "a digit is a letter"},
        {Text(""), "UNKNOWN", "no byte"},
        {Text("^^"), "UNKNOWN", "two bytes"},
        {VelaValue(), "UNKNOWN", "NULL is four bytes"},
        {VelaValue::Integer(42), "UNKNOWN", "two digits"},
        {VelaValue::String(string("\0", 1, kEncodingASCII)), "Integer 1", "NUL escapes nothing"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.outcome, Outcome(Like(Expr("a^b"), Expr("a^%"), Expr(c.escape)))) << c.why;
}

TEST(VExprCompareLike, UnknownOperandsLeaveNothing)
{
    const VelaValue one = VelaValue::Integer(1);
    EXPECT_EQ("UNKNOWN", Outcome(Like(Unknown(), Expr("%"))));
    EXPECT_EQ("UNKNOWN", Outcome(Like(UnknownLeaving(one), Expr("%"))));
    EXPECT_EQ("UNKNOWN", Outcome(Like(Expr("a"), UnknownLeaving(one))));
    EXPECT_EQ("UNKNOWN", Outcome(Like(Expr("a"), Expr("%"), UnknownLeaving(one))));
    EXPECT_EQ("UNKNOWN", Outcome(Like(nullptr, Expr("%"))));
    EXPECT_EQ("UNKNOWN", Outcome(Like(Expr("a"), nullptr)));
    EXPECT_EQ("UNKNOWN", Outcome(Like(ExprField(0, 0), Expr("%")))) << "a column without a row";
}

TEST(VExprCompareLike, EachRowHasItsOwnPatternAndEscape)
{
    OneTable data({kTypeString, kTypeString, kTypeString},
                  {{1, {Text("ab"), Text("a%"), Text("^")}},
                   {2, {Text("ab"), Text("b%"), Text("^")}},
                   {3, {Text("a%"), Text("a^%"), Text("^")}},
                   {4, {Text("a%"), Text("a^%"), Text("#")}},
                   {5, {Text("a%"), Text("a%"), Text("##")}},
                   {6, {VelaValue::Null(kTypeString), Text("NULL"), Text("^")}}});
    const VelaExprPtr like = Like(ExprField(0, 0), ExprField(0, 1), ExprField(0, 2));
    const char* const outcomes[] = {"Integer 1", "Integer 0", "Integer 1",
                                    "Integer 0", "UNKNOWN",   "Integer 1"};
    for (int round = 0; round < 2; round++) {
        for (size_t row = 0; row < std::size(outcomes); row++) {
            EXPECT_EQ(outcomes[row], Outcome(like, data.Row(row))) << row;
            EXPECT_EQ(outcomes[row], Outcome(like, data.RowInColumns(row))) << row;
        }
    }
}

TEST(VExprCompareLike, ColumnsThatAreNoTextsMatchByTheirStringForm)
{
    OneTable data({kTypeInteger, kTypeDate}, {{1, {VelaValue::Integer(42), Date("1994-07-09")}}});
    EXPECT_EQ("Integer 1", Outcome(Like(ExprField(0, 0), Expr("4_")), data.RowInColumns(0)));
    EXPECT_EQ("Integer 1", Outcome(Like(ExprField(0, 1), Expr("1994%")), data.RowInColumns(0)));
    EXPECT_EQ("UNKNOWN", Outcome(Like(ExprField(0, 2), Expr("%")), data.RowInColumns(0)))
        << "no such column";
}

TEST(VExprCompareLike, ChooseWildcardTable_SingleUnlessOperandsNameTwoTables)
{
    const uint32_t rows[] = {kInvalidRowID};
    const VelaRecSet recSet(rows);
    const auto choice = [&recSet](long text, long pattern, long escape) {
        return Choice(*Like(Wants(text, false), Wants(pattern, false), Wants(escape, false)),
                      recSet);
    };
    EXPECT_EQ("-1 single", choice(-1, -1, -1));
    EXPECT_EQ("2 single", choice(2, -1, -1));
    EXPECT_EQ("3 single", choice(-1, 3, -1));
    EXPECT_EQ("4 single", choice(-1, -1, 4));
    EXPECT_EQ("2 single", choice(2, 2, 2));
    EXPECT_EQ("2 not single", choice(2, 3, -1));
    EXPECT_EQ("2 not single", choice(2, -1, 4));
    EXPECT_EQ("3 not single", choice(-1, 3, 4));
    EXPECT_EQ("2 single", Choice(*Like(Wants(2, true), Wants(-1, true)), recSet));
}

TEST(VExprCompareLike, TreeIsInspected)
{
    const VExprCompareLike like(ExprField(0, 1), Expr("a%"), ExprField(1, 1));
    EXPECT_EQ(ExprKind::kCompareLike, like.Kind());
    EXPECT_EQ(ExprKind::kField, like.Text()->Kind());
    EXPECT_EQ(ExprKind::kConstant, like.Pattern()->Kind());
    EXPECT_EQ(ExprKind::kField, like.Escape()->Kind());
    EXPECT_EQ("A.1 LIKE 'a%' ESCAPE B.1", like.Description());
    EXPECT_EQ("A.1 LIKE 'a%'", Like(ExprField(0, 1), Expr("a%"))->Description());
    EXPECT_EQ(kTypeInteger, like.GetType({}));
    std::vector<bool> tables;
    like.CollectTables(&tables);
    EXPECT_EQ((std::vector<bool>{true, true}), tables);

    EXPECT_TRUE(like.Valid());
    EXPECT_TRUE(Like(Expr("a"), Expr("a"))->Valid()) << "needs no escape";
    EXPECT_FALSE(Like(nullptr, Expr("a"))->Valid());
    EXPECT_FALSE(Like(Expr("a"), nullptr)->Valid());
    EXPECT_FALSE(Like(Invalid(), Expr("a"))->Valid());
    EXPECT_FALSE(Like(Expr("a"), Invalid())->Valid());
    EXPECT_FALSE(Like(Expr("a"), Expr("a"), Invalid())->Valid());
    EXPECT_FALSE(like.HasAggregate());
    EXPECT_TRUE(Like(WithAggregate(), Expr("a"))->HasAggregate());
    EXPECT_TRUE(Like(Expr("a"), WithAggregate())->HasAggregate());
    EXPECT_TRUE(Like(Expr("a"), Expr("a"), WithAggregate())->HasAggregate());
}

}   // namespace
}   // namespace vela
