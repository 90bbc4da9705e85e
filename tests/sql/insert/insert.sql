CREATE TABLE t (a integer, b string, c double);
-- With and without a column list.
INSERT INTO t VALUES (1, 'one', 1.5);
INSERT INTO t (c, a) VALUES (2.5, 2);
INSERT INTO t (b) VALUES ('three');
INSERT INTO t (a, b, c) DEFAULT VALUES;
INSERT INTO t VALUES (DEFAULT, default, 5);
INSERT INTO t (a, b) VALUES (1+2*3, UPPER('six')+6);
SELECT * FROM t;
--> 1|1|one|1.5
--> 2|2|NULL|2.5
--> 3|NULL|three|NULL
--> 4|0||0
--> 5|0||5
--> 6|7|SIX6|NULL
-- What is wrong, in the order of the checks; nothing is inserted.
INSERT INTO nosuch (x) VALUES (1, 2);
--! 42S02 Error: Table nosuch not found.
INSERT INTO t (a, nosuch) VALUES (1);
--! 42S22 Error: Column nosuch not found.
INSERT INTO t (A) VALUES (1);
--! 42S22 Error: Column A not found.
INSERT INTO t (t.a) VALUES (1);
--! 42S22 Error: Column t.a not found.
INSERT INTO t (a, b) VALUES (1, 'x', 2);
--! 21S01 Error: Insert value list does not match column list.
INSERT INTO t (a, b) VALUES (1);
--! 21S01 Error: Insert value list does not match column list.
INSERT INTO t VALUES (1, 'x');
--! 21S01 Error: Insert value list does not match column list.
INSERT INTO t VALUES (1, 'x', 2, 3);
--! 21S01 Error: Insert value list does not match column list.
INSERT INTO t (a, b) VALUES (1/0, nosuch);
--! 22000 Couldn't evaluate value for a
INSERT INTO t (a, b) VALUES (1, nosuch);
--! 42S22 Error: Column nosuch not found.
INSERT INTO t (a, b) VALUES (1, 'x'-'y');
--! 22000 Couldn't evaluate value for b
INSERT INTO t (a, b) VALUES (1, b);
--! 22000 Couldn't evaluate value for b
INSERT INTO t (a) VALUES (x.a);
--! 42S02 Error: Table x not found.
INSERT INTO t (a) VALUES (DEFAULT + 1);
--! 42S22 Error: Column DEFAULT not found.
INSERT INTO t (a) VALUES (COUNT(*));
--! 22000 Couldn't evaluate value for a
INSERT INTO t (a, c) VALUES (1, SUM(2));
--! 22000 Couldn't evaluate value for c
SELECT COUNT(*) FROM t;
--> 6
COMMIT;
DELETE FROM t WHERE a = 0 OR _rowid = 6;
COMMIT;

-- INSERT ... SELECT.
CREATE TABLE u (x integer, y string);
INSERT INTO u SELECT a, b FROM t;
SELECT * FROM u;
--> 1|1|one
--> 2|2|
INSERT INTO u (y, x) SELECT 'n' + a, a * 10 FROM t ORDER BY a DESC;
SELECT * FROM u WHERE x >= 10;
--> 3|10|n1
--> 4|20|n2
-- From the table itself: the rows are all read before the first one is added.
INSERT INTO u SELECT x + 100, y FROM u;
SELECT * FROM u WHERE x > 100;
--> 5|101|one
--> 6|102|
--> 7|110|n1
--> 8|120|n2
-- Of nothing: no error, and nothing to do.
INSERT INTO u SELECT a, b FROM t WHERE a = 99;
--! 02000 No records found.
-- Grouped, distinct, joined.
INSERT INTO u (x) SELECT COUNT(*) FROM t;
INSERT INTO u (y, x) SELECT DISTINCT 'd', 1 FROM u;
INSERT INTO u SELECT t.a * 1000 + u.x, u.y FROM t, u WHERE u.x = t.a AND u.x = 2;
SELECT * FROM u WHERE _rowid > 8;
--> 9|2|NULL
--> 10|1|d
--> 11|2002|NULL
--> 12|2002|
-- Values are not converted on the way, but by the table.
INSERT INTO u SELECT '12 apples', 34 FROM t WHERE a = 1;
INSERT INTO u SELECT 1/0, 'left' FROM t WHERE a = 1;
SELECT * FROM u WHERE _rowid > 12;
--> 13|12|34
--> 14|NULL|left
-- The items are counted, not the columns that they stand for.
INSERT INTO u SELECT * FROM t;
--! 21S01 Error: Insert value list does not match column list.
INSERT INTO u SELECT a, b, c FROM t;
--! 21S01 Error: Insert value list does not match column list.
INSERT INTO u (x) SELECT * FROM t WHERE a = 2;
SELECT x FROM u WHERE _rowid = 15;
--> 2
INSERT INTO u (x, y) SELECT *, b FROM t WHERE a = 1;
SELECT x, y FROM u WHERE _rowid = 16;
--> 1|1
-- Errors of the SELECT, after those of the INSERT.
INSERT INTO nosuch SELECT nosuch FROM nosuch2;
--! 42S02 Error: Table nosuch not found.
INSERT INTO u (z) SELECT nosuch FROM nosuch2;
--! 42S22 Error: Column z not found.
INSERT INTO u SELECT nosuch FROM nosuch2;
--! 21S01 Error: Insert value list does not match column list.
INSERT INTO u SELECT nosuch, 1 FROM nosuch2;
--! 42S02 Error: Table nosuch2 not found.
INSERT INTO u SELECT nosuch, 1 FROM t;
--! 42S22 Error: Column nosuch not found.
-- A row number that is taken is passed over without a word.
INSERT INTO u (_rowid, x) SELECT a, 77 FROM t;
INSERT INTO u (_rowid, x) SELECT a + 100, 77 FROM t;
SELECT _rowid, x FROM u WHERE x = 77;
--> 101|77
--> 102|77
SELECT COUNT(*) FROM u;
--> 18
