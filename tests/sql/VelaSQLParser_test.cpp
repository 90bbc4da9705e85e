#include "engine/sql/VelaSQLParser.h"

#include <gtest/gtest.h>

#include "tests/sql/SQLTestTexts.h"

namespace vela {
namespace {

TEST(VelaSQLParser, PrintsCanonicalText)
{
    const struct {
        const char* sql;
        const char* canonical;   // null: the same
    } cases[] = {
        // Select lists, names, literals.
        {"SELECT 1,2 FROM TAB1,  TAB2", "SELECT 1, 2 FROM TAB1, TAB2"},
        {"SELECT 1,2", "SELECT 1, 2"},
        {"select all 1 from t", "SELECT 1 FROM t"},
        {"Select Distinct a From t", "SELECT DISTINCT a FROM t"},
        {"SELECT UNIQUE a FROM t", "SELECT DISTINCT a FROM t"},
        {"SELECT *, T.*, a.b.c FROM T", nullptr},
        {"SELECT\t1\r,2", "SELECT 1, 2"},
        {"SELECT a\nFROM t", "SELECT a\nFROM AS t"},
        {"SELECT null, Default, #x, _y", nullptr},
        {"SELECT 12abc, 1.5, 1e-5, 1E", nullptr},
        {"SELECT 1E-5", "SELECT (1E-5)"},
        {"SELECT 'How''s it going?' FROM BAR", nullptr},
        {"SELECT N'abc' FROM BAR", "SELECT 'abc' FROM BAR"},
        {"SELECT true, False, TRUE", nullptr},
        {"SELECT date  '1994-07-09', TIME\t'12:00', TimeStamp N'x'",
         "SELECT date '1994-07-09', TIME '12:00', TimeStamp 'x'"},
        {"SELECT 'a;b' FROM t; and then !!", "SELECT 'a;b' FROM t"},
        {"SELECT 1;", "SELECT 1"},
        {"SELECT caf\xC3\xA9 FROM t", nullptr},
        // Operators.
        {"SELECT 1,39+3,2+4*10,-6*7 FROM MYTABLE",
         "SELECT 1, (39+3), (2+(4*10)), (-(6)*7) FROM MYTABLE"},
        {"SELECT 2+4*10, (2+4)*10 FROM MYTABLE", "SELECT (2+(4*10)), ((2+4)*10) FROM MYTABLE"},
        {"SELECT 1-2-3, 8/4/2", "SELECT ((1-2)-3), ((8/4)/2)"},
        {"SELECT 1-(2-3), (((1)))", "SELECT (1-(2-3)), 1"},
        {"SELECT 2--3, 2*-3, +5, -(-5), -(+5)", "SELECT (2--(3)), (2*-(3)), 5, -(-(5)), -(5)"},
        {"SELECT -a+b, -(a+b)", "SELECT (-(a)+b), -((a+b))"},
        {"SELECT 2**3", "error 3"},   // "*" is a name here, so 3 stands where an alias may
        {"SELECT 2**", "SELECT (2**)"},
        {"SELECT a < b, a<=b, a <> b, a>b, a>= b, a =b",
         "SELECT (a<b), (a<=b), (a<>b), (a>b), (a>=b), (a=b)"},
        {"SELECT 1+2 < 3*4", "SELECT ((1+2)<(3*4))"},
        {"SELECT a OR b OR c, (a OR b) OR c", "SELECT (a OR b OR c), ((a OR b) OR c)"},
        {"SELECT a and b and c OR d AND e", "SELECT ((a AND b AND c) OR (d AND e))"},
        {"SELECT (a OR b) AND c", "SELECT ((a OR b) AND c)"},
        {"SELECT a=1 AND(b=2)", "SELECT ((a=1) AND (b=2))"},
        {"SELECT NOT a=1, NOT (a=1 AND b), not a", "SELECT (a=1), ((a=1) AND b), a"},
        {"SELECT a OR NOT b AND NOT c", "SELECT (a OR (b AND c))"},
        {"SELECT -NOT", "SELECT -(NOT)"},
        {"SELECT a OR OR b", "SELECT (a OR OR) AS b"},   // no word is reserved
        // LIKE.
        {"SELECT foo FROM MYTABLE WHERE bar Not LIKE '%dat'",
         "SELECT foo FROM MYTABLE WHERE bar NOT LIKE '%dat'"},
        {"SELECT foo FROM MYTABLE WHERE bar LIKE '%dat'", nullptr},
        {"SELECT a like b escape '^'", "SELECT a LIKE b ESCAPE '^'"},
        {"SELECT a+b LIKE c+d ESCAPE e+f", "SELECT (a+b) LIKE (c+d) ESCAPE (e+f)"},
        {"SELECT a LIKE b AND c NOT LIKE d", "SELECT (a LIKE b AND c NOT LIKE d)"},
        {"SELECT NOT a LIKE b", "SELECT a LIKE b"},
        {"SELECT (a LIKE b) = c", "SELECT (a LIKE b=c)"},
        {"SELECT a NOT FROM t", "SELECT a AS NOT FROM t"},
        {"SELECT a NOT", "SELECT a AS NOT"},
        // Functions.
        {"SELECT Upper(42) from FOO", "SELECT UPPER(42) FROM FOO"},
        {"SELECT character_length('x'), char_length ('x'), bit_length(1), octet_length(1)",
         "SELECT CHAR_LENGTH('x'), CHAR_LENGTH('x'), BIT_LENGTH(1), OCTET_LENGTH(1)"},
        {"SELECT lower(a), last_rowid('t')", "SELECT LOWER(a), LAST_ROWID('t')"},
        {"SELECT current_date, Current_Time(), CURRENT_TIMESTAMP",
         "SELECT CURRENT_DATE, CURRENT_TIME, CURRENT_TIMESTAMP"},
        {"SELECT COUNT(*) FROM MYTABLE WHERE foo=42",
         "SELECT COUNT(*) FROM MYTABLE WHERE (foo=42)"},
        {"SELECT AVG(DISTINCT foo) FROM MYTABLE WHERE bar='baz'",
         "SELECT AVG(DISTINCT foo) FROM MYTABLE WHERE (bar='baz')"},
        {"SELECT COUNT(ALL foo) FROM MYTABLE WHERE bar='baz'",
         "SELECT COUNT(foo) FROM MYTABLE WHERE (bar='baz')"},
        {"SELECT sum(distinct(a)), max(a+1), min(all a), count( distinct a )",
         "SELECT SUM(DISTINCT a), MAX((a+1)), MIN(a), COUNT(DISTINCT a)"},
        {"SELECT count, max FROM t", "SELECT COUNT(*), MAX() FROM t"},
        {"SELECT T.count FROM T", nullptr},
        {"SELECT POSITION ('fu' IN 'snafu')", "SELECT POSITION('fu' IN 'snafu')"},
        {"SELECT POSITION(a+b in c+d)", "SELECT POSITION((a+b) IN (c+d))"},
        {"SELECT POSITION(POSITION('a' IN 'b') IN 'c')",
         "SELECT POSITION(POSITION('a' IN 'b') IN 'c')"},
        {"SELECT SUBSTRING ('foobar' from 3 for 2)", "SELECT SUBSTRING('foobar' FROM 3 FOR 2)"},
        {"SELECT SUBSTRING ('foobar' from 3)", "SELECT SUBSTRING('foobar' FROM 3)"},
        {"SELECT SUBSTRING(a FROM(1)FOR(2))", "SELECT SUBSTRING(a FROM 1 FOR 2)"},
        {"SELECT TRIM (' foo ')", "SELECT TRIM(' foo ')"},
        {"SELECT TRIM ('?' from ' foo ')", "SELECT TRIM('?' FROM ' foo ')"},
        {"SELECT TRIM (Leading from ' foo ')", "SELECT TRIM(LEADING FROM ' foo ')"},
        {"SELECT TRIM (trailing from a)", "SELECT TRIM(TRAILING FROM a)"},
        {"SELECT TRIM (BOTH '?' from ' foo ')", "SELECT TRIM(BOTH '?' FROM ' foo ')"},
        {"SELECT TRIM((a)), TRIM((a) FROM b), TRIM(BOTH a FROM b)",
         "SELECT TRIM(a), TRIM(a FROM b), TRIM(BOTH a FROM b)"},
        // Aliases and tables.
        {"SELECT foo AS bar FROM MYTABLE", nullptr},
        {"SELECT 42 AS bar FROM MYTABLE", nullptr},
        {"SELECT foo bar, 1+1 two FROM MYTABLE", "SELECT foo AS bar, (1+1) AS two FROM MYTABLE"},
        {"SELECT foo AS AS, 1 WHERE FROM t", "SELECT foo AS AS, 1 AS WHERE FROM t"},
        {"SELECT RV.foo FROM MYTABLE RV", "SELECT RV.foo FROM MYTABLE AS RV"},
        {"SELECT a FROM t AS x, u y, v", "SELECT a FROM t AS x, u AS y, v"},
        {"SELECT a FROM t AS WHERE WHERE b", "SELECT a FROM t AS WHERE WHERE b"},
        {"SELECT a FROM where where b", "SELECT a FROM where WHERE b"},
        // Clauses.
        {"SELECT foo, bar FROM MYTABLE WHERE foo=42",
         "SELECT foo, bar FROM MYTABLE WHERE (foo=42)"},
        {"SELECT foo FROM MYTABLE WHERE A=1 OR B=2 AND C=3",
         "SELECT foo FROM MYTABLE WHERE ((A=1) OR ((B=2) AND (C=3)))"},
        {"SELECT foo,bar FROM MYTABLE T ORDER BY foo,T.bar",
         "SELECT foo, bar FROM MYTABLE AS T ORDER BY foo, T.bar"},
        {"SELECT foo,bar FROM MYTABLE T ORDER BY foo ASC,bar DESC",
         "SELECT foo, bar FROM MYTABLE AS T ORDER BY foo, bar DESC"},
        {"SELECT pno, SUM(qty) FROM MYTABLE GROUP BY pno HAVING pno > 3",
         "SELECT pno, SUM(qty) FROM MYTABLE GROUP BY pno HAVING (pno>3)"},
        {"select a from t where b group by c,d having e order by f desc,g",
         "SELECT a FROM t WHERE b GROUP BY c, d HAVING e ORDER BY f DESC, g"},
        {"SELECT a FROM t HAVING b", nullptr},
        {"SELECT a FROM t GROUP BY count ORDER BY max", nullptr},
        // INSERT, UPDATE, DELETE.
        {"INSERT INTO foo (bar,baz,  bamf ) DEFAULT VALUES",
         "INSERT INTO foo (bar, baz, bamf) DEFAULT VALUES"},
        {"insert into foo default values", "INSERT INTO foo DEFAULT VALUES"},
        {"INSERT INTO foo (bar,baz,  bamf ) VALUES (1, DEFAULT, 42)",
         "INSERT INTO foo (bar, baz, bamf) VALUES (1, DEFAULT, 42)"},
        {"INSERT INTO foo VALUES(-1,'a'+'b',DATE '1999-1-1')",
         "INSERT INTO foo VALUES (-(1), ('a'+'b'), DATE '1999-1-1')"},
        {"INSERT INTO foo (bar, baz) SELECT one,2 FROM TABLE1",
         "INSERT INTO foo (bar, baz) SELECT one, 2 FROM TABLE1"},
        {"INSERT INTO foo select distinct * from foo where a ORDER BY b",
         "INSERT INTO foo SELECT DISTINCT * FROM foo WHERE a ORDER BY b"},
        {"UPDATE foo SET bar=2, baz=3", nullptr},
        {"UPDATE foo SET bar=2, baz=3 WHERE this = that",
         "UPDATE foo SET bar=2, baz=3 WHERE (this=that)"},
        {"UPDATE foo SET when=DATE '1994-07-09'", nullptr},
        {"update foo set a = default , b=a", "UPDATE foo SET a=default, b=a"},
        {"UPDATE foo SET a=b=c", "UPDATE foo SET a=(b=c)"},
        {"DELETE FROM Foobar", nullptr},
        {"DELETE FROM Foobar WHERE foo + 2 > bar", "DELETE FROM Foobar WHERE ((foo+2)>bar)"},
        // Tables and indexes.
        {"CREATE TABLE Foobar (one Integer, two String)", nullptr},
        {"create table t(a integer primary key,b text not null default 'x',c nosuchtype)",
         "CREATE TABLE t (a integer, b text DEFAULT 'x', c nosuchtype)"},
        {"CREATE TABLE t (a double DEFAULT -1+2 NOT NULL PRIMARY KEY NOT NULL)",
         "CREATE TABLE t (a double DEFAULT (-(1)+2))"},
        {"CREATE INDEX City on ZipCodes (City, State)",
         "CREATE INDEX City ON ZipCodes (City, State)"},
        {"create index i ON t(a)", "CREATE INDEX i ON t (a)"},
        {"ALTER TABLE Foobar ADD COLUMN foo Integer", "ALTER TABLE Foobar ADD foo Integer"},
        {"ALTER TABLE Foobar add foo Integer not null default 3",
         "ALTER TABLE Foobar ADD foo Integer DEFAULT 3"},
        {"ALTER TABLE Foobar DROP foo RESTRICT", nullptr},
        {"ALTER TABLE Foobar DROP COLUMN foo CASCADE", "ALTER TABLE Foobar DROP foo CASCADE"},
        {"ALTER TABLE Foobar DROP foo", nullptr},
        {"ALTER TABLE Foo RENAME TO Bar", nullptr},
        {"ALTER TABLE Foo RENAME Bar TO Baz", nullptr},
        {"ALTER TABLE Foo RENAME COLUMN Bar TO Baz", "ALTER TABLE Foo RENAME Bar TO Baz"},
        {"ALTER TABLE Foo MODIFY COLUMN Bar Integer", "ALTER TABLE Foo MODIFY Bar Integer"},
        {"ALTER TABLE Foo MODIFY Bar Integer", nullptr},
        {"ALTER TABLE Foo ALTER COLUMN Bar DROP DEFAULT", "ALTER TABLE Foo ALTER Bar DROP DEFAULT"},
        {"ALTER TABLE Foo ALTER Bar SET 1+2", "ALTER TABLE Foo ALTER Bar SET (1+2)"},
        {"ALTER TABLE Foo ALTER Bar SET DEFAULT 5", "ALTER TABLE Foo ALTER Bar SET 5"},
        {"ALTER TABLE Foo ALTER Bar SET Default", "ALTER TABLE Foo ALTER Bar SET Default"},
        {"DROP TABLE foo RESTRICT", nullptr},
        {"drop table foo cascade", "DROP TABLE foo CASCADE"},
        {"DROP TABLE foo", nullptr},
        {"DROP INDEX ZipCodes.City", nullptr},
        {"DROP INDEX nopoint", nullptr},
        // The rest.
        {"commit and whatever \" follows", "COMMIT"},
        {"Rollback", "ROLLBACK"},
        {"set escape   \\", "SET escape \\"},
        {"SET ESCAPE", "SET ESCAPE "},
        {"SET ESCAPE ^ ; and so on", nullptr},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.canonical ? c.canonical : c.sql, Canonical(c.sql)) << c.sql;
}

// The statement with where the parser has to stop marked by "@".
struct ErrorCase {
    const char* marked;
    VelaSQLParser::ErrorType error;
};

void ExpectErrors(const std::vector<ErrorCase>& cases, char escape = '\0')
{
    for (const ErrorCase& c : cases) {
        std::string sql = c.marked;
        const size_t offset = sql.find('@');
        sql.erase(offset, 1);
        VelaSQLParser parser(escape);
        const SQLSyntaxNodePtr tree = parser.Evaluate(Sql(sql));
        EXPECT_EQ(c.error, parser.LastError()) << c.marked;
        EXPECT_EQ(offset, parser.ErrorOffset()) << c.marked;
        if (tree)
            (void)tree->Description();   // must be safe on what was built
    }
}

TEST(VelaSQLParser, KeywordIsExpected)
{
    constexpr auto kError = VelaSQLParser::kErrKeywordExpected;
    ExpectErrors({
        {"@", kError},
        {"  @;", kError},
        {"@EXPLAIN SELECT 1", kError},
        {"@SELECTED 1", kError},
        {"@42", kError},
        {"@'SELECT'", kError},
        {"@(SELECT 1)", kError},
        {"@?", kError},
        {"CREATE @", kError},
        {"CREATE @VIEW v", kError},
        {"CREATE @UNIQUE INDEX i ON t (a)", kError},
        {"CREATE @'TABLE' t (a integer)", kError},
        {"ALTER @INDEX i", kError},
        {"ALTER @", kError},
        {"DROP @", kError},
        {"DROP @VIEW v", kError},
        {"SET @", kError},
        {"SET @OPTION 1", kError},
        {"SET @'ESCAPE' 1", kError},
        {"SELECT a FROM t x @y", kError},
        {"SELECT a FROM t @)", kError},
        {"SELECT a FROM t @42", kError},
        {"SELECT a FROM t @!", kError},
        {"SELECT a FROM t WHERE b = 1 @c", kError},
        {"SELECT a FROM t WHERE b = 1 @= 2", kError},
        {"SELECT a FROM t WHERE b < @> 1", VelaSQLParser::kErrSyntax},
        {"SELECT a FROM t WHERE b @IS NULL", kError},
        {"SELECT a FROM t WHERE b @BETWEEN 1 AND 2", kError},
        {"SELECT a FROM t WHERE b @NOT IN (1)", kError},
        {"SELECT a FROM t WHERE b @NOT", kError},
        {"SELECT a FROM t WHERE NOT NOT @b", kError},
        {"SELECT a FROM t GROUP @a", kError},
        {"SELECT a FROM t GROUP BY a @b", kError},
        {"SELECT a FROM t GROUP BY a @WHERE b", kError},
        {"SELECT a FROM t ORDER @", kError},
        {"SELECT a FROM t ORDER BY a DESC @ASC", kError},
        {"SELECT a FROM t ORDER BY a @HAVING b", kError},
        {"SELECT a FROM t WHERE b @WHERE c", kError},
        {"SELECT a FROM t UNION @SELECT b FROM u WHERE c", kError},
        {"SELECT a FROM t x @JOIN u", kError},
        {"INSERT INTO t VALUES (1) @(2)", kError},
        {"INSERT INTO t VALUES (1) @, (2)", kError},
        {"INSERT INTO t DEFAULT VALUES @1", kError},
        {"INSERT INTO t SELECT a FROM u v @w", kError},
        {"UPDATE t SET a=1 @b=2", kError},
        {"UPDATE t SET a=1 WHERE b @c", kError},
        {"DELETE FROM t @x", kError},
        {"DELETE FROM t @42", kError},
        {"DELETE FROM t WHERE a @b", kError},
        {"CREATE TABLE t (a integer) @x", kError},
        {"CREATE TABLE t (a integer PRIMARY @)", kError},
        {"CREATE TABLE t (a integer NOT @ZERO)", kError},
        {"CREATE INDEX i @t (a)", kError},
        {"CREATE INDEX i ON t (a) @x", kError},
        {"ALTER TABLE Foo@", kError},
        {"ALTER TABLE Foo @CHANGE a", kError},
        {"ALTER TABLE Foo @42", kError},
        {"ALTER TABLE Foo ADD a integer @, b integer", kError},
        {"ALTER TABLE Foo DROP a @NOW", kError},
        {"ALTER TABLE Foo RENAME a @b", kError},
        {"ALTER TABLE Foo RENAME COLUMN TO @b", kError},
        {"ALTER TABLE Foo ALTER a @", kError},
        {"ALTER TABLE Foo ALTER a DROP @NOT", kError},
        {"ALTER TABLE Foo ALTER a DROP DEFAULT @x", kError},
        {"DROP TABLE t RESTRICT @CASCADE", kError},
        {"DROP INDEX t.i @x", kError},
        {"SELECT POSITION('a' @, 'b')", kError},
        {"SELECT POSITION('a'@)", kError},
        {"SELECT SUBSTRING('a' @, 1)", kError},
        {"SELECT SUBSTRING('a' FROM 1 @, 2)", kError},
        {"SELECT SUBSTRING('a' FROM 1@", kError},
        {"SELECT TRIM(@a)", kError},
        {"SELECT TRIM(@UPPER('a'))", kError},
        {"SELECT TRIM(@FROM 'a')", kError},
        {"SELECT TRIM('a' @'b')", kError},
        {"SELECT TRIM(LEADING 'a'@)", kError},
        {"SELECT TRIM(BOTH 'a' @IN 'b')", VelaSQLParser::kErrNotSupported},
    });
}

TEST(VelaSQLParser, NamesAreExpected)
{
    ExpectErrors({
        {"SELECT 1,2 FROM @42", VelaSQLParser::kErrTableNameExpected},
        {"SELECT 1 FROM @", VelaSQLParser::kErrTableNameExpected},
        {"SELECT 1 FROM t, @", VelaSQLParser::kErrTableNameExpected},
        {"SELECT 1 FROM @(SELECT 2)", VelaSQLParser::kErrTableNameExpected},
        {"INSERT INTO @", VelaSQLParser::kErrTableNameExpected},
        {"INSERT INTO @'t' VALUES (1)", VelaSQLParser::kErrTableNameExpected},
        {"UPDATE @", VelaSQLParser::kErrTableNameExpected},
        {"UPDATE @1 SET a=1", VelaSQLParser::kErrTableNameExpected},
        {"DELETE FROM @", VelaSQLParser::kErrTableNameExpected},
        {"DELETE FROM @'t'", VelaSQLParser::kErrTableNameExpected},
        {"CREATE TABLE @", VelaSQLParser::kErrTableNameExpected},
        {"CREATE TABLE @(a integer)", VelaSQLParser::kErrTableNameExpected},
        {"CREATE INDEX i ON @(a)", VelaSQLParser::kErrTableNameExpected},
        {"ALTER TABLE @", VelaSQLParser::kErrTableNameExpected},
        {"ALTER TABLE t RENAME TO @", VelaSQLParser::kErrTableNameExpected},
        {"DROP TABLE@", VelaSQLParser::kErrTableNameExpected},
        {"DROP TABLE @'t'", VelaSQLParser::kErrTableNameExpected},
        {"DROP INDEX @", VelaSQLParser::kErrTableNameExpected},
        {"DROP INDEX @.i", VelaSQLParser::kErrTableNameExpected},
        {"SELECT 1,2 FROM FOO AS @+", VelaSQLParser::kErrRangeVarExpected},
        {"SELECT 1 FROM FOO AS @", VelaSQLParser::kErrRangeVarExpected},
        {"SELECT 1 FROM FOO AS @, BAR", VelaSQLParser::kErrRangeVarExpected},
        {"SELECT a AS @FROM t", VelaSQLParser::kErrRangeVarExpected},
        {"SELECT a AS @", VelaSQLParser::kErrRangeVarExpected},
        {"SELECT a AS @, b", VelaSQLParser::kErrRangeVarExpected},
        {"SELECT a AS @'b' FROM t", VelaSQLParser::kErrRangeVarExpected},
        {"SELECT a @'b' FROM t", VelaSQLParser::kErrRangeVarExpected},
        {"SELECT a @) FROM t", VelaSQLParser::kErrRangeVarExpected},
        {"SELECT a = @FROM t", VelaSQLParser::kErrSyntax},
        {"SELECT 1 @2", VelaSQLParser::kErrRangeVarExpected},
        {"SELECT a = b @= c", VelaSQLParser::kErrRangeVarExpected},
        {"CREATE INDEX @", VelaSQLParser::kErrIndexNameExpected},
        {"CREATE INDEX @(a)", VelaSQLParser::kErrIndexNameExpected},
        {"SELECT a FROM t GROUP BY @1", VelaSQLParser::kErrColumnNameExpected},
        {"SELECT a FROM t GROUP BY a, @", VelaSQLParser::kErrColumnNameExpected},
        {"SELECT a FROM t GROUP BY @(a)", VelaSQLParser::kErrColumnNameExpected},
        {"SELECT a FROM t ORDER BY @1", VelaSQLParser::kErrColumnNameExpected},
        {"SELECT a FROM t ORDER BY @", VelaSQLParser::kErrColumnNameExpected},
        {"SELECT a FROM t ORDER BY a, @-b", VelaSQLParser::kErrColumnNameExpected},
        {"INSERT INTO t (@) VALUES (1)", VelaSQLParser::kErrColumnNameExpected},
        {"INSERT INTO t (a, @1) VALUES (1)", VelaSQLParser::kErrColumnNameExpected},
        {"INSERT INTO t (@", VelaSQLParser::kErrColumnNameExpected},
        {"UPDATE t SET @", VelaSQLParser::kErrColumnNameExpected},
        {"UPDATE t SET @1=2", VelaSQLParser::kErrColumnNameExpected},
        {"UPDATE t SET a=1, @", VelaSQLParser::kErrColumnNameExpected},
        {"CREATE TABLE t (@)", VelaSQLParser::kErrColumnNameExpected},
        {"CREATE TABLE t (a integer, @)", VelaSQLParser::kErrColumnNameExpected},
        {"CREATE INDEX i ON t (@)", VelaSQLParser::kErrColumnNameExpected},
        {"CREATE INDEX i ON t (a, @1)", VelaSQLParser::kErrColumnNameExpected},
        {"ALTER TABLE t ADD @", VelaSQLParser::kErrColumnNameExpected},
        {"ALTER TABLE t DROP @", VelaSQLParser::kErrColumnNameExpected},
        {"ALTER TABLE t DROP COLUMN @1", VelaSQLParser::kErrColumnNameExpected},
        {"ALTER TABLE t RENAME @", VelaSQLParser::kErrColumnNameExpected},
        {"ALTER TABLE t RENAME a TO @", VelaSQLParser::kErrColumnNameExpected},
        {"ALTER TABLE t ALTER @", VelaSQLParser::kErrColumnNameExpected},
        {"ALTER TABLE t MODIFY COLUMN @", VelaSQLParser::kErrColumnNameExpected},
        {"CREATE TABLE t (a@)", VelaSQLParser::kErrDataTypeExpected},
        {"CREATE TABLE t (a @'integer')", VelaSQLParser::kErrDataTypeExpected},
        {"CREATE TABLE t (a@", VelaSQLParser::kErrDataTypeExpected},
        {"ALTER TABLE t ADD COLUMN integer@", VelaSQLParser::kErrDataTypeExpected},
        {"ALTER TABLE t MODIFY a @1", VelaSQLParser::kErrDataTypeExpected},
    });
}

TEST(VelaSQLParser, StatementPartsAreExpected)
{
    ExpectErrors({
        {"SELECT 1 x @WHERE a", VelaSQLParser::kErrFromExpected},
        {"SELECT a b @c FROM t", VelaSQLParser::kErrFromExpected},
        {"SELECT a LIKE b c @d", VelaSQLParser::kErrFromExpected},
        {"DELETE @", VelaSQLParser::kErrFromExpected},
        {"DELETE @t", VelaSQLParser::kErrFromExpected},
        {"DELETE @'FROM' t", VelaSQLParser::kErrFromExpected},
        {"INSERT @", VelaSQLParser::kErrIntoExpected},
        {"INSERT @t VALUES (1)", VelaSQLParser::kErrIntoExpected},
        {"INSERT @'INTO' t", VelaSQLParser::kErrIntoExpected},
        {"UPDATE foo@", VelaSQLParser::kErrSetExpected},
        {"UPDATE foo @a=1", VelaSQLParser::kErrSetExpected},
        {"UPDATE foo @(a) SET a=1", VelaSQLParser::kErrSetExpected},
        {"INSERT INTO t@", VelaSQLParser::kErrValuesExpected},
        {"INSERT INTO t (a)@", VelaSQLParser::kErrValuesExpected},
        {"INSERT INTO t (a) @(1)", VelaSQLParser::kErrValuesExpected},
        {"INSERT INTO t @SET a=1", VelaSQLParser::kErrValuesExpected},
        {"INSERT INTO t (a) @(SELECT b FROM u)", VelaSQLParser::kErrValuesExpected},
        {"INSERT INTO t DEFAULT@", VelaSQLParser::kErrValuesExpected},
        {"INSERT INTO t DEFAULT @VALUE", VelaSQLParser::kErrValuesExpected},
        {"INSERT INTO t VALUES @1", VelaSQLParser::kErrParenExpected},
        {"INSERT INTO t VALUES@", VelaSQLParser::kErrParenExpected},
        {"CREATE TABLE t@", VelaSQLParser::kErrParenExpected},
        {"CREATE TABLE t @a integer", VelaSQLParser::kErrParenExpected},
        {"CREATE INDEX i ON t@", VelaSQLParser::kErrParenExpected},
        {"CREATE INDEX i ON t @a", VelaSQLParser::kErrParenExpected},
        {"INSERT INTO t (a @b) VALUES (1)", VelaSQLParser::kErrCommaOrParenExpected},
        {"INSERT INTO t (a@", VelaSQLParser::kErrCommaOrParenExpected},
        {"INSERT INTO t VALUES (1 @2)", VelaSQLParser::kErrCommaOrParenExpected},
        {"INSERT INTO t VALUES (1@", VelaSQLParser::kErrCommaOrParenExpected},
        {"INSERT INTO t VALUES (1@;)", VelaSQLParser::kErrCommaOrParenExpected},
        {"CREATE TABLE t (a integer @b integer)", VelaSQLParser::kErrCommaOrParenExpected},
        {"CREATE TABLE t (a varchar@(20))", VelaSQLParser::kErrCommaOrParenExpected},
        {"CREATE TABLE t (a integer@", VelaSQLParser::kErrCommaOrParenExpected},
        {"CREATE TABLE t (a integer @UNIQUE)", VelaSQLParser::kErrCommaOrParenExpected},
        {"CREATE INDEX i ON t (a @b)", VelaSQLParser::kErrCommaOrParenExpected},
        {"CREATE INDEX i ON t (a @DESC)", VelaSQLParser::kErrCommaOrParenExpected},
        {"CREATE INDEX i ON t (a@", VelaSQLParser::kErrCommaOrParenExpected},
        {"UPDATE t SET a@", VelaSQLParser::kErrEqualsExpected},
        {"UPDATE t SET a @1", VelaSQLParser::kErrEqualsExpected},
        {"UPDATE t SET a @<> 1", VelaSQLParser::kErrEqualsExpected},
        {"UPDATE t SET a@, b=1", VelaSQLParser::kErrEqualsExpected},
        {"UPDATE t SET a=@", VelaSQLParser::kErrAssignValueExpected},
        {"UPDATE t SET a= @, b=1", VelaSQLParser::kErrAssignValueExpected},
        {"UPDATE t SET a= @WHERE b=1", VelaSQLParser::kErrAssignValueExpected},
        {"UPDATE t SET a=1, b=@;", VelaSQLParser::kErrAssignValueExpected},
    });
}

TEST(VelaSQLParser, ExpressionsAreRefused)
{
    ExpectErrors({
        {"SELECT @FROM FOO", VelaSQLParser::kErrSyntax},
        {"SELECT@", VelaSQLParser::kErrSyntax},
        {"SELECT a, @FROM FOO", VelaSQLParser::kErrSyntax},
        {"SELECT @, a", VelaSQLParser::kErrSyntax},
        {"SELECT -@-5", VelaSQLParser::kErrSyntax},
        {"SELECT +@-5", VelaSQLParser::kErrSyntax},
        {"SELECT 2 + - @- 3", VelaSQLParser::kErrSyntax},
        {"SELECT 1 + @", VelaSQLParser::kErrSyntax},
        {"SELECT 1 @% 2", VelaSQLParser::kErrRangeVarExpected},
        {"SELECT @% 2", VelaSQLParser::kErrSyntax},
        {"SELECT @.5", VelaSQLParser::kErrSyntax},
        {"SELECT @!", VelaSQLParser::kErrSyntax},
        {"SELECT @\x80", VelaSQLParser::kErrSyntax},
        {"SELECT (@)", VelaSQLParser::kErrSyntax},
        {"SELECT a AND @", VelaSQLParser::kErrSyntax},
        {"SELECT NOT @", VelaSQLParser::kErrSyntax},
        {"SELECT a LIKE @", VelaSQLParser::kErrSyntax},
        {"SELECT a LIKE b ESCAPE @", VelaSQLParser::kErrSyntax},
        {"SELECT @\"a\" FROM t", VelaSQLParser::kErrSyntax},
        {"SELECT a FROM t WHERE a=@\"b\"", VelaSQLParser::kErrSyntax},
        {"SELECT @'abc", VelaSQLParser::kErrSyntax},
        {"SELECT @'abc'x", VelaSQLParser::kErrSyntax},
        {"SELECT @'abc'.x", VelaSQLParser::kErrSyntax},
        {"SELECT UPPER(@)", VelaSQLParser::kErrSyntax},
        {"SELECT UPPER(@, 1)", VelaSQLParser::kErrSyntax},
        {"SELECT COUNT(@)", VelaSQLParser::kErrSyntax},
        {"SELECT COUNT(DISTINCT @)", VelaSQLParser::kErrSyntax},
        {"SELECT TRIM(@)", VelaSQLParser::kErrSyntax},
        {"SELECT SUBSTRING('a' FROM FOR @2)", VelaSQLParser::kErrKeywordExpected},
        {"UPDATE t SET a=@/", VelaSQLParser::kErrSyntax},
        {"SELECT a FROM t WHERE @", VelaSQLParser::kErrSyntax},
        {"SELECT a FROM t HAVING @", VelaSQLParser::kErrSyntax},
        {"DELETE FROM t WHERE @", VelaSQLParser::kErrSyntax},
        {"INSERT INTO t VALUES (@)", VelaSQLParser::kErrSyntax},
        {"INSERT INTO t VALUES (1,@)", VelaSQLParser::kErrSyntax},
        {"CREATE TABLE t (a integer DEFAULT@)", VelaSQLParser::kErrSyntax},
        {"ALTER TABLE t ALTER a SET@", VelaSQLParser::kErrSyntax},
        {"SELECT (1@", VelaSQLParser::kErrUnbalancedParens},
        {"SELECT (1 @2)", VelaSQLParser::kErrUnbalancedParens},
        {"SELECT ((1)@", VelaSQLParser::kErrUnbalancedParens},
        {"SELECT (1@, 2)", VelaSQLParser::kErrUnbalancedParens},
        {"SELECT (SELECT @1)", VelaSQLParser::kErrUnbalancedParens},
        {"SELECT UPPER('a'@", VelaSQLParser::kErrUnbalancedParens},
        {"SELECT UPPER('a'@, 'b')", VelaSQLParser::kErrUnbalancedParens},
        {"SELECT COUNT(*@, a)", VelaSQLParser::kErrUnbalancedParens},
        {"SELECT COUNT(* @+ 1)", VelaSQLParser::kErrUnbalancedParens},
        {"SELECT CURRENT_DATE(@1)", VelaSQLParser::kErrUnbalancedParens},
        {"SELECT POSITION('a' IN 'b'@, 1)", VelaSQLParser::kErrUnbalancedParens},
        {"SELECT SUBSTRING('a' FROM 1 FOR 2 @3)", VelaSQLParser::kErrUnbalancedParens},
        {"SELECT TRIM('a' FROM 'b'@, 'c')", VelaSQLParser::kErrUnbalancedParens},
        {"SELECT POSITION((a @IN b) IN c)", VelaSQLParser::kErrUnbalancedParens},
        {"SELECT a FROM t WHERE b @IN (1,2)", VelaSQLParser::kErrNotSupported},
        {"SELECT a @IN (1) FROM t", VelaSQLParser::kErrNotSupported},
        {"SELECT UPPER(a @IN b)", VelaSQLParser::kErrNotSupported},
        {"SELECT POSITION('a' IN 'b' @IN 'c')", VelaSQLParser::kErrNotSupported},
        {"DELETE FROM t WHERE a=1 @in (1)", VelaSQLParser::kErrNotSupported},
        {"SELECT DATE@", VelaSQLParser::kErrDatetimeIncomplete},
        {"SELECT DATE @FROM t", VelaSQLParser::kErrDatetimeIncomplete},
        {"SELECT time @+ 1", VelaSQLParser::kErrDatetimeIncomplete},
        {"SELECT TIMESTAMP @19940709", VelaSQLParser::kErrDatetimeIncomplete},
        {"SELECT DATE @('1994-07-09')", VelaSQLParser::kErrDatetimeIncomplete},
        {"UPDATE t SET a = DATE@", VelaSQLParser::kErrDatetimeIncomplete},
        {"SELECT DATE @'1994", VelaSQLParser::kErrSyntax},
        {"SELECT @FOO(1)", VelaSQLParser::kErrUnknownFunction},
        {"SELECT 1 + @abs (a) FROM t", VelaSQLParser::kErrUnknownFunction},
        {"SELECT a FROM t WHERE @EXISTS (SELECT 1)", VelaSQLParser::kErrUnknownFunction},
        {"INSERT INTO t VALUES (@NOW())", VelaSQLParser::kErrUnknownFunction},
        {"SELECT UPPER(@LOWERCASE('a'))", VelaSQLParser::kErrUnknownFunction},
    });
}

TEST(VelaSQLParser, FirstErrorWinsOverLaterOnes)
{
    ExpectErrors({
        {"SELECT @FROM \"x\" WHERE (", VelaSQLParser::kErrSyntax},
        {"SELECT (1 @2, FOO(1)", VelaSQLParser::kErrUnbalancedParens},
        {"INSERT INTO t VALUES (DATE@, 'abc", VelaSQLParser::kErrDatetimeIncomplete},
        {"CREATE TABLE t (a@, b integer", VelaSQLParser::kErrDataTypeExpected},
    });
}

TEST(VelaSQLParser, EscapeCharacterRulesLiteralsAndAliases)
{
    ExpectErrors({{"SELECT @'a^'", VelaSQLParser::kErrSyntax}}, '^');
    EXPECT_EQ("SELECT 'a^''", Canonical("SELECT 'a^''", '^')) << "escapes are kept in the text";
    EXPECT_EQ("SELECT a AS bc", Canonical("SELECT a AS b!c", '!')) << "and undone in an alias";
    EXPECT_EQ("SELECT a AS b'c", Canonical("SELECT a AS b''c")) << "as are doubled quotes";
    EXPECT_EQ("SELECT a AS b!c", Canonical("SELECT a AS b!c"));
}

TEST(VelaSQLParser, MessagesFollowTheirNumbers)
{
    EXPECT_STREQ("", VelaSQLParser::ErrorMessage(VelaSQLParser::kNoError));
    const char* const messages[] = {
        "SQL Error: keyword expected",
        "SQL Error: table name expected",
        "SQL Error: range variable expected",
        "SQL Error: index name expected",
        "SQL Error: FROM expected",
        "SQL Error: INTO expected",
        "SQL Error: SET expected",
        "SQL Error: unbalanced parentheses",
        "SQL Error: column name expected",
        "SQL Error: comma or parenthesis expected",
        "SQL Error: keyword values expected",
        "SQL Error: parenthesis expected",
        "SQL Error: equals sign expected",
        "SQL Error: assignment value expected",
        "SQL Error: data type expected",
        "SQL Error: datetime literal incomplete",
        "SQL Error: unknown function",
        "SQL Error: feature not supported",
        "SQL Syntax Error",
    };
    for (int kind = 1; kind <= 19; kind++)
        EXPECT_STREQ(messages[kind - 1],
                     VelaSQLParser::ErrorMessage(static_cast<VelaSQLParser::ErrorType>(kind)));
    EXPECT_STREQ("", VelaSQLParser::ErrorMessage(static_cast<VelaSQLParser::ErrorType>(20)));
}

TEST(VelaSQLParser, OneParserReadsManyStatements)
{
    VelaSQLParser parser('\0');
    EXPECT_EQ(nullptr, parser.Evaluate(Sql("NONSENSE")));
    EXPECT_EQ(VelaSQLParser::kErrKeywordExpected, parser.LastError());
    EXPECT_NE(nullptr, parser.Evaluate(Sql("SELECT POSITION(")));
    EXPECT_EQ(VelaSQLParser::kErrSyntax, parser.LastError());
    (void)parser.Evaluate(Sql("SELECT a IN b"));
    EXPECT_EQ(VelaSQLParser::kErrNotSupported, parser.LastError())
        << "an interrupted POSITION leaves nothing behind";
    EXPECT_NE(nullptr, parser.Evaluate(Sql("COMMIT")));
    EXPECT_EQ(VelaSQLParser::kNoError, parser.LastError());
}

TEST(VelaSQLParser, EachTreeKnowsItsKind)
{
    struct Kind {
        const char* sql;
        bool (SQLSyntaxNode::*is)() const;
    };
    const Kind kinds[] = {
        {"SELECT 1", &SQLSyntaxNode::IsSelect},
        {"INSERT INTO t DEFAULT VALUES", &SQLSyntaxNode::IsInsert},
        {"UPDATE t SET a=1", &SQLSyntaxNode::IsUpdate},
        {"DELETE FROM t", &SQLSyntaxNode::IsDelete},
        {"SET ESCAPE \\", &SQLSyntaxNode::IsSetOption},
        {"CREATE TABLE t (a integer)", &SQLSyntaxNode::IsCreateTable},
        {"CREATE INDEX i ON t (a)", &SQLSyntaxNode::IsCreateIndex},
        {"ALTER TABLE t DROP a", &SQLSyntaxNode::IsAlterTable},
        {"COMMIT", &SQLSyntaxNode::IsEndTransaction},
        {"ROLLBACK", &SQLSyntaxNode::IsEndTransaction},
        {"DROP TABLE t", &SQLSyntaxNode::IsDropTable},
        {"DROP INDEX t.i", &SQLSyntaxNode::IsDropIndex},
    };
    for (const Kind& statement : kinds) {
        VelaSQLParser parser('\0');
        const SQLSyntaxNodePtr tree = parser.Evaluate(Sql(statement.sql));
        ASSERT_NE(nullptr, tree) << statement.sql;
        for (const Kind& asked : kinds)
            EXPECT_EQ(statement.is == asked.is, (tree.get()->*asked.is)())
                << statement.sql << " asked as " << asked.sql;
    }
}

TEST(VelaSQLParser, CanonicalTextHasTheStatementsEncoding)
{
    for (const TextEncoding encoding : {kEncodingUTF8, kEncodingLatin1}) {
        VelaSQLParser parser('\0');
        const SQLSyntaxNodePtr tree =
            parser.Evaluate(string("SELECT (a+COUNT(*)) FROM t WHERE \xE9=1", encoding));
        ASSERT_NE(nullptr, tree);
        EXPECT_EQ(encoding, tree->Description().Encoding());
    }
}

}   // namespace
}   // namespace vela
