#include "engine/sql/SQLSyntaxNode.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "engine/sql/SQLInsertNode.h"
#include "engine/sql/SQLUpdateNode.h"
#include "tests/sql/SQLTestTexts.h"

namespace vela {
namespace {

// A statement in memory of its own, whose bytes are overwritten when it goes.
SQLSyntaxNodePtr ParseAndForget(const std::string& sql)
{
    auto parser = std::make_unique<VelaSQLParser>('\0');
    string statement = Sql(sql);
    SQLSyntaxNodePtr tree = parser->Evaluate(statement);
    char* bytes = statement.MutableBytes();   // shared with the tree: now a copy
    std::fill(bytes, bytes + statement.length(), '?');
    parser.reset();
    return tree;
}

const char* const kStatements[] = {
    "SELECT DISTINCT a AS x, T.b, (c+1.5), -(d), LOWER('e'), COUNT(*) FROM t AS T, u WHERE ((a=1) "
    "AND b LIKE 'x%') "
    "GROUP BY a, b HAVING (c>2) ORDER BY a DESC, b",
    "INSERT INTO t (a, b, c) VALUES (1, DATE '1994-07-09', 'it''s')",
    "INSERT INTO t (a) SELECT b FROM u",
    "UPDATE t SET a=1, b=(a+1) WHERE (a=TIMESTAMP '2026-01-02 03:04:05')",
    "DELETE FROM t WHERE (_rowid=5)",
    "CREATE TABLE t (a integer, b varchar DEFAULT 'x')",
    "CREATE INDEX i ON t (a, b)",
    "ALTER TABLE t RENAME a TO b",
    "DROP TABLE t CASCADE",
    "DROP INDEX t.i",
    "SET ESCAPE \\",
};

TEST(SQLSyntaxNode, TreesOutliveParserAndStatement)
{
    std::vector<SQLSyntaxNodePtr> trees;
    for (const char* sql : kStatements)
        trees.push_back(ParseAndForget(sql));
    for (size_t i = 0; i < trees.size(); i++) {
        ASSERT_NE(nullptr, trees[i]) << kStatements[i];
        EXPECT_EQ(kStatements[i], Plain(trees[i]->Description()));
    }
}

TEST(SQLSyntaxNode, TextsTakenOutOutliveTheTree)
{
    SQLSyntaxNodePtr tree = ParseAndForget("UPDATE tab SET col = 'va''lue'");
    const auto& update = static_cast<const SQLUpdateNode&>(*tree);
    const string table = update.mTableName.ToString();
    const string column = update.mColumns[0].ToString();
    VelaValue value;
    EXPECT_TRUE(update.mValues[0]->GetConstant(&value));
    const string canonical = tree->Description();
    tree.reset();
    EXPECT_EQ("tab", Plain(table));
    EXPECT_EQ(kEncodingUTF8, table.Encoding());
    EXPECT_EQ("col", Plain(column));
    EXPECT_EQ("va'lue", Plain(value.StoredText()));
    EXPECT_EQ("UPDATE tab SET col='va''lue'", Plain(canonical));
}

// More than the arena's own block, and a single text larger than any block.
TEST(SQLSyntaxNode, LargeStatementsAreKeptWhole)
{
    const std::string longText = "'" + std::string(300000, 'x') + "'";
    std::string sql = "INSERT INTO t VALUES (" + longText + ", DATE " + longText;
    for (int i = 0; i < 5000; i++)
        sql += ", (a" + std::to_string(i) + "+" + std::to_string(i) + ")";
    sql += ")";
    const SQLSyntaxNodePtr tree = ParseAndForget(sql);
    EXPECT_EQ(5002u, static_cast<const SQLInsertNode&>(*tree).mValues.size());
    EXPECT_EQ(sql, Plain(tree->Description()));
}

}   // namespace
}   // namespace vela
