#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>

#include "engine/query/VelaQuery.h"
#include "engine/sql/SQLSelectNode.h"
#include "tests/sql/SQLTestTexts.h"

namespace vela {
namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kHasSanitizer = true;
#elif defined(__has_feature)
constexpr bool kHasSanitizer = __has_feature(address_sanitizer);
#else
constexpr bool kHasSanitizer = false;
#endif

// Stack of a host's small thread. The sanitizer's frames are several times larger.
constexpr size_t kStackSize = (kHasSanitizer ? 2048 : 256) * 1024;

void RunOnSmallStack(const std::function<void()>& work)
{
    pthread_attr_t attributes;
    ASSERT_EQ(0, pthread_attr_init(&attributes));
    ASSERT_EQ(0, pthread_attr_setstacksize(&attributes, kStackSize));
    const auto run = [](void* argument) -> void* {
        (*static_cast<const std::function<void()>*>(argument))();
        return nullptr;
    };
    pthread_t thread;
    void* argument = const_cast<void*>(static_cast<const void*>(&work));
    ASSERT_EQ(0, pthread_create(&thread, &attributes, run, argument));
    ASSERT_EQ(0, pthread_join(thread, nullptr));
    pthread_attr_destroy(&attributes);
}

// Everything that walks the tree of a statement or the expressions made of it.
void UseTree(const SQLSyntaxNode& tree)
{
    EXPECT_GT(tree.Description().length(), 0u);
    SimpleVector<VelaExprPtr> expressions;
    const auto& select = static_cast<const SQLSelectNode&>(tree);
    ASSERT_TRUE(select.mItems[0]->mExpression->ConvertToExprList({}, {}, &expressions, nullptr));
    EXPECT_TRUE(expressions[0]->Valid());
    EXPECT_GT(expressions[0]->Description().length(), 0u);
    VelaValue value;
    expressions[0]->EvaluateInIsolation(&value, nullptr);
    VelaQuery query(nullptr);
    query.AddOutput(std::move(expressions[0]));
    EXPECT_EQ(1u, query.RunQuery()->QtyRows());
}

std::string Repeated(std::string_view text, size_t count)
{
    std::string result;
    result.reserve(text.size() * count);
    for (size_t i = 0; i < count; i++)
        result += text;
    return result;
}

struct Shape {
    const char* before;
    const char* middle;
    const char* after;
};

const Shape kShapes[] = {
    {"(", "1", ")"},
    {"-(", "1", ")"},
    {"+(", "1", ")"},
    {"1+(", "1", ")"},
    {"(", "1", ")+1"},
    {"NOT (", "1", ")"},
    {"1 AND (", "1", ")"},
    {"(", "1", ") OR 1"},
    {"1=(", "1", ")"},
    {"'a' LIKE (", "'a'", ")"},
    {"(", "'a'", ") NOT LIKE 'a'"},
    {"'a' LIKE 'a' ESCAPE (", "'a'", ")"},
    {"LOWER(", "'a'", ")"},
    {"SUM(DISTINCT ", "1", ")"},
    {"POSITION('a' IN ", "'a'", ")"},
    {"POSITION(", "'a'", " IN 'a')"},
    {"TRIM('a' FROM ", "'a'", ")"},
    {"TRIM((", "'a'", ") FROM 'a')"},
    {"SUBSTRING('a' FROM ", "1", ")"},
    {"1+", "1", ""},
    {"1*", "1", ""},
    {"", "1", "-1"},
};

std::string Select(const Shape& shape, size_t count)
{
    return "SELECT " + Repeated(shape.before, count) + shape.middle + Repeated(shape.after, count);
}

TEST(DeepStatements, WhatIsAcceptedFitsASmallStack)
{
    for (const Shape& shape : kShapes) {
        // The deepest that the parser takes of this shape.
        size_t count = 0;
        while (Canonical(Select(shape, count + 1)).substr(0, 5) != "error")
            count++;
        EXPECT_GE(count, 100u) << shape.before << shape.middle << shape.after;
        EXPECT_EQ("error 18", Canonical(Select(shape, count + 1)));
        RunOnSmallStack([&] {
            VelaSQLParser parser('\0');
            const SQLSyntaxNodePtr tree = parser.Evaluate(Sql(Select(shape, count)));
            ASSERT_EQ(VelaSQLParser::kNoError, parser.LastError());
            UseTree(*tree);
        });
    }
}

TEST(DeepStatements, HundredThousandLevelsAreAnError)
{
    for (const Shape& shape : kShapes) {
        RunOnSmallStack([&] {
            EXPECT_EQ("error 18", Canonical(Select(shape, 100000)))
                << shape.before << shape.middle << shape.after;
        });
    }
}

TEST(DeepStatements, WhatNeverEndsIsAnError)
{
    for (const Shape& shape : kShapes) {
        RunOnSmallStack([&] {
            const std::string canonical = Canonical("SELECT " + Repeated(shape.before, 100000));
            EXPECT_TRUE(canonical == "error 18" || canonical == "error 19") << shape.before;
        });
    }
    for (const char* text : {"- ", "NOT ", "-(-1)", ")", "'", "1 NOT LIKE ", "DATE ", ",", "(,"}) {
        RunOnSmallStack([&] {   // an odd number: quotes in pairs would be a literal
            EXPECT_EQ("error", Canonical("SELECT " + Repeated(text, 99999)).substr(0, 5)) << text;
        });
    }
}

// Chains and parentheses in turn, which neither limit alone would stop.
TEST(DeepStatements, HeightCountsAcrossParentheses)
{
    std::string sql = "1";
    for (int i = 0; i < 100; i++)
        sql = "(" + sql + Repeated("+1", 100) + ")";
    RunOnSmallStack([&] { EXPECT_EQ("error 18", Canonical("SELECT " + sql)); });
}

TEST(DeepStatements, ManyTermsAreFlat)
{
    for (const char* term : {" AND 1=1", " OR 1=2", " AND NOT 1=1", " AND 'a' LIKE 'a'"}) {
        RunOnSmallStack([&] {
            VelaSQLParser parser('\0');
            const SQLSyntaxNodePtr tree = parser.Evaluate(Sql("SELECT 1" + Repeated(term, 100000)));
            ASSERT_EQ(VelaSQLParser::kNoError, parser.LastError()) << term;
            UseTree(*tree);
        });
    }
}

TEST(DeepStatements, LongListsAreFlat)
{
    const std::string items = "1" + Repeated(",1", 100000);
    const std::string names = "a" + Repeated(",a", 100000);
    for (const std::string& sql :
         {"SELECT " + items, "SELECT 1 FROM " + names, "SELECT 1 FROM t GROUP BY " + names,
          "SELECT 1 FROM t ORDER BY " + names, "INSERT INTO t VALUES (" + items + ")",
          "INSERT INTO t (" + names + ") DEFAULT VALUES",
          "UPDATE t SET a=1" + Repeated(",a=1", 100000),
          "CREATE TABLE t (a b" + Repeated(",a b", 100000) + ")",
          "CREATE INDEX i ON t (" + names + ")"}) {
        RunOnSmallStack(
            [&] { EXPECT_NE("error", Canonical(sql).substr(0, 5)) << sql.substr(0, 40); });
    }
}

}   // namespace
}   // namespace vela
