-- Each message of the parser.
EXPLAIN SELECT 1;
--! 07000 SQL Error: keyword expected
SELECT 1 FROM 42;
--! 07000 SQL Error: table name expected
SELECT 1 FROM t AS +;
--! 07000 SQL Error: range variable expected
CREATE INDEX (a);
--! 07000 SQL Error: index name expected
SELECT a b c FROM t;
--! 07000 SQL Error: FROM expected
INSERT t VALUES (1);
--! 07000 SQL Error: INTO expected
UPDATE t;
--! 07000 SQL Error: SET expected
SELECT (1;
--! 07000 SQL Error: unbalanced parentheses
SELECT 1 FROM t ORDER BY 1;
--! 07000 SQL Error: column name expected
CREATE TABLE t (a varchar(20));
--! 07000 SQL Error: comma or parenthesis expected
INSERT INTO t (1);
--! 07000 SQL Error: column name expected
INSERT INTO t (a);
--! 07000 SQL Error: keyword values expected
CREATE TABLE t a integer;
--! 07000 SQL Error: parenthesis expected
UPDATE t SET a 5;
--! 07000 SQL Error: equals sign expected
UPDATE t SET a =;
--! 07000 SQL Error: assignment value expected
CREATE TABLE t (a);
--! 07000 SQL Error: data type expected
SELECT DATE;
--! 07000 SQL Error: datetime literal incomplete
SELECT ABS(1);
--! 07000 SQL Error: unknown function
SELECT 1 FROM t WHERE a IN (1, 2);
--! 07000 SQL Error: feature not supported
SELECT FROM t;
--! 07000 SQL Syntax Error
SELECT "a" FROM t;
--! 07000 SQL Syntax Error
-- A statement that can't be read does nothing at all.
CREATE TABLE t (a integer);
INSERT INTO t VALUES (1) (2);
--! 07000 SQL Error: keyword expected
DELETE FROM t WHERE a = 1 and;
--! 07000 SQL Syntax Error
SELECT COUNT(*) FROM t;
--> 0
-- The first error of a SELECT wins: tables, items, WHERE, GROUP BY, HAVING; ORDER BY has none.
SELECT x FROM nosuch WHERE y GROUP BY z HAVING w;
--! 42S02 Error: Table nosuch not found.
SELECT x FROM t WHERE y GROUP BY z HAVING w;
--! 42S22 Error: Column x not found.
SELECT a, x, y FROM t;
--! 42S22 Error: Column x not found.
SELECT a FROM t WHERE y GROUP BY z HAVING w;
--! 42S22 Error: Column y not found.
SELECT a FROM t GROUP BY z HAVING w;
--! 42S22 Error: Column z not found.
SELECT a FROM t GROUP BY a HAVING w;
--! 42S22 Error: Column w not found.
SELECT UPPER(t.x) FROM t;
--! 42S22 Error: Column t.x not found.
SELECT a + 1 AS b FROM t WHERE b = 1;
--! 42S22 Error: Column b not found.
SELECT a FROM t WHERE a = 1 AND (x = 2 OR y = 3);
--! 42S22 Error: Column x not found.
SELECT a FROM t WHERE a LIKE b;
--! 42S22 Error: Column b not found.
SELECT a FROM t WHERE a LIKE 'x' ESCAPE b;
--! 42S22 Error: Column b not found.
SELECT -x FROM t;
--! 42S22 Error: Column x not found.
SELECT COUNT(x) FROM t;
--! 42S22 Error: Column x not found.
SELECT * + 1 FROM t;
--! 42S22 Error: Column * not found.
SELECT a FROM t WHERE SUM;
--! 00000 Success
