#include "engine/sql/VelaSQL.h"

#include <gtest/gtest.h>

#include "engine/storage/VelaDatabase.h"
#include "engine/storage/VelaFolderFileAccess.h"
#include "tests/sql/SQLTestTexts.h"
#include "tests/storage/TemporaryFolder.h"

namespace vela {
namespace {

class VelaSQL : public testing::Test {
protected:
    VelaSQL()
        : mDatabase(std::make_unique<VelaFolderFileAccess>(mFolder.Locator(),
                                                           VelaFolderFileAccess::Mode::kReadWrite))
    {
        Execute("CREATE TABLE one (a integer, b string)");
        Execute("CREATE TABLE two (b double, c date)");
        Execute("INSERT INTO one VALUES (1, 'x')");
        Execute("INSERT INTO two VALUES (1.5, '1994-07-09')");
    }

    VelaStatus Execute(std::string_view sql)
    {
        VelaStatus status(kVEInternalSQLError, "stale");
        VelaSQLExecute(Sql(sql), mDatabase, &status);
        return status;
    }

    size_t Rows(const char* table)
    {
        SimpleVector<uint32_t> rowIDs;
        mDatabase.OpenTables()[static_cast<size_t>(mDatabase.FindOpenTable(table))]->GetRowIDs(
            &rowIDs);
        return rowIDs.size();
    }

    TemporaryFolder mFolder;
    VelaDatabase mDatabase;
};

TEST_F(VelaSQL, EachEntryLeavesTheOthersStatementsAlone)
{
    EXPECT_EQ(kVEStateSuccess, Execute("SELECT nosuch FROM nosuch").State())
        << "a SELECT is parsed and no more";
    for (const char* sql :
         {"INSERT INTO one VALUES (2, 'y')", "UPDATE one SET nosuch=1", "DELETE FROM one",
          "DROP TABLE nosuch", "CREATE TABLE one (a integer)", "ALTER TABLE nosuch DROP a",
          "CREATE INDEX i ON nosuch (a)", "DROP INDEX nosuch", "SET ESCAPE ab", "ROLLBACK"}) {
        VelaStatus status(kVEInternalSQLError, "stale");
        EXPECT_EQ(nullptr, VelaSQLQuery(Sql(sql), mDatabase, &status)) << sql;
        EXPECT_EQ(kVEStateSuccess, status.State()) << sql;
        EXPECT_EQ("Success", Plain(status.Description())) << sql << ": the old message is gone";
    }
    EXPECT_EQ(1u, Rows("one"));
}

TEST_F(VelaSQL, ParseErrorsAreReportedByBothEntries)
{
    VelaStatus status;
    VelaSQLExecute(Sql("SELECT FROM one"), mDatabase, &status);
    EXPECT_EQ(kVEDynamicSQLError, status.State());
    EXPECT_EQ("SQL Syntax Error", Plain(status.Description()));
    status = VelaStatus();
    EXPECT_EQ(nullptr, VelaSQLQuery(Sql("NONSENSE"), mDatabase, &status));
    EXPECT_EQ("SQL Error: keyword expected", Plain(status.Description()));
}

TEST_F(VelaSQL, NullStatusSilencesTheMessageNotTheCheck)
{
    for (const char* sql :
         {"NONSENSE", "INSERT INTO one VALUES (1)", "INSERT INTO one VALUES (1/0, 'x')",
          "INSERT INTO one (_rowid) VALUES (1)", "UPDATE one SET nosuch=1", "UPDATE one SET a=1/0",
          "DELETE FROM one WHERE nosuch", "CREATE TABLE one (a integer)",
          "CREATE TABLE three (a nosuch)", "CREATE TABLE a.b (a integer)",
          "ALTER TABLE one ADD a integer", "ALTER TABLE _schema DROP a", "DROP TABLE one",
          "DROP TABLE _schema", "CREATE INDEX i ON one (nosuch)", "DROP INDEX one.nosuch",
          "SET ESCAPE ab", "INSERT INTO one SELECT nosuch, 1 FROM one"})
        VelaSQLExecute(Sql(sql), mDatabase, nullptr);
    EXPECT_EQ(1u, Rows("one"));
    EXPECT_EQ(-1, mDatabase.FindOpenTable("three"));
    EXPECT_TRUE(mDatabase.EscapeOption().empty());
    EXPECT_EQ(nullptr, VelaSQLQuery(Sql("SELECT nosuch FROM one"), mDatabase, nullptr));
    EXPECT_NE(nullptr, VelaSQLQuery(Sql("SELECT a FROM one WHERE a=9"), mDatabase, nullptr));
}

TEST_F(VelaSQL, QueryTellsWhereItsRowsComeFrom)
{
    SimpleVector<string> tables;
    SimpleVector<string> ranges;
    SimpleVector<long> sources;
    VelaStatus status;
    const auto result =
        VelaSQLQuery(Sql("SELECT T.c, a, a+1, *, NULL AS n, one._rowid AS r FROM one, two T"),
                     mDatabase, &status, &tables, &ranges, &sources);
    ASSERT_NE(nullptr, result);
    ASSERT_EQ(2u, tables.size());
    EXPECT_EQ("one", Plain(tables[0]));
    EXPECT_EQ("two", Plain(tables[1]));
    ASSERT_EQ(2u, ranges.size());
    EXPECT_EQ("one", Plain(ranges[0]));
    EXPECT_EQ("two", Plain(ranges[1]));
    const std::vector<long> expected = {0x10002, 1, -1, 0, 1, 2, 0x10000, 0x10001, 0x10002, -1, 0};
    EXPECT_EQ(expected, std::vector<long>(sources.begin(), sources.end()));
    EXPECT_EQ(static_cast<long>(expected.size()), result->QtyColumns());
}

TEST_F(VelaSQL, NamesAreRefusedByLengthAndControlCharacters)
{
    const std::string longest(200, 'n');
    EXPECT_EQ(kVEStateSuccess, Execute("CREATE TABLE " + longest + " (a integer)").State());
    // "/" ends a word, so no statement can bring it along.
    for (const std::string& name : {longest + "n", std::string("a\nb"), std::string("a\x7F"),
                                    std::string("a\x01"), std::string("a."), std::string("a.b")}) {
        for (const std::string& sql :
             {"CREATE TABLE " + name + " (a integer)", "CREATE TABLE t (" + name + " integer)",
              "CREATE INDEX " + name + " ON one (a)"}) {
            const VelaStatus status = Execute(sql);
            EXPECT_EQ(kVEInvalidParameter, status.State()) << sql;
            EXPECT_EQ("Error: Invalid name " + name + ".", Plain(status.Description()));
        }
    }
    EXPECT_EQ(-1, mDatabase.FindOpenTable("t"));
}

// The name is pasted into a statement as it stands, so one with a quote in it can't be dropped.
TEST_F(VelaSQL, DroppingATableWithAQuoteInItsNameFailsAndKeepsIt)
{
    EXPECT_EQ(kVEStateSuccess, Execute("CREATE TABLE it's (a integer)").State());
    const VelaStatus status = Execute("DROP TABLE it's");
    EXPECT_EQ(kVEDynamicSQLError, status.State());
    EXPECT_EQ("SQL Syntax Error", Plain(status.Description()));
    EXPECT_NE(-1, mDatabase.FindOpenTable("it's"));
    EXPECT_EQ(kVEStateSuccess, Execute("INSERT INTO it's VALUES (1)").State());
}

}   // namespace
}   // namespace vela
